// Renders the texture fonts anew: resources/atlas_a.bmp, resources/atlas_b.bmp and
// assets/tex_font_glyphs.h.
//
//     make_atlas [folder of the checkout] [folder with tahoma.ttf and tahomabd.ttf]

#include "tools/atlas_render.h"

#include <cstdio>

static bool write_file(const std::string &path, const std::string &bytes) {
    FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

int main(int argument_count, char **arguments) {
    const std::string root = argument_count > 1 ? arguments[1] : ".";
    Atlas atlas;
    const std::string error =
        atlas_render(argument_count > 2 ? arguments[2] : ATLAS_FONT_FOLDER, &atlas);
    if (!error.empty()) {
        std::fprintf(stderr, "make_atlas: %s\n", error.c_str());
        return 1;
    }
    if (!write_file(root + "/resources/atlas_a.bmp", atlas_bitmap(atlas, 0)) ||
        !write_file(root + "/resources/atlas_b.bmp", atlas_bitmap(atlas, 3)) ||
        !write_file(root + "/assets/tex_font_glyphs.h", atlas_tables(atlas))) {
        std::fprintf(stderr, "make_atlas: cannot write below %s\n", root.c_str());
        return 1;
    }
    return 0;
}
