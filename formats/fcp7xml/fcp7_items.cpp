#include "formats/fcp7xml/fcp7_items.h"

#include "formats/timeline/retiming.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace formats::fcp7 {
namespace {

constexpr std::size_t deepest_nest = 100;
/// Nests that hold nests several times each grow without bound.
constexpr std::size_t most_nested = 100'000;
std::string label_of(const Element& element) {
    return "line " + std::to_string(element.line()) + " \"" + std::string(element.text_of("name")) + "\"";
}

/// Whether anything of the track can be seen or heard.
bool shows_anything(const Element& track) {
    const auto shown = [](const Element& child) {
        return (child.name() == "clipitem" || child.name() == "generatoritem") && is_enabled(child);
    };
    const auto children = track.children();
    return is_enabled(track) && std::any_of(children.begin(), children.end(), shown);
}

} // namespace

std::vector<Element> tracks_of(const Element& sequence, int kind) {
    std::vector<Element> tracks;
    const Element media = sequence.child("media").child(kind == sound_channel ? "audio" : "video");
    for (const Element child : media.children())
        if (child.name() == "track") tracks.push_back(child);
    return tracks;
}

Rate rate_of_sequence(const Element& sequence, const Index& index) {
    if (const std::optional<Rate> rate = index.rate_of(sequence)) return *rate;
    for (const int kind : {picture_channel, sound_channel})
        for (const Element& track : tracks_of(sequence, kind))
            for (const Element item : track.children())
                if (const std::optional<Rate> rate = item.name() == "clipitem" ? index.rate_of(item) : std::nullopt)
                    return *rate;
    throw ReadError{place_of(sequence) + ": nothing tells its frames a second"};
}

void Flattener::count(std::size_t more, const Element& where) {
    made_ += more;
    if (made_ > most_nested)
        throw ReadError{place_of(where) + ": nests in nests come to more than " + std::to_string(most_nested) +
                        " items"};
}

Item Flattener::item_like(const Placed& placed, const Fraction& length) const {
    Item item;
    item.depth = depth_;
    item.event.duration = length;
    item.event.label = label_of(placed.element);
    return item;
}

/// What a fade comes from or goes to where the next item follows at once: without it the two would dissolve.
Item Flattener::no_black(const Placed& placed) const {
    Item black = item_like(placed, Fraction(0));
    black.kind = Item::Kind::black;
    return black;
}

Items Flattener::track(const Element& track, const Element& sequence, int kind) {
    kind_ = kind;
    open_.assign(1, sequence.number());
    const Rate rate = rate_of_sequence(sequence, context_.index);
    Items items = items_of(track, rate, kind);
    if (is_enabled(track)) return items;
    Items gap(1);
    gap.front().event.duration = timeline::length_of(items);
    gap.front().event.label = "line " + std::to_string(track.line());
    return gap;
}

Items Flattener::items_of(const Element& track, const Rate& rate, int kind) {
    Items items;
    Fraction now;
    bool nests = false, faded = false;
    const auto add_transition = [&](std::unique_ptr<embedded::TransitionDescription>& transition) {
        if (!transition) return;
        Item& added = items.emplace_back();
        added.kind = Item::Kind::transition;
        added.depth = depth_;
        added.transition = std::move(transition);
    };
    for (Placed& placed : place_items(track, rate, kind, context_)) {
        const bool fades_in = placed.head && !placed.joined && !items.empty() && items.back().kind == Item::Kind::event;
        if (now < placed.from)
            items.push_back(item_like(placed, context_.clock.seconds(placed.from - now, rate)));
        else if (fades_in || (faded && is_enabled(placed.element)))
            items.push_back(no_black(placed));
        add_transition(placed.head);
        Items content = content_of(placed);
        if (kind == picture_channel && content.size() > 1)
            content = timeline::on_whole_frames(std::move(content), placed.from, context_.clock.rate(rate));
        if (depth_ > 0) count(content.size(), placed.element);
        std::move(content.begin(), content.end(), std::back_inserter(items));
        faded = static_cast<bool>(placed.tail);
        add_transition(placed.tail);
        nests = nests || placed.element.child("sequence");
        now = placed.to;
    }
    if (nests) timeline::drop_inner_transitions(items, context_.teller.warnings());
    return items;
}

/// The item's own frames between its cuts, told by its in; where that isn't given by its out.
Items Flattener::content_of(const Placed& placed) {
    const Fraction whole = (placed.end - placed.start) * placed.own_frames;
    const Fraction in = placed.in ? *placed.in : placed.out ? *placed.out - whole : Fraction(0);
    const Fraction from = in + (placed.from - placed.start) * placed.own_frames;
    const Stretch own{from, from + placed.length() * placed.own_frames};
    if (!is_enabled(placed.element)) {
        ++items_off_;
        return gap_for(placed, own);
    }
    if (placed.element.name() == "generatoritem") return generator(placed, own);
    if (placed.element.child("sequence")) return nest(placed, own);
    if (placed.element.child("multiclip")) return multiclip(placed, own);
    return clip(placed, own, {});
}

