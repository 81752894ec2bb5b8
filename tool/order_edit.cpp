#include "tool/order_edit.h"

#include "embedded/edit_builder.h"
#include "host/channel_kinds.h"
#include "tool/tool_error.h"

#include <algorithm>

namespace tool {
namespace {

using embedded::EventDescription;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::RateInfo;
using embedded::SourceDescription;
using embedded::WarningKind;
using film::OrderPiece;
using film::OrderToTell;
using Reel = OrderEditing::Reel;

/// A piece with what is known of its timecode.
struct Scan {
    const OrderPiece* piece = nullptr;
    std::size_t place = 0;
    film::PieceTimecode timecode;
    const RateInfo* rate = nullptr;

    /// Frames of timecode for one of film.
    Fraction step() const {
        if (timecode.count) return timecode.count.step;
        return Fraction(1) / embedded::film_share(rate->nominal);
    }
    Fraction seconds(std::int64_t film_frames) const { return Fraction(film_frames) * step() / rate->rate(); }
};

/// Those of the reels go first, as 24 and 23.976 count alike.
const RateInfo* rate_of(const OrderToTell& order, const OrderPiece& piece, const film::Count& timecode) {
    const RateInfo* of_reel = order.reels[static_cast<std::size_t>(order.needs[piece.uses.front()].reel)].rate;
    if (!timecode) return of_reel ? of_reel : embedded::nearest_rate(24.0);
    const auto rates = embedded::rates_counting(timecode.kind);
    if (rates.empty()) return nullptr;
    if (std::find(rates.begin(), rates.end(), of_reel) != rates.end()) return of_reel;
    const auto same_film = std::find_if(rates.begin(), rates.end(), [&](const RateInfo* rate) {
        return of_reel && embedded::film_rate_of(*rate) == embedded::film_rate_of(*of_reel);
    });
    return same_film == rates.end() ? rates.front() : *same_film;
}

class OrderEdit {
public:
    OrderEdit(const OrderToTell& order, const OrderEditing& editing, embedded::Warnings& warnings)
        : order_(order), editing_(editing), warnings_(warnings) {}

    EditPtr edit();

private:
    void find_scans();
    const RateInfo* rate_of_edit() const;
    void check_rates() const;
    embedded::EditDescription description() const;
    SourceDescription source_of(const Scan& scan);
    void add_labels(const Scan& scan, SourceDescription& source);
    void add_reels(const Scan& scan, const film::PieceFacts& facts, SourceDescription& source);
    void add_images(const Scan& scan, SourceDescription& source);
    Fraction next_start(const Fraction& end) const;
    EventDescription event_of(const Scan& scan, embedded::SourceId source) const;
    void tell(const Scan& scan, const std::string& what) {
        warnings_.push_back({WarningKind::doubt, "piece " + std::to_string(scan.place + 1) + ": " + what});
    }

