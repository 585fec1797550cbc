// Changed copies of menu pictures.
#include "actions/menu_pixels.h"
#include "actions/menu_windows.h"
#include "platform/win32/object_count.h"

#include <span>

struct PixelCopy {
    HBITMAP bitmap; // null on failure
    std::span<std::uint32_t> pixels;
};

static BITMAPINFO top_down_32_bit(LONG width, LONG height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // negative: the top row comes first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

// The bitmap must not be selected anywhere.
static PixelCopy copy_pixels(HDC dc, HBITMAP bitmap) {
    BITMAP source = {};
    if (GetObjectA(bitmap, sizeof source, &source) == 0 || source.bmWidth <= 0 ||
        source.bmHeight <= 0)
        return {};
    BITMAPINFO info = top_down_32_bit(source.bmWidth, source.bmHeight);
    void *bits = nullptr;
    const HBITMAP copy =
        object_made(OBJECT_BITMAP, CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (copy == nullptr)
        return {};
    const auto rows = static_cast<UINT>(source.bmHeight);
    if (GetDIBits(dc, bitmap, 0, rows, bits, &info, DIB_RGB_COLORS) != source.bmHeight) {
        object_destroy(copy);
        return {};
    }
    GdiFlush();
    const auto total = static_cast<std::size_t>(source.bmWidth) * rows;
    return {copy, {static_cast<std::uint32_t *>(bits), total}};
}

static PixelCopy copy_of(HBITMAP bitmap) {
    const HDC dc = object_made(OBJECT_DC, CreateCompatibleDC(nullptr));
    if (dc == nullptr)
        return {};
    const PixelCopy copy = copy_pixels(dc, bitmap);
    object_destroy(dc);
    return copy;
}

HBITMAP menu_bitmap_fade_color(HBITMAP bitmap) {
    const PixelCopy copy = copy_of(bitmap);
    menu_pixels_fade(copy.pixels);
    return copy.bitmap;
}

static std::uint32_t pixel_of(COLORREF colour) {
    return static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
           static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
}

// A bitmap's pixels can be read only while it is selected nowhere: until the end of this record's
// life a single pixel stands in for it.
struct Deselected {
    HDC dc;
    HBITMAP bitmap, placeholder; // null when it was not selected

    Deselected(HBITMAP wanted, HDC from) : dc(from), bitmap(nullptr), placeholder(nullptr) {
        if (dc == nullptr || GetCurrentObject(dc, OBJ_BITMAP) != wanted)
            return;
        placeholder = object_made(OBJECT_BITMAP, CreateBitmap(1, 1, 1, 1, nullptr));
        if (placeholder != nullptr)
            bitmap = static_cast<HBITMAP>(SelectObject(dc, placeholder));
    }
    ~Deselected() {
        if (bitmap != nullptr)
            SelectObject(dc, bitmap);
        object_destroy(placeholder);
    }
    Deselected(const Deselected &) = delete;
    Deselected &operator=(const Deselected &) = delete;
};

HBITMAP menu_bitmap_replace_color(HBITMAP bitmap, COLORREF from_colour, COLORREF to_colour,
                                  HDC dc) {
    const Deselected readable(bitmap, dc);
    const PixelCopy copy = copy_of(bitmap);
    menu_pixels_replace(copy.pixels, pixel_of(from_colour), pixel_of(to_colour));
    return copy.bitmap;
}
