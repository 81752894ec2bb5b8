#include "formats/fcp7xml/fcp7_reader.h"

#include "formats/fcp7xml/fcp7_items.h"
#include "formats/file_names.h"
#include "formats/sequence_choice.h"
#include "formats/timeline/copies.h"

#include <algorithm>
#include <utility>

namespace formats {
namespace {

using embedded::Fraction;
using fcp7::Element;

/// One reading of one document.
class Reading {
public:
    Reading(std::string path, std::int64_t file_time, const ReadOptions& options)
        : path_(std::move(path)), file_time_(file_time), options_(options), teller_(warnings_) {}

    ReadResult run(std::string_view bytes);
    /// The same edit as one of its own, of which nothing is told.
    ReadResult run_as_copy(std::string_view bytes) {
        is_copy_ = true;
        return run(bytes);
    }

private:
    bool parse(std::string_view bytes);
    std::optional<Element> choose(const fcp7::Index& index);
    std::vector<Sequence> listed(const fcp7::Index& index) const;
    const embedded::RateInfo* find_rate(const Element& sequence, const fcp7::Index& index);
    embedded::EditDescription describe(const Element& sequence, const fcp7::Index& index, const fcp7::Clock& clock);
    void read(const fcp7::Index& index, const Element& sequence, const embedded::RateInfo& rate,
              std::string_view bytes);
    embedded::EditBuilder::Unrender copies(std::string_view bytes) const;
    int add_channels(const Element& sequence, int kind, fcp7::Flattener& flattener, embedded::EditBuilder& builder);
    void add_cues(const Element& sequence, const fcp7::Rate& rate, const fcp7::Clock& clock,
                  embedded::EditBuilder& builder);
    void tell_what_is_unreadable(const fcp7::Index& index);
    void tell_what_is_off(const Element& sequence, int tracks, int items);
    void add_warnings(const embedded::Warnings& warnings);

