#include "dialogs/page_text_edit.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <cstring>
#include <string>

// An edit field of 10 characters; what tells why a character was refused is counted.
struct PageTextEdit : testing::Test {
    HWND parent =
        CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 200, 40, nullptr, nullptr, nullptr, nullptr);
    HWND edit = create_edit();
    int balloons = 0;
    std::wstring balloon_text;

    PageTextEdit() {
        attach();
    }
    ~PageTextEdit() override {
        unwatch();
        DestroyWindow(parent);
    }

    HWND create_edit() const {
        return CreateWindowA("EDIT", "", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 200, 20, parent, nullptr,
                             nullptr, nullptr);
    }
    void attach() {
        page_text_edit_attach(edit, 10);
        SetWindowSubclass(edit, watch, 99, reinterpret_cast<DWORD_PTR>(this));
    }
    void unwatch() const {
        RemoveWindowSubclass(edit, watch, 99);
    }

    static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                  DWORD_PTR self) {
        PageTextEdit *test = reinterpret_cast<PageTextEdit *>(self);
        if (message == EM_SHOWBALLOONTIP) {
            test->balloons++;
            test->balloon_text = reinterpret_cast<const EDITBALLOONTIP *>(lparam)->pszText;
        }
        return DefSubclassProc(window, message, wparam, lparam);
    }
    void type(const char *text) const {
        for (const char *character = text; *character != '\0'; character++)
            SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*character), 1);
    }
    void paste_bytes(UINT format, const void *bytes, std::size_t size) const {
        ASSERT_NE(OpenClipboard(parent), 0);
        EmptyClipboard();
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(memory), bytes, size);
        GlobalUnlock(memory);
        SetClipboardData(format, memory);
        CloseClipboard();
        SendMessageA(edit, WM_PASTE, 0, 0);
    }
    void paste(const std::string &text) const {
        paste_bytes(CF_TEXT, text.c_str(), text.size() + 1);
    }
    void paste(const std::wstring &text) const {
        paste_bytes(CF_UNICODETEXT, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }
    std::string text() const {
        char held[100];
        const int length = GetWindowTextA(edit, held, sizeof held);
        return {held, static_cast<std::size_t>(length)};
    }
};

TEST_F(PageTextEdit, a_typed_character_that_cuts_page_files_is_refused_with_the_reason) {
    type("a<b>c");
    EXPECT_EQ(text(), "ab>c");
    EXPECT_EQ(balloons, 1);
    EXPECT_NE(balloon_text.find(L'<'), std::wstring::npos);
}

TEST_F(PageTextEdit, it_is_left_out_of_what_is_pasted_with_the_reason) {
    paste("x<y<z");
    EXPECT_EQ(text(), "xyz");
    EXPECT_EQ(balloons, 1);
}

TEST_F(PageTextEdit, a_sign_that_turns_into_it_in_the_code_page_is_refused_as_well) {
    static constexpr wchar_t WIDE_FORM = 0xFF1C, BRACKET = 0x2329, QUOTE = 0x2039; // the last stays
    for (const wchar_t sign : {L'a', WIDE_FORM, BRACKET, L'b'})
        SendMessageW(edit, WM_CHAR, sign, 1);
    EXPECT_EQ(text(), "ab");
    paste(std::wstring{L'c', WIDE_FORM, L'd', BRACKET, QUOTE});
    EXPECT_EQ(text(), "abcd\x8b");
    EXPECT_EQ(balloons, 3);
}

TEST_F(PageTextEdit, other_text_is_pasted_as_ever) {
    paste("x > y");
    EXPECT_EQ(text(), "x > y");
    EXPECT_EQ(balloons, 0);
}

TEST_F(PageTextEdit, neither_typing_nor_pasting_goes_beyond_the_limit) {
    type("123456789012");
    EXPECT_EQ(text(), "1234567890");
    SendMessageA(edit, EM_SETSEL, 8, 10);
    paste("<abcd");
    EXPECT_EQ(text(), "12345678ab");
    paste("<more");
    EXPECT_EQ(text(), "12345678ab");
}

TEST_F(PageTextEdit, only_the_first_line_is_pasted) {
    paste("one<\r\ntwo");
    EXPECT_EQ(text(), "one");
}

// ---- other ways in

static void drain() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

TEST_F(PageTextEdit, a_character_of_an_input_method_is_refused_with_the_reason) {
    for (const wchar_t sign : {L'a', L'<', L'b'})
        SendMessageW(edit, WM_IME_CHAR, sign, 1);
    drain(); // it comes in as if it had been typed
    EXPECT_EQ(text(), "ab");
    EXPECT_EQ(balloons, 1);
}

static void compose(HWND edit, std::wstring composed) {
    const HIMC context = ImmGetContext(edit);
    ASSERT_NE(context, nullptr);
    EXPECT_TRUE(ImmSetCompositionStringW(context, SCS_SETSTR, composed.data(),
                                         static_cast<DWORD>(composed.size() * sizeof(wchar_t)),
                                         nullptr, 0));
    EXPECT_TRUE(ImmNotifyIME(context, NI_COMPOSITIONSTR, CPS_COMPLETE, 0));
    ImmReleaseContext(edit, context);
    drain();
}

TEST_F(PageTextEdit, a_text_composed_by_an_input_method_comes_in_without_it_and_with_the_reason) {
    for (const LPARAM status : {0, EIMES_GETCOMPSTRATONCE}) { // sign by sign and at once
        SetWindowTextA(edit, "");
        balloons = 0;
        SendMessageW(edit, EM_SETIMESTATUS, EMSIS_COMPOSITIONSTRING, status);
        SetFocus(edit);
        compose(edit, L"a<b");
        EXPECT_EQ(text(), "ab");
        EXPECT_EQ(balloons, 1);
    }
}

TEST_F(PageTextEdit, what_another_program_puts_in_comes_in_without_it_and_with_the_reason) {
    SendMessageA(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("<1<2"));
    EXPECT_EQ(text(), "12");
    EXPECT_EQ(balloons, 1);
    SendMessageA(edit, EM_SETSEL, 1, 1);
    SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("a<b"));
    EXPECT_EQ(text(), "1ab2");
    EXPECT_EQ(SendMessageA(edit, EM_GETSEL, 0, 0), MAKELRESULT(3, 3));
    EXPECT_NE(SendMessageA(edit, EM_GETMODIFY, 0, 0), 0);
    EXPECT_EQ(balloons, 2);
}

TEST_F(PageTextEdit, undo_does_not_bring_it_back) {
    for (const UINT undo : {static_cast<UINT>(WM_UNDO), static_cast<UINT>(EM_UNDO)}) {
        unwatch();
        DestroyWindow(edit);
        edit = create_edit();
        type("a<b"); // before the field is one of a page
        SendMessageA(edit, EM_SETSEL, 0, -1);
        SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(""));
        attach();
        balloons = 0;
        SendMessageA(edit, undo, 0, 0);
        EXPECT_EQ(text(), "ab");
        EXPECT_EQ(balloons, 1);
        for (int again = 0; again < 3; again++) {
            SendMessageA(edit, undo, 0, 0);
            EXPECT_EQ(text().find('<'), std::string::npos);
        }
    }
}

TEST_F(PageTextEdit, undo_and_redo_of_what_was_allowed_work_as_ever) {
    type("abc");
    SendMessageA(edit, EM_UNDO, 0, 0);
    EXPECT_EQ(text(), "");
    SendMessageA(edit, EM_UNDO, 0, 0);
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(balloons, 0);
}
