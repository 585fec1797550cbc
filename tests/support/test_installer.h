// The bytes that tests take for an installer; tests/support/signature_vectors.h holds signatures of
// them.
#pragma once

#include <cstddef>
#include <string>

inline constexpr std::size_t TEST_INSTALLER_SIZE = 4000;

inline std::string test_installer(std::size_t size = TEST_INSTALLER_SIZE) {
    static constexpr std::size_t PERIOD = 251; // a prime: no two blocks are alike
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; i++)
        bytes[i] = static_cast<char>(i % PERIOD);
    return bytes;
}
