#include "formats/json_document.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace formats {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// Hands what the parser finds to the document, as long as it doesn't lie too deep.
class DepthGuard {
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;

    explicit DepthGuard(rapidjson::Document& target) : target_(target) {}
    bool too_deep() const { return too_deep_; }

    bool Null() { return target_.Null(); }
    bool Bool(bool value) { return target_.Bool(value); }
    bool Int(int value) { return target_.Int(value); }
    bool Uint(unsigned value) { return target_.Uint(value); }
    bool Int64(std::int64_t value) { return target_.Int64(value); }
    bool Uint64(std::uint64_t value) { return target_.Uint64(value); }
    bool Double(double value) { return target_.Double(value); }
    bool RawNumber(const Ch* text, SizeType length, bool copy) { return target_.RawNumber(text, length, copy); }
    bool String(const Ch* text, SizeType length, bool copy) { return target_.String(text, length, copy); }
    bool Key(const Ch* text, SizeType length, bool copy) { return target_.Key(text, length, copy); }
    bool StartObject() { return enter() && target_.StartObject(); }
    bool StartArray() { return enter() && target_.StartArray(); }
    bool EndObject(SizeType count) { return leave() && target_.EndObject(count); }
    bool EndArray(SizeType count) { return leave() && target_.EndArray(count); }

private:
    bool enter() {
        too_deep_ = ++depth_ > json_depth_limit;
        return !too_deep_;
    }
    bool leave() {
        --depth_;
        return true;
    }

    rapidjson::Document& target_;
    unsigned depth_ = 0;
    bool too_deep_ = false;
};

std::string place_and_reason(std::string_view bytes, std::size_t offset, const std::string& reason) {
    offset = std::min(offset, bytes.size());
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
    return "line " + std::to_string(line) + ", byte " + std::to_string(offset + 1) + ": " + reason;
}

std::string number_text(double number) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    std::string plain(text, end);
    if (plain.find('e') == std::string::npos) return plain;
    char fixed[400];
    const int length = std::snprintf(fixed, sizeof fixed, "%.0f", number);
    return std::abs(number) >= 1 && length > 0 ? std::string(fixed) : plain;
}

} // namespace

bool JsonDocument::parse(std::string_view bytes) {
    constexpr unsigned flags =
        rapidjson::kParseNanAndInfFlag | rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;
    const std::size_t skipped = bytes.substr(0, 3) == byte_order_mark ? 3 : 0;
    rapidjson::MemoryStream stream(bytes.data() + skipped, bytes.size() - skipped);
    rapidjson::Reader reader;
    bool too_deep = false;
    auto generate = [&](rapidjson::Document& target) {
        DepthGuard guard(target);
        const auto result = reader.Parse<flags>(stream, guard);
        too_deep = guard.too_deep();
        return !result.IsError();
    };
    document_.Populate(generate);
    error_.clear();
    if (too_deep)
        error_ = place_and_reason(bytes, skipped + stream.Tell(), "objects lie more than 1000 deep in each other");
    else if (reader.HasParseError())
        error_ = place_and_reason(bytes, skipped + reader.GetErrorOffset(),
                                  rapidjson::GetParseError_En(reader.GetParseErrorCode()));
    else if (skipped + stream.Tell() < bytes.size())
        error_ = place_and_reason(bytes, skipped + stream.Tell(), "text behind the document");
    return error_.empty();
}

const JsonValue* json_member(const JsonValue* object, std::string_view key) {
    if (!object || !object->IsObject()) return nullptr;
    for (auto member = object->MemberBegin(); member != object->MemberEnd(); ++member)
        if (json_string(&member->name) == key) return member->value.IsNull() ? nullptr : &member->value;
    return nullptr;
}

const JsonValue* json_object(const JsonValue* object, std::string_view key) {
    const JsonValue* member = json_member(object, key);
    return member && member->IsObject() ? member : nullptr;
}

std::string_view json_string(const JsonValue* value) {
    if (!value || !value->IsString()) return {};
    return {value->GetString(), value->GetStringLength()};
}

std::string json_text(const JsonValue* value) {
    if (!value) return {};
    if (value->IsString()) return std::string(json_string(value));
    if (value->IsInt64()) return std::to_string(value->GetInt64());
    if (value->IsUint64()) return std::to_string(value->GetUint64());
    if (value->IsDouble() && std::isfinite(value->GetDouble())) return number_text(value->GetDouble());
    return {};
}

bool json_truth(const JsonValue* value) {
    if (!value) return false;
    if (value->IsBool()) return value->GetBool();
    return value->IsNumber() && value->GetDouble() != 0.0;
}

bool json_integer(const JsonValue* value, long long low, long long high, long long* number) {
    const std::string text = json_text(value);
    long long found = 0;
    const auto [end, trouble] = std::from_chars(text.data(), text.data() + text.size(), found);
    if (text.empty() || trouble != std::errc() || end != text.data() + text.size()) return false;
    if (found < low || found > high) return false;
    *number = found;
    return true;
}

std::string json_to_text(const JsonValue& value) {
    rapidjson::StringBuffer buffer;
    using Encoding = rapidjson::UTF8<>;
    rapidjson::Writer<rapidjson::StringBuffer, Encoding, Encoding, rapidjson::CrtAllocator,
                      rapidjson::kWriteNanAndInfFlag>
        writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace formats
