#include "dialogs/hyperlinks.h"

#include "platform/win32/object_count.h"
#include "resources/resource_ids.h"
#include "tests/windows/window_properties.h"

#include <gtest/gtest.h>

static int clicks, pressed_buttons;

static constexpr COLORREF DIALOG_COLOUR = RGB(1, 2, 3);

// Writes all its statics in a colour of its own.
static INT_PTR CALLBACK count_clicks(HWND, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_COMMAND && wparam == 0 && lparam == 0)
        clicks++;
    if (message == WM_COMMAND && LOWORD(wparam) == IDOK)
        pressed_buttons++;
    if (message != WM_CTLCOLORSTATIC)
        return FALSE;
    SetTextColor(reinterpret_cast<HDC>(wparam), DIALOG_COLOUR);
    return reinterpret_cast<INT_PTR>(GetStockObject(WHITE_BRUSH));
}

static HFONT font_of(HWND control) {
    return reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0));
}

static bool is_underlined(HWND control) {
    LOGFONTA font = {};
    GetObjectA(font_of(control), sizeof font, &font);
    return font.lfUnderline != 0;
}

static WNDPROC procedure_of(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC));
}

static void drain() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

// The about box's template with plain statics.
struct Hyperlinks : testing::Test {
    HWND dialog =
        CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(RESOURCE_DIALOG_ABOUT),
                           nullptr, count_clicks, 0);
    HWND link = GetDlgItem(dialog, RESOURCE_ABOUT_HOME_PAGE);
    HWND plain = GetDlgItem(dialog, RESOURCE_ABOUT_PRODUCT);
    WNDPROC dialog_before = procedure_of(dialog);
    WNDPROC link_before = procedure_of(link);
    int fonts_before = object_count[OBJECT_FONT];

    Hyperlinks() {
        clicks = pressed_buttons = 0;
        ShowWindow(dialog, SW_SHOWNOACTIVATE);
        drain();
    }
    ~Hyperlinks() override {
        if (GetCapture() != nullptr)
            ReleaseCapture();
        if (IsWindow(dialog))
            DestroyWindow(dialog);
    }
    void move_mouse(int x, int y) const {
        SendMessageA(link, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    }
    COLORREF text_colour(HWND control) const {
        const HDC dc = GetDC(control);
        const LRESULT brush = SendMessageA(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                           reinterpret_cast<LPARAM>(control));
        EXPECT_EQ(brush, reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH)));
        const COLORREF colour = GetTextColor(dc);
        ReleaseDC(control, dc);
        return colour;
    }
};

TEST_F(Hyperlinks, The_static_control_takes_the_mouse_and_keeps_what_it_was) {
    const HFONT font = font_of(link);
    ASSERT_TRUE(ConvertStaticToHyperlink(link));
    EXPECT_NE(GetWindowLongPtrA(link, GWL_STYLE) & SS_NOTIFY, 0);
    EXPECT_EQ(GetPropA(link, "_Hyperlink_Original_Font_"), font);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(GetPropA(link, "_Hyperlink_Original_Proc_")),
              reinterpret_cast<LONG_PTR>(link_before));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(GetPropA(link, "_Hyperlink_From_Static_")), 1);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(GetPropA(dialog, "_Hyperlink_Original_Proc_")),
              reinterpret_cast<LONG_PTR>(dialog_before));
    EXPECT_EQ(font_of(link), font);
}

TEST_F(Hyperlinks,
       Converting_the_same_parents_second_static_control_does_not_subclass_the_parent_twice) {
    ASSERT_TRUE(ConvertStaticToHyperlink(link));
    const WNDPROC once = procedure_of(dialog);
    EXPECT_NE(once, dialog_before);
    ASSERT_TRUE(ConvertStaticToHyperlink(plain));
    EXPECT_EQ(procedure_of(dialog), once);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(GetPropA(dialog, "_Hyperlink_Original_Proc_")),
              reinterpret_cast<LONG_PTR>(dialog_before));
}

TEST_F(Hyperlinks, Its_text_is_black_and_that_of_other_statics_is_left_alone) {
    ConvertStaticToHyperlink(link);
    EXPECT_EQ(text_colour(link), RGB(0, 0, 0));
    EXPECT_EQ(text_colour(plain), DIALOG_COLOUR);
}

