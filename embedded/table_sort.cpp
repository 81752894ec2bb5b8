#include "embedded/table_data.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace embedded {
namespace {

enum class KeyKind : unsigned char { empty, number, text };

/// One field of one row, made ready for comparing. For a number the text is its digits.
struct SortKey {
    KeyKind kind = KeyKind::empty;
    bool negative = false;
    /// Decides most comparisons: of keys of one kind the lower comes first; equal ones are compared by their texts.
    std::uint64_t rank = 0;
    std::string_view text;
};

// Digits without a leading zero, with or without a minus sign, or "0" alone.
bool is_number(std::string_view text) {
    if (text == "0") return true;
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    return !text.empty() && text.front() != '0' && std::all_of(text.begin(), text.end(), ascii::is_digit);
}

/// Longer numbers come behind all others of their sign, those below 0 ahead of them.
std::uint64_t rank_of_number(std::string_view digits, bool negative) {
    constexpr std::size_t most_digits = 18;
    constexpr std::uint64_t zero = std::uint64_t{1} << 63;
    std::uint64_t size = digits.size() > most_digits ? zero - 1 : 0;
    for (std::size_t i = 0; i < digits.size() && digits.size() <= most_digits; ++i)
        size = size * 10 + static_cast<std::uint64_t>(digits[i] - '0');
    return negative ? zero - size : zero + size;
}

/// The first bytes; a shorter text comes ahead as if zeros stood behind it.
std::uint64_t rank_of_text(std::string_view text, bool fold_case) {
    std::uint64_t rank = 0;
    for (std::size_t i = 0; i < sizeof rank; ++i) {
        const char c = i < text.size() ? text[i] : '\0';
        rank = rank << 8 | static_cast<unsigned char>(fold_case ? ascii::lower(c) : c);
    }
    return rank;
}

SortKey make_key(const char* field, std::size_t offset, bool fold_case) {
    const std::string_view text(field ? field : "");
    if (text.empty()) return {};
    if (is_number(text)) {
        const bool negative = text.front() == '-';
        const std::string_view digits = text.substr(negative ? 1 : 0);
        return {KeyKind::number, negative, rank_of_number(digits, negative), digits};
    }
    const std::string_view compared = text.substr(std::min(offset, text.size()));
    return {KeyKind::text, false, rank_of_text(compared, fold_case), compared};
}

template <class T> int order(const T& a, const T& b) { return a < b ? -1 : (b < a ? 1 : 0); }

// Numbers may have any length: of two without leading zeros the longer one is the greater.
int compare_numbers(const SortKey& a, const SortKey& b) {
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    int result = order(a.text.size(), b.text.size());
    if (result == 0) result = a.text.compare(b.text);
    return a.negative ? -result : result;
}

int compare_keys(const SortKey& a, const SortKey& b, bool fold_case) {
    if (a.kind != b.kind) return order(a.kind, b.kind);
    if (a.rank != b.rank) return a.rank < b.rank ? -1 : 1;
    if (a.kind == KeyKind::number) return compare_numbers(a, b);
    return fold_case ? ascii::compare(a.text, b.text) : a.text.compare(b.text);
}

/// The keys of all rows, row by row, each row's most significant first.
class SortKeys {
public:
    SortKeys(const TableData& table, bool fold_case) : width_(table.sort_fields.size()), fold_case_(fold_case) {
        keys_.reserve(table.rows.size() * width_);
        for (const auto& row : table.rows) {
            for (const std::size_t field : table.sort_fields) {
                keys_.push_back(make_key(row->fields.get(field), table.sort_offset, fold_case));
            }
        }
    }

    int compare(std::size_t a, std::size_t b) const {
        for (std::size_t i = 0; i < width_; ++i) {
            const int result = compare_keys(keys_[a * width_ + i], keys_[b * width_ + i], fold_case_);
            if (result != 0) return result;
        }
        return 0;
    }

private:
    std::size_t width_;
    bool fold_case_;
    std::vector<SortKey> keys_;
};

} // namespace

void TableData::sort(bool ascending, bool fold_case) {
    const SortKeys keys(*this, fold_case);
    std::vector<std::size_t> places(rows.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        return ascending ? keys.compare(a, b) < 0 : keys.compare(a, b) > 0;
    });
    std::vector<std::unique_ptr<Row>> sorted;
    sorted.reserve(rows.size());
    for (const std::size_t place : places)
        sorted.push_back(std::move(rows[place]));
    rows = std::move(sorted);
    forget_shown();
}

} // namespace embedded
