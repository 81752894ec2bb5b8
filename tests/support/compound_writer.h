#pragma once
// Makes compound files: folders of streams in one file, as AAF is stored.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace compound_writer {

using ClassId = std::array<std::uint8_t, 16>;

/// A storage with children, or a stream with bytes. Names are ASCII and at most 31 characters.
struct Node {
    std::string name;
    bool storage = false;
    ClassId class_id{};
    std::string bytes;
    std::vector<Node> children;
};

struct Layout {
    std::size_t sector_size = 512;      ///< or 4096
    std::string_view header_class = {}; ///< 16 bytes behind the mark; zeros where empty
};

/// The bytes of a file with that root storage.
std::string written(const Node& root, const Layout& layout = {});

} // namespace compound_writer
