#include "documents/text_width.h"

#include <algorithm>
#include <iterator>

namespace documents {
namespace {

constexpr int first_printed = 0x20, printed = 95;

// clang-format off
constexpr short sans_widths[printed] = {
    318, 401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318, 361, 318, 337, 636, 636, 636, 636, 636, 636, 636,
    636, 636, 636, 337, 337, 838, 838, 838, 531, 1000, 684, 686, 698, 770, 632, 575, 775, 752, 295, 295, 656, 557, 863,
    748, 787, 603, 787, 695, 635, 611, 732, 684, 989, 685, 611, 685, 390, 337, 390, 838, 500, 500, 613, 635, 550, 635,
    615, 352, 635, 634, 278, 278, 579, 278, 974, 634, 612, 635, 635, 411, 521, 392, 634, 592, 818, 592, 592, 525, 636,
    337, 636, 838};
constexpr short bold_widths[printed] = {
    348, 456, 521, 838, 696, 1002, 872, 306, 457, 457, 523, 838, 380, 415, 380, 365, 696, 696, 696, 696, 696, 696, 696,
    696, 696, 696, 400, 400, 838, 838, 838, 580, 1000, 774, 762, 734, 830, 683, 683, 821, 837, 372, 372, 775, 637, 995,
    837, 850, 733, 850, 770, 720, 682, 812, 774, 1103, 771, 724, 725, 457, 365, 457, 838, 500, 500, 675, 716, 593, 716,
    678, 435, 716, 712, 343, 343, 665, 343, 1042, 712, 687, 716, 716, 493, 595, 478, 712, 652, 924, 645, 652, 582, 712,
    365, 712, 838};
// clang-format on

constexpr int mono_width = 602, other_width = 780, wide_width = 1040;

struct Span {
    char32_t first, last;
};

/// Scripts whose characters are as wide as high.
constexpr Span wide_spans[] = {{0x1100, 0x115F},  {0x2E80, 0x303E}, {0x3041, 0x33FF}, {0x3400, 0x4DBF},
                               {0x4E00, 0x9FFF},  {0xA000, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
                               {0xFE30, 0xFE6F},  {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF},
                               {0x20000, 0x3FFFD}};

/// Marks that stand on the character before, and signs that aren't seen.
constexpr Span narrow_spans[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F},
                                 {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2069}, {0xFE00, 0xFE0F}};

template <std::size_t n> bool lies_in(const Span (&spans)[n], char32_t code) {
    return std::any_of(std::begin(spans), std::end(spans),
                       [code](const Span& span) { return span.first <= code && code <= span.last; });
}

std::int64_t width_of(char32_t code, Letters letters) {
    if (lies_in(narrow_spans, code)) return 0;
    if (lies_in(wide_spans, code)) return wide_width;
    if (letters == Letters::mono) return mono_width;
    const bool known = code >= first_printed && code < first_printed + printed;
    if (!known) return other_width;
    return (letters == Letters::bold ? bold_widths : sans_widths)[code - first_printed];
}

/// How many bytes a character takes whose first byte this is; 0: none begins so.
std::size_t bytes_of(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool is_character(char32_t code, std::size_t bytes) {
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= least[bytes] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

} // namespace

Character first_character(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t bytes = bytes_of(lead);
    if (bytes == 1) return {lead, 1};
    if (bytes == 0 || bytes > text.size()) return {};
    char32_t code = lead & (0x7FU >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80) return {};
        code = code << 6U | (byte & 0x3FU);
    }
    return is_character(code, bytes) ? Character{code, bytes} : Character{};
}

std::int64_t text_width(std::string_view text, Letters letters) {
    std::int64_t width = 0;
    while (!text.empty()) {
        const Character next = first_character(text);
        width += width_of(next.code, letters);
        text.remove_prefix(next.bytes);
    }
    return width;
}

std::string shortened(const std::string& text, Letters letters, std::int64_t width) {
    if (text_width(text, letters) <= width) return text;
    constexpr std::int64_t dots = 1000;
    std::string_view rest = text;
    for (std::int64_t used = dots; !rest.empty();) {
        const Character next = first_character(rest);
        used += width_of(next.code, letters);
        if (used > width) break;
        rest.remove_prefix(next.bytes);
    }
    return text.substr(0, text.size() - rest.size()) + "…";
}

} // namespace documents
