#include "tool/change_json.h"

#include "formats/json_document.h"
#include "quillbrook/changelist.h"

#include <rapidjson/prettywriter.h>

#include <cmath>
#include <optional>
#include <string_view>

namespace tool {
namespace {

constexpr int document_version = 1;
constexpr wchar_t replacement_character = 0xFFFD;

constexpr const char* kind_names[] = {"delete", "pick up", "put down", "insert"};

struct ListName {
    change_list list;
    const char* name;
};

constexpr ListName lists[] = {{detailed_changes, "changes"}, {bench_changes, "bench"}};

/// Bytes that are no characters stand in wide text among the surrogates.
std::string clean(const LightweightString<wchar_t>& text) {
    std::wstring characters(text.view());
    for (wchar_t& c : characters)
        if (c >= 0xD800 && c <= 0xDFFF) c = replacement_character;
    return std::string(toUTF8(LightweightString<wchar_t>(std::wstring_view(characters))).view());
}

std::string clean(std::string_view bytes) { return clean(fromUTF8(LightweightString<char>(bytes))); }

class DocumentWriter {
public:
    DocumentWriter() { out_.SetIndent(' ', 1); }

    std::string document(const std::string& film) {
        out_.StartObject();
        put("format", std::string("quillbrook changes"));
        put("version", document_version);
        put("film", clean(film));
        put_lists();
        out_.EndObject();
        return std::string(buffer_.GetString(), buffer_.GetSize()) + '\n';
    }

private:
    void put_lists() {
        out_.Key("lists");
        out_.StartObject();
        for (const auto& [list, name] : lists) {
            unsigned count = 0;
            const change_step* steps = change_steps(list, count);
            out_.Key(name);
            out_.StartArray();
            for (unsigned i = 0; i < count; ++i)
                put_step(steps[i]);
            out_.EndArray();
        }
        out_.EndObject();
    }

    void put_step(const change_step& step) {
        out_.StartObject();
        put("step", step.step);
        put("kind", std::string(kind_names[step.action]));
        put("reel", step.reel);
        put("position", step.position);
        put("printed_position", step.printed_position);
        put("length", step.length);
        put_film(step);
        put_if("from", step.action == change_put_down && step.other_step > 0, step.other_step);
        put_if("to", step.action == change_pick_up && step.other_step > 0, step.other_step);
        put_if("reel_length", step.reel_length >= 0, step.reel_length);
        out_.EndObject();
    }

    void put_film(const change_step& step) {
        put_point("first_key", step.first_key);
        put_point("last_key", step.last_key);
        put_point("first_ink", step.first_ink);
        put_point("last_ink", step.last_ink);
        put_speed(step.speed);
        put("camera_roll", clean(std::string_view(step.cam_reel)));
        put("shot", clean(step.shot_name));
        put("scene", clean(std::string_view(step.scene)));
        put("take", clean(std::string_view(step.take)));
    }

    void put(const char* key, int number) {
        out_.Key(key);
        out_.Int(number);
    }
    void put(const char* key, const std::string& text) {
        out_.Key(key);
        out_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    }
    void put_if(const char* key, bool known, int number) {
        out_.Key(key);
        known ? out_.Int(number) : out_.Null();
    }
    // A speed in a damaged table may be none; JSON has no word for that.
    void put_speed(double speed) {
        out_.Key("speed");
        std::isfinite(speed) ? out_.Double(speed) : out_.Null();
    }
    void put_point(const char* key, LabelPoint point) {
        const std::string text = point.is_useful() ? clean(std::string_view(point.get_string())) : "";
        if (!text.empty()) return put(key, text);
        out_.Key(key);
        out_.Null();
    }

    using Encoding = formats::JsonEncoding;
    formats::JsonBuffer buffer_;
    rapidjson::PrettyWriter<formats::JsonBuffer, Encoding, Encoding, formats::JsonMemory> out_{buffer_};
};

} // namespace

std::string change_document(const std::string& film) { return DocumentWriter().document(film); }

} // namespace tool
