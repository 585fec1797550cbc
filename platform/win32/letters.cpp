#include "platform/letters.h"

#include <windows.h>

bool letter_is(char character) {
    return IsCharAlphaA(character) != 0;
}

// Some upper cases are missing from the code page: a question mark comes back for them.
char letter_upper(char character) {
    char upper = character;
    CharUpperBuffA(&upper, 1);
    return letter_is(upper) ? upper : character;
}
