#include "documents/text_width.h"

#include "documents/characters.h"

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

std::int64_t width_of(char32_t code, Letters letters) {
    const int columns = display_width(code);
    if (columns != 1) return columns == 0 ? 0 : wide_width;
    if (letters == Letters::mono) return mono_width;
    const bool known = code >= first_printed && code < first_printed + printed;
    if (!known) return other_width;
    return (letters == Letters::bold ? bold_widths : sans_widths)[code - first_printed];
}

} // namespace

std::int64_t text_width(std::string_view text, Letters letters) {
    std::int64_t width = 0;
    while (!text.empty()) {
        const CodePoint next = next_code(text);
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
        const CodePoint next = next_code(rest);
        used += width_of(next.code, letters);
        if (used > width) break;
        rest.remove_prefix(next.bytes);
    }
    return text.substr(0, text.size() - rest.size()) + "…";
}

} // namespace documents
