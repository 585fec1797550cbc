// The properties that windows carry, by name.
#pragma once

#include <windows.h>

#include <map>
#include <string>

using WindowProperties = std::map<std::string, HANDLE>;

inline BOOL CALLBACK window_property_add(HWND, LPSTR name, HANDLE value, ULONG_PTR properties) {
    const bool is_atom = IS_INTRESOURCE(name);
    const std::string key = is_atom ? "#" + std::to_string(LOWORD(name)) : std::string(name);
    (*reinterpret_cast<WindowProperties *>(properties))[key] = value;
    return TRUE;
}

inline WindowProperties window_properties(HWND window) {
    WindowProperties properties;
    EnumPropsExA(window, window_property_add, reinterpret_cast<LPARAM>(&properties));
    return properties;
}
