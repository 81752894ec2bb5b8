#include "film/finder.h"

#include "film/edit_walk.h"

#include <algorithm>

namespace film {

Finder::Finder(const EditPtr& edit, const CheckOptions& options, const LogRows* log)
    : edit_(edit), options_(options), log_(log), film_(film_of_edit(edit, options.uses, log)) {
    strips_of_.resize(film_.events.size());
    for (const Strip& strip : film_.strips)
        strips_of_[static_cast<std::size_t>(strip.item)].push_back(&strip);
}

std::string Finder::channel_of(int layer) const {
    if (options_.uses.kind == 2) return "A" + std::to_string(options_.uses.number);
    return "V" + std::to_string(layer + 1);
}

std::string Finder::timecode_at(std::int64_t frame) const {
    const EditLabel* label = edit_->getLabel(user_label_timecode, {medium_source_picture, 2});
    if (!label->is_valid()) return {};
    return label->get_label_point((Fraction(frame) / film_rate(edit_)).to_double()).get_string();
}

FoundAt Finder::place_at(const FilmEvent& event, std::int64_t frame) const {
    FoundAt place;
    place.file = options_.edit_file;
    place.where = event.where;
    place.channel = channel_of(event.layer);
    place.event = event.event;
    place.frame = frame;
    place.timecode = timecode_at(frame);
    place.name = event.name;
    return place;
}

void Finder::find(Code code, Severity severity, const FilmEvent& event, std::int64_t frame, std::string what) {
    findings_.push_back({code, severity, place_at(event, frame), std::move(what)});
}

Findings Finder::run(const embedded::Warnings& warnings) {
    take_warnings(warnings);
    if (log_) look_at_log();
    look_at_film();
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
                 " lies over no event of the lowest track, so it can't be described");
    }
}

Findings check_edit(const EditPtr& edit, const CheckOptions& options, const LogRows* log,
                    const embedded::Warnings& warnings) {
    return Finder(edit, options, log).run(warnings);
}

} // namespace film
