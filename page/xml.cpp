#include "page/xml.h"

#include "page/xml_find.h"
#include "page/xml_search.h"
#include "platform/console.h"
#include "platform/files.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

char *xml;
std::int32_t xml_length;
std::int32_t xml_pointer;

// Characters the line reader takes at a time: a longer line arrives in pieces, each of which is
// judged as a line of its own.
inline constexpr std::size_t PIECE_LENGTH = 998;
inline constexpr std::size_t FILE_LIMIT = 1u << 30; // bytes, keeps every position in 32 bits

// What xml points into: the bytes of a file, squeezed where they stand, or a squeezed copy.
static std::vector<char> file_text;
static std::unique_ptr<char[]> memory_text;

// Bytes of the next piece, its line feed included. 0 when the file ends inside it: a last line
// without a line feed is dropped, as every writer ends its files with one.
static std::size_t piece_length(const char *bytes, std::size_t size) {
    const std::size_t reach = std::min(size, PIECE_LENGTH);
    const char *line_feed = xml_find_character(bytes, bytes + reach, '\n');
    if (line_feed != nullptr)
        return static_cast<std::size_t>(line_feed - bytes) + 1;
    return size >= PIECE_LENGTH ? PIECE_LENGTH : 0;
}

// Moves the bytes to the end of out without their carriage returns. Returns the new end.
static char *append_without_returns(char *out, const char *from, const char *end) {
    for (; from < end; from++) {
        if (*from != '\r')
            *out++ = *from;
    }
    return out;
}

// True when the scanner sees a piece that begins so: with a tag that opens neither a declaration
// nor a comment.
static bool begins_with_tag(const char *piece, const char *end) {
    return piece < end && *piece == '<' &&
           !(end - piece > 1 && (piece[1] == '?' || piece[1] == '!'));
}

// Appends the part of a piece that the scanner sees: from its first tag on, without line ends and
// blanks around it. Returns the new end.
static char *append_piece(char *out, const char *piece, const char *end) {
    // A NUL ends the line for everything behind the line reader.
    end = piece + strnlen(piece, static_cast<std::size_t>(end - piece));
    while (piece < end && xml_is_blank(*piece))
        piece++;
    if (!begins_with_tag(piece, end))
        return out;
    if (end[-1] == '\n')
        end--;
    out = append_without_returns(out, piece, end);
    while (xml_is_blank(out[-1]))
        out--;
    return out;
}

// Appends what stands from bytes to end, piece by piece. Returns the new end.
static char *append_pieces(char *out, const char *bytes, const char *end) {
    while (bytes < end) {
        const std::size_t length = piece_length(bytes, static_cast<std::size_t>(end - bytes));
        if (length == 0)
            break;
        out = append_piece(out, bytes, bytes + length);
        bytes += length;
    }
    return out;
}

// As append_piece, for a line without its line feed, of one piece, that holds no odd character. A
// whole block of the input follows it.
static char *append_plain_line(char *out, const char *line, const char *end) {
    if (line < end && end[-1] == '\r')
        end--;
    line = xml_skip_blanks(line, end);
    if (!begins_with_tag(line, end))
        return out;
    while (xml_is_blank(end[-1]))
        end--;
    const std::size_t length = static_cast<std::size_t>(end - line);
    xml_move_short(out, line, length);
    return out + length;
}

// True when a block holds a NUL or a carriage return that does not stand in front of a line feed;
// ends: its line feeds. One more byte follows the block.
static bool holds_odd_character(const char *block, std::uint64_t ends) {
    if (!xml_holds_either(block, '\r', '\0'))
        return false;
    const std::uint64_t next_end = block[XML_BLOCK] == '\n' ? 1 : 0;
    const std::uint64_t before_ends = ends >> 1 | next_end << (XML_BLOCK - 1);
    return (xml_find_all(block, '\r') & ~before_ends) != 0 || xml_find_all(block, '\0') != 0;
}

