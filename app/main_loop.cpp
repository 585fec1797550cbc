#include "app/main_loop.h"

#include "app/hand_over.h"
#include "dialogs/dialogs.h"
#include "editing/page_edit.h"
#include "platform/clock.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "update/auto_update.h"

#include <algorithm>

static constexpr std::int32_t FRAMES_WITHOUT_DRAWING = 25; // then a repaint is forced
static constexpr std::uint32_t IDLE_SLEEP = 1;             // milliseconds
static constexpr std::uint32_t CATCH_UP_LIMIT = 250;       // milliseconds that catching up may take

// An idle page is drawn again now and then, so that whatever was painted over it does not stay.
static void draw() {
    if (scene_draw() == 0) {
        mandatory_redraw_counter = 0;
        return;
    }
    mandatory_redraw_counter++;
    if (mandatory_redraw_counter > FRAMES_WITHOUT_DRAWING) {
        mandatory_redraw_counter = 0;
        scene_request_redraw();
    }
}

// Frames that drawing took the time of are run without being drawn.
static void catch_up() {
    const std::uint32_t start = timer_get_time_ms(&frame_timer);
    sys_time_ms = start;
    while (timer_is_before(next_frame_timer, sys_time_ms)) {
        scene_process_frame();
        next_frame_timer += FRAME_MILLISECONDS;
        // Frames slower than the clock would never catch up with it: the rest is let go, so that
        // the user's messages are heard.
        const std::uint32_t now = timer_get_time_ms(&frame_timer);
        if (now - start > CATCH_UP_LIMIT) {
            next_frame_timer = now;
            return;
        }
    }
}

static void open_handed_over_page() {
    char path[HAND_OVER_SIZE];
    if (!hand_over_take(path))
        return;
    scene_open_handed_over_page(path);
    reset_frame_timer();
}

// The update replaces the program, which ends for it. A page that cannot be saved keeps it running:
// nothing is lost.
static void quit_for_update() {
    if (page_edit_save() == 0)
        run = 0;
}

static void offer_update() {
    if (dialog_update_show() == DIALOG_UPDATE_QUIT)
        quit_for_update();
    else
        auto_update_declined();
    reset_frame_timer();
    scene_request_redraw();
}

// The dialog would take what is being dragged out of the user's hand.
static void poll_update() {
    if ((mouse.flags & MOUSE_LEFT) == 0 && auto_update_poll())
        offer_update();
}

void main_loop_pass() {
    bool idle = true;
    open_handed_over_page();
    sys_time_ms = timer_get_time_ms(&frame_timer);
    if (timer_is_before(next_mouse_timer, sys_time_ms)) {
        next_mouse_timer += HOVER_TEST_MILLISECONDS;
        scene_hover_test();
        idle = false;
    }
    if (!timer_is_before(next_frame_timer, sys_time_ms)) {
        if (idle)
            clock_sleep(IDLE_SLEEP);
        poll_update();
        return;
    }
    next_frame_timer += FRAME_MILLISECONDS;
    scene_process_frame();
    draw();
    catch_up();
    poll_update(); // the next frame is not due: it may be all there is until then
}

// A time is due when it has passed.
static std::uint32_t time_until_due(std::uint32_t due, std::uint32_t now) {
    return timer_is_before(due, now) ? 0 : due - now + 1;
}

std::uint32_t main_loop_spare_time() {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    return std::min(time_until_due(next_frame_timer, now), time_until_due(next_mouse_timer, now));
}