TEST_F(Hyperlinks, It_is_underlined_and_holds_the_mouse_while_the_pointer_is_over_it) {
    ConvertStaticToHyperlink(link);
    EXPECT_FALSE(is_underlined(link));
    move_mouse(3, 3);
    EXPECT_TRUE(is_underlined(link));
    EXPECT_EQ(GetCapture(), link);
    move_mouse(5, 4);
    EXPECT_TRUE(is_underlined(link));
    move_mouse(-2, 3);
    EXPECT_FALSE(is_underlined(link));
    EXPECT_EQ(GetCapture(), nullptr);
}

// Whether the control is to be drawn again; then it no longer is.
static bool takes_redraw(HWND control) {
    const bool wanted = GetUpdateRect(control, nullptr, FALSE) != 0;
    ValidateRect(control, nullptr);
    return wanted;
}

TEST_F(Hyperlinks, It_is_drawn_again_when_the_pointer_comes_or_goes_and_after_a_click) {
    ConvertStaticToHyperlink(link);
    takes_redraw(link);
    EXPECT_FALSE(takes_redraw(link));
    move_mouse(3, 3);
    EXPECT_TRUE(takes_redraw(link));
    move_mouse(4, 3);
    EXPECT_FALSE(takes_redraw(link));
    SendMessageA(link, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 3));
    SendMessageA(link, WM_LBUTTONUP, 0, MAKELPARAM(4, 3));
    EXPECT_TRUE(takes_redraw(link));
    move_mouse(3, 3);
    takes_redraw(link);
    move_mouse(-2, 3);
    EXPECT_TRUE(takes_redraw(link));
}

TEST_F(Hyperlinks, Leaving_to_any_side_ends_it) {
    ConvertStaticToHyperlink(link);
    RECT area;
    GetClientRect(link, &area);
    const POINT outside[] = {{-1, 1}, {1, -1}, {area.right, 1}, {1, area.bottom}};
    for (const POINT &point : outside) {
        move_mouse(1, 1);
        ASSERT_EQ(GetCapture(), link);
        move_mouse(point.x, point.y);
        EXPECT_EQ(GetCapture(), nullptr) << point.x << " " << point.y;
    }
}

