#include "tool/film_json.h"

#include <cstdio>

namespace tool {
namespace {

std::string hex(std::uint32_t number) {
    char text[9];
    std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(number));
    return text;
}

} // namespace

void put_reels(JsonWriter& out, const std::vector<film::OrderInput>& reels) {
    out.begin_array("reels");
    for (const film::OrderInput& reel : reels) {
        out.begin_object();
        out.put("file", reel.file);
        out.put("edit", reel.edit);
        out.put("crc32", hex(reel.crc32));
        out.end_object();
    }
    out.end_array();
}

void put_range(JsonWriter& out, const char* first, const char* last, const film::FrameRange& range) {
    out.put(first, range.first);
    out.put(last, range.last);
}

void put_stretch(JsonWriter& out, const film::FilmRun& run, const film::FrameRange& frames) {
    out.put("roll", run.roll);
    out.put("prefix", run.prefix);
    out.put("kind", label_type_to_edlstr(run.kind));
    out.put("perforation", run.perforation);
    put_range(out, "first_frame", "last_frame", frames);
}

void put_unknown(JsonWriter& out, const film::UnknownFilm& film) {
    out.put("reel", film.reel + 1);
    out.put("where", film.strip.where);
    out.put("position", film.strip.start);
    out.put("length", film.strip.length());
    out.put_or_null("name", film.strip.name);
}

} // namespace tool
