// Clip items with a medium.

#include "formats/fcp7xml/fcp7_items.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <utility>

namespace formats::fcp7 {
namespace {

/// Curves of more lines than that are one event: the lab's, with the frames at both ends.
constexpr std::size_t most_pieces = 12;

/// The angle that is shown, or heard.
Element active_angle(const Element& multiclip, int kind) {
    const std::string_view active = kind == sound_channel ? "activeaudioangle" : "activevideoangle";
    for (const Element angle : multiclip.children())
        if (angle.name() == "angle" && truth_in(angle, active, false)) return angle;
    return {};
}

/// Markers of a clip count its media's frames.
void add_marks(const Element& element, const Piece& piece, const Fraction& rate, Teller& teller, Item& item) {
    if (piece.speed == Fraction(0)) return;
    for (const Element marker : element.children()) {
        if (marker.name() != "marker") continue;
        const std::optional<Fraction> in = place_in(marker, "in", teller);
        if (!in) continue;
        const Fraction frame = (*in - piece.media) / piece.speed;
        if (frame < Fraction(0) || piece.length <= frame) continue;
        item.marks.push_back({frame / rate, text_of_marker(marker), 4});
    }
}

/// How long a medium is, in frames of the item.
std::optional<Fraction> length_of(const Media& media, const Context& context) {
    const std::optional<Fraction> frames = number_from(media.file.text_of("duration"));
    if (!frames) return std::nullopt;
    const Clock& clock = context.clock;
    const Rate rate = context.index.rate_of(media.file).value_or(media.rate);
    return clock.seconds(*frames, rate) * clock.rate(media.rate);
}

/// One program counts the in of stills at the rate of their file, unlike anything else. The ticks beside it tell.
bool counts_as_file(const Element& item, const Media& media, const Rate& file) {
    const std::optional<Fraction> in = number_from(item.text_of("in"));
    const std::optional<Fraction> seconds = seconds_of_ticks(item.text_of("pproTicksIn"));
    if (!in || !seconds || file.timebase == media.rate.timebase) return false;
    const auto off = [&](const Rate& rate) { return magnitude(*seconds * rate.frames_a_second() - *in); };
    return off(file) <= Fraction(1) && std::max(off(file), Fraction(1, 2)) < off(media.rate);
}

} // namespace

/// Where the stretch of media lies on the source. Played backward its frames are those from the one at the start of
/// the piece down, so the stretch ends behind that.
void Flattener::place_piece(const Piece& piece, const Rate& rate, embedded::EventDescription& event) const {
    const Clock& clock = context_.clock;
    event.duration = clock.seconds(piece.length, rate);
    event.speed = piece.speed;
    event.source_in = piece.speed < Fraction(0) ? clock.seconds(piece.media_end(), rate) + clock.frame()
                                                : clock.seconds(piece.media, rate);
}

Items Flattener::clip(const Placed& placed, const Stretch& own, const Element& angle) {
    const Element& element = placed.element;
    const Media media = media_of(element, angle.child("clip") ? context_.index.full(angle.child("clip")) : Element(),
                                 placed.rate, context_);
    if (is_generated(media)) {
        return made_up(placed, own, name_of(media), is_black(media));
    }
    if (!media.file) context_.teller.doubt(element, "its file isn't in the document");
    Pieces pieces = pieces_of(placed, own, media);
    const Fraction delay = number_in(angle, "mediadelay", context_.teller).value_or(Fraction(0));
    const Fraction moved =
        number_in(element.child("subclipinfo"), "startoffset", context_.teller).value_or(Fraction(0));
    Items items;
    for (Piece& piece : pieces) {
        piece.media = piece.media - delay;
        add_black_ahead(piece, placed, items);
    }
    const embedded::SourceId source = context_.sources.add(describe_source(media, context_));
    add_events(pieces, moved, placed, media, source, items);
    return items;
}

/// An angle whose camera started later is black till then.
void Flattener::add_black_ahead(Piece& piece, const Placed& placed, Items& items) {
    if (!placed.element.child("multiclip") || piece.speed != Fraction(1) || Fraction(0) <= piece.media) return;
    const Fraction ahead = std::min(-piece.media, piece.length);
    items.push_back(item_like(placed, context_.clock.seconds(ahead, placed.rate)));
    items.back().kind = Item::Kind::black;
    piece.length = piece.length - ahead;
    piece.media = piece.media + ahead;
}

Items Flattener::multiclip(const Placed& placed, const Stretch& own) {
    const Element multiclip = context_.index.full(placed.element.child("multiclip"));
    Element angle = active_angle(multiclip, kind_);
    if (!angle) {
        angle = multiclip.child("angle");
        context_.teller.doubt(placed.element, angle ? "none of its angles is the active one; the first counts"
                                                    : "is a multiclip without angles");
    }
    return clip(placed, own, angle);
}

Pieces Flattener::pieces_of(const Placed& placed, const Stretch& own, const Media& media) {
    const Element& element = placed.element;
    if (truth_in(element, "stillframe", false)) {
        const Fraction frame = number_in(element, "stillframeoffset", context_.teller).value_or(Fraction(0));
        return {{own.to - own.from, frame, 0}};
    }
    const Retime retime(element, length_of(media, context_), context_.teller);
    if (!retime.counts() && is_still(media, own.from, context_.teller)) return {{own.to - own.from, Fraction(0), 0}};
    if (retime.counts()) return retime.pieces(own.from, own.to);
    const Rate file = context_.index.rate_of(media.file).value_or(media.rate);
    if (!counts_as_file(element, media, file)) return retime.pieces(own.from, own.to);
    context_.teller.rate(element, "its in counts frames of its file, not its own");
    const Fraction in = number_from(element.text_of("in")).value_or(Fraction(0));
    const Fraction from = in * context_.clock.rate(media.rate) / context_.clock.rate(file) + (own.from - in);
    return retime.pieces(from, from + own.to - own.from);
}

/// Whether each piece can be an event of its own: where there aren't too many, and no transition reaches beyond those
/// at the ends.
bool Flattener::stand_apart(const Pieces& pieces, const Placed& placed) const {
    return pieces.size() <= most_pieces && placed.head_taken * placed.own_frames <= pieces.front().length &&
           placed.tail_taken * placed.own_frames <= pieces.back().length;
}

void Flattener::add_events(Pieces pieces, const Fraction& moved, const Placed& placed, const Media& media,
                           embedded::SourceId source, Items& items) {
    std::vector<embedded::EffectDescription> effects = effects_of(placed.element, context_);
    if (Fraction(0) < placed.length())
        std::erase_if(pieces, [](const Piece& piece) { return piece.length <= Fraction(0); });
    if (pieces.size() > 1) {
        const bool apart = stand_apart(pieces, placed);
        context_.teller.replaced(placed.element, apart ? "plays at a variable speed; each of its " +
                                                             std::to_string(pieces.size()) + " parts is an event"
                                                       : "plays at a variable speed; it is an effect for the lab");
        if (!apart) {
            pieces = {averaged(pieces)};
            effects.push_back({"Variable Speed", true, {}});
        }
    }
    const Fraction mixed = number_in(placed.element, "mixedratesoffset", context_.teller).value_or(Fraction(0));
    const Fraction extra = context_.clock.seconds(moved, placed.rate) +
                           context_.clock.seconds(mixed, context_.index.rate_of(media.file).value_or(media.rate));
    for (const Piece& piece : pieces) {
        Item item = item_like(placed, Fraction(0));
        item.kind = Item::Kind::event;
        place_piece(piece, placed.rate, item.event);
        item.event.source_in = item.event.source_in + extra;
        item.event.source = source;
        item.event.effects = effects;
        add_marks(placed.element, piece, context_.clock.rate(placed.rate), context_.teller, item);
        items.push_back(std::move(item));
    }
}

} // namespace formats::fcp7