    const OrderToTell& order_;
    const OrderEditing& editing_;
    embedded::Warnings& warnings_;
    std::vector<Scan> scans_;
};

void OrderEdit::find_scans() {
    for (std::size_t i = 0; i < order_.pieces.size(); ++i) {
        Scan scan{&order_.pieces[i], i, film::timecode_of(order_, order_.pieces[i]), nullptr};
        scan.rate = rate_of(order_, *scan.piece, scan.timecode.count);
        if (!scan.rate) {
            tell(scan, "left out, as no edit counts as the timecode does");
            continue;
        }
        if (!scan.timecode.runs_on)
            tell(scan, "the shots name different timecodes for one frame; the first one's stand");
        if (!scan.timecode.count && !editing_.needs_timecode) tell(scan, "without a timecode; times count from 0");
        scans_.push_back(std::move(scan));
    }
}

const RateInfo* OrderEdit::rate_of_edit() const {
    for (const Scan& scan : scans_)
        if (scan.timecode.count) return scan.rate;
    return scans_.empty() ? embedded::nearest_rate(24.0) : scans_.front().rate;
}

void OrderEdit::check_rates() const {
    const RateInfo* first = rate_of_edit();
    for (const Scan& scan : scans_)
        if (editing_.one_rate && scan.timecode.count && scan.rate->nominal != first->nominal)
            throw JobError(std::string(editing_.option) + ": the pieces count timecode at " + first->name +
                           " and, piece " + std::to_string(scan.place + 1) + ", at " + scan.rate->name +
                           "; such a file has one rate, and --ale holds them all");
}

embedded::EditDescription OrderEdit::description() const {
    embedded::EditDescription edit;
    edit.name = editing_.title;
    edit.rate = rate_of_edit();
    edit.drop_frame = std::any_of(scans_.begin(), scans_.end(), [&](const Scan& scan) {
        return scan.rate->can_drop() && scan.timecode.count.kind == scan.rate->drop_timecode;
    });
    LabelPoint start(0, edit.drop_frame ? edit.rate->drop_timecode : edit.rate->timecode);
    start.set_sample("01:00:00:00");
    edit.start_frame = start.sample;
    return edit;
}

void OrderEdit::add_labels(const Scan& scan, SourceDescription& source) {
    const film::FilmRun& run = scan.piece->run;
    const film::Count& timecode = scan.timecode.count;
    const label_t kind = timecode ? timecode.kind : scan.rate->timecode;
    const auto first = static_cast<int>(timecode ? timecode.frame_at(0) : 0);
    if (timecode || !editing_.needs_timecode)
        source.video_timecode = LabelDescription{kind, {}, first, scan.rate->rate()};
    const bool numbered = scan.piece->frames.first >= 0;
    if (run.has_key() && !numbered) tell(scan, "its key numbers begin below 0000+00, and are left out");
    if (run.has_key() && numbered)
        source.key = LabelDescription{run.kind, run.text_at(scan.piece->frames.first), {}, {}};
    const Fraction film_rate = scan.rate->rate() / scan.step();
    if (run.has_key() && !(film_rate == embedded::film_rate_of(*scan.rate))) source.film_rate = film_rate;
}

void OrderEdit::add_reels(const Scan& scan, const film::PieceFacts& facts, SourceDescription& source) {
    const film::FilmRun& run = scan.piece->run;
    const std::string& roll = run.has_key() ? run.roll : "";
    std::string camera = roll;
    for (const std::size_t use : scan.piece->uses)
        if (!order_.needs[use].strip.rolls.camera.empty()) camera = order_.needs[use].strip.rolls.camera;
    const std::string& own_tape = run.has_key() ? scan.timecode.tape : run.roll;
    std::string lab_roll;
    for (const std::size_t use : scan.piece->uses)
        if (lab_roll.empty()) lab_roll = order_.needs[use].strip.rolls.lab;
    if (editing_.reel == Reel::lab && lab_roll != facts.lab_roll)
        tell(scan, "lies on the lab rolls " + facts.lab_roll + "; the first stands as its reel");
    const std::string& wanted = editing_.reel == Reel::tape ? own_tape : editing_.reel == Reel::lab ? lab_roll : roll;
    const std::string& reel = wanted.empty() ? own_tape.empty() ? roll : own_tape : wanted;
    if (!reel.empty()) source.reels[embedded::tape_reel] = reel;
    if (!editing_.fields) return;
    if (!camera.empty()) source.reels[embedded::camera_reel] = camera;
    if (!facts.lab_roll.empty()) source.reels[embedded::lab_reel] = facts.lab_roll;
}

void OrderEdit::add_images(const Scan& scan, SourceDescription& source) {
    const std::string whole = editing_.files->name_of(order_, scan.place);
    const std::size_t number = whole.find("{frame}"), slash = whole.rfind('/', number);
    const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
    std::string fault;
    embedded::ImageFiles images;
    images.folder = whole.substr(0, name);
    images.prefix = whole.substr(name, number - name);
    images.suffix = whole.substr(number + std::string("{frame}").size());
    images.first_frame = first_number_of(order_, *scan.piece, editing_.numbers, fault);
    images.digits = editing_.files->digits();
    images.rate = scan.rate->rate() / scan.step();
    source.images = images;
    if (!fault.empty()) tell(scan, fault);
}

SourceDescription OrderEdit::source_of(const Scan& scan) {
    const film::PieceFacts facts = film::facts_of(order_, *scan.piece);
    SourceDescription source;
    source.identity = "name:piece " + std::to_string(scan.place + 1) + " of an order";
    source.name = facts.names.empty() ? "Piece " + std::to_string(scan.place + 1) : facts.names;
    source.rate = scan.rate;
    source.length = scan.seconds(scan.piece->frames.length());
    if (editing_.fields) source.scene = facts.scenes;
    if (editing_.fields) source.take = facts.takes;
    add_labels(scan, source);
    add_reels(scan, facts, source);
    if (editing_.files) add_images(scan, source);
    return source;
}

/// Whole frames of timecode hold all of the film.
EventDescription OrderEdit::event_of(const Scan& scan, embedded::SourceId source) const {
    const OrderPiece& piece = *scan.piece;
    EventDescription event;
    event.source = source;
    event.label = "piece " + std::to_string(scan.place + 1);
    if (editing_.shown == OrderEditing::Shown::piece) {
        const Fraction frames = Fraction(piece.frames.length()) * scan.step();
        event.duration = Fraction(-(-frames).floor()) / scan.rate->rate();
    } else {
        event.source_in = scan.seconds(piece.head());
        event.duration = scan.seconds(piece.needed.length());
    }
    return event;
}

/// Where a frame of the edit and a frame of film begin together: with pulldown, a cycle.
Fraction OrderEdit::next_start(const Fraction& end) const {
    const RateInfo* rate = rate_of_edit();
    if (editing_.shown == OrderEditing::Shown::needed) return end;
    const Fraction frames = end * rate->rate();
    const Fraction cycle(static_cast<std::int64_t>(embedded::film_share(rate->nominal).den()));
    return Fraction(-(-(frames / cycle)).floor()) * cycle / rate->rate();
}

EditPtr OrderEdit::edit() {
    find_scans();
    if (scans_.empty()) throw JobError(std::string(editing_.option) + ": there is no piece that it can hold");
    check_rates();
    embedded::EditBuilder builder(description());
    const int channel = builder.add_channel(picture_channel);
    Fraction end;
    for (const Scan& scan : scans_) {
        const EventDescription event = event_of(scan, builder.add_source(source_of(scan)));
        const Fraction start = next_start(end);
        if (end < start) builder.add_gap(channel, start - end);
        builder.add_event(channel, event);
        end = start + event.duration;
    }
    EditPtr edit = builder.finish();
    warnings_.insert(warnings_.end(), builder.warnings().begin(), builder.warnings().end());
    return edit;
}

} // namespace

EditPtr edit_of_order(const film::OrderToTell& order, const OrderEditing& editing, embedded::Warnings& warnings) {
    return OrderEdit(order, editing, warnings).edit();
}

} // namespace tool
