#pragma once
// One file out of a ZIP archive.
//
//     local head, file | local head, file | ... | directory | end
//     the end says where the directory is, the directory where each file's local head is

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace formats::bundle {

/// Files that are longer than that unpacked aren't unpacked.
constexpr std::size_t entry_limit = std::size_t{512} << 20;

/// Whether the archive's directory names a file of that path.
bool holds_entry(std::string_view archive, std::string_view name);
/// The bytes of that file; none, with the reason in `why`, where it lacks, is encrypted, packed in a way that isn't
/// read, too long, or damaged.
std::optional<std::string> entry_of(std::string_view archive, std::string_view name, std::string& why);

} // namespace formats::bundle
