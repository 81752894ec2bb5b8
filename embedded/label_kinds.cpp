// The table of label kinds and the look-ups on it.

#include "embedded/label_kinds.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace embedded {
namespace {

constexpr std::size_t longest_kind_text = 11;

constexpr label_t kind_number(int number) { return static_cast<label_t>(number); }

constexpr LabelKind key(int type, const char* text, FilmFamily family, int frame, int count, int digits = 4) {
    return {kind_number(type), text, LabelUse::key, family, frame, count, digits, 8};
}
constexpr LabelKind foot(int type, const char* text, FilmFamily family, int frame, int count) {
    return {kind_number(type), text, LabelUse::foot, family, frame, count, 4, 0};
}
constexpr LabelKind ink(int type, const char* text, FilmFamily family, int frame, int count) {
    return {kind_number(type), text, LabelUse::ink, family, frame, count, 4, 4};
}
constexpr LabelKind plain(int type, const char* text, LabelUse use) {
    return {kind_number(type), text, use, FilmFamily::none, 1, 1, 0, 0};
}

constexpr LabelKind kinds[] = {
    plain(label_none, "", LabelUse::none),
    plain(1, "60fps", LabelUse::timecode),
    plain(2, "60df", LabelUse::timecode),
    plain(label_frames, "frames", LabelUse::frames),
    plain(4, "25fps", LabelUse::timecode),
    plain(5, "30fps", LabelUse::timecode),
    plain(6, "30df", LabelUse::timecode),
    plain(7, "48fps", LabelUse::timecode),
    plain(label_tc_24, "24fps", LabelUse::timecode),
    plain(9, "50fps", LabelUse::timecode),
    key(label_key_35mm_4p, "35mm-4p", FilmFamily::f35_4p, 4, 64),
    key(11, "16mm-1p", FilmFamily::f16_1p, 1, 20),
    key(12, "35mm-3p", FilmFamily::f35_3p, 3, 64),
    foot(13, "35mm-4p-ft", FilmFamily::f35_4p, 4, 64),
    foot(14, "16mm-1p-ft", FilmFamily::f16_1p, 1, 40),
    foot(15, "35mm-3p-ft", FilmFamily::f35_3p, 3, 64),
    foot(16, "35mm-2p-ft", FilmFamily::f35_2p, 2, 64),
    foot(17, "35mm-8p-ft", FilmFamily::f35_8p, 8, 64),
    key(21, "35mm-4p-4d", FilmFamily::f35_4p, 4, 64, 4),
    key(22, "35mm-4p-5d", FilmFamily::f35_4p, 4, 64, 5),
    key(23, "35mm-4p-6d", FilmFamily::f35_4p, 4, 64, 6),
    key(24, "16mm-1p-4d", FilmFamily::f16_1p, 1, 20, 4),
    key(25, "16mm-1p-5d", FilmFamily::f16_1p, 1, 20, 5),
    key(26, "16mm-1p-6d", FilmFamily::f16_1p, 1, 20, 6),
    key(27, "35mm-3p-4d", FilmFamily::f35_3p, 3, 64, 4),
    key(28, "35mm-3p-5d", FilmFamily::f35_3p, 3, 64, 5),
    key(29, "35mm-3p-6d", FilmFamily::f35_3p, 3, 64, 6),
    key(34, "35mm-2p", FilmFamily::f35_2p, 2, 64),
    key(35, "35mm-8p", FilmFamily::f35_8p, 8, 64),
    key(36, "65mm-5p80", FilmFamily::f65, 5, 80),
    key(37, "65mm-8p80", FilmFamily::f65, 8, 80),
    key(38, "65mm-10p80", FilmFamily::f65, 10, 80),
    key(39, "65mm-5p120", FilmFamily::f65, 5, 120),
    key(40, "65mm-8p120", FilmFamily::f65, 8, 120),
    key(41, "65mm-10p120", FilmFamily::f65, 10, 120),
    key(42, "65mm-15p120", FilmFamily::f65, 15, 120),
    ink(43, "35mm-4p-ink", FilmFamily::f35_4p, 4, 64),
    ink(44, "16mm-1p-ink", FilmFamily::f16_1p, 1, 40),
    ink(45, "35mm-3p-ink", FilmFamily::f35_3p, 3, 64),
    ink(46, "35mm-2p-ink", FilmFamily::f35_2p, 2, 64),
    ink(47, "35mm-8p-ink", FilmFamily::f35_8p, 8, 64),
};

constexpr std::size_t index_of(label_t type) { return static_cast<std::size_t>(type); }

constexpr std::array<const LabelKind*, kind_numbers> index_by_number() {
    std::array<const LabelKind*, kind_numbers> index{};
    for (auto& place : index)
        place = &kinds[0];
    for (const LabelKind& kind : kinds)
        index[index_of(kind.type)] = &kind;
    return index;
}
/// The kinds with texts of one length stand side by side, as only those are compared with a text.
struct KindsByLength {
    std::array<const LabelKind*, std::size(kinds)> ordered{};
    std::array<std::size_t, longest_kind_text + 2> begins{}; ///< by length; one more closes the last
};

constexpr KindsByLength sort_by_length() {
    KindsByLength sorted;
    std::size_t at = 0;
    for (std::size_t length = 0; length <= longest_kind_text; ++length) {
        for (const LabelKind& kind : kinds) {
            if (std::string_view(kind.text).size() == length) sorted.ordered[at++] = &kind;
        }
        sorted.begins[length + 1] = at;
    }
    return sorted;
}
constexpr KindsByLength by_length = sort_by_length();
static_assert(by_length.begins.back() == std::size(kinds), "a text is longer than the longest");

/// The kinds of a family; 0 where it has none. `by_digits` begins with 4 digits.
struct FamilyKinds {
    label_t key, foot, ink;
    label_t by_digits[3];
};

constexpr FamilyKinds family(int key_kind, int foot_kind, int ink_kind, int first_with_digits) {
    const bool counted = first_with_digits != 0;
    return {kind_number(key_kind),
            kind_number(foot_kind),
            kind_number(ink_kind),
            {kind_number(first_with_digits), kind_number(counted ? first_with_digits + 1 : 0),
             kind_number(counted ? first_with_digits + 2 : 0)}};
}

// In the order of FilmFamily. The feet of 65mm don't come out in whole frames; it counts frames.
constexpr FamilyKinds families[] = {
    family(0, 0, 0, 0),    family(10, 13, 43, 21), family(11, 14, 44, 24),        family(12, 15, 45, 27),
    family(34, 16, 46, 0), family(35, 17, 47, 0),  family(0, label_frames, 0, 0),
};

const FamilyKinds& family_of(const LabelKind& kind) { return families[static_cast<std::size_t>(kind.family)]; }

constexpr TimecodeBase timecode_bases[] = {
    {label_tc_24, 24, 0, 24, 1},          {kind_number(4), 25, 0, 25, 1},       {kind_number(5), 30, 0, 30000, 1001},
    {kind_number(6), 30, 2, 30000, 1001}, {kind_number(7), 48, 0, 48, 1},       {kind_number(9), 50, 0, 50, 1},
    {kind_number(1), 60, 0, 60000, 1001}, {kind_number(2), 60, 4, 60000, 1001},
};

constexpr std::array<double, kind_numbers> measure_steps() {
    std::array<double, kind_numbers> steps{};
    for (const LabelKind& kind : kinds)
        steps[index_of(kind.type)] = 1.0 / kind.samples_per_frame;
    for (const TimecodeBase& base : timecode_bases)
        steps[index_of(base.type)] = double(base.rate_den) / base.rate_num;
    return steps;
}
constexpr auto steps_of_numbers = measure_steps();

} // namespace

