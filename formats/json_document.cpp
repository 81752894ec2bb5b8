#include "formats/json_document.h"

#include "host/decimal_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace formats {
namespace {

std::string_view behind_mark(std::string_view bytes) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    return bytes.substr(bytes.starts_with(byte_order_mark) ? byte_order_mark.size() : 0);
}

struct NamedNumber {
    std::string_view text;
    double value;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr NamedNumber named_numbers[] = {
    {"NaN", std::numeric_limits<double>::quiet_NaN()},
    {"Inf", infinity},
    {"Infinity", infinity},
    {"-Inf", -infinity},
    {"-Infinity", -infinity},
};

template <typename Number> std::errc number_from(std::string_view text, Number& number) {
    const auto [end, trouble] = decimal::read(text.data(), text.data() + text.size(), number);
    return end == text.data() + text.size() ? trouble : std::errc::invalid_argument;
}

/// Hands what the parser finds to the document, as long as it doesn't lie too deep. Numbers come as texts, for the
/// parser's own reading of them goes wrong on hostile ones.
class DocumentFiller {
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;

    explicit DocumentFiller(JsonTree& target) : target_(target) {}
    /// Why the filler, and not the parser, ended the reading; null otherwise.
    const char* reason() const { return reason_; }

    bool Null() { return target_.Null(); }
    bool Bool(bool value) { return target_.Bool(value); }
    bool Int(int value) { return target_.Int(value); }
    bool Uint(unsigned value) { return target_.Uint(value); }
    bool Int64(std::int64_t value) { return target_.Int64(value); }
    bool Uint64(std::uint64_t value) { return target_.Uint64(value); }
    bool Double(double value) { return target_.Double(value); }
    bool RawNumber(const Ch* characters, SizeType length, bool) { return number({characters, length}); }
    bool String(const Ch* text, SizeType length, bool copy) { return target_.String(text, length, copy); }
    bool Key(const Ch* text, SizeType length, bool copy) { return target_.Key(text, length, copy); }
    bool StartObject() { return enter() && target_.StartObject(); }
    bool StartArray() { return enter() && target_.StartArray(); }
    bool EndObject(SizeType count) { return leave() && target_.EndObject(count); }
    bool EndArray(SizeType count) { return leave() && target_.EndArray(count); }

private:
    bool stop(const char* reason) {
        reason_ = reason;
        return false;
    }
    bool enter() { return ++depth_ <= json_depth_limit || stop("objects lie more than 1000 deep in each other"); }
    bool leave() {
        --depth_;
        return true;
    }
    bool number(std::string_view text);

