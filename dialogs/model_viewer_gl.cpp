// The OpenGL side of the control: its context, and whose turn it is.
#include "dialogs/model_viewer.h"

#include "dialogs/model_viewer_canvas.h"
#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/options.h"
#include "platform/message.h"
#include "scene/gl_util.h"
#include "scene/gl_window.h"

HDC model_viewer_DC;
HGLRC model_viewer_RC;
static HWND canvas; // to whom the device context belongs

// Makes the control's context current for as long as it stands; then whoever had the turn before
// gets it back. Without a context of the control nothing changes.
struct ContextTurn {
    HDC dc = wglGetCurrentDC();
    HGLRC context = wglGetCurrentContext();
    bool taken;

    ContextTurn()
        : taken(model_viewer_RC != nullptr && wglMakeCurrent(model_viewer_DC, model_viewer_RC)) {}
    ~ContextTurn() {
        if (model_viewer_RC != nullptr) // a failed change leaves no context current
            wglMakeCurrent(dc, context);
    }
    ContextTurn(const ContextTurn &) = delete;
    ContextTurn &operator=(const ContextTurn &) = delete;
};

static bool uses_main_format() {
    return arbMultisampleSupported == 1 && orvanel_options.good_graphics_card == 1 &&
           orvanel_options.anti_aliasing == 1;
}

// What failed, or null when the context was made.
static const char *make_context(HWND control) {
    PIXELFORMATDESCRIPTOR format = gl_plain_pixel_format();
    canvas = model_viewer_canvas_make(control);
    model_viewer_DC = canvas != nullptr ? GetDC(canvas) : nullptr;
    if (model_viewer_DC == nullptr)
        return "Failed to create DC.\n";
    const int index =
        uses_main_format() ? arbMultisampleFormat : ChoosePixelFormat(model_viewer_DC, &format);
    if (index == 0)
        return "Failed to create pixel format.\n";
    if (!SetPixelFormat(model_viewer_DC, index, &format))
        return "SetPixelFormat failed.\n";
    model_viewer_RC = wglCreateContext(model_viewer_DC);
    return model_viewer_RC != nullptr ? nullptr : "Failed to create RC.\n";
}

static ViewerColour dialog_background() {
    const COLORREF colour = GetSysColor(COLOR_3DFACE);
    static constexpr float FULL = 255.0f;
    return {GetRValue(colour) / FULL, GetGValue(colour) / FULL, GetBValue(colour) / FULL};
}

static void release_context() {
    if (model_viewer_RC != nullptr)
        wglDeleteContext(model_viewer_RC);
    if (model_viewer_DC != nullptr)
        ReleaseDC(canvas, model_viewer_DC);
    model_viewer_RC = nullptr;
    model_viewer_DC = nullptr;
    model_viewer_canvas_destroy();
    canvas = nullptr;
}

static const char *make_picture() {
    const ContextTurn turn;
    if (!turn.taken)
        return "wglMakeCurrent failed.\n";
    model_viewer_picture_init(dialog_background());
    return nullptr;
}

// A control whose context cannot be had stays empty.
void model_viewer_enable_gl(HWND window) {
    const char *failure = make_context(window);
    if (failure == nullptr)
        failure = make_picture();
    if (failure == nullptr)
        return;
    release_context();
    message_box(failure, MESSAGE_CAPTION, MessageIcon::Error);
}

void model_viewer_disable_gl() {
    {
        const ContextTurn turn;
        if (turn.taken)
            model_viewer_picture_free();
    }
    release_context();
}

void model_viewer_resize_control(int width, int height) {
    model_viewer_canvas_resize(width, height);
    const ContextTurn turn;
    if (turn.taken)
        model_viewer_resize(width, height);
}

void model_viewer_scene_draw() {
    const ContextTurn turn;
    if (!turn.taken)
        return;
    model_viewer_picture_draw();
    model_viewer_canvas_show(model_viewer_DC);
    if (model_viewer_model_id >= 0)
        model_spin_frame();
}
