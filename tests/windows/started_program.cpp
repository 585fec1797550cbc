#include "tests/windows/started_program.h"

#include "platform/files.h"

#include <vector>

static constexpr DWORD WAIT_FOR_TRACE = 20'000; // milliseconds

std::string own_path() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

static std::string trace_of(const std::string &path) {
    return path + ".trace";
}

static const bool traced = [] {
    const std::string command_line = GetCommandLineA();
    if (command_line.find(TRACE_SWITCH) == std::string::npos)
        return false;
    file_replace_text(trace_of(own_path()).c_str(), command_line);
    ExitProcess(0);
}();

std::string wait_for_trace(const std::string &path) {
    for (DWORD waited = 0; waited < WAIT_FOR_TRACE; waited += TRACE_WAIT_STEP) {
        std::vector<char> bytes;
        if (file_read(trace_of(path).c_str(), &bytes) == 0)
            return {bytes.begin(), bytes.end()};
        Sleep(TRACE_WAIT_STEP);
    }
    return {};
}

void delete_trace(const std::string &path) {
    file_delete(trace_of(path).c_str());
}

BrowserKey::BrowserKey() {
    RegCreateKeyExA(HKEY_CLASSES_ROOT, "HTTP\\shell\\open\\command", 0, nullptr, 0, KEY_ALL_ACCESS,
                    nullptr, &key, nullptr);
    had_value = RegQueryValueExA(key, nullptr, nullptr, &type, reinterpret_cast<BYTE *>(before),
                                 &size) == ERROR_SUCCESS;
}

BrowserKey::~BrowserKey() {
    if (had_value)
        RegSetValueExA(key, nullptr, 0, type, reinterpret_cast<BYTE *>(before), size);
    else
        RegDeleteValueA(key, nullptr);
    RegCloseKey(key);
}

void BrowserKey::set(DWORD new_type, const void *bytes, std::size_t count) {
    RegSetValueExA(key, nullptr, 0, new_type, static_cast<const BYTE *>(bytes),
                   static_cast<DWORD>(count));
}

void BrowserKey::set_to_own_program() {
    const std::string command = "\"" + own_path() + "\" " + TRACE_SWITCH + " \"%1\"";
    set(REG_SZ, command.c_str(), command.size() + 1);
}
