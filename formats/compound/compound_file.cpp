#include "formats/compound/compound_file.h"

#include "formats/compound/wide_text.h"

#include <algorithm>

namespace formats::compound {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view mark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr std::size_t header_size = 512;
constexpr std::size_t entry_size = 128;
constexpr std::size_t mini_sector_size = 64;
constexpr std::uint64_t mini_cutoff = 4096;
constexpr std::size_t tables_in_header = 109;
/// Sector numbers from here on are marks: end of a chain, free, part of a table. Writers use several for "none".
constexpr std::uint32_t first_mark = 0xFFFFFFFA;
constexpr std::uint32_t no_entry = 0xFFFFFFFF;

// Where things stand in the header and in an entry of the directory.
enum header_place : std::size_t {
    at_sector_shift = 30,
    at_table_count = 44,
    at_directory = 48,
    at_mini_table = 60,
    at_more_tables = 68,
    at_tables = 76,
};
enum entry_place : std::size_t {
    at_name_size = 64,
    at_type = 66,
    at_left = 68,
    at_right = 72,
    at_child = 76,
    at_class = 80,
    at_start = 116,
    at_size = 120,
};
enum entry_type : std::uint64_t { type_storage = 1, type_stream = 2, type_root = 5 };

std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return value;
}

std::uint32_t word(std::string_view bytes, std::size_t at) { return static_cast<std::uint32_t>(number(bytes, at, 4)); }

std::string name_of(std::string_view entry) {
    const std::size_t size = std::min<std::size_t>(word(entry, at_name_size) & 0xFFFF, at_name_size);
    return utf8_of_wide(entry.substr(0, size));
}

} // namespace

bool is_compound(std::string_view bytes) { return bytes.substr(0, mark.size()) == mark; }

bool File::fail(const char* what) {
    error_ = what;
    return false;
}

bool File::open(std::string_view bytes) {
    bytes_ = bytes;
    return read_header() && link_children();
}

bool File::read_header() {
    if (!is_compound(bytes_)) return fail("is no compound file");
    if (bytes_.size() < header_size) return fail("the compound file ends within its header");
    const std::uint64_t shift = number(bytes_, at_sector_shift, 2);
    if (shift != 9 && shift != 12) return fail("the compound file has sectors of neither 512 nor 4096 bytes");
    sector_size_ = std::size_t{1} << shift;
    return read_table(word(bytes_, at_table_count), word(bytes_, at_more_tables)) &&
           read_directory(word(bytes_, at_directory)) && read_mini_table(word(bytes_, at_mini_table));
}

std::optional<std::string_view> File::sector(std::uint32_t number) const {
    const std::uint64_t from = (std::uint64_t{number} + 1) * sector_size_;
    if (number >= first_mark || from >= bytes_.size()) return std::nullopt;
    return bytes_.substr(static_cast<std::size_t>(from), sector_size_);
}

// The first places of the table's sectors stand in the header, the others in sectors of their own, the last word of
// which leads to the next.
bool File::read_table(std::uint32_t table_count, std::uint32_t more_start) {
    const std::size_t sectors = bytes_.size() / sector_size_;
    if (table_count > sectors) return fail("the compound file is shorter than its allocation table");
    Table places;
    for (std::size_t i = 0; i < tables_in_header; ++i)
        places.push_back(word(bytes_, at_tables + 4 * i));
    for (std::size_t i = 0; more_start < first_mark && places.size() < table_count; ++i) {
        const auto more = sector(more_start);
        if (!more || more->size() < sector_size_ || i > sectors)
            return fail("the compound file's allocation table can't be followed");
        for (std::size_t at = 0; at + 4 < sector_size_; at += 4)
            places.push_back(word(*more, at));
        more_start = word(*more, sector_size_ - 4);
    }
    places.resize(std::min<std::size_t>(places.size(), table_count));
    for (const std::uint32_t place : places) {
        if (place >= first_mark) break; // some writers count a sector that they left free
        const auto part = sector(place);
        if (!part) return fail("the compound file's allocation table lies outside of it");
        for (std::size_t at = 0; at + 4 <= part->size(); at += 4)
            table_.push_back(word(*part, at));
    }
    return true;
}

std::optional<File::Table> File::chain(const Table& table, std::uint32_t start, std::size_t most) const {
    Table sectors;
    for (std::uint32_t at = start; at < first_mark && sectors.size() < most; at = table[at]) {
        if (at >= table.size() || sectors.size() > table.size()) return std::nullopt;
        sectors.push_back(at);
    }
    return sectors;
}

bool File::read_directory(std::uint32_t start) {
    const auto sectors = chain(table_, start, table_.size() + 1);
    if (!sectors || sectors->size() > table_.size()) return fail("the compound file's directory can't be followed");
    for (const std::uint32_t place : *sectors) {
        const auto part = sector(place);
        if (!part) return fail("the compound file's directory lies outside of it");
        for (std::size_t at = 0; at + entry_size <= part->size(); at += entry_size)
            if (!read_entry(part->substr(at, entry_size))) return false;
    }
    if (entries_.empty() || !entries_[root_storage].storage) return fail("the compound file has no root");
    return true;
}

