#include "formats/logs/ale_writer.h"

#include "formats/log_doubts.h"
#include "formats/shot_uses.h"
#include "formats/source_labels.h"
#include "formats/text_lines.h"

#include <algorithm>

namespace formats {
namespace {

using embedded::Fraction;
using embedded::LabelDescription;
using embedded::RateInfo;
using embedded::SourceDescription;
using embedded::WarningKind;

struct FilmText {
    int kind;
    const char* text;
};

/// As other programs write them; kinds that they don't have go by our own names.
constexpr FilmText film_texts[] = {{10, "35mm,4perf"}, {12, "35mm,3perf"}, {34, "35mm,2perf"}, {11, "16mm"}};

std::string film_text(label_t kind) {
    for (const FilmText& known : film_texts)
        if (known.kind == kind) return known.text;
    return label_type_to_edlstr(kind);
}

/// One row on its way: from which frame on it runs, and its numbers there.
struct AleRow {
    const ShotUse* use = nullptr;
    std::int64_t from = 0;
    std::optional<LabelPoint> key;
    const AleWriting* writing = nullptr;
};

struct Column {
    const char* name;
    std::string (*text)(const AleRow& row);
};

std::string timecode(const AleRow& row, std::int64_t frame) {
    LabelPoint point = point_of(*row.use->source->video_timecode);
    point.set_sample(static_cast<int>(frame));
    return point.get_string();
}

std::string label_text(const AleRow& row, const std::optional<LabelDescription>& label, const Fraction& rate,
                       const Fraction& late = Fraction(0)) {
    if (!label) return {};
    return point_at(*label, row.use->seconds_at(row.from) - late, rate).get_string();
}

std::int64_t frames(const AleRow& row) { return row.use->to - row.from; }

std::string key_end(const AleRow& row) {
    if (!row.key) return {};
    LabelPoint end = *row.key;
    const Fraction film = Fraction(frames(row)) / row.use->rate->rate() * row.use->film_rate;
    const std::int64_t whole = row.writing->cycles ? -(-film).floor() : film.floor();
    end += static_cast<int>(whole * end.cvt()->samples_per_frame());
    return spelled(end, *row.writing->keys);
}

std::string duration(const AleRow& row) {
    LabelPoint point(static_cast<int>(frames(row)), row.use->rate->timecode);
    return point.get_string();
}

/// The letter of a frame in the cycle of five that film goes to 30 frames by; rows begin where a cycle does.
std::string pulldown(const AleRow& row) {
    constexpr int counting_of_pulldown = 30;
    return row.use->rate->nominal == counting_of_pulldown && row.key && row.writing->cycles ? "A" : "";
}

const Column columns[] = {
    {"Name", [](const AleRow& row) { return row.use->source->name; }},
    {"Tape", [](const AleRow& row) { return row.use->source->reel(embedded::tape_reel); }},
    {"Tracks", [](const AleRow&) { return std::string("V"); }},
    {"Start", [](const AleRow& row) { return timecode(row, row.from); }},
    {"End", [](const AleRow& row) { return timecode(row, row.use->to); }},
    {"Duration", duration},
    {"FPS", [](const AleRow& row) { return std::string(row.use->rate->name); }},
    {"KN Start", [](const AleRow& row) { return row.key ? spelled(*row.key, *row.writing->keys) : std::string(); }},
    {"KN End", key_end},
    {"KN Film", [](const AleRow& row) { return row.key ? film_text(row.key->type()) : std::string(); }},
    {"Pullin", pulldown},
    {"Ink Number",
     [](const AleRow& row) {
         return label_text(row, row.use->source->ink, row.use->film_rate, row.use->source->start_strip);
     }},
    {"Camroll", [](const AleRow& row) { return row.use->source->reel(embedded::camera_reel); }},
    {"Labroll", [](const AleRow& row) { return row.use->source->reel(embedded::lab_reel); }},
    {"Daily roll", [](const AleRow& row) { return row.use->source->reel(embedded::composite_reel); }},
    {"Soundroll", [](const AleRow& row) { return row.use->source->reel(embedded::sound_reel); }},
    {"Sound TC",
     [](const AleRow& row) {
         const auto& sound = row.use->source->sound_timecode;
         return label_text(row, sound, sound && sound->rate ? *sound->rate : row.use->rate->rate());
     }},
    {"TC 24",
     [](const AleRow& row) {
         const auto& film = row.use->source->timecode_24p;
         return label_text(row, film, film && film->rate ? *film->rate : row.use->film_rate);
     }},
    {"24p reel", [](const AleRow& row) { return row.use->source->reel(embedded::reel_24p); }},
    {"Scene", [](const AleRow& row) { return row.use->source->scene; }},
    {"Take", [](const AleRow& row) { return row.use->source->take; }},
    {"DESCRIPT", [](const AleRow& row) { return row.use->source->description; }},
};

class AleWriter {
public:
    AleWriter(const embedded::EditRecipe& recipe, const AleWriting& writing)
        : writing_(writing),
          uses_(shot_uses(recipe, writing.channels, left_out_, [this](const ShotUse& use) { return part_of(use); })) {}

