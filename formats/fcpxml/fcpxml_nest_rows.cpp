// What is shown of a nest: its content as one row, at a speed or held, cut at both ends; or rendered material.

#include "formats/fcpxml/fcpxml_story.h"

#include "formats/timeline/retiming.h"

#include <algorithm>
#include <utility>

namespace formats::fcpxml {
namespace {

using embedded::WarningKind;
using timeline::Stretch;

Stretch stretch_of(const Span& span) { return {span.lowest(), span.highest()}; }

/// Whether there are pictures, but all before or behind what is taken.
bool misses(const std::vector<Span>& spans, const Runs& runs) {
    const auto meets = [&](const Run& run) {
        return std::any_of(spans.begin(), spans.end(), [&](const Span& span) {
            const Stretch taken = stretch_of(span);
            if (taken.from == taken.to) return run.start <= taken.from && taken.from <= run.end();
            return taken.from < run.end() && run.start < taken.to;
        });
    };
    return std::any_of(runs.begin(), runs.end(), [](const Run& run) { return has_picture(run.items); }) &&
           std::none_of(runs.begin(), runs.end(), meets);
}

/// Those that are seen, though no stretch has their cut. Where the speed changes inside of a transition, it stays with
/// the stretch that has it.
void tell_of_cut_transitions(const Run& run, const std::vector<Stretch>& taken, embedded::Warnings& warnings) {
    const Fraction total = timeline::length_of(run.items);
    Fraction cut;
    for (const Item& item : run.items) {
        if (!item.is_transition()) {
            cut = cut + item.length();
            continue;
        }
        const auto own = [&](const Stretch& stretch) {
            return Stretch{stretch.from - run.start, stretch.to - run.start};
        };
        const bool seen = std::any_of(taken.begin(), taken.end(), [&](const Stretch& stretch) {
            return timeline::is_seen(*item.transition, cut, own(stretch));
        });
        const bool kept = std::any_of(taken.begin(), taken.end(), [&](const Stretch& stretch) {
            return timeline::keeps_cut(own(stretch), cut, total);
        });
        if (seen && !kept) warnings.push_back(timeline::cut_off(*item.transition));
    }
}

} // namespace

// A stretch that begins a hair before a cut must not show a piece of what lies before that.
Stretch StoryReader::Content::settled(const Stretch& stretch) const {
    if (!frames) return stretch;
    const Stretch whole{frames->settled(stretch.from), frames->settled(stretch.to)};
    return whole.from < whole.to ? whole : stretch;
}

std::optional<Items> StoryReader::one_row(const Element& element, const Content& content, const Stretch& stretch) {
    const auto same = [this](int a, int b) {
        const Shot &x = shots_[static_cast<std::size_t>(a)], &y = shots_[static_cast<std::size_t>(b)];
        return x.asset && x.asset == y.asset;
    };
    std::optional<Items> row = merged(content.runs, stretch, same, work_);
    check_work(element);
    if (row)
        for (Item& item : *row)
            ++item.depth;
    return row;
}

Items StoryReader::rendered(const Element& element, const Content& content, const Span& span, const Fraction& pace) {
    const Element media = context_.resources.find(element.attribute("ref"));
    const std::string name = name_or(element, media.attribute("name"));
    context_.warn(element,
                  sound_ ? "several sounds lie beside each other in it, so it is one event without numbers"
                         : "several pictures lie above each other in it, so it is one event of rendered material",
                  sound_ ? WarningKind::note : WarningKind::replaced);
    Shot shot;
    shot.element = element;
    shot.name = name;
    shot.made = "comp:" + name;
    Items items(1);
    Item& item = items[0];
    item.kind = Item::Kind::event;
    item.event.label = place_of(element);
    item.event.source = add_shot(std::move(shot));
    item.event.duration = (span.to - span.from) * pace;
    item.event.source_in = stretch_of(span).from - content.start;
    item.event.speed = span.slope / pace;
    return items;
}

/// What a frame lasts on the clock of a nest.
Fraction StoryReader::frame_of(const Content& content, const Level& level) {
    return Fraction(1) / (content.frames ? content.frames->rate : level.rate);
}

/// The speed at which the frames of an item's medium go by as those around it do, or its seconds.
Fraction StoryReader::normal_speed(const Item& item, const Fraction& frame) const {
    if (item.kind != Item::Kind::event) return 1;
    const Shot& shot = shots_[static_cast<std::size_t>(item.event.source)];
    if (!shot.conformed || !shot.made.empty() || !shot.format.info) return 1;
    return Fraction(1) / (frame * context_.true_rate(shot.format.info->rate()));
}

void StoryReader::tell_if_uneven(const Element& element, const Items& row, const Fraction& speed,
                                 const Fraction& frame) {
    const auto uneven = [&](const Item& item) {
        return item.kind == Item::Kind::event &&
               timeline::plays_unevenly(item.event.speed / normal_speed(item, frame), speed);
    };
    if (!sound_ && std::any_of(row.begin(), row.end(), uneven))
        context_.warn_once(element, std::string(timeline::plays_unevenly_text), WarningKind::doubt);
}

std::optional<Items> StoryReader::frozen_nest(const Element& element, const Content& content, const Span& span,
                                              const Fraction& pace, const Level& level) {
    const Fraction length = (span.to - span.from) * pace;
    const Fraction a_bit = half_frame(level);
    const Fraction value = content.frames ? content.frames->settled(span.value) : span.value;
    std::optional<Items> row = one_row(element, content, {value, value + a_bit});
    Fraction at;
    if (row && !has_picture(*row)) {
        row = one_row(element, content, {value - a_bit, value});
        at = a_bit;
    }
    if (!row) return std::nullopt;
    const Fraction frame = frame_of(content, level);
    for (Item& item : *row)
        if (item.event.speed < Fraction(0)) timeline::turn(item, frame, normal_speed(item, frame));
    Items items;
    items.push_back(frozen(*row, at, length, frame, content.frames.has_value()));
    return items;
}

std::optional<Items> StoryReader::piece_of_nest(const Element& element, const Content& content, const Span& span,
                                                const Fraction& pace, const Level& level) {
    if (span.slope == Fraction(0)) return frozen_nest(element, content, span, pace, level);
    std::optional<Items> row = one_row(element, content, content.settled(stretch_of(span)));
    if (!row) return std::nullopt;
    const Fraction slope = span.slope / pace, frame = frame_of(content, level);
    if (content.frames) tell_if_uneven(element, *row, slope / (frame * level.rate), frame);
    if (slope < Fraction(0))
        for (Item& item : *row)
            timeline::turn(item, frame, normal_speed(item, frame));
    Items items = slope == Fraction(1) ? std::move(*row) : timeline::at_speed(std::move(*row), slope, frame);
    fit(items, (span.to - span.from) * pace);
    return items;
}

Items StoryReader::nest(const Element& element, const Content& content, const Clock& clock, const Fraction& length,
                        const Level& level) {
    Items items;
    const std::vector<Span> spans = spans_of(element, clock, length, level);
    std::vector<Stretch> taken;
    bool all_in_rows = true;
    for (const Span& span : spans) {
        taken.push_back(content.settled(stretch_of(span)));
        std::optional<Items> piece = piece_of_nest(element, content, span, clock.pace, level);
        if (!piece) {
            piece = rendered(element, content, span, clock.pace);
            all_in_rows = false;
        }
        for (Item& item : *piece) {
            if (span.curved && item.kind == Item::Kind::event)
                item.event.effects.push_back({"Variable speed", true, {}});
            items.push_back(std::move(item));
        }
    }
    if (!sound_ && !has_picture(items) && misses(spans, content.runs))
        context_.warn(element, "shows nothing: all that it holds lies elsewhere on its clock", WarningKind::replaced);
    if (!sound_ && all_in_rows)
        for (const Run& run : content.runs)
            tell_of_cut_transitions(run, taken, context_.warnings);
    return items;
}

} // namespace formats::fcpxml
