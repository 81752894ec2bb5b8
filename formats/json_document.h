#pragma once
// JSON texts as edit files hold them: with NaN and infinities, and with integers of any length.

// The library counts from a null pointer while its stacks are empty, which the sanitizer would report.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wignored-attributes"
#pragma clang attribute push(__attribute__((no_sanitize("pointer-overflow"))), apply_to = function)
#endif
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#ifdef __clang__
#pragma clang attribute pop
#pragma clang diagnostic pop
#endif

#include <array>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>

namespace formats {

/// Memory for JSON texts. The library itself doesn't look whether it got any.
struct JsonMemory {
    static constexpr bool kNeedFree = true;
    void* Malloc(std::size_t size) { return size > 0 ? checked(std::malloc(size)) : nullptr; }
    void* Realloc(void* block, std::size_t, std::size_t size) {
        if (size > 0) return checked(std::realloc(block, size));
        std::free(block);
        return nullptr;
    }
    static void Free(void* block) { std::free(block); }

private:
    static void* checked(void* block) {
        if (!block) throw std::bad_alloc();
        return block;
    }
};

using JsonEncoding = rapidjson::UTF8<>;
using JsonPool = rapidjson::MemoryPoolAllocator<JsonMemory>;
using JsonValue = rapidjson::GenericValue<JsonEncoding, JsonPool>;
using JsonTree = rapidjson::GenericDocument<JsonEncoding, JsonPool, JsonMemory>;
using JsonBuffer = rapidjson::GenericStringBuffer<JsonEncoding, JsonMemory>;

/// Objects and arrays may lie that deep in each other.
constexpr unsigned json_depth_limit = 1000;

/// A parsed text, of which it holds a copy. Integers past 64 bits are doubles, a byte order mark is skipped, and
/// comments, trailing commas and text behind the document are errors.
class JsonDocument {
public:
    /// False with `error()` set, which names line and byte, both from 1.
    bool parse(std::string_view bytes);

    const JsonValue& root() const { return document_; }
    JsonTree& document() { return document_; }
    const std::string& error() const { return error_; }

private:
    std::unique_ptr<char[]> text_; ///< of the last parse; the document's strings lie in it
    JsonTree document_;
    std::string error_;
};

/// The member of that key, of several the first; null where it lacks, is null or `object` isn't an object.
const JsonValue* json_member(const JsonValue* object, std::string_view key);
inline const JsonValue* json_member(const JsonValue& object, std::string_view key) { return json_member(&object, key); }
void find_json_members(const JsonValue& object, std::span<const std::string_view> keys,
                       std::span<const JsonValue*> found);
/// Those of several keys, each as `json_member` gives it.
template <std::size_t count>
std::array<const JsonValue*, count> json_members(const JsonValue& object, const std::string_view (&keys)[count]) {
    std::array<const JsonValue*, count> found{};
    find_json_members(object, keys, found);
    return found;
}
/// The same, but only where the member is an object.
const JsonValue* json_object(const JsonValue* object, std::string_view key);
/// The bytes of a string; empty for anything else.
std::string_view json_string(const JsonValue* value);
/// A string as it stands, a finite number as its decimal text; empty for anything else.
std::string json_text(const JsonValue* value);
/// True for the truth value, and for numbers but 0.
bool json_truth(const JsonValue* value);
/// A whole number between the limits, also one written as a double or a text of digits.
bool json_integer(const JsonValue* value, long long low, long long high, long long* number);
/// The document as a text that `JsonDocument` reads.
std::string json_to_text(const JsonValue& value);
/// The same for people: in lines, indented by two blanks, with a line end behind it.
std::string json_to_lines(const JsonValue& value);

} // namespace formats
