// Whether opening and closing a dialog many times leaves anything behind.
#pragma once

// Opens the dialog, cancelled at once by the user, 300 times (60 in 64 bits), and expects that
// neither drawing objects nor windows nor memory have become more.
void expect_no_growth(void (*open_and_close)());
