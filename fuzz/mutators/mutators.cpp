#include "fuzz/mutators/mutators.h"

#include "embedded/table_seal.h"
#include "fuzz/mutators/structures.h"

#include <algorithm>
#include <iterator>

namespace fuzz {
namespace {

constexpr std::string_view table_mark = "%recdb ", sealed_mark = "%recdb 2\n", seal_mark = "%end ";

bool begins_with(std::string_view text, std::string_view mark) { return text.substr(0, mark.size()) == mark; }

/// The table alone, without what would be its seal.
std::string without_seal(const std::string& table) {
    const std::size_t at = table.rfind("\n" + std::string(seal_mark));
    return at == std::string::npos ? table : table.substr(0, at + 1);
}

/// Of the lines behind the empty one, two are names and types.
std::size_t rows_of(const std::string& table) {
    const std::size_t head = table.find("\n\n");
    if (head == std::string::npos) return 0;
    const auto lines = std::count(table.begin() + static_cast<std::ptrdiff_t>(head) + 2, table.end(), '\n');
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(lines - 2, 0));
}

std::string sealed_table(const std::string& table) {
    if (!begins_with(table, sealed_mark)) return table;
    std::string ahead = without_seal(table);
    if (ahead.back() != '\n') ahead += '\n';
    return ahead + embedded::seal_line(ahead, rows_of(ahead));
}

using Mutator = std::string (*)(const std::string&, Random&, const Scramble&);

struct Looks {
    std::string_view mark;
    Mutator mutate;
};

const Looks all_looks[] = {{"{", mutate_json},          {"[", mutate_json},
                           {"<", mutate_xml},           {"\xEF\xBB\xBF<", mutate_xml},
                           {table_mark, mutate_tables}, {"\xD0\xCF\x11\xE0", mutate_compound},
                           {"PK", mutate_bundle},       {"SDPX", mutate_numbers},
                           {"XPDS", mutate_numbers},    {"\x76\x2f\x31\x01", mutate_numbers}};

bool has_columns(const std::string& text) {
    return std::count(text.begin(), text.end(), '\t') > 3 || std::count(text.begin(), text.end(), ',') > 6;
}

} // namespace

std::string mutate_json(const std::string& text, Random& random, const Scramble& scramble) {
    return changed(text, json_structure(text), random, scramble);
}

std::string mutate_xml(const std::string& text, Random& random, const Scramble& scramble) {
    return changed(text, xml_structure(text), random, scramble);
}

std::string mutate_lines(const std::string& text, Random& random, const Scramble& scramble) {
    return changed(text, line_structure(text), random, scramble);
}

std::string mutate_columns(const std::string& text, Random& random, const Scramble& scramble) {
    const char mark = text.find('\t') != std::string::npos ? '\t' : ',';
    return changed(text, column_structure(text, mark), random, scramble);
}

std::string mutate_tables(const std::string& text, Random& random, const Scramble& scramble) {
    const std::string other = changed(text, column_structure(text, '\t'), random, scramble);
    return random.one_in(16) ? other : sealed_anew(other);
}

std::string mutate_numbers(const std::string& bytes, Random& random, const Scramble& scramble) {
    constexpr std::uint64_t ends[] = {0,      1,          0x7F,       0x80,       0xFF, 0x7FFF,
                                      0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, ~0ull};
    const std::size_t size = std::size_t{1} << random.below(4);
    if (bytes.size() < size || random.one_in(8)) return scramble(bytes, random);
    std::string other = bytes;
    const std::size_t at = random.below((bytes.size() - size) / size + 1) * size;
    const bool is_big = random.one_in(2);
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + (is_big ? i : size - 1 - i)]);
    number = random.one_in(2) ? ends[random.below(std::size(ends))] : number + (random.one_in(2) ? 1 : ~0ull);
    for (std::size_t i = 0; i < size; ++i, number >>= 8)
        other[at + (is_big ? size - 1 - i : i)] = static_cast<char>(number);
    return other;
}

std::string mutate_by_looks(const std::string& bytes, Random& random, const Scramble& scramble) {
    for (const Looks& looks : all_looks)
        if (begins_with(bytes, looks.mark)) return looks.mutate(bytes, random, scramble);
    return has_columns(bytes) && !random.one_in(4) ? mutate_columns(bytes, random, scramble)
                                                   : mutate_lines(bytes, random, scramble);
}

std::string sealed_anew(const std::string& text) {
    std::string out;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t next = text.find("\n" + std::string(table_mark), begin);
        const std::size_t end = next == std::string::npos ? text.size() : next + 1;
        out += sealed_table(text.substr(begin, end - begin));
        begin = end;
    }
    return out;
}

} // namespace fuzz
