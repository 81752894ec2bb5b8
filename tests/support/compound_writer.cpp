#include "tests/support/compound_writer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace compound_writer {
namespace {

constexpr std::uint32_t free_sector = 0xFFFFFFFF;
constexpr std::uint32_t end_of_chain = 0xFFFFFFFE;
constexpr std::uint32_t table_sector = 0xFFFFFFFD;
constexpr std::uint32_t table_of_tables_sector = 0xFFFFFFFC;
constexpr std::uint32_t no_entry = 0xFFFFFFFF;
constexpr std::size_t mini_sector = 64;
constexpr std::size_t mini_cutoff = 4096;
constexpr std::size_t entry_size = 128;
constexpr std::size_t tables_in_header = 109;

std::size_t divided_up(std::size_t count, std::size_t by) { return (count + by - 1) / by; }

void put(std::string& bytes, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
}

std::string table_bytes(const std::vector<std::uint32_t>& table) {
    std::string bytes;
    for (const std::uint32_t entry : table)
        put(bytes, entry, 4);
    return bytes;
}

/// Files are kept in order of the length of names, then of their letters.
bool comes_before(const Node* a, const Node* b) {
    return a->name.size() != b->name.size() ? a->name.size() < b->name.size() : a->name < b->name;
}

struct Entry {
    const Node* node = nullptr;
    std::uint32_t left = no_entry, right = no_entry, child = no_entry;
    std::uint32_t start = end_of_chain;
    std::uint64_t size = 0;
};

class Writer {
public:
    Writer(const Node& root, const Layout& layout) : layout_(layout) {
        entries_.push_back(Entry{&root});
        add_children(0);
        place_streams();
    }

    std::string file();

private:
    void add_children(std::size_t parent);
    std::uint32_t tree_of(const std::vector<std::uint32_t>& sorted, std::size_t from, std::size_t to);
    void place_streams();
    std::uint32_t chain(std::vector<std::uint32_t>& table, std::size_t sectors);
    std::uint32_t place(std::string bytes);
    std::string directory() const;
    std::string entry_bytes(const Entry& entry) const;
    std::string header(std::uint32_t directory_start, std::size_t directory_sectors, std::uint32_t mini_start,
                       std::size_t mini_sectors) const;
    void add_tables();

