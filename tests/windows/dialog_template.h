// Reads the dialog templates of the test program's resources, which are those of the program.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct TemplateItem {
    DWORD style = 0;
    short x = 0, y = 0, width = 0, height = 0; // dialog units
    DWORD id = 0;
    WORD class_atom = 0; // 0 = class_name counts
    std::wstring class_name, text;
};

inline constexpr WORD ATOM_BUTTON = 0x80, ATOM_EDIT = 0x81, ATOM_STATIC = 0x82, ATOM_COMBO = 0x85;

struct DialogTemplate {
    int number = 0;
    DWORD style = 0;
    short width = 0, height = 0; // dialog units
    std::wstring title, font;
    WORD font_size = 0; // points
    std::vector<TemplateItem> items;
};

std::vector<DialogTemplate> read_dialog_templates();
