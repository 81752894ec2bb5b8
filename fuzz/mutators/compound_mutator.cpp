// Of compound files. Three of four changes are made to what lies in the storages, which is then written as a sound
// file; the others to the numbers that say where it lies.

#include "formats/compound/compound_file.h"
#include "fuzz/mutators/mutators.h"
#include "tests/support/compound_writer.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace fuzz {
namespace {

using compound_writer::Node;

constexpr std::size_t longest_name = 31, most_nodes = 2000;
constexpr std::size_t property_head = 4, property_entry = 6;

Node node_of(const formats::compound::File& file, formats::compound::StorageId storage, const std::string& name,
             std::size_t& count) {
    Node node{name.substr(0, longest_name), true, file.class_id(storage), {}, {}};
    for (const std::string& child : file.names(storage)) {
        if (++count > most_nodes) break;
        if (auto bytes = file.stream(storage, child)) {
            node.children.push_back({child.substr(0, longest_name), false, {}, std::move(*bytes), {}});
        } else if (const auto inner = file.storage(storage, child)) {
            node.children.push_back(node_of(file, *inner, child, count));
        }
    }
    return node;
}

void collect(Node& node, std::vector<Node*>& all) {
    all.push_back(&node);
    for (Node& child : node.children)
        collect(child, all);
}

/// The properties of an object: a head with their number, an entry for each, then their values in that order.
//
//     4C 20 05 00 | pid form size | pid form size | value | value
class Properties {
public:
    explicit Properties(const std::string& bytes) : is_big_(!bytes.empty() && bytes[0] == 'B') {
        if (bytes.size() < property_head) return;
        head_ = bytes.substr(0, 2);
        const std::size_t count = number(bytes, 2);
        std::size_t value = property_head + count * property_entry;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = property_head + i * property_entry;
            if (at + property_entry > bytes.size()) return;
            const std::size_t size = number(bytes, at + 4);
            if (value > bytes.size()) return;
            entries.push_back({bytes.substr(at, 2), bytes.substr(at + 2, 2), bytes.substr(value, size)});
            value += size;
        }
    }

    std::string bytes() const {
        std::string heads = head_ + two_bytes(entries.size()), values;
        for (const Entry& entry : entries) {
            heads += entry.pid + entry.form + two_bytes(entry.value.size());
            values += entry.value;
        }
        return heads + values;
    }

    struct Entry {
        std::string pid, form, value;
    };
    std::vector<Entry> entries;

private:
    std::size_t number(const std::string& bytes, std::size_t at) const {
        const std::size_t first = static_cast<unsigned char>(bytes[at]);
        const std::size_t second = static_cast<unsigned char>(bytes[at + 1]);
        return is_big_ ? first << 8 | second : second << 8 | first;
    }
    std::string two_bytes(std::size_t value) const {
        const char low = static_cast<char>(value), high = static_cast<char>(value >> 8);
        return is_big_ ? std::string{high, low} : std::string{low, high};
    }

    bool is_big_;
    std::string head_;
};

/// A change that draws on another object's properties.
std::string changed_properties(const std::string& bytes, const std::string& others, Random& random,
                               const Scramble& scramble) {
    Properties properties(bytes);
    const Properties from(others);
    if (properties.entries.empty()) return scramble(bytes, random);
    const std::size_t which = random.below(properties.entries.size());
    Properties::Entry& entry = properties.entries[which];
    switch (random.below(6)) {
    case 0:
        properties.entries.erase(properties.entries.begin() + static_cast<std::ptrdiff_t>(which));
        break;
    case 1:
        if (!from.entries.empty()) properties.entries.push_back(from.entries[random.below(from.entries.size())]);
        break;
    case 2:
        for (const Properties::Entry& other : from.entries)
            if (other.pid == entry.pid) entry.value = other.value;
        break;
    case 3:
        if (!from.entries.empty()) entry.value = from.entries[random.below(from.entries.size())].value;
        break;
    default:
        entry.value = mutate_numbers(entry.value, random, scramble);
    }
    return properties.bytes();
}

void change_stream(Node& node, const Node& other, Random& random, const Scramble& scramble) {
    if (node.name == "properties") {
        node.bytes = changed_properties(node.bytes, other.bytes, random, scramble);
    } else {
        node.bytes = mutate_numbers(node.bytes, random, scramble);
    }
}

void change_storage(Node& node, const Node& other, Random& random) {
    switch (random.below(5)) {
    case 0:
        if (!node.children.empty())
            node.children.erase(node.children.begin() +
                                static_cast<std::ptrdiff_t>(random.below(node.children.size())));
        break;
    case 1:
        node.class_id = other.class_id;
        break;
    case 2:
        if (!other.name.empty() && node.children.size() < most_nodes) node.children.push_back(Node(other));
        break;
    case 3:
        node.children = std::vector<Node>(other.children);
        break;
    default:
        if (!node.children.empty()) node.children[random.below(node.children.size())].name = other.name;
    }
}

const Node& any_like(const Node& node, const std::vector<Node*>& all, Random& random) {
    for (int i = 0; i < 20; ++i) {
        const Node& other = *all[random.below(all.size())];
        if (other.storage == node.storage && (node.storage || other.name == node.name)) return other;
    }
    return node;
}

std::optional<std::string> with_other_nodes(const std::string& bytes, Random& random, const Scramble& scramble) {
    formats::compound::File file;
    if (!file.open(bytes)) return std::nullopt;
    std::size_t count = 0;
    Node root = node_of(file, formats::compound::root_storage, "Root Entry", count);
    std::vector<Node*> all;
    collect(root, all);
    Node& node = *all[random.below(all.size())];
    const Node other = any_like(node, all, random);
    if (node.storage) {
        change_storage(node, other, random);
    } else {
        change_stream(node, other, random, scramble);
    }
    compound_writer::Layout layout;
    layout.sector_size = bytes.size() > 30 && bytes[30] == 12 ? 4096 : 512;
    layout.header_class = std::string_view(bytes).substr(8, 16);
    return compound_writer::written(root, layout);
}

/// Numbers of sectors and entries are small, or marks of free sectors and ends.
std::string with_other_links(const std::string& bytes, Random& random, const Scramble& scramble) {
    constexpr std::uint32_t marks[] = {0, 1, 0xFFFFFFFA, 0xFFFFFFFC, 0xFFFFFFFD, 0xFFFFFFFE, 0xFFFFFFFF, 0x7FFFFFFF};
    if (bytes.size() < 8) return scramble(bytes, random);
    std::string other = bytes;
    const std::size_t reach = random.one_in(3) ? std::min<std::size_t>(bytes.size(), 512) : bytes.size();
    const std::size_t at = random.below(reach / 4) * 4;
    std::uint32_t link = random.one_in(2) ? marks[random.below(std::size(marks))]
                                          : static_cast<std::uint32_t>(random.below(bytes.size() / 64 + 2));
    for (std::size_t i = 0; i < 4; ++i, link >>= 8)
        other[at + i] = static_cast<char>(link);
    return other;
}

} // namespace

std::string mutate_compound(const std::string& file, Random& random, const Scramble& scramble) {
    if (!random.one_in(4))
        if (auto other = with_other_nodes(file, random, scramble)) return *other;
    return with_other_links(file, random, scramble);
}

} // namespace fuzz
