#pragma once
// Bytes of a file, changed as what they look like. A file of any kind keeps its outer form for the most part: tables
// are sealed anew, compound files and archives written anew around what they hold.

#include "fuzz/mutators/structure.h"

namespace fuzz {

std::string mutate_json(const std::string& text, Random& random, const Scramble& scramble);
std::string mutate_xml(const std::string& text, Random& random, const Scramble& scramble);
std::string mutate_lines(const std::string& text, Random& random, const Scramble& scramble);
/// Of logs whose fields are parted by tabs or commas.
std::string mutate_columns(const std::string& text, Random& random, const Scramble& scramble);
/// Of one record table or several, one behind the other.
std::string mutate_tables(const std::string& text, Random& random, const Scramble& scramble);
/// What lies in the storages; of AAF, properties.
std::string mutate_compound(const std::string& file, Random& random, const Scramble& scramble);
/// The bundled edit of an archive.
std::string mutate_bundle(const std::string& archive, Random& random, const Scramble& scramble);
/// Numbers of 1, 2, 4 or 8 bytes, of either order.
std::string mutate_numbers(const std::string& bytes, Random& random, const Scramble& scramble);

/// By the first of the bytes.
std::string mutate_by_looks(const std::string& bytes, Random& random, const Scramble& scramble);

/// Each table of the text with a seal that fits, where it had one.
std::string sealed_anew(const std::string& text);

} // namespace fuzz
