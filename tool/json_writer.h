#pragma once
// Writes JSON documents, for all commands that give one. Texts are made to be UTF-8.

#include "formats/json_document.h"
#include "host/labels.h"

#include <rapidjson/prettywriter.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

class JsonWriter {
public:
    JsonWriter() { out_.SetIndent(' ', 1); }

    void begin_object() { out_.StartObject(); }
    void end_object() { out_.EndObject(); }
    void begin_array(const char* key) {
        out_.Key(key);
        out_.StartArray();
    }
    void end_array() { out_.EndArray(); }
    void begin_object(const char* key) {
        out_.Key(key);
        out_.StartObject();
    }

    /// A text of an array.
    void add(std::string_view text);
    void put(const char* key, std::int64_t number);
    void put(const char* key, std::string_view text);
    void put(const char* key, const LightweightString<wchar_t>& text);
    void put_null(const char* key);
    void put_if(const char* key, bool known, std::int64_t number) { known ? put(key, number) : put_null(key); }
    /// Null where it is empty.
    void put_or_null(const char* key, std::string_view text) { text.empty() ? put_null(key) : put(key, text); }
    /// Null where the number isn't one that JSON has a word for.
    void put_number(const char* key, double number);

    /// The whole document, with a line end.
    std::string document() const { return std::string(buffer_.GetString(), buffer_.GetSize()) + '\n'; }

private:
    using Encoding = formats::JsonEncoding;
    formats::JsonBuffer buffer_;
    rapidjson::PrettyWriter<formats::JsonBuffer, Encoding, Encoding, formats::JsonMemory> out_{buffer_};
};

} // namespace tool