Items Flattener::gap_for(const Placed& placed, const Stretch& own) const {
    Items items;
    items.push_back(item_like(placed, context_.clock.seconds(own.to - own.from, placed.rate)));
    return items;
}

/// Black, or an event of no film: a title, a matte.
Items Flattener::made_up(const Placed& placed, const Stretch& own, const std::string& name, bool black) {
    Items items = gap_for(placed, own);
    Item& item = items.front();
    item.kind = black ? Item::Kind::black : Item::Kind::event;
    if (!black) item.event.source = context_.sources.add(describe_rendered(name, "name:" + name, context_));
    item.event.effects = effects_of(placed.element, context_);
    return items;
}

Items Flattener::generator(const Placed& placed, const Stretch& own) {
    const Element effect = placed.element.child("effect");
    std::string name(placed.element.text_of("name"));
    if (name.empty()) name = effect.text_of("name");
    const bool slug = ascii::same(effect.text_of("effectid"), "Slug") || (!effect && is_named_black(name));
    return made_up(placed, own, name, slug);
}

/// Of a nest's pictures all tracks are seen; of its sound an item takes one, if it says which.
std::vector<Element> Flattener::shown_tracks(const Element& sequence, const Element& item) const {
    std::vector<Element> tracks = tracks_of(sequence, kind_);
    const std::optional<Fraction> index = number_from(item.child("sourcetrack").text_of("trackindex"));
    const Fraction count(static_cast<std::int64_t>(tracks.size()));
    if (kind_ == sound_channel && index && Fraction(1) <= *index && *index <= count)
        tracks = {tracks[static_cast<std::size_t>(index->floor() - 1)]};
    std::erase_if(tracks, [](const Element& track) { return !shows_anything(track); });
    return tracks;
}

Items Flattener::nest(const Placed& placed, const Stretch& own) {
    const Element& element = placed.element;
    const Element nested = context_.index.full(element.child("sequence"));
    const Pieces pieces = Retime(element, std::nullopt, context_.teller).pieces(own.from, own.to);
    if (!nested) {
        context_.teller.replaced(element, "its sequence isn't in the document; it is rendered material");
        return rendered_nest(nested, placed, pieces);
    }
    if (std::find(open_.begin(), open_.end(), nested.number()) != open_.end()) {
        context_.teller.replaced(element, "is a sequence that holds itself; a gap stands for it");
        return gap_for(placed, own);
    }
    if (open_.size() >= deepest_nest)
        throw ReadError{place_of(element) + ": sequences lie more than " + std::to_string(deepest_nest) +
                        " deep in each other"};
    if (element.child("marker") || nested.child("marker"))
        context_.teller.dropped(element, "is a sequence whose markers are left out");
    const std::vector<Element> tracks = shown_tracks(nested, element);
    if (tracks.empty()) return gap_for(placed, own);
    if (own.from == own.to) {
        context_.teller.replaced(element, "is a sequence that transitions show all of; it is rendered material");
        return rendered_nest(nested, placed, pieces);
    }
    const bool plain = pieces.size() == 1 && pieces.front().speed == Fraction(1);
    if (plain && tracks.size() == 1) return spliced_nest(nested, tracks.front(), placed, pieces.front());
    if (plain)
        context_.teller.replaced(element, "is a sequence of " + std::to_string(tracks.size()) +
                                              " tracks that show something; it is rendered material");
    else
        context_.teller.replaced(element, "is a sequence at another speed; it is rendered material");
    return rendered_nest(nested, placed, pieces);
}

Items Flattener::spliced_nest(const Element& nested, const Element& track, const Placed& placed, const Piece& taken) {
    if (!effects_of(placed.element, context_).empty())
        context_.teller.dropped(placed.element, "is a sequence with filters, which are left out");
    open_.push_back(nested.number());
    ++depth_;
    Items content = items_of(track, rate_of_sequence(nested, context_.index), kind_);
    --depth_;
    open_.pop_back();
    const Clock& clock = context_.clock;
    const Stretch stretch{clock.seconds(taken.media, placed.rate), clock.seconds(taken.media_end(), placed.rate)};
    return timeline::spliced(std::move(content), stretch, item_like(placed, Fraction(0)).event, depth_ + 1,
                             &context_.teller.warnings());
}

Items Flattener::rendered_nest(const Element& nested, const Placed& placed, const Pieces& pieces) {
    std::string name(nested.text_of("name"));
    if (name.empty()) name = placed.element.text_of("name");
    const Piece piece = averaged(pieces);
    Items items;
    items.push_back(item_like(placed, Fraction(0)));
    Item& item = items.front();
    item.kind = Item::Kind::event;
    item.event.source = context_.sources.add(describe_rendered(name, "comp:" + name, context_));
    item.event.effects = effects_of(placed.element, context_);
    place_piece(piece, placed.rate, item.event);
    return items;
}

} // namespace formats::fcp7
