#include "film/finder.h"

#include "film/edit_walk.h"

#include <algorithm>
#include <utility>

namespace film {

namespace {

std::set<std::string> rolls_with_ink(const Strips& strips) {
    std::set<std::string> rolls;
    for (const Strip& strip : strips)
        if (strip.ink && !strip.rolls.listed.empty()) rolls.insert(strip.rolls.listed);
    return rolls;
}

Clock clock_of(const EditPtr& edit) {
    const EditLabel label = *edit->getLabel(user_label_timecode, {medium_source_picture, 2});
    return [label, rate = film_rate(edit)](std::int64_t frame) -> std::string {
        if (!label.is_valid()) return {};
        return label.get_label_point((Fraction(frame) / rate).to_double()).get_string();
    };
}

} // namespace

Finder::Finder(EditFilm film, Clock clock, const CheckOptions& options, const LogRows* log)
    : film_(std::move(film)), clock_(std::move(clock)), options_(options), log_(log),
      inked_rolls_(rolls_with_ink(film_.strips)) {
    strips_of_.resize(film_.events.size());
    for (const Strip& strip : film_.strips)
        strips_of_[static_cast<std::size_t>(strip.item)].push_back(&strip);
}

std::string Finder::channel_of(int layer) const {
    if (options_.uses.kind == 2) return "A" + std::to_string(options_.uses.number);
    return "V" + std::to_string(layer + 1);
}

// Ink numbers are printed along a whole roll of workprint, and lists print those of the main track alone.
bool Finder::needs_ink(const Strip& strip) const {
    if (options_.ink == InkNeed::none || strip.layer > 0) return false;
    return options_.ink == InkNeed::all || inked_rolls_.count(strip.rolls.listed) > 0;
}

const Strip* Finder::strip_at(const FilmEvent& event, std::int64_t frame) const {
    if (event.item < 0) return nullptr;
    for (const Strip* strip : strips_of_[static_cast<std::size_t>(event.item)])
        if (strip->start <= frame && frame < strip->end) return strip;
    return nullptr;
}

FoundAt Finder::place_at(const FilmEvent& event, std::int64_t frame) const {
    FoundAt place;
    place.file = options_.edit_file;
    place.where = event.where;
    place.channel = channel_of(event.layer);
    place.event = event.event;
    place.frame = frame;
    place.timecode = clock_(frame);
    place.name = event.name;
    const Strip* strip = strip_at(event, frame);
    const Rolls& rolls = strip ? strip->rolls : event.rolls;
    const bool tape_for_roll = log_ && rolls.camera.empty() && rolls.listed == rolls.tape;
    place.roll = tape_for_roll ? "" : rolls.listed;
    place.tape = rolls.tape;
    if (strip && strip->timecode) place.source_timecode = strip->timecode.text_at(frame - strip->start);
    return place;
}

void Finder::find(Code code, Severity severity, const FilmEvent& event, std::int64_t frame, std::string what) {
    findings_.push_back({code, severity, place_at(event, frame), std::move(what)});
}

Findings Finder::run(const embedded::Warnings& warnings) {
    take_warnings(warnings);
    if (log_) look_at_log();
    look_at_film();
    find_lost_film();
    find_optical_errors();
    find_meetings();
    find_cut_names();
    find_bad_texts();
    sort_findings(findings_);
    return std::move(findings_);
}

void Finder::take_warnings(const embedded::Warnings& warnings) {
    using embedded::WarningKind;
    static constexpr struct {
        WarningKind kind;
        Code code;
        Severity severity;
    } kinds[] = {
        {WarningKind::doubt, Code::reading, Severity::doubt},
        {WarningKind::note, Code::reading, Severity::note},
        {WarningKind::dropped, Code::dropped, Severity::doubt},
        {WarningKind::replaced, Code::replaced, Severity::doubt},
        {WarningKind::rate, Code::rate, Severity::doubt},
        {WarningKind::text, Code::bad_text, Severity::note},
    };
    for (const embedded::Warning& warning : warnings) {
        for (const auto& known : kinds)
            if (known.kind == warning.kind) findings_.push_back({known.code, known.severity, {}, warning.text});
    }
}

void Finder::find_optical_errors() {
    for (const Optical& optical : film_.opticals) {
        if (!optical.error) continue;
        FilmEvent event;
        event.where = optical.where;
        event.name = optical.name;
        find(Code::optical_error, Severity::doubt, event, optical.start,
             "optical " + std::to_string(optical.number) + " of " + frames_text(optical.end - optical.start) +
                 " can't be described: it lies over no event of the lowest track, or another optical has those");
    }
}

Findings check_edit(const EditPtr& edit, const CheckOptions& options, const LogRows* log,
                    const embedded::Warnings& warnings) {
    return Finder(film_of_edit(edit, options.uses, log), clock_of(edit), options, log).run(warnings);
}

Findings check_table(const recdb& table, const CheckOptions& options) {
    return Finder(
               film_of_table(table), [](std::int64_t) { return std::string(); }, options, nullptr)
        .run({});
}

} // namespace film
