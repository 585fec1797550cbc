#include "actions/menu_letter.h"

static char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

static bool starts_with(const MenuLetter &entry, char letter) {
    return entry.enabled && entry.first != '\0' && lower(entry.first) == lower(letter);
}

MenuLetterChoice menu_letter_choose(std::span<const MenuLetter> entries, std::int32_t highlighted,
                                    char letter) {
    const auto total = static_cast<std::int32_t>(entries.size());
    const std::int32_t start = highlighted >= 0 && highlighted < total ? highlighted + 1 : 0;
    MenuLetterChoice choice = {.index = -1, .execute = false};
    for (std::int32_t i = 0; i < total; i++) {
        const std::int32_t index = (start + i) % total;
        if (!starts_with(entries[static_cast<std::size_t>(index)], letter))
            continue;
        choice.execute = choice.index == -1;
        if (!choice.execute)
            break;
        choice.index = index;
    }
    return choice;
}
