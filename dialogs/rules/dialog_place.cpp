#include "dialogs/rules/dialog_place.h"

// One axis. The near edge is looked at last, because the title bar and the first controls stand
// there.
static std::int32_t place(std::int32_t parent_near, std::int32_t parent_far, std::int32_t extent,
                          std::int32_t screen) {
    std::int32_t near = (parent_near + parent_far) / 2 - extent / 2;
    if (near + extent > screen)
        near = screen - extent - PLACE_SCREEN_MARGIN;
    if (near < 0)
        near = PLACE_SCREEN_MARGIN;
    return near;
}

PlacePoint dialog_place_on_parent(const PlaceArea &client, const PlaceArea &dialog,
                                  std::int32_t screen_width, std::int32_t screen_height) {
    return {.x = place(client.left, client.right, dialog.right - dialog.left, screen_width),
            .y = place(client.top, client.bottom, dialog.bottom - dialog.top, screen_height)};
}