    Written run() {
        tell_of_sources();
        if (uses_.empty()) {
            written_.error = "the edit uses no shot that has a timecode";
            return std::move(written_);
        }
        write_heading();
        for (const ShotUse& use : uses_)
            write_row(row_of(use));
        tell_of_log();
        return std::move(written_);
    }

private:
    static constexpr int longest_cycle = 5;

    void tell(const SourceDescription& source, const char* what, WarningKind kind = WarningKind::dropped) {
        written_.warnings.push_back({kind, "source \"" + source.name + "\": " + what});
    }

    void tell_of_sources() {
        for (const SourceDescription* source : left_out_)
            tell(*source, source->opens ? "has no timecode, and is left out" : "has no media, and is left out");
        for (const ShotUse& use : uses_) {
            const auto& sound = use.source->sound_timecode;
            const bool other_count = sound && TvStd_to_label_type({use.rate->code, 0}) != sound->type &&
                                     TvStd_to_label_type({use.rate->code, 1}) != sound->type;
            if (use.source->reel(embedded::tape_reel).empty())
                tell(*use.source, "has no reel: as a log, its row is one of any reel", WarningKind::doubt);
            if (other_count)
                tell(*use.source, "its sound timecode counts otherwise than its rows are read", WarningKind::rate);
        }
    }

    void tell_of_log() {
        LogDoubts doubts(writing_.log);
        for (const ShotUse& use : uses_)
            doubts.note("source \"" + use.source->name + "\"", use.source->reel(embedded::tape_reel), use.from,
                        use.to - 1, use.film_rate / use.rate->rate());
        doubts.tell(written_.warnings);
    }

    /// Where all rows have one rate it stands in the heading, else only with each row.
    void write_heading() {
        const RateInfo* rate = uses_.front().rate;
        const bool one = std::all_of(uses_.begin(), uses_.end(), [&](const ShotUse& use) { return use.rate == rate; });
        std::string& text = written_.text;
        text = "Heading\nFIELD_DELIM\tTABS\n";
        if (one) text += std::string("FPS\t") + rate->name + "\n";
        text += "\nColumn\n";
        for (const Column& column : columns)
            text += std::string(&column == columns ? "" : "\t") + column.name;
        text += "\n\nData\n";
    }

    /// Rows begin with a frame of film: up to a cycle of pulldown before the first that is used.
    AleRow row_of(const ShotUse& use) {
        AleRow row{&use, use.from, {}, &writing_};
        if (writing_.log)
            number_by_log(row);
        else
            number_by_source(row);
        if (row.key && row.key->sample < 0) {
            tell(*use.source, "its key number lies before the first of its roll, and is left out");
            row.key.reset();
        }
        return row;
    }

    void number_by_source(AleRow& row) {
        const ShotUse& use = *row.use;
        const auto film = [&](std::int64_t frame) {
            return (use.seconds_at(frame) - use.source->start_strip) * use.film_rate;
        };
        for (int back = 0; writing_.cycles && back < longest_cycle; ++back)
            if (film(use.from - back).den() == 1 && use.seconds_at(use.from - back) >= Fraction(0)) {
                row.from = use.from - back;
                break;
            }
        if (use.source->key)
            row.key = point_at(*use.source->key, use.seconds_at(row.from) - use.source->start_strip, use.film_rate);
    }

    void number_by_log(AleRow& row) {
        const std::optional<LoggedFrame> logged = logged_at(*row.use);
        if (!logged) return;
        const bool begins = writing_.cycles && logged->cycle >= 0 && row.from - logged->cycle < longest_cycle;
        row.from = begins ? logged->cycle : row.from;
        row.key = begins ? logged->cycle_key : logged->key;
    }

    std::optional<LoggedFrame> logged_at(const ShotUse& use) const {
        return writing_.log(use.source->reel(embedded::tape_reel), use.from, use.film_rate / use.rate->rate());
    }

    /// What a log tells of one of its rows is no shot with what it tells of another, nor is what it doesn't know.
    ShotUse::Part part_of(const ShotUse& use) const {
        if (!writing_.log) return {};
        const std::optional<LoggedFrame> logged = logged_at(use);
        return logged ? ShotUse::Part{1, static_cast<std::int64_t>(logged->row)} : ShotUse::Part{2, use.from};
    }

    void write_row(const AleRow& row) {
        std::string& text = written_.text;
        for (const Column& column : columns)
            text += (&column == columns ? "" : "\t") + std::string(without_blanks_around(column.text(row)));
        text += "\n";
    }

    const AleWriting& writing_;
    std::vector<const SourceDescription*> left_out_;
    std::vector<ShotUse> uses_;
    Written written_;
};

} // namespace

Written write_ale(const EditPtr& edit, const AleWriting& writing) {
    const embedded::EditRecipe* recipe = embedded::recipe_of(edit);
    if (!recipe) return {{}, {}, "it holds no edit"};
    return AleWriter(*recipe, writing).run();
}

} // namespace formats
