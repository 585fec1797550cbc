// Whether opening and closing a dialog many times leaves anything behind.
#pragma once

// Opens the dialog, cancelled at once by the user, 300 times (60 in 64 bits), and expects that
// neither drawing objects nor windows nor memory have become more.
void expect_no_growth(void (*open_and_close)());

// The same for a dialog with a model preview, which is opened without anti-aliasing: a driver that
// draws by the processor compiles its resolving anew for every context, which takes most of the
// time. That a multisampled preview leaves nothing behind is tested with the control itself.
void expect_no_growth_with_preview(void (*open_and_close)());
