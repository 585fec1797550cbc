// Which entry of a menu a typed letter means. The system cannot tell: it does not know the texts of
// entries that the program draws itself.
#pragma once

#include <cstdint>
#include <span>

struct MenuLetter {
    char first;   // first character of the entry's text, '\0' = none
    bool enabled; // it can be chosen
};

struct MenuLetterChoice {
    std::int32_t index; // -1 = no entry starts like that
    bool execute;       // it is the only one: chosen at once; else it is only highlighted
};

// highlighted is the index of the highlighted entry, -1 = none: the search goes on behind it and
// comes round. ASCII letters match in both cases.
MenuLetterChoice menu_letter_choose(std::span<const MenuLetter> entries, std::int32_t highlighted,
                                    char letter);
