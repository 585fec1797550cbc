// Keeps the addresses that the program opens in the browser, instead of starting that.
#pragma once

#include "tests/windows/replaced_import.h"

#include <windows.h>
// Needs windows.h before it.
#include <shellapi.h>

#include <string>
#include <vector>

inline std::vector<std::string> opened_pages;

inline HINSTANCE WINAPI keep_page(HWND, LPCSTR, LPCSTR address, LPCSTR, LPCSTR, INT) {
    opened_pages.push_back(address);
    return reinterpret_cast<HINSTANCE>(INT_PTR{33}); // what counts as opened
}

// From now on until its end.
struct OpenedPages {
    REPLACED_IMPORT(shell, "shell32.dll", ShellExecuteA, keep_page);

    OpenedPages() {
        opened_pages.clear();
    }
};