    Layout layout_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> sectors_, mini_sectors_;
    std::vector<std::uint32_t> table_places_, table_of_tables_places_;
    std::string body_, mini_body_;
};

void Writer::add_children(std::size_t parent) {
    const Node& node = *entries_[parent].node;
    std::vector<const Node*> sorted;
    for (const Node& child : node.children)
        sorted.push_back(&child);
    std::sort(sorted.begin(), sorted.end(), comes_before);
    std::vector<std::uint32_t> places;
    for (const Node* child : sorted) {
        places.push_back(static_cast<std::uint32_t>(entries_.size()));
        entries_.push_back(Entry{child});
    }
    entries_[parent].child = tree_of(places, 0, places.size());
    for (const std::uint32_t place : places)
        if (entries_[place].node->storage) add_children(place);
}

std::uint32_t Writer::tree_of(const std::vector<std::uint32_t>& sorted, std::size_t from, std::size_t to) {
    if (from == to) return no_entry;
    const std::size_t middle = from + (to - from) / 2;
    Entry& entry = entries_[sorted[middle]];
    entry.left = tree_of(sorted, from, middle);
    entry.right = tree_of(sorted, middle + 1, to);
    return sorted[middle];
}

std::uint32_t Writer::chain(std::vector<std::uint32_t>& table, std::size_t sectors) {
    const auto start = static_cast<std::uint32_t>(table.size());
    for (std::size_t i = 1; i <= sectors; ++i)
        table.push_back(i == sectors ? end_of_chain : start + static_cast<std::uint32_t>(i));
    return sectors > 0 ? start : end_of_chain;
}

std::uint32_t Writer::place(std::string bytes) {
    const std::size_t sectors = divided_up(bytes.size(), layout_.sector_size);
    bytes.resize(sectors * layout_.sector_size);
    body_ += bytes;
    return chain(sectors_, sectors);
}

void Writer::place_streams() {
    for (Entry& entry : entries_) {
        if (entry.node->storage) continue;
        std::string bytes = entry.node->bytes;
        entry.size = bytes.size();
        if (bytes.size() >= mini_cutoff) {
            entry.start = place(std::move(bytes));
            continue;
        }
        const std::size_t sectors = divided_up(bytes.size(), mini_sector);
        bytes.resize(sectors * mini_sector);
        mini_body_ += bytes;
        entry.start = chain(mini_sectors_, sectors);
    }
    entries_[0].size = mini_body_.size();
    entries_[0].start = place(mini_body_);
}

std::string Writer::entry_bytes(const Entry& entry) const {
    std::string bytes;
    const std::string& name = entry.node->name;
    for (const char c : name)
        put(bytes, static_cast<unsigned char>(c), 2);
    bytes.resize(64);
    put(bytes, 2 * (name.size() + 1), 2);
    put(bytes, &entry == entries_.data() ? 5 : entry.node->storage ? 1 : 2, 1);
    put(bytes, 1, 1);
    for (const std::uint32_t link : {entry.left, entry.right, entry.child})
        put(bytes, link, 4);
    bytes.append(entry.node->class_id.begin(), entry.node->class_id.end());
    bytes.resize(116);
    put(bytes, entry.start, 4);
    put(bytes, entry.size, 8);
    return bytes;
}

std::string Writer::directory() const {
    std::string bytes;
    for (const Entry& entry : entries_)
        bytes += entry_bytes(entry);
    while (bytes.size() % layout_.sector_size != 0) {
        const std::size_t start = bytes.size();
        bytes.resize(start + entry_size);
        for (std::size_t i = 68; i < 80; ++i)
            bytes[start + i] = '\xFF';
    }
    return bytes;
}

/// The table of sectors also has entries for its own, and for those that say where it lies.
void Writer::add_tables() {
    const std::size_t a_sector = layout_.sector_size / 4;
    const std::size_t used = sectors_.size();
    std::size_t tables = 0, more = 0;
    for (;;) {
        const std::size_t wanted = divided_up(used + tables + more, a_sector);
        const std::size_t beyond = wanted > tables_in_header ? divided_up(wanted - tables_in_header, a_sector - 1) : 0;
        if (wanted == tables && beyond == more) break;
        tables = wanted;
        more = beyond;
    }
    for (std::size_t i = 0; i < tables; ++i) {
        table_places_.push_back(static_cast<std::uint32_t>(sectors_.size()));
        sectors_.push_back(table_sector);
    }
    for (std::size_t i = 0; i < more; ++i) {
        table_of_tables_places_.push_back(static_cast<std::uint32_t>(sectors_.size()));
        sectors_.push_back(table_of_tables_sector);
    }
    sectors_.resize(tables * a_sector, free_sector);
    body_ += table_bytes(sectors_);
    std::size_t next = tables_in_header;
    for (std::size_t i = 0; i < more; ++i) {
        std::vector<std::uint32_t> places;
        for (std::size_t j = 0; j + 1 < a_sector; ++j, ++next)
            places.push_back(next < tables ? table_places_[next] : free_sector);
        places.push_back(i + 1 < more ? table_of_tables_places_[i + 1] : end_of_chain);
        body_ += table_bytes(places);
    }
}

std::string Writer::header(std::uint32_t directory_start, std::size_t directory_sectors, std::uint32_t mini_start,
                           std::size_t mini_sectors) const {
    const bool large = layout_.sector_size == 4096;
    std::string bytes = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(layout_.header_class);
    bytes.resize(24);
    put(bytes, 0x3E, 2);
    put(bytes, large ? 4 : 3, 2);
    put(bytes, 0xFFFE, 2);
    put(bytes, large ? 12 : 9, 2);
    put(bytes, 6, 2);
    bytes.resize(40);
    put(bytes, large ? directory_sectors : 0, 4);
    put(bytes, table_places_.size(), 4);
    put(bytes, directory_start, 4);
    put(bytes, 0, 4);
    put(bytes, mini_cutoff, 4);
    put(bytes, mini_start, 4);
    put(bytes, mini_sectors, 4);
    put(bytes, table_of_tables_places_.empty() ? end_of_chain : table_of_tables_places_[0], 4);
    put(bytes, table_of_tables_places_.size(), 4);
    for (std::size_t i = 0; i < tables_in_header; ++i)
        put(bytes, i < table_places_.size() ? table_places_[i] : free_sector, 4);
    bytes.resize(layout_.sector_size);
    return bytes;
}

std::string Writer::file() {
    std::string mini = table_bytes(mini_sectors_);
    while (mini.size() % layout_.sector_size != 0)
        put(mini, free_sector, 4);
    const std::size_t mini_count = mini.size() / layout_.sector_size;
    const std::uint32_t mini_start = place(std::move(mini));
    std::string entries = directory();
    const std::size_t directory_count = entries.size() / layout_.sector_size;
    const std::uint32_t directory_start = place(std::move(entries));
    add_tables();
    return header(directory_start, directory_count, mini_start, mini_count) + body_;
}

} // namespace

std::string written(const Node& root, const Layout& layout) { return Writer(root, layout).file(); }

} // namespace compound_writer