constinit const std::array<const LabelKind*, kind_numbers> kinds_by_number = index_by_number();

const LabelKind& label_kind_of_text(std::string_view text) {
    if (text.size() > longest_kind_text) return kinds[0];
    for (std::size_t i = by_length.begins[text.size()]; i < by_length.begins[text.size() + 1]; ++i) {
        const LabelKind& kind = *by_length.ordered[i];
        if (ascii::compare({kind.text, text.size()}, text) == 0) return kind;
    }
    return kinds[0];
}

const TimecodeBase* timecode_base(label_t type) {
    for (const TimecodeBase& base : timecode_bases) {
        if (base.type == type) return &base;
    }
    return nullptr;
}

double default_posn_step(label_t type) { return steps_of_numbers[index_of(label_kind(type).type)]; }

label_t with_count_digits(label_t type, int digits) {
    const LabelKind& kind = label_kind(type);
    if (kind.use != LabelUse::key || digits < 4 || digits > 6) return type;
    const label_t counted = family_of(kind).by_digits[digits - 4];
    return counted == label_none ? type : counted;
}

} // namespace embedded

using embedded::family_of;
using embedded::label_kind;
using embedded::LabelUse;

label_t edlstr_to_label_type(const char* text) { return text ? embedded::label_kind_of_text(text).type : label_none; }

label_t edlstr_to_label_type(const char* text, UserLabelType form) {
    const label_t type = edlstr_to_label_type(text);
    if (form == user_label_key) return label_t_to_key_label_t(type);
    if (form == user_label_ink) return label_t_to_ink_label_t(type);
    return type;
}

const char* label_type_to_edlstr(label_t type) { return label_kind(type).text; }

label_t label_t_to_foot_label_t(label_t type) { return family_of(label_kind(type)).foot; }

label_t label_t_to_key_label_t(label_t type) {
    const embedded::LabelKind& kind = label_kind(type);
    return kind.use == LabelUse::key ? type : family_of(kind).key;
}

label_t label_t_to_ink_label_t(label_t type) { return family_of(label_kind(type)).ink; }
