#include "base/code_text.h"

#include "base/frame_math.h"
#include "host/decimal_number.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

struct EdgecodeName {
    int first, last;
    const char* name;
};

constexpr EdgecodeName edgecode_names[] = {
    {10, 10, "35mm 4perf"},
    {21, 23, "35mm 4perf"},
    {11, 11, "16mm 1perf"},
    {24, 26, "16mm 1perf"},
    {12, 12, "35mm 3perf"},
    {27, 29, "35mm 3perf"},
    {34, 34, "35mm 2perf"},
    {35, 35, "35mm 8perf"},
    {36, 36, "65mm 5perf (80 perf/key)"},
    {37, 37, "65mm 8perf (80 perf/key)"},
    {38, 38, "65mm 10perf (80 perf/key)"},
    {39, 39, "65mm 5perf (120 perf/key)"},
    {40, 40, "65mm 8perf (120 perf/key)"},
    {41, 41, "65mm 10perf (120 perf/key)"},
    {42, 42, "65mm 15perf (120 perf/key)"},
};

constexpr std::size_t code_size = 20;
constexpr std::string_view blank_code = "                 ";

constexpr std::size_t feet_width = 4;
constexpr std::size_t behind_feet_width = 5;

void blank_leading_zeros(char* feet) {
    char* const end = feet + feet_width;
    char* const kept = std::find_if(feet, end, [](char c) { return c != ' ' && c != '0'; });
    std::fill(feet, kept, ' ');
    if (kept == end) end[-1] = '0';
}

} // namespace

const char* edgecode_name(int type) {
    for (const EdgecodeName& entry : edgecode_names) {
        if (type >= entry.first && type <= entry.last) return entry.name;
    }
    return "Invalid Edgecode";
}

char* code_text(char* out, LabelPoint& point, int with_prefix) {
    out[0] = '\0';
    if (!point.is_valid()) return out;
    const std::string_view text = point.get_string();
    if (with_prefix) {
        put_text(out, code_size, text);
        return out;
    }
    const std::size_t prefix = std::min(static_cast<std::size_t>(point.cvt()->prefix_length()), blank_code.size());
    put_text(out, code_size, blank_code.substr(0, prefix));
    put_text(out + prefix, code_size - prefix, text.substr(std::min(prefix, text.size())));
    return out;
}

const char* footage_text(const char* text) {
    static char field[12];
    put_text(field, "   0+00  ");
    const std::string_view footage = text ? text : "";
    const std::size_t separator = footage.find_first_of("+.");
    if (separator == std::string_view::npos) return field;

    const std::string_view frames = footage.substr(separator, behind_feet_width);
    std::copy(frames.begin(), frames.end(), field + feet_width);
    const std::size_t digits = std::min(separator, feet_width);
    const std::string_view feet = footage.substr(separator - digits, digits);
    std::fill(field, field + feet_width, ' ');
    std::copy(feet.begin(), feet.end(), field + feet_width - digits);
    blank_leading_zeros(field);
    return field;
}

ListText point_text(LabelPoint point) {
    ListText out;
    put_text(out.text, point.get_string());
    return out;
}

ListText last_frame_text(LabelPoint point, double speed, double slack) {
    ListText out;
    const int samples = whole_part(point.cvt()->samples_per_frame() * speed + slack);
    point.set_sample(frame_difference(point.sample, samples));
    code_text(out.text, point, 0);
    return out;
}

CodePair missing_codes(const char* words) {
    CodePair codes;
    put_text(codes.in.text, words);
    codes.out = codes.in;
    return codes;
}

ListText speed_text(double speed) {
    ListText out;
    char* const last = out.text + sizeof out.text - 1;
    *decimal::write(out.text, last, speed, 2) = '\0';
    return out;
}
