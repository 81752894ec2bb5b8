#include "embedded/table_seal.h"

#include "embedded/crc32.h"

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cstdio>

namespace embedded {
namespace {

constexpr std::string_view mark = "%end ";
constexpr std::size_t digits_of_sum = 8;
constexpr std::string_view goes_on = "goes on behind its seal";
constexpr std::string_view changed = "changed since it was written";

template <class Number> std::optional<Number> number_of(std::string_view digits, int base) {
    Number value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, trouble] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || trouble != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::string text_of(const TableSeal& seal) {
    char text[48];
    std::snprintf(text, sizeof text, "%%end %zu %08" PRIX32, seal.rows, seal.sum);
    return text;
}

std::size_t count_lines(std::string_view bytes) {
    std::size_t lines = 0;
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n', end + 1))
        ++lines;
    return lines;
}

/// The last line, without its line end.
std::string_view last_line(std::string_view bytes) {
    if (!bytes.empty() && bytes.back() == '\n') bytes.remove_suffix(1);
    return bytes.substr(bytes.rfind('\n') + 1);
}

bool fits(const TableSeal& seal, std::string_view ahead, std::size_t first_row) {
    return count_lines(ahead.substr(first_row)) == seal.rows && crc32(ahead) == seal.sum;
}

std::string cut_off(std::size_t row, std::optional<std::size_t> rows) {
    return "cut off behind row " + std::to_string(row) + (rows ? " of " + std::to_string(*rows) : "");
}

/// How a file that ends in a seal parts from it.
std::string fault_behind(const TableSeal& seal, std::size_t rows) {
    if (rows < seal.rows) return cut_off(rows, seal.rows);
    std::string text(changed);
    if (rows > seal.rows) text += ": " + std::to_string(rows) + " rows, sealed with " + std::to_string(seal.rows);
    return text;
}

/// True where a whole line further up is a seal of what lies ahead of it.
bool goes_on_behind_seal(std::string_view bytes, std::size_t first_row) {
    for (std::size_t at = bytes.find(mark, first_row); at != std::string_view::npos; at = bytes.find(mark, at + 1)) {
        const std::size_t end = bytes.find('\n', at);
        if (end == std::string_view::npos) return false;
        const std::string_view line = bytes.substr(at, end - at);
        const std::optional<TableSeal> seal = bytes[at - 1] == '\n' ? seal_of_line(line) : std::nullopt;
        if (seal && fits(*seal, bytes.substr(0, at), first_row)) return true;
    }
    return false;
}

/// The rows that a seal named that was cut off itself, where its count is whole.
std::optional<std::size_t> rows_of_cut_seal(std::string_view line) {
    if (line.substr(0, mark.size()) != mark) return std::nullopt;
    line.remove_prefix(mark.size());
    const std::size_t end = line.find(' ');
    return end == std::string_view::npos ? std::nullopt : number_of<std::size_t>(line.substr(0, end), 10);
}

/// A line that has its end but not the fields of the others was written so by nobody.
bool has_other_fields(std::string_view line, std::string_view bytes, std::size_t first_row) {
    const std::string_view types = last_line(bytes.substr(0, first_row));
    return std::count(line.begin(), line.end(), '\t') != std::count(types.begin(), types.end(), '\t');
}

std::string fault_without_seal(std::string_view bytes, std::size_t first_row) {
    if (goes_on_behind_seal(bytes, first_row)) return std::string(goes_on);
    const std::string_view line = last_line(bytes);
    const bool whole_line = bytes.back() == '\n';
    if (whole_line && bytes.size() > first_row && has_other_fields(line, bytes, first_row)) return std::string(changed);
    return cut_off(count_lines(bytes.substr(first_row)), whole_line ? std::nullopt : rows_of_cut_seal(line));
}

} // namespace

std::string seal_line(std::string_view ahead, std::size_t rows) { return text_of({rows, crc32(ahead)}) + '\n'; }

// Written again it must give the same text: no sign, no further zero, no small letter.
std::optional<TableSeal> seal_of_line(std::string_view line) {
    if (line.size() <= mark.size() + digits_of_sum) return std::nullopt;
    const std::size_t sum_at = line.size() - digits_of_sum;
    const auto sum = number_of<std::uint32_t>(line.substr(sum_at), 16);
    const auto rows = number_of<std::size_t>(line.substr(mark.size(), sum_at - 1 - mark.size()), 10);
    if (!sum || !rows || text_of({*rows, *sum}) != line) return std::nullopt;
    return TableSeal{*rows, *sum};
}

SealedBytes::SealedBytes(std::string_view bytes) : ahead(bytes) {
    if (bytes.empty() || bytes.back() != '\n') return;
    const std::string_view line = last_line(bytes);
    seal = seal_of_line(line);
    if (seal) ahead.remove_suffix(line.size() + 1);
}

std::string fault_of_seal(std::string_view bytes, std::size_t first_row) {
    const SealedBytes parts(bytes);
    if (first_row > parts.ahead.size()) {
        if (!parts.seal) return "cut off in its head";
        return crc32(parts.ahead) == parts.seal->sum ? "" : std::string(changed);
    }
    if (!parts.seal) return fault_without_seal(bytes, first_row);
    if (fits(*parts.seal, parts.ahead, first_row)) return "";
    if (goes_on_behind_seal(parts.ahead, first_row)) return std::string(goes_on);
    return fault_behind(*parts.seal, count_lines(parts.ahead.substr(first_row)));
}

} // namespace embedded
