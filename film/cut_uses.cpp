#include "film/cut_uses.h"

#include "embedded/label_kinds.h"
#include "film/strip_frames.h"

#include <algorithm>

namespace film {
namespace {

/// Blanks and underscores fill up a prefix that isn't there.
bool tells_film(const std::string& prefix) { return prefix.find_first_not_of(" _") != std::string::npos; }

/// Frames of film that go by while the edit goes on by one; nothing where numbers don't tell each frame.
std::optional<Fraction> step_of(const Strip& strip) {
    if (strip.key) return strip.key.step;
    if (strip.timecode.step == strip.source.step) return strip.source.step;
    return std::nullopt;
}

class Cutting {
public:
    Cutting(const EditFilm& film, CutMethod method) : film_(film), method_(method) {}

    bool is_printed(const Strip& strip, const Fraction& step) const {
        if (strip.layer > 0 || !(step == Fraction(1))) return true;
        if (strip.optical == 0) return false;
        return method_ != CutMethod::ab ||
               std::binary_search(film_.effects.begin(), film_.effects.end(), strip.optical);
    }
    CutUse use_of(const FilmNeed& need, const Fraction& step) const {
        const Strip& strip = need.strip;
        CutUse use;
        use.run = need.run;
        use.frames = need.frames;
        const Count& count = told_by(strip);
        use.begins = count.at(0) + strip.lead * count.step - strip.pushed;
        use.ends = count.at(strip.length()) + strip.tail * count.step - strip.pushed;
        use.reel = need.reel;
        use.start = strip.start;
        use.end = strip.end;
        use.event = use.last_event = strip.event;
        use.layer = strip.layer;
        use.printed = is_printed(strip, step);
        use.off = strip.off;
        use.name = strip.name;
        use.where = strip.where;
        return use;
    }

private:
    const EditFilm& film_;
    const CutMethod method_;
};

/// One goes on where the other ends, in the edit and on the film.
bool goes_on(const CutUse& a, const CutUse& b) {
    const bool next = b.frames.first == a.frames.last + 1 || (!b.printed && a.ends == b.begins);
    return a.reel == b.reel && a.layer == b.layer && a.printed == b.printed && a.end == b.start && a.run == b.run &&
           next;
}

void add_joined(CutUses uses, CutUses& all) {
    for (CutUse& use : uses) {
        if (all.empty() || !goes_on(all.back(), use)) {
            all.push_back(std::move(use));
            continue;
        }
        CutUse& joined = all.back();
        joined.frames.last = std::max(joined.frames.last, use.frames.last);
        joined.end = use.end;
        joined.ends = use.ends;
        joined.last_event = use.last_event;
        joined.off = std::max(joined.off, use.off);
    }
}

} // namespace

Strand strand_of(const FilmRun& run) {
    const bool told = embedded::label_kind(run.kind).use == embedded::LabelUse::key && tells_film(run.prefix);
    return {run.kind, run.prefix, told ? "" : run.roll};
}

int perforations_of_frame(label_t kind) { return std::max(get_static_label_cvt(kind)->samples_per_frame(), 1); }

FrameRange perforations_of(const FilmRun& run, const FrameRange& frames) {
    const std::int64_t frame = perforations_of_frame(run.kind);
    return {frames.first * frame + run.perforation, (frames.last + 1) * frame + run.perforation - 1};
}

// By events first: in a transition those of both events stand at the same frames of the edit.
void add_cut(const EditFilm& film, const LogRows* log, CutMethod method, int reel, CutFilm& all) {
    ReelNeeds needs;
    add_needs(film, log, reel, needs);
    std::stable_sort(needs.needs.begin(), needs.needs.end(), [](const FilmNeed& a, const FilmNeed& b) {
        return std::tuple(a.strip.layer, a.strip.item, a.strip.start) <
               std::tuple(b.strip.layer, b.strip.item, b.strip.start);
    });
    all.unheld.insert(all.unheld.end(), needs.unknown.begin(), needs.unknown.end());
    const Cutting cutting(film, method);
    CutUses parts;
    for (const FilmNeed& need : needs.needs) {
        const std::optional<Fraction> step = step_of(need.strip);
        if (step)
            parts.push_back(cutting.use_of(need, *step));
        else
            all.unheld.push_back({reel, need.strip});
    }
    CutUses events;
    add_joined(std::move(parts), events);
    std::stable_sort(events.begin(), events.end(), [](const CutUse& a, const CutUse& b) {
        return std::tuple(a.layer, a.start) < std::tuple(b.layer, b.start);
    });
    add_joined(std::move(events), all.uses);
}

} // namespace film
