// The control's window class, before anything else of the program runs, and the timer of a control.
// The calls that set and end timers are taken over by this program to see them; they do their work.
#include "dialogs/model_viewer.h"

#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/options.h"
#include "resources/resource_ids.h"
#include "tests/windows/imported.h"

#include <gtest/gtest.h>

#include <vector>

struct TimerCall {
    HWND window;
    UINT_PTR id;
    UINT period; // milliseconds, 0 = ended
    bool operator==(const TimerCall &) const = default;
};

static std::vector<TimerCall> timer_calls;

static UINT_PTR WINAPI set_timer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    static const auto real = system_function<decltype(&SetTimer)>("user32.dll", "SetTimer");
    timer_calls.push_back({window, id, period});
    return real(window, id, period, procedure);
}

static BOOL WINAPI kill_timer(HWND window, UINT_PTR id) {
    static const auto real = system_function<decltype(&KillTimer)>("user32.dll", "KillTimer");
    timer_calls.push_back({window, id, 0});
    return real(window, id);
}

extern "C" {
decltype(&SetTimer) imported_set_timer IMPORTED(SetTimer, 16) = set_timer;
decltype(&KillTimer) imported_kill_timer IMPORTED(KillTimer, 8) = kill_timer;
}

// Always the first to register the class: only then do the options decide on its cursor.
struct ModelViewerClass : testing::Test {
    ModelViewerClass() {
        options_set_defaults();
        orvanel_options.good_graphics_card = 1;
        orvanel_options.object_rotation = 1;
        model_viewer_init();
    }
    static WNDCLASSEXA description() {
        WNDCLASSEXA found = {};
        found.cbSize = sizeof found;
        EXPECT_TRUE(GetClassInfoExA(GetModuleHandleA(nullptr), "orvanel:model_viewer", &found));
        return found;
    }
};

TEST_F(ModelViewerClass, is_drawn_whole_after_a_change_of_size_on_a_black_background) {
    const WNDCLASSEXA found = description();
    EXPECT_EQ(found.style & (CS_HREDRAW | CS_VREDRAW), static_cast<UINT>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(found.hbrBackground, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(found.lpfnWndProc, model_viewer_proc);
}

TEST_F(ModelViewerClass, has_the_cursor_that_tells_of_turning_where_models_turn) {
    EXPECT_EQ(RESOURCE_CURSOR_TURN, 227);
    EXPECT_EQ(RESOURCE_CURSOR_TURNING, 229);
    const HCURSOR turn = LoadCursorA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(227));
    ASSERT_NE(turn, nullptr);
    EXPECT_EQ(description().hCursor, turn);
}

TEST_F(ModelViewerClass, is_registered_once_a_run) {
    orvanel_options.object_rotation = 0;
    SetLastError(ERROR_SUCCESS);
    model_viewer_init();
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)); // not refused a second time
    EXPECT_NE(description().hCursor, LoadCursorA(nullptr, IDC_ARROW));
}

TEST_F(ModelViewerClass, a_new_control_begins_at_45_degrees_whatever_the_one_before_did) {
    model_viewer_model_id = 9;
    model_viewer_model_angle = 1.0f;
    model_viewer_model_speed = 2.0f;
    model_viewer_model_inertia = 3.0f;
    model_viewer_grab_angle = 4.0f;
    model_viewer_mouse_grab_x = 5.0f;
    const HWND viewer = CreateWindowExA(0, MODEL_VIEWER_CLASS, "", WS_POPUP, 0, 0, 100, 80, nullptr,
                                        nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(model_viewer_model_id, 0);
    EXPECT_EQ(model_viewer_model_angle, 45.0f);
    EXPECT_EQ(model_viewer_model_speed, -0.55f);
    EXPECT_EQ(model_viewer_model_inertia, 0.0f);
    EXPECT_EQ(model_viewer_grab_angle, 0.0f);
    EXPECT_EQ(model_viewer_mouse_grab_x, -1.0f);
    DestroyWindow(viewer);
}

TEST_F(ModelViewerClass, a_control_asks_for_a_frame_every_millisecond_as_long_as_it_lives) {
    timer_calls.clear();
    const HWND viewer = CreateWindowExA(0, MODEL_VIEWER_CLASS, "", WS_POPUP, 0, 0, 100, 80, nullptr,
                                        nullptr, GetModuleHandleA(nullptr), nullptr);
    EXPECT_EQ(timer_calls, (std::vector<TimerCall>{{viewer, 33, 1}}));
    timer_calls.clear();
    DestroyWindow(viewer);
    EXPECT_EQ(timer_calls, (std::vector<TimerCall>{{viewer, 33, 0}}));
}
