// Reading the version document.
#pragma once

#include <cstdint>
#include <string_view>

// The text of the element current_version, as long as a version may be; empty when there is none.
std::string_view auto_update_version_text(std::string_view document);

// major * 10000 + minor * 100 + patch of "major.minor.patch"; what is missing counts as 0. 0 when
// the text is no version. What is too large stays at the largest number.
std::int32_t auto_update_version_number(std::string_view text);
