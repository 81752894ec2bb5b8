#include "formats/bundle/zip_entry.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace formats::bundle {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view end_mark = "PK\x05\x06"sv;
constexpr std::string_view large_locator_mark = "PK\x06\x07"sv;
constexpr std::string_view large_end_mark = "PK\x06\x06"sv;
constexpr std::string_view record_mark = "PK\x01\x02"sv;
constexpr std::string_view local_mark = "PK\x03\x04"sv;
constexpr std::size_t end_size = 22, large_locator_size = 20, large_end_size = 56, record_size = 46, local_size = 30;
constexpr std::size_t longest_comment = 0xFFFF;
constexpr std::uint64_t unset = 0xFFFFFFFF;
constexpr std::uint64_t large_field = 1; ///< the number of the extra field that holds what doesn't fit 32 bits
constexpr std::uint64_t stored = 0, deflated = 8;
constexpr std::uint64_t encrypted_flag = 1;

std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

/// That many bytes from a place on; fewer where the archive ends.
std::string_view part(std::string_view archive, std::uint64_t from, std::uint64_t size) {
    if (from > archive.size()) return {};
    return archive.substr(static_cast<std::size_t>(from),
                          static_cast<std::size_t>(std::min<std::uint64_t>(size, archive.size())));
}

bool begins(std::string_view bytes, std::string_view mark) { return bytes.substr(0, mark.size()) == mark; }

struct Entry {
    std::uint64_t flags = 0, method = 0, packed = 0, unpacked = 0, place = 0;
};

/// Where the directory begins; past the archive where nothing tells.
std::uint64_t directory_of(std::string_view archive) {
    const std::size_t tail = std::min(archive.size(), end_size + longest_comment);
    const std::string_view last = archive.substr(archive.size() - tail);
    const std::size_t found = last.rfind(end_mark);
    if (found == std::string_view::npos || last.size() - found < end_size) return archive.size();
    const std::uint64_t place = number(last, found + 16, 4);
    const std::size_t end = archive.size() - tail + found;
    if (place != unset || end < large_locator_size) return place;
    const std::string_view locator = archive.substr(end - large_locator_size, large_locator_size);
    if (!begins(locator, large_locator_mark)) return place;
    const std::string_view large = part(archive, number(locator, 8, 8), large_end_size);
    return begins(large, large_end_mark) && large.size() == large_end_size ? number(large, 48, 8) : archive.size();
}

/// What didn't fit stands in the extra field, in this order, each only where it is needed.
void take_large_fields(std::string_view extra, Entry& entry) {
    while (extra.size() >= 4) {
        const auto size = static_cast<std::size_t>(number(extra, 2, 2));
        std::string_view field = extra.substr(4, size);
        if (number(extra, 0, 2) == large_field)
            for (std::uint64_t* each : {&entry.unpacked, &entry.packed, &entry.place})
                if (*each == unset && field.size() >= 8) {
                    *each = number(field, 0, 8);
                    field.remove_prefix(8);
                }
        extra.remove_prefix(std::min(extra.size(), 4 + size));
    }
}

std::optional<Entry> find(std::string_view archive, std::string_view name) {
    std::uint64_t at = directory_of(archive);
    for (;;) {
        const std::string_view record = part(archive, at, record_size);
        if (record.size() < record_size || !begins(record, record_mark)) return std::nullopt;
        const std::uint64_t name_size = number(record, 28, 2), extra_size = number(record, 30, 2);
        if (part(archive, at + record_size, name_size) == name) {
            Entry entry{number(record, 8, 2), number(record, 10, 2), number(record, 20, 4), number(record, 24, 4),
                        number(record, 42, 4)};
            take_large_fields(part(archive, at + record_size + name_size, extra_size), entry);
            return entry;
        }
        at += record_size + name_size + extra_size + number(record, 32, 2);
    }
}

std::optional<std::string> inflated(std::string_view packed, std::size_t size) {
    std::string bytes(size, '\0');
    z_stream stream{};
    constexpr int raw = -MAX_WBITS;
    if (inflateInit2(&stream, raw) != Z_OK) return std::nullopt;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int result = inflate(&stream, Z_FINISH);
    const bool whole = result == Z_STREAM_END && stream.total_out == size;
    inflateEnd(&stream);
    return whole ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

bool holds_entry(std::string_view archive, std::string_view name) { return find(archive, name).has_value(); }

std::optional<std::string> entry_of(std::string_view archive, std::string_view name, std::string& why) {
    const auto fail = [&](const char* reason) {
        why = reason;
        return std::nullopt;
    };
    const auto entry = find(archive, name);
    if (!entry) return fail("isn't in the archive");
    if (entry->flags & encrypted_flag) return fail("is encrypted");
    if (entry->method != stored && entry->method != deflated) return fail("is packed in a way that isn't read");
    if (entry->unpacked > entry_limit || entry->packed > entry_limit) return fail("is too long");
    const std::string_view head = part(archive, entry->place, local_size);
    if (head.size() < local_size || !begins(head, local_mark)) return fail("is damaged");
    const std::uint64_t from = entry->place + local_size + number(head, 26, 2) + number(head, 28, 2);
    const std::string_view packed = part(archive, from, entry->packed);
    if (packed.size() < entry->packed) return fail("is cut short");
    if (entry->method == stored) return std::string(packed);
    // Nothing is packed tighter than that, so sizes that claim it are wrong.
    constexpr std::uint64_t tightest = 1040;
    if (entry->unpacked > (entry->packed + 1) * tightest) return fail("is damaged");
    auto bytes = inflated(packed, static_cast<std::size_t>(entry->unpacked));
    if (!bytes) return fail("is damaged");
    return bytes;
}

} // namespace formats::bundle