bool File::read_entry(std::string_view bytes) {
    Entry& entry = entries_.emplace_back();
    const std::uint64_t type = number(bytes, at_type, 1);
    if (type != type_storage && type != type_stream && type != type_root) return true;
    entry.name = name_of(bytes);
    entry.storage = type != type_stream;
    std::copy_n(bytes.begin() + at_class, entry.class_id.size(), entry.class_id.begin());
    entry.start = word(bytes, at_start);
    // Writers of small sectors leave anything in the upper half.
    entry.size = number(bytes, at_size, sector_size_ == 512 ? 4 : 8);
    entry.left = word(bytes, at_left);
    entry.right = word(bytes, at_right);
    entry.child = entry.storage ? word(bytes, at_child) : no_entry;
    return true;
}

bool File::read_mini_table(std::uint32_t start) {
    const Entry& root = entries_[root_storage];
    const auto sectors = chain(table_, start, table_.size() + 1);
    const auto mini = chain(table_, root.start, table_.size() + 1);
    if (!sectors || !mini || sectors->size() > table_.size() || mini->size() > table_.size())
        return fail("the compound file's table of small streams can't be followed");
    for (const std::uint32_t place : *sectors) {
        const auto part = sector(place);
        if (!part) return fail("the compound file's table of small streams lies outside of it");
        for (std::size_t at = 0; at + 4 <= part->size(); at += 4)
            mini_table_.push_back(word(*part, at));
    }
    mini_sectors_ = *mini;
    return true;
}

/// Every entry belongs to one storage, so what comes up twice is a loop.
bool File::link_children() {
    std::vector<char> seen(entries_.size());
    seen[root_storage] = 1;
    std::vector<std::pair<std::uint32_t, int>> open_storages{{root_storage, 0}};
    while (!open_storages.empty()) {
        const auto [parent, depth] = open_storages.back();
        open_storages.pop_back();
        if (depth > depth_limit) return fail("the compound file's storages lie too deep in each other");
        if (!collect_tree(parent, seen)) return false;
        for (const std::uint32_t child : entries_[parent].children)
            if (entries_[child].storage) open_storages.emplace_back(child, depth + 1);
    }
    return true;
}

bool File::collect_tree(std::uint32_t parent, std::vector<char>& seen) {
    std::vector<std::uint32_t> open_entries{entries_[parent].child};
    while (!open_entries.empty()) {
        const std::uint32_t at = open_entries.back();
        open_entries.pop_back();
        if (at == no_entry) continue;
        if (at >= entries_.size()) return fail("the compound file's directory leads outside of itself");
        if (seen[at]) return fail("the compound file's directory loops");
        seen[at] = 1;
        entries_[parent].children.push_back(at);
        open_entries.push_back(entries_[at].left);
        open_entries.push_back(entries_[at].right);
    }
    sort_children(entries_[parent]);
    return true;
}

void File::sort_children(Entry& parent) {
    std::sort(parent.children.begin(), parent.children.end(),
              [&](std::uint32_t a, std::uint32_t b) { return entries_[a].name < entries_[b].name; });
}

const File::Entry* File::find(StorageId parent, std::string_view name) const {
    const std::vector<std::uint32_t>& children = entries_[parent].children;
    const auto found =
        std::lower_bound(children.begin(), children.end(), name,
                         [&](std::uint32_t child, std::string_view wanted) { return entries_[child].name < wanted; });
    return found != children.end() && entries_[*found].name == name ? &entries_[*found] : nullptr;
}

std::optional<StorageId> File::storage(StorageId parent, std::string_view name) const {
    const Entry* entry = find(parent, name);
    if (!entry || !entry->storage) return std::nullopt;
    return static_cast<StorageId>(entry - entries_.data());
}

std::optional<std::string> File::stream(StorageId parent, std::string_view name) const {
    const Entry* entry = find(parent, name);
    if (!entry || entry->storage) return std::nullopt;
    return bytes_of(*entry);
}

std::vector<std::string> File::names(StorageId storage) const {
    std::vector<std::string> all;
    for (const std::uint32_t child : entries_[storage].children)
        all.push_back(entries_[child].name);
    return all;
}

std::optional<std::string> File::bytes_of(const Entry& entry) const {
    if (entry.size > bytes_.size()) return std::nullopt;
    read_ += entry.size;
    if (read_ > std::uint64_t{read_limit} * bytes_.size()) return std::nullopt;
    return entry.size < mini_cutoff ? small(entry.start, entry.size) : large(entry.start, entry.size);
}

std::optional<std::string> File::large(std::uint32_t start, std::uint64_t size) const {
    const auto wanted = static_cast<std::size_t>((size + sector_size_ - 1) / sector_size_);
    const auto sectors = chain(table_, start, wanted);
    if (!sectors || sectors->size() < wanted) return std::nullopt;
    std::string bytes;
    bytes.reserve(wanted * sector_size_);
    for (const std::uint32_t place : *sectors) {
        const auto part = sector(place);
        if (!part) return std::nullopt;
        bytes += *part;
    }
    if (bytes.size() < size) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

std::optional<std::string> File::small(std::uint32_t start, std::uint64_t size) const {
    const auto wanted = static_cast<std::size_t>((size + mini_sector_size - 1) / mini_sector_size);
    const auto pieces = chain(mini_table_, start, wanted);
    if (!pieces || pieces->size() < wanted) return std::nullopt;
    std::string bytes;
    for (const std::uint32_t piece : *pieces) {
        const std::size_t at = std::size_t{piece} * mini_sector_size;
        if (at / sector_size_ >= mini_sectors_.size()) return std::nullopt;
        const auto part = sector(mini_sectors_[at / sector_size_]);
        if (!part || at % sector_size_ >= part->size()) return std::nullopt;
        bytes += part->substr(at % sector_size_, mini_sector_size);
    }
    if (bytes.size() < size) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

} // namespace formats::compound