TEST_F(Hyperlinks, A_click_is_posted_to_the_parent_with_both_parameters_0) {
    ConvertStaticToHyperlink(link);
    SendMessageA(link, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(GetCapture(), link);
    EXPECT_EQ(clicks, 0);
    SendMessageA(link, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(GetCapture(), nullptr);
    drain();
    EXPECT_EQ(clicks, 1);
}

// ---- by keyboard

static void key_in_dialog(HWND dialog, UINT key) {
    MSG message = {GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    if (!IsDialogMessageA(dialog, &message))
        DispatchMessageA(&message);
    drain();
}

TEST_F(Hyperlinks, The_tab_key_goes_to_it_and_on) {
    const HWND ok = GetDlgItem(dialog, IDOK);
    ConvertStaticToHyperlink(link);
    SetFocus(ok);
    key_in_dialog(dialog, VK_TAB);
    EXPECT_EQ(GetFocus(), link);
    key_in_dialog(dialog, VK_TAB);
    EXPECT_EQ(GetFocus(), ok);
}

TEST_F(Hyperlinks, Enter_and_the_space_bar_are_clicks_while_it_has_the_focus) {
    ConvertStaticToHyperlink(link);
    SetFocus(link);
    key_in_dialog(dialog, VK_RETURN);
    EXPECT_EQ(clicks, 1);
    key_in_dialog(dialog, VK_SPACE);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(pressed_buttons, 0);
    key_in_dialog(dialog, VK_RIGHT);
    key_in_dialog(dialog, 'X');
    EXPECT_EQ(clicks, 2);
    SetFocus(GetDlgItem(dialog, IDOK));
    key_in_dialog(dialog, VK_RETURN);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(pressed_buttons, 1);
}

// Pixels of the control that differ from the white ground of this dialog, after a part of it, null
// = all, has been painted again.
static int dark_pixels(HWND control, const RECT *part = nullptr) {
    RedrawWindow(control, part, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    RECT area;
    GetClientRect(control, &area);
    const HDC dc = GetDC(control);
    int dark = 0;
    for (int y = 0; y < area.bottom; y++) {
        for (int x = 0; x < area.right; x++)
            dark += GetPixel(dc, x, y) != RGB(255, 255, 255) ? 1 : 0;
    }
    ReleaseDC(control, dc);
    return dark;
}

TEST_F(Hyperlinks, A_frame_shows_that_it_has_the_focus) {
    ConvertStaticToHyperlink(link);
    SetFocus(GetDlgItem(dialog, IDOK));
    const int without = dark_pixels(link);
    SetFocus(link);
    RECT area;
    GetClientRect(link, &area);
    const int framed = dark_pixels(link);
    EXPECT_GE(framed, without + area.right / 2);
    const RECT part = {0, 0, area.right / 2, area.bottom};
    EXPECT_EQ(dark_pixels(link, &part), framed); // the rest of the frame is not wiped out
    SetFocus(GetDlgItem(dialog, IDOK));
    EXPECT_EQ(dark_pixels(link), without);
}

TEST_F(Hyperlinks, The_pointer_is_a_hand) {
    ConvertStaticToHyperlink(link);
    EXPECT_EQ(SendMessageA(link, WM_SETCURSOR, reinterpret_cast<WPARAM>(link),
                           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
              TRUE);
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
}

TEST_F(Hyperlinks, Destroying_the_control_gives_everything_back) {
    const HFONT font = font_of(link);
    ConvertStaticToHyperlink(link);
    EXPECT_EQ(object_count[OBJECT_FONT], fonts_before + 1);
    const auto underline = static_cast<HFONT>(GetPropA(link, "_Hyperlink_Underline_Font_"));
    DestroyWindow(link);
    EXPECT_EQ(object_count[OBJECT_FONT], fonts_before);
    EXPECT_EQ(GetObjectType(underline), 0u);
    EXPECT_NE(GetObjectType(font), 0u); // the dialog's own
}

// What a window is when its own procedure is told that it goes.
static struct {
    WNDPROC procedure; // the window's own
    int told;          // times
    WNDPROC in_force;
    HFONT font;
    WindowProperties properties;
} last;

static LRESULT CALLBACK look_at_the_end(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_DESTROY) {
        last.told++;
        last.in_force = procedure_of(window);
        last.font = font_of(window);
        last.properties = window_properties(window);
    }
    return CallWindowProcA(last.procedure, window, message, wparam, lparam);
}

// Puts the above in front of the window's own procedure.
static void watch_the_end(HWND window) {
    last = {procedure_of(window), 0, nullptr, nullptr, {}};
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(look_at_the_end));
}

static int hyperlink_properties(const WindowProperties &properties) {
    int found = 0;
    for (const auto &[name, value] : properties)
        found += name.starts_with("_Hyperlink_") ? 1 : 0;
    return found;
}

TEST_F(Hyperlinks, A_control_that_is_destroyed_has_its_procedure_its_font_and_no_property_left) {
    const HFONT font = font_of(link);
    watch_the_end(link);
    ConvertStaticToHyperlink(link);
    EXPECT_EQ(hyperlink_properties(window_properties(link)), 4);
    move_mouse(3, 3);
    ASSERT_TRUE(is_underlined(link));
    DestroyWindow(link);
    EXPECT_EQ(last.told, 1);
    EXPECT_EQ(last.in_force, look_at_the_end);
    EXPECT_EQ(last.font, font);
    EXPECT_EQ(hyperlink_properties(last.properties), 0);
}

TEST_F(Hyperlinks, A_dialog_that_is_destroyed_has_its_procedure_and_no_property_left) {
    watch_the_end(dialog);
    ConvertStaticToHyperlink(link);
    EXPECT_EQ(hyperlink_properties(window_properties(dialog)), 1);
    DestroyWindow(dialog);
    EXPECT_EQ(last.told, 1);
    EXPECT_EQ(last.in_force, look_at_the_end);
    EXPECT_EQ(hyperlink_properties(last.properties), 0);
}

TEST_F(Hyperlinks, Destroying_the_dialog_gives_everything_back) {
    ConvertStaticToHyperlink(link);
    ConvertStaticToHyperlink(plain);
    move_mouse(3, 3);
    DestroyWindow(dialog);
    EXPECT_EQ(object_count[OBJECT_FONT], fonts_before);
}
