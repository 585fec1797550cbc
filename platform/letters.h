// Letters of the system's code page, one byte each: those with accents as well as those of other
// alphabets. The posix side takes it to be the western one (1252).
#pragma once

bool letter_is(char character);
char letter_upper(char character); // the same where there is no upper case
