#include "tests/windows/dialog_template.h"

#include <cstring>

static constexpr WORD EXTENDED = 0xFFFF; // signature of a template of today, mark of a number

struct Cursor {
    const BYTE *begin, *at;

    template <typename Value>
    Value take() {
        Value value;
        std::memcpy(&value, at, sizeof value);
        at += sizeof value;
        return value;
    }
    void align() {
        at = begin + (at - begin + 3) / 4 * 4;
    }
    std::wstring take_text() {
        std::wstring text;
        while (const WORD unit = take<WORD>())
            text += static_cast<wchar_t>(unit);
        return text;
    }
    // A text, or a number in its place.
    WORD take_text_or_number(std::wstring *text) {
        const BYTE *start = at;
        if (take<WORD>() == EXTENDED)
            return take<WORD>();
        at = start;
        *text = take_text();
        return 0;
    }
};

static TemplateItem read_item(Cursor *cursor) {
    cursor->align();
    TemplateItem item;
    cursor->take<DWORD>(); // help id
    cursor->take<DWORD>(); // extended style
    item.style = cursor->take<DWORD>();
    item.x = cursor->take<short>();
    item.y = cursor->take<short>();
    item.width = cursor->take<short>();
    item.height = cursor->take<short>();
    item.id = cursor->take<DWORD>();
    item.class_atom = cursor->take_text_or_number(&item.class_name);
    cursor->take_text_or_number(&item.text);
    cursor->at += cursor->take<WORD>(); // creation data
    return item;
}

static DialogTemplate read_template(const BYTE *bytes, int number) {
    Cursor cursor = {bytes, bytes};
    DialogTemplate dialog;
    dialog.number = number;
    cursor.take<DWORD>(); // version and signature
    cursor.take<DWORD>(); // help id
    cursor.take<DWORD>(); // extended style
    dialog.style = cursor.take<DWORD>();
    const WORD count = cursor.take<WORD>();
    cursor.take<DWORD>(); // position
    dialog.width = cursor.take<short>();
    dialog.height = cursor.take<short>();
    std::wstring ignored;
    cursor.take_text_or_number(&ignored); // menu
    cursor.take_text_or_number(&ignored); // class
    dialog.title = cursor.take_text();
    if ((dialog.style & DS_SETFONT) != 0) {
        dialog.font_size = cursor.take<WORD>();
        cursor.take<DWORD>(); // weight, italic, character set
        dialog.font = cursor.take_text();
    }
    for (WORD i = 0; i < count; i++)
        dialog.items.push_back(read_item(&cursor));
    return dialog;
}

static BOOL CALLBACK add_template(HMODULE module, LPCSTR type, LPSTR name, LONG_PTR list) {
    const HGLOBAL memory = LoadResource(module, FindResourceA(module, name, type));
    const auto number = static_cast<int>(reinterpret_cast<ULONG_PTR>(name));
    reinterpret_cast<std::vector<DialogTemplate> *>(list)->push_back(
        read_template(static_cast<const BYTE *>(LockResource(memory)), number));
    return TRUE;
}

std::vector<DialogTemplate> read_dialog_templates() {
    std::vector<DialogTemplate> templates;
    EnumResourceNamesA(nullptr, reinterpret_cast<LPCSTR>(RT_DIALOG), add_template,
                       reinterpret_cast<LONG_PTR>(&templates));
    return templates;
}