    std::string path_;
    std::int64_t file_time_;
    ReadOptions options_;
    bool is_copy_ = false;
    xml::Document document_;
    embedded::Warnings warnings_;
    fcp7::Teller teller_;
    ReadResult result_;
};

std::string name_of(const Element& sequence, const std::string& path) {
    const std::string_view name = sequence.text_of("name");
    return name.empty() ? stem_of(path) : std::string(name);
}

const embedded::RateInfo* listed_rate(const Element& sequence, const fcp7::Index& index) {
    const std::optional<fcp7::Rate> rate = index.rate_of(sequence);
    return rate ? embedded::nearest_rate(rate->frames_a_second().to_double()) : nullptr;
}

bool Reading::parse(std::string_view bytes) {
    if (!document_.parse(bytes)) {
        result_.error = path_ + ": " + document_.error();
        return false;
    }
    const Element root = document_.root();
    if (root.name() == "xmeml") return true;
    result_.error =
        path_ + ": line " + std::to_string(root.line()) + ": isn't FCP 7 XML, but <" + std::string(root.name()) + ">";
    return false;
}

std::vector<Sequence> Reading::listed(const fcp7::Index& index) const {
    std::vector<Sequence> all;
    for (const Element& sequence : index.sequences())
        all.push_back(
            {name_of(sequence, path_), "line " + std::to_string(sequence.line()), listed_rate(sequence, index)});
    return all;
}

std::optional<Element> Reading::choose(const fcp7::Index& index) {
    std::vector<Sequence> all = listed(index);
    if (options_.list_only && !all.empty()) {
        result_.sequences = std::move(all);
        return std::nullopt;
    }
    const std::optional<std::size_t> chosen = choose_sequence(all, options_, path_, result_);
    if (!chosen) return std::nullopt;
    return index.sequences()[*chosen];
}

const embedded::RateInfo* Reading::find_rate(const Element& sequence, const fcp7::Index& index) {
    if (options_.rate) return options_.rate;
    const fcp7::Rate rate = fcp7::rate_of_sequence(sequence, index);
    const embedded::RateInfo* found = embedded::nearest_rate(rate.frames_a_second().to_double());
    if (found && found->nominal == rate.timebase) return found;
    result_.error = path_ + ": " + fcp7::place_of(sequence) + ": " + std::to_string(rate.timebase) +
                    " frames a second are no rate of an edit";
    result_.rate_missing = true;
    return nullptr;
}

embedded::EditDescription Reading::describe(const Element& sequence, const fcp7::Index& index,
                                            const fcp7::Clock& clock) {
    embedded::EditDescription edit;
    edit.name = name_of(sequence, path_);
    edit.rate = &clock.edit();
    edit.modification_time = file_time_;
    if (is_copy_) edit.identity = "copy:" + edit.name;
    for (Element above = sequence.parent(); above; above = above.parent())
        if (above.name() == "project") edit.project = above.text_of("name");
    const std::optional<fcp7::Timecode> timecode = fcp7::timecode_of(sequence, index, teller_);
    if (!timecode) return edit;
    edit.start_frame = (clock.seconds(Fraction(timecode->frame), timecode->rate) * clock.edit().rate()).nearest();
    edit.drop_frame = timecode->drop && clock.edit().can_drop();
    return edit;
}

int Reading::add_channels(const Element& sequence, int kind, fcp7::Flattener& flattener,
                          embedded::EditBuilder& builder) {
    int off = 0;
    bool lowest = kind == picture_channel;
    for (const Element& track : fcp7::tracks_of(sequence, kind)) {
        off += fcp7::is_enabled(track) ? 0 : 1;
        const int number = builder.add_channel(kind);
        timeline::hand_over(flattener.track(track, sequence, kind), {number, false, lowest}, builder);
        lowest = false;
    }
    return off;
}

void Reading::add_cues(const Element& sequence, const fcp7::Rate& rate, const fcp7::Clock& clock,
                       embedded::EditBuilder& builder) {
    for (const Element marker : sequence.children()) {
        if (marker.name() != "marker") continue;
        const std::optional<Fraction> in = fcp7::place_in(marker, "in", teller_);
        if (!in || *in < Fraction(0)) {
            teller_.dropped(marker, "stands nowhere in the sequence and is left out");
            continue;
        }
        builder.add_stack_cue({clock.seconds(*in, rate), fcp7::text_of_marker(marker), 4});
    }
}

void Reading::tell_what_is_unreadable(const fcp7::Index& index) {
    for (const Element& element : index.unreadable())
        if (element.name() == "rate")
            teller_.rate(element, "\"" + std::string(element.text_of("timebase")) +
                                      "\" isn't a rate that is known; that of what it stands in counts");
        else
            teller_.dropped(element, "isn't in the document, but for its id");
}

void Reading::tell_what_is_off(const Element& sequence, int tracks, int items) {
    if (tracks + items == 0) return;
    teller_.tell(embedded::WarningKind::note, sequence,
                 "what is switched off counts as gaps: tracks " + std::to_string(tracks) + ", items " +
                     std::to_string(items));
}

void Reading::add_warnings(const embedded::Warnings& warnings) {
    for (const embedded::Warning& warning : warnings)
        result_.warnings.push_back({warning.kind, path_ + ": " + warning.text});
}

embedded::EditBuilder::Unrender Reading::copies(std::string_view bytes) const {
    return timeline::copies_as_they_are(
        bytes, [path = path_, time = file_time_, options = options_](const std::string& stored) {
            return Reading(path, time, options).run_as_copy(stored).edit;
        });
}

void Reading::read(const fcp7::Index& index, const Element& sequence, const embedded::RateInfo& rate,
                   std::string_view bytes) {
    const fcp7::Clock clock(rate);
    embedded::EditBuilder builder(describe(sequence, index, clock));
    builder.set_unrender(copies(bytes));
    timeline::Sources sources(builder);
    const fcp7::Context context{index, clock, options_.all_effects, teller_, sources};
    fcp7::Flattener flattener(context);
    int tracks_off = 0;
    for (const int kind : {picture_channel, sound_channel})
        tracks_off += add_channels(sequence, kind, flattener, builder);
    add_cues(sequence, fcp7::rate_of_sequence(sequence, index), clock, builder);
    tell_what_is_unreadable(index);
    tell_what_is_off(sequence, tracks_off, flattener.items_off());
    if (teller_.untold() > 0)
        warnings_.push_back("there are " + std::to_string(teller_.untold()) + " things more to tell of it");
    result_.edit = builder.finish();
    add_warnings(warnings_);
    add_warnings(builder.warnings());
    if (!result_.edit) result_.error = path_ + ": the edit can't be stored";
}

ReadResult Reading::run(std::string_view bytes) {
    try {
        if (!parse(bytes)) return std::move(result_);
        const fcp7::Index index(document_.root());
        const std::optional<Element> sequence = choose(index);
        if (!sequence) return std::move(result_);
        if (fcp7::tracks_of(*sequence, picture_channel).empty() && fcp7::tracks_of(*sequence, sound_channel).empty())
            throw fcp7::ReadError{fcp7::place_of(*sequence) + ": holds no track"};
        if (const embedded::RateInfo* rate = find_rate(*sequence, index)) read(index, *sequence, *rate, bytes);
    } catch (const fcp7::ReadError& error) {
        result_.error = path_ + ": " + error.message;
    }
    return std::move(result_);
}

} // namespace

ReadResult read_fcp7xml_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                              const ReadOptions& options) {
    return Reading(path_for_messages, file_time, options).run(bytes);
}

ReadResult read_fcp7xml(const std::string& path, const ReadOptions& options) {
    return read_whole(read_fcp7xml_bytes, path, path, options);
}

} // namespace formats
