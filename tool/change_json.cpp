#include "tool/change_json.h"

#include "quillbrook/changelist.h"
#include "tool/json_writer.h"

#include <string_view>

namespace tool {
namespace {

constexpr int document_version = 1;

constexpr const char* kind_names[] = {"delete", "pick up", "put down", "insert"};

struct ListName {
    change_list list;
    const char* name;
};

constexpr ListName lists[] = {{detailed_changes, "changes"}, {bench_changes, "bench"}};

void put_point(JsonWriter& out, const char* key, LabelPoint point, int missing = 0) {
    out.put_or_null(key, point.is_useful() && missing == 0 ? point.get_string() : "");
}

void put_film(JsonWriter& out, const change_step& step) {
    put_point(out, "first_key", step.first_key, step.first_key_missing);
    put_point(out, "last_key", step.last_key, step.last_key_missing);
    put_point(out, "first_ink", step.first_ink);
    put_point(out, "last_ink", step.last_ink);
    out.put_number("speed", step.speed);
    out.put("camera_roll", std::string_view(step.cam_reel));
    out.put("shot", step.shot_name);
    out.put("scene", std::string_view(step.scene));
    out.put("take", std::string_view(step.take));
}

void put_step(JsonWriter& out, const change_step& step) {
    out.begin_object();
    out.put("step", step.step);
    out.put("kind", kind_names[step.action]);
    out.put("reel", step.reel);
    out.put("position", step.position);
    out.put("printed_position", step.printed_position);
    out.put("length", step.length);
    put_film(out, step);
    out.put_if("from", step.action == change_put_down && step.other_step > 0, step.other_step);
    out.put_if("to", step.action == change_pick_up && step.other_step > 0, step.other_step);
    out.put_if("reel_length", step.reel_length >= 0, step.reel_length);
    out.end_object();
}

void put_lists(JsonWriter& out) {
    out.begin_object("lists");
    for (const auto& [list, name] : lists) {
        unsigned count = 0;
        const change_step* steps = change_steps(list, count);
        out.begin_array(name);
        for (unsigned i = 0; i < count; ++i)
            put_step(out, steps[i]);
        out.end_array();
    }
    out.end_object();
}

} // namespace

std::string change_document(const std::string& film) {
    JsonWriter out;
    out.begin_object();
    out.put("format", "quillbrook changes");
    out.put("version", document_version);
    out.put("film", film);
    put_lists(out);
    out.end_object();
    return out.document();
}

} // namespace tool
