// The model preview in a dialog of its own over the program's window.
#pragma once

#include "dialogs/model_viewer.h"
#include "page/options.h"
#include "resources/resource_ids.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

struct ModelViewerStage {
    RealWindow window;
    HWND dialog = nullptr, viewer = nullptr;

    // The program's window alone, with all options on that the preview looks at.
    ModelViewerStage() {
        orvanel_options.good_graphics_card = 1;
        orvanel_options.object_rotation = 1;
        orvanel_options.floor_inertia = 1;
        orvanel_options.reflections = 1;
    }
    ~ModelViewerStage() {
        close();
    }
    ModelViewerStage(const ModelViewerStage &) = delete;
    ModelViewerStage &operator=(const ModelViewerStage &) = delete;

    static INT_PTR CALLBACK procedure(HWND, UINT message, WPARAM, LPARAM) {
        return message == WM_INITDIALOG ? TRUE : FALSE;
    }
    void open() {
        static constexpr int TEMPLATE = 5000; // tests/support/test_resources.rc
        dialog = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(TEMPLATE), hWnd,
                                    procedure, 0);
        viewer = GetDlgItem(dialog, RESOURCE_MODEL_VIEWER);
    }
    void close() {
        if (dialog != nullptr)
            DestroyWindow(dialog);
        dialog = viewer = nullptr;
        handle_messages();
    }
    void send(UINT message, WPARAM wparam = 0, int x = 0, int y = 0) const {
        SendMessageA(viewer, message, wparam, MAKELPARAM(x, y));
    }
    void paint() const {
        RedrawWindow(viewer, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    void size(int width, int height) const {
        SetWindowPos(viewer, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }
    static void expect_main_context() {
        EXPECT_EQ(wglGetCurrentContext(), hRC);
        EXPECT_EQ(wglGetCurrentDC(), hDC);
    }
};
