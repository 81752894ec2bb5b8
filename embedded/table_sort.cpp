#include "embedded/table_data.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace embedded {
namespace {

// One field of one row, made ready for comparing:
//
//     2 bits   62 bits
//     0        0                                    an empty text
//     1        the middle and the number            a number; one too long comes behind all others of its sign
//     2        the first bytes, as far as they go   any other text
struct SortKey {
    std::uint64_t rank = 0;
    /// What is compared where ranks are the same; empty where they say all.
    std::string_view rest;
};

constexpr std::uint64_t number_ranks = std::uint64_t{1} << 62U, text_ranks = std::uint64_t{2} << 62U;
constexpr std::uint64_t rank_of_zero = number_ranks + (std::uint64_t{1} << 61U);
constexpr std::size_t most_digits = 18; // the numbers of so many stay within the ranks

/// A number is written as digits without a leading zero, with or without a minus sign, or as "0" alone. False for any
/// other text.
bool make_number_key(std::string_view text, SortKey& key) {
    const bool negative = text.front() == '-';
    const std::string_view digits = text.substr(negative ? 1 : 0);
    if (digits.empty() || (digits.front() == '0' && text != "0")) return false;
    std::uint64_t size = 0;
    for (const char c : digits) {
        if (!ascii::is_digit(c)) return false;
        size = size * 10 + static_cast<std::uint64_t>(c - '0');
    }
    if (digits.size() > most_digits) {
        size = (std::uint64_t{1} << 61U) - 1;
        key.rest = digits;
    }
    key.rank = negative ? rank_of_zero - size : rank_of_zero + size;
    return true;
}

SortKey make_text_key(std::string_view text, bool fold_case) {
    std::uint64_t first_bytes = 0;
    for (std::size_t i = 0; i < sizeof first_bytes; ++i) {
        const char c = i < text.size() ? text[i] : '\0';
        first_bytes = first_bytes << 8U | static_cast<unsigned char>(fold_case ? ascii::lower(c) : c);
    }
    return {text_ranks | first_bytes >> 2U, text.size() < sizeof first_bytes ? std::string_view() : text};
}

SortKey make_key(std::string_view text, std::size_t offset, bool fold_case) {
    SortKey key;
    if (text.empty() || make_number_key(text, key)) return key;
    return make_text_key(text.substr(std::min(offset, text.size())), fold_case);
}

template <class T> int order(const T& a, const T& b) { return a < b ? -1 : (b < a ? 1 : 0); }

/// Of numbers too long for their ranks, the longer one is the greater.
int compare_long_numbers(std::string_view a, std::string_view b) {
    const int result = order(a.size(), b.size());
    return result == 0 ? a.compare(b) : result;
}

int compare_rests(const SortKey& a, const SortKey& b, bool fold_case) {
    if (a.rest.empty() && b.rest.empty()) return 0;
    if (a.rank >= text_ranks) return fold_case ? ascii::compare(a.rest, b.rest) : a.rest.compare(b.rest);
    const int result = compare_long_numbers(a.rest, b.rest);
    return a.rank < rank_of_zero ? -result : result;
}

/// The sort fields that tell any rows apart: what kind a row is, or which reel it belongs to, often is the same in all.
std::vector<std::size_t> telling_fields(const TableData& table) {
    std::vector<std::size_t> fields;
    for (const std::size_t field : table.sort_fields) {
        const auto differs = [&](const Row* row) {
            return row->fields.view(field) != table.rows.front()->fields.view(field);
        };
        if (std::any_of(table.rows.begin(), table.rows.end(), differs)) fields.push_back(field);
    }
    return fields;
}

/// The keys of all rows, row by row, each row's most significant first.
class SortKeys {
public:
    SortKeys(const TableData& table, const std::vector<std::size_t>& fields, bool fold_case)
        : width_(fields.size()), fold_case_(fold_case) {
        keys_.reserve(table.rows.size() * width_);
        for (const Row* row : table.rows) {
            for (const std::size_t field : fields)
                keys_.push_back(make_key(row->fields.view(field), table.sort_offset, fold_case));
        }
    }

    const SortKey* of(std::size_t row) const { return &keys_[row * width_]; }

    /// Of two rows' keys.
    int compare(const SortKey* a, const SortKey* b) const {
        for (const SortKey* const behind = a + width_; a != behind; ++a, ++b) {
            if (a->rank != b->rank) return a->rank < b->rank ? -1 : 1;
            if (const int result = compare_rests(*a, *b, fold_case_); result != 0) return result;
        }
        return 0;
    }

private:
    std::size_t width_;
    bool fold_case_;
    std::vector<SortKey> keys_;
};

/// A row on its way to its place. Most comparisons end at the first field.
struct SortedRow {
    std::uint64_t first_rank;
    const SortKey* keys;
    Row* row;
};

} // namespace

void TableData::sort(bool ascending, bool fold_case) {
    const std::vector<std::size_t> fields = telling_fields(*this);
    if (fields.empty()) return;
    const SortKeys keys(*this, fields, fold_case);
    std::vector<SortedRow> sorted;
    sorted.reserve(rows.size());
    for (std::size_t number = 0; number < rows.size(); ++number)
        sorted.push_back({keys.of(number)->rank, keys.of(number), rows[number]});
    const auto comes_before = [&](const SortedRow& a, const SortedRow& b) {
        if (a.first_rank != b.first_rank) return ascending == (a.first_rank < b.first_rank);
        const int result = keys.compare(a.keys, b.keys);
        return ascending ? result < 0 : result > 0;
    };
    // Passes sort for their own order whatever the last one left, which often is the same.
    if (std::is_sorted(sorted.begin(), sorted.end(), comes_before)) return;
    std::stable_sort(sorted.begin(), sorted.end(), comes_before);
    std::transform(sorted.begin(), sorted.end(), rows.begin(), [](const SortedRow& place) { return place.row; });
    forget_shown();
}

} // namespace embedded
