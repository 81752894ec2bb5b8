#include "tool/conform_json.h"

#include "tool/film_json.h"

namespace tool {
namespace {

using film::Conflict;
using film::ConformToTell;
using film::CutUse;
using film::FilmRun;
using film::FrameRange;
using film::Mend;

constexpr int document_version = 1;

constexpr const char* trouble_names[] = {"gone", "twice", "close"};
constexpr const char* mending_names[] = {"shorten", "duplicate", "print"};

void put_ends(JsonWriter& out, const FilmRun& run, const FrameRange& frames) {
    out.put("first", run.text_at(frames.first));
    out.put("last", run.text_at(frames.last));
}

void put_use(JsonWriter& out, const char* key, const CutUse& use) {
    out.begin_object(key);
    out.put("reel", use.reel + 1);
    out.put_if("event", use.event > 0, use.event);
    out.put_if("last_event", use.event > 0, use.last_event);
    out.put("track", use.layer + 1);
    out.put("position", use.start);
    out.put("length", use.end - use.start);
    out.put_or_null("name", use.name);
    put_stretch(out, use.run, use.frames);
    put_ends(out, use.run, use.frames);
    out.put("off", use.off);
    out.put("printed", use.printed ? 1 : 0);
    out.end_object();
}

void put_mends(JsonWriter& out, const ConformToTell& told, const Conflict& conflict) {
    out.begin_array("mends");
    for (const Mend& mend : conflict.mends) {
        const CutUse& use = told.uses[mend.use];
        out.begin_object();
        out.put("mend", mending_names[static_cast<std::size_t>(mend.mending)]);
        out.put("reel", use.reel + 1);
        out.put_if("event", use.event > 0, use.event);
        out.put("position", use.start);
        out.put("head", mend.head);
        out.put("tail", mend.tail);
        out.end_object();
    }
    out.end_array();
}

void put_conflict(JsonWriter& out, const ConformToTell& told, const Conflict& conflict) {
    const CutUse& use = told.uses[conflict.use];
    out.begin_object();
    out.put("trouble", trouble_names[static_cast<std::size_t>(conflict.trouble)]);
    put_use(out, "use", use);
    if (conflict.other == film::no_use)
        out.put_null("other");
    else
        put_use(out, "other", told.uses[conflict.other]);
    out.put_or_null("side", conflict.trouble != film::Trouble::close ? ""
                            : conflict.side == film::Side::head      ? "head"
                                                                     : "tail");
    out.put("frames", conflict.lacking);
    out.begin_array("film");
    for (const FrameRange& frames : conflict.frames) {
        out.begin_object();
        put_range(out, "first_frame", "last_frame", frames);
        put_ends(out, use.run, frames);
        out.end_object();
    }
    out.end_array();
    put_mends(out, told, conflict);
    out.end_object();
}

void put_splices(JsonWriter& out, const ConformToTell& told) {
    out.put("method", film::name_of(told.rules.method));
    out.begin_array("splices");
    for (const label_t kind : told.kinds()) {
        out.begin_object();
        out.put("kind", label_type_to_edlstr(kind));
        out.put("perforations", told.rules.spent_on_a_side(kind));
        out.put("source", told.rules.source_of(kind));
        out.end_object();
    }
    out.end_array();
}

void put_unheld(JsonWriter& out, const film::UnknownFilm& film, std::int64_t cut) {
    out.begin_object();
    out.put_if("cut", cut > 0, cut);
    put_unknown(out, film);
    out.end_object();
}

void put_all_unheld(JsonWriter& out, const ConformToTell& told) {
    out.begin_array("unheld");
    for (const film::UnknownFilm& film : told.unheld)
        put_unheld(out, film, 0);
    for (const ConformToTell::UnheldCut& cut : told.unheld_cuts)
        put_unheld(out, cut.film, static_cast<std::int64_t>(cut.cut) + 1);
    out.end_array();
}

void put_spent(JsonWriter& out, const ConformToTell& told) {
    out.begin_array("spent");
    for (const auto& [strand, state] : told.negative) {
        for (const FrameRange& range : state.spent) {
            out.begin_object();
            out.put("roll", strand.roll);
            out.put("prefix", strand.prefix);
            out.put("kind", label_type_to_edlstr(strand.kind));
            out.put("first_perforation", range.first);
            out.put("last_perforation", range.last);
            out.end_object();
        }
    }
    out.end_array();
}

} // namespace

std::string conform_document(const ConformToTell& told) {
    JsonWriter out;
    out.begin_object();
    out.put("format", "quillbrook conform");
    out.put("version", document_version);
    put_reels(out, told.reels);
    out.begin_array("cuts");
    for (const std::vector<film::OrderInput>& cut : told.cuts) {
        out.begin_object();
        put_reels(out, cut);
        out.end_object();
    }
    out.end_array();
    out.put_or_null("log", told.log);
    put_splices(out, told);
    out.put("conforms", told.conforms() ? 1 : 0);
    out.put("standing_ends", told.conform.standing_ends);
    out.put("new_ends", told.conform.new_ends);
    out.begin_array("conflicts");
    for (const Conflict& conflict : told.conform.conflicts)
        put_conflict(out, told, conflict);
    out.end_array();
    put_all_unheld(out, told);
    put_spent(out, told);
    out.end_object();
    return out.document();
}

} // namespace tool
