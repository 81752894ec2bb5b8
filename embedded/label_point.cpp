// Points on labelled media.

#include "embedded/clamped.h"
#include "embedded/label_kinds.h"
#include "host/fixed_text.h"
#include "host/labels.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

using embedded::clamp_to_int;
using embedded::label_kind;
using embedded::longest_prefix;

namespace {

/// Prefixes of one character, by their length.
using Fillings = std::array<std::array<char, longest_prefix + 1>, longest_prefix + 1>;

constexpr Fillings fillings_of(char filler) {
    Fillings fillings{};
    for (std::size_t length = 0; length < fillings.size(); ++length)
        std::fill_n(fillings[length].begin(), length, filler);
    return fillings;
}
constexpr Fillings blanks = fillings_of(' ');
constexpr Fillings lines = fillings_of('_');

} // namespace

LabelPoint::LabelPoint(int first_sample, label_t type) : sample(first_sample), given_(true) { set_type(type); }

LabelPoint::LabelPoint(int first_sample, label_cvt* cvt)
    : LabelPoint(first_sample, cvt ? cvt->label_type() : label_none) {}

bool LabelPoint::operator==(const LabelPoint& other) const {
    return type_ == other.type_ && sample == other.sample && std::strcmp(prefix_, other.prefix_) == 0;
}

void LabelPoint::operator+=(int samples) { set_sample(clamp_to_int(std::int64_t(sample) + samples)); }

void LabelPoint::operator-=(int samples) { set_sample(clamp_to_int(std::int64_t(sample) - samples)); }

void LabelPoint::set_sample(int new_sample) {
    sample = new_sample;
    given_ = true;
}

void LabelPoint::set_sample(const char* text) {
    int read = 0;
    char prefix[sizeof prefix_] = {};
    given_ = text && *text && cvt()->parse(text, read, prefix);
    sample = read;
    if (!given_) return;
    const int length = label_kind(type_).prefix_length;
    if (length == 0 || prefix[length - 1] != '\0') {
        std::memcpy(prefix_, prefix, sizeof prefix_);
    } else {
        fit_prefix(prefix);
    }
}

// A prefix fits its own kind already. A blank one says nothing of the roll, so it stays blank at any length.
void LabelPoint::set_type(label_t type) {
    const int fitting = label_kind(type_).prefix_length;
    const embedded::LabelKind& kind = label_kind(type);
    type_ = kind.type;
    if (kind.prefix_length == fitting) return;
    const std::string_view present(prefix_, static_cast<std::size_t>(fitting));
    const bool blank = present.find_first_not_of(' ') == std::string_view::npos;
    fit_prefix(blank ? "" : prefix_);
}

const char* LabelPoint::get_string() {
    cvt()->format(sample, prefix_, text_, sizeof text_);
    return text_;
}

void LabelPoint::set_prefix(const char* prefix) { fit_prefix(prefix ? prefix : ""); }

void LabelPoint::modify_count_length(int digits) { set_type(embedded::with_count_digits(type_, digits)); }

label_cvt* LabelPoint::cvt() const { return get_static_label_cvt(type_); }

void LabelPoint::fit_prefix(const char* prefix) {
    const auto wanted = static_cast<std::size_t>(label_kind(type_).prefix_length);
    char fitted[sizeof prefix_];
    std::memcpy(fitted, (*prefix ? lines : blanks)[wanted].data(), sizeof fitted);
    for (std::size_t at = 0; at < wanted && prefix[at]; ++at)
        fitted[at] = prefix[at];
    std::memcpy(prefix_, fitted, sizeof fitted);
}