// Takes all lines that end in whole blocks of the input but the last ones, so that every line may
// be read in whole blocks; *bytes becomes what is left. The ends of lines are looked for a block at
// a time, as looking for one after the other would wait for each.
static char *squeeze_blocks(const char **bytes, const char *input_end, char *out) {
    const char *line = *bytes;
    bool odd_begin = false; // the line holds an odd character in front of the block
    for (const char *block = line; input_end - block > 2 * XML_BLOCK; block += XML_BLOCK) {
        const std::uint64_t ends = xml_find_all(block, '\n');
        const bool odd_block = holds_odd_character(block, ends);
        const bool odd = odd_begin || odd_block;
        for (std::uint64_t left = ends; left != 0; left &= left - 1) {
            const char *end = block + std::countr_zero(left);
            out = odd || end - line >= static_cast<std::ptrdiff_t>(PIECE_LENGTH)
                      ? append_pieces(out, line, end + 1)
                      : append_plain_line(out, line, end);
            line = end + 1;
        }
        odd_begin = odd_block || (odd_begin && ends == 0);
    }
    *bytes = line;
    return out;
}

// Squeezes a file; out has room for size bytes and may be the file's own bytes, as the result never
// overtakes what is read. Returns the length of the result.
static std::size_t squeeze(const char *bytes, std::size_t size, char *out) {
    const char *const input_end = bytes + size;
    char *end = squeeze_blocks(&bytes, input_end, out);
    end = append_pieces(end, bytes, input_end);
    return static_cast<std::size_t>(end - out);
}

static void start_reading(char *text, std::size_t length) {
    std::memset(text + length, 0, XML_SPARE);
    xml = text;
    xml_length = static_cast<std::int32_t>(length + 1);
    xml_pointer = 0;
    xml_search_forget();
}

std::int32_t xml_load_file(const char *path) {
    std::vector<char> bytes;
    if (file_read(path, &bytes, FILE_LIMIT) != 0) {
        console_printf("  Failed to allocate memory for xml file.");
        return 1;
    }
    xml_unload_file();
    file_text = std::move(bytes);
    const std::size_t length = squeeze(file_text.data(), file_text.size(), file_text.data());
    file_text.resize(length + XML_SPARE);
    start_reading(file_text.data(), length);
    return 0;
}

static std::unique_ptr<char[]> allocate_text(std::size_t size) {
    std::unique_ptr<char[]> text(new (std::nothrow) char[size]);
    if (text == nullptr)
        console_printf("  Failed to allocate memory for xml file.");
    return text;
}

std::int32_t xml_load_memory(std::span<const char> bytes) {
    if (bytes.size() > FILE_LIMIT)
        return 1;
    std::unique_ptr<char[]> text = allocate_text(bytes.size());
    if (text == nullptr)
        return 1;
    const std::size_t length = squeeze(bytes.data(), bytes.size(), text.get());
    // The line ends that are left out make room for the spare, except in the smallest files.
    if (length + XML_SPARE > bytes.size()) {
        const std::unique_ptr<char[]> tight =
            std::exchange(text, allocate_text(length + XML_SPARE));
        if (text == nullptr)
            return 1;
        std::copy_n(tight.get(), length, text.get());
    }
    xml_unload_file();
    memory_text = std::move(text);
    start_reading(memory_text.get(), length);
    return 0;
}

void xml_unload_file() {
    xml = nullptr;
    xml_length = 0;
    file_text = std::vector<char>(); // gives the memory back, which assigning {} would not
    memory_text.reset();
}

static bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

std::int32_t xml_to_int(std::string_view value) {
    value.remove_prefix(std::min(value.find_first_not_of(" \t\n\v\f\r"), value.size()));
    const bool negative = value.starts_with('-');
    if (negative || value.starts_with('+'))
        value.remove_prefix(1);
    constexpr std::int64_t beyond = INT64_C(1) << 32; // no 32-bit number is as large
    std::int64_t number = 0;
    for (const char digit : value) {
        if (!is_digit(digit))
            break;
        number = std::min(number * 10 + (digit - '0'), beyond);
    }
    number = negative ? -number : number;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, INT32_MIN, INT32_MAX));
}

float xml_to_float(std::string_view value) {
    // The conversion of the library wants its text terminated.
    char digits[XML_ITEM_SIZE];
    digits[value.copy(digits, sizeof digits - 1)] = '\0';
    const double number = std::strtod(digits, nullptr);
    if (std::isnan(number))
        return 0.0f;
    return static_cast<float>(
        std::clamp(number, static_cast<double>(-FLT_MAX), static_cast<double>(FLT_MAX)));
}
