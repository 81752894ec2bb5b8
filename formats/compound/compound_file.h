#pragma once
// Compound files: storages, which hold streams and storages, in one file. AAF is stored so.
//
//     header | sectors of 512 or 4096 bytes ...
//     the allocation table says which sector follows which; a second one does for streams below 4096 bytes, which
//     share one stream in pieces of 64. The directory is a stream of entries, each storage's a binary tree.
//
// Nothing but names, bytes and class ids comes through here, so that another reader could stand behind it. This one is
// our own as libgsf, which the tests hold it against, takes a second to open a file with 10,000 objects in one storage,
// six for twice as many, and goes into each branch of the directory by recursion.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats::compound {

/// As stored: of a GUID the first three fields are little-endian.
using ClassId = std::array<std::uint8_t, 16>;

/// A storage of an open file; numbers stay good while the file is open.
using StorageId = std::uint32_t;
constexpr StorageId root_storage = 0;

/// Storages may lie that deep in each other.
constexpr int depth_limit = 200;
/// All reading of one file together may give that many times its bytes; streams of a damaged file can share them.
constexpr std::size_t read_limit = 8;

/// An open file. The bytes stay the caller's and must outlive it. Nothing recurses or loops on damaged files.
class File {
public:
    /// False with `error()` set: no compound file, or a directory or table that can't be followed.
    bool open(std::string_view bytes);
    const std::string& error() const { return error_; }

    const ClassId& class_id(StorageId storage) const { return entries_[storage].class_id; }
    const std::string& name(StorageId storage) const { return entries_[storage].name; }
    std::optional<StorageId> storage(StorageId parent, std::string_view name) const;
    /// The whole stream of that name; none where it lacks, or its sectors can't be followed to its end.
    std::optional<std::string> stream(StorageId parent, std::string_view name) const;
    /// All that a storage holds, in order of their names.
    std::vector<std::string> names(StorageId storage) const;

private:
    struct Entry {
        std::string name; ///< UTF-8
        bool storage = false;
        ClassId class_id{};
        std::uint32_t start = 0;
        std::uint64_t size = 0;
        std::uint32_t left = 0, right = 0, child = 0;
        std::vector<std::uint32_t> children; ///< sorted by name
    };
    using Table = std::vector<std::uint32_t>;

    bool fail(const char* what);
    bool read_header();
    bool read_table(std::uint32_t table_count, std::uint32_t more_start);
    bool read_directory(std::uint32_t start);
    bool read_mini_table(std::uint32_t start);
    bool read_entry(std::string_view bytes);
    bool link_children();
    bool collect_tree(std::uint32_t parent, std::vector<char>& seen);
    void sort_children(Entry& parent);
    std::optional<std::string_view> sector(std::uint32_t number) const;
    /// The sectors of a chain, at most `most`; none where it leaves the table or loops.
    std::optional<Table> chain(const Table& table, std::uint32_t start, std::size_t most) const;
    std::optional<std::string> bytes_of(const Entry& entry) const;
    std::optional<std::string> large(std::uint32_t start, std::uint64_t size) const;
    std::optional<std::string> small(std::uint32_t start, std::uint64_t size) const;
    const Entry* find(StorageId parent, std::string_view name) const;

    std::string_view bytes_;
    std::size_t sector_size_ = 512;
    Table table_, mini_table_, mini_sectors_;
    std::vector<Entry> entries_;
    std::string error_;
    mutable std::uint64_t read_ = 0;
};

/// Whether the bytes begin as a compound file does.
bool is_compound(std::string_view bytes);

} // namespace formats::compound