    JsonTree& target_;
    unsigned depth_ = 0;
    const char* reason_ = nullptr;
};

bool DocumentFiller::number(std::string_view text) {
    std::int64_t whole = 0;
    std::uint64_t large = 0;
    double value = 0;
    if (number_from(text, whole) == std::errc()) return target_.Int64(whole);
    if (number_from(text, large) == std::errc()) return target_.Uint64(large);
    for (const NamedNumber& named : named_numbers)
        if (text == named.text) return target_.Double(named.value);
    const bool digits = text.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
    const std::errc trouble = digits ? number_from(text, value) : std::errc::invalid_argument;
    if (trouble == std::errc::invalid_argument) return stop("Invalid value.");
    const bool tiny = text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos ||
                      text.substr(text[0] == '-' ? 1 : 0, 2) == "0.";
    if (trouble == std::errc::result_out_of_range && !tiny) return stop("Number too big to be stored in double.");
    return target_.Double(trouble == std::errc() ? value : 0.0);
}

std::string place_and_reason(std::string_view bytes, std::size_t offset, const std::string& reason) {
    offset = std::min(offset, bytes.size());
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
    return "line " + std::to_string(line) + ", byte " + std::to_string(offset + 1) + ": " + reason;
}

std::string number_text(double number) {
    char text[40];
    std::string plain(text, decimal::write(text, text + sizeof text, number));
    if (plain.find('e') == std::string::npos) return plain;
    char fixed[400];
    const int length = std::snprintf(fixed, sizeof fixed, "%.0f", number);
    return std::abs(number) >= 1 && length > 0 ? std::string(fixed) : plain;
}

// Most names differ in their length or in how they begin, and a call to compare them costs more than looking at that.
bool is_named(const JsonValue& name, std::string_view key) {
    if (name.GetStringLength() != key.size()) return false;
    const char* const text = name.GetString();
    return key.empty() || (text[0] == key[0] && std::memcmp(text, key.data(), key.size()) == 0);
}

/// For a parser that unescapes texts where they lie. A zero closes the text.
std::unique_ptr<char[]> closed_copy(std::string_view bytes) {
    std::unique_ptr<char[]> copy(new char[bytes.size() + 1]);
    bytes.copy(copy.get(), bytes.size());
    copy[bytes.size()] = '\0';
    return copy;
}

/// What a parser says of a text that it changes.
struct Parsed {
    std::size_t end = 0;
    std::string fault; ///< empty where it is sound up to there
    std::size_t fault_at = 0;
};

template <unsigned more_flags> Parsed parse_in_place(char* text, JsonTree& document) {
    constexpr unsigned flags = rapidjson::kParseNanAndInfFlag | rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseInsituFlag | more_flags;
    rapidjson::InsituStringStream stream(text);
    rapidjson::GenericReader<JsonEncoding, JsonEncoding, JsonMemory> reader;
    Parsed parsed;
    auto generate = [&](JsonTree& target) {
        DocumentFiller filler(target);
        const bool sound = !reader.Parse<flags>(stream, filler).IsError();
        parsed.end = stream.Tell();
        if (filler.reason()) {
            parsed.fault = filler.reason();
            parsed.fault_at = parsed.end;
        } else if (!sound) {
            parsed.fault = rapidjson::GetParseError_En(reader.GetParseErrorCode());
            parsed.fault_at = reader.GetErrorOffset();
        }
        return sound;
    };
    document = JsonTree();
    document.Populate(generate);
    return parsed;
}

} // namespace

// The parser that calls itself is the quicker one, and the filler sees to it that it doesn't do so too deep; of what is
// wrong the other one tells.
bool JsonDocument::parse(std::string_view bytes) {
    const std::string_view text = behind_mark(bytes);
    const std::size_t skipped = bytes.size() - text.size();
    error_.clear();
    text_ = closed_copy(text);
    Parsed parsed = parse_in_place<rapidjson::kParseNoFlags>(text_.get(), document_);
    if (parsed.fault.empty() && parsed.end == text.size()) return true;
    text_ = closed_copy(text);
    parsed = parse_in_place<rapidjson::kParseIterativeFlag>(text_.get(), document_);
    if (!parsed.fault.empty())
        error_ = place_and_reason(bytes, skipped + parsed.fault_at, parsed.fault);
    else if (parsed.end < text.size())
        error_ = place_and_reason(bytes, skipped + parsed.end, "text behind the document");
    return error_.empty();
}

const JsonValue* json_member(const JsonValue* object, std::string_view key) {
    if (!object || !object->IsObject()) return nullptr;
    const auto end = object->MemberEnd();
    for (auto member = object->MemberBegin(); member != end; ++member)
        if (is_named(member->name, key)) return member->value.IsNull() ? nullptr : &member->value;
    return nullptr;
}

// From the back, so that of two equal keys the first stays.
void find_json_members(const JsonValue& object, std::span<const std::string_view> keys,
                       std::span<const JsonValue*> found) {
    if (!object.IsObject()) return;
    for (auto member = object.MemberEnd(); member != object.MemberBegin();) {
        --member;
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (is_named(member->name, keys[i])) found[i] = member->value.IsNull() ? nullptr : &member->value;
    }
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
    JsonBuffer buffer;
    rapidjson::Writer<JsonBuffer, JsonEncoding, JsonEncoding, JsonMemory, rapidjson::kWriteNanAndInfFlag> writer(
        buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

std::string json_to_lines(const JsonValue& value) {
    JsonBuffer buffer;
    rapidjson::PrettyWriter<JsonBuffer, JsonEncoding, JsonEncoding, JsonMemory> writer(buffer);
    writer.SetIndent(' ', 2);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

} // namespace formats
