#include "formats/fcpxml/fcpxml_reader.h"

#include "formats/bundle/folder_bundle.h"
#include "formats/fcpxml/fcpxml_project.h"
#include "formats/fcpxml/fcpxml_story.h"
#include "formats/file_names.h"
#include "formats/sequence_choice.h"
#include "formats/timeline/copies.h"
#include "host/channel_kinds.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace formats {
namespace {

using namespace fcpxml;
using embedded::WarningKind;

/// A copy of an edit in which nothing is rendered any more; of this format it is the same edit.
struct CopyOf {
    std::size_t project = 0;
    std::int64_t file_time = 0;
};

/// The first that shows something before a time, if any.
const Item* picture_before(const Run& run, const Fraction& time) {
    Fraction start = run.start;
    for (const Item& item : run.items) {
        if (item.is_transition()) continue;
        if (time <= start) break;
        if (item.kind != Item::Kind::gap) return &item;
        start = start + item.length();
    }
    return nullptr;
}

/// Makes the channels of an edit out of the runs of a storyline.
class ChannelMaker {
public:
    ChannelMaker(const Context& context, const Project& project, embedded::EditBuilder& builder)
        : context_(context), project_(project), builder_(builder), sources_(builder) {}

    void add_pictures();
    void add_sounds();

private:
    using Channels = std::vector<std::vector<Run*>>;

    Runs runs_of(StoryReader& story);
    Runs settled_runs_of(StoryReader& story);
    void cut_before_start(Runs& runs, bool tell);
    void drop_fades_of_nothing(Items& row, bool tell);
    void add_channel(int kind, const std::vector<Run*>& runs, bool gaps_are_black, const std::vector<Shot>& shots,
                     ShotSources& sources);

    const Context& context_;
    const Project& project_;
    embedded::EditBuilder& builder_;
    timeline::Sources sources_;
    Fraction zero_;
};

Runs ChannelMaker::runs_of(StoryReader& story) {
    if (!project_.sequence) return story.runs_of_item(project_.element, context_.rate->rate());
    const Storyline storyline = story.storyline_of(project_.sequence);
    zero_ = storyline.start;
    return story.runs_of(storyline);
}

Runs ChannelMaker::settled_runs_of(StoryReader& story) {
    Runs runs = runs_of(story);
    for (Run& run : runs)
        settle_on_frames(run, {zero_, context_.rate->rate()});
    return runs;
}

void ChannelMaker::cut_before_start(Runs& runs, bool tell) {
    for (Run& run : runs) {
        if (!(run.start < zero_)) continue;
        if (const Item* item = tell ? picture_before(run, zero_) : nullptr)
            context_.warnings.push_back(
                {WarningKind::dropped, item->event.label + ": what begins before the edit is cut off"});
        const timeline::Stretch kept{zero_ - run.start, run.end() - run.start};
        run.items = trimmed(std::move(run.items), kept, tell ? &context_.warnings : nullptr);
        run.start = zero_;
    }
}

// What a transition joined may be switched off; from nothing to nothing there is no fade for a laboratory to make.
void ChannelMaker::drop_fades_of_nothing(Items& row, bool tell) {
    const auto shows_nothing = [](const Item* item) { return !item || item->kind == Item::Kind::gap; };
    Items kept;
    kept.reserve(row.size());
    const Item* before = nullptr;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i].is_transition()) {
            const auto behind = std::find_if_not(row.begin() + static_cast<std::ptrdiff_t>(i), row.end(),
                                                 [](const Item& item) { return item.is_transition(); });
            if (shows_nothing(before) && shows_nothing(behind == row.end() ? nullptr : &*behind)) {
                if (tell)
                    context_.warnings.push_back(
                        {WarningKind::dropped,
                         row[i].transition->label + ": left out, as it joins nothing that is seen"});
                continue;
            }
        }
        kept.push_back(std::move(row[i]));
        if (!kept.back().is_transition()) before = &kept.back();
    }
    row = std::move(kept);
}

void ChannelMaker::add_channel(int kind, const std::vector<Run*>& runs, bool gaps_are_black,
                               const std::vector<Shot>& shots, ShotSources& sources) {
    Items row = row_of(runs, zero_);
    drop_fades_of_nothing(row, kind == picture_channel);
    for (Item& item : row) {
        if (item.kind != Item::Kind::event) continue;
        const Bound bound = sources.bind(shots, item.event.source, item.event.source_in, item.event.speed);
        item.event.source = bound.source;
        item.event.source_in = bound.source_in;
        item.event.speed = bound.speed;
    }
    timeline::hand_over(std::move(row), {builder_.add_channel(kind), false, gaps_are_black}, builder_);
}

// The spine makes a channel whatever it holds, connected items only where they show something.
void ChannelMaker::add_pictures() {
    StoryReader story(context_, false);
    ShotSources sources(context_, sources_);
    Runs runs = settled_runs_of(story);
    cut_before_start(runs, true);
    std::erase_if(runs, [](const Run& run) { return !run.lane.empty() && !has_picture(run.items); });
    const Channels channels = channels_of(runs);
    bool lowest = true;
    for (const std::vector<Run*>& channel : channels)
        add_channel(picture_channel, channel, std::exchange(lowest, false), story.shots(), sources);
    if (!channels.empty() && compare_lanes(channels.front().front()->lane, {}) < 0)
        context_.warnings.push_back(
            {WarningKind::note,
             place_of(project_.element) + ": pictures lie below its main storyline, so that isn't V1"});
}

// The main storyline's sound first, then what hangs below it from the nearest on, then what stands above.
void ChannelMaker::add_sounds() {
    StoryReader story(context_, true);
    ShotSources sources(context_, sources_);
    Runs runs = settled_runs_of(story);
    cut_before_start(runs, false);
    runs = without_gaps(std::move(runs));
    Channels channels = channels_of(runs);
    const auto below = [](const std::vector<Run*>& channel) { return compare_lanes(channel.front()->lane, {}) < 0; };
    const auto above = [](const std::vector<Run*>& channel) { return compare_lanes(channel.front()->lane, {}) > 0; };
    const auto main = std::find_if_not(channels.begin(), channels.end(), below);
    std::reverse(channels.begin(), main);
    std::rotate(channels.begin(), main, std::find_if(main, channels.end(), above));
    for (const std::vector<Run*>& channel : channels)
        add_channel(sound_channel, channel, false, story.shots(), sources);
}

/// One reading of one text.
class Reading {
public:
    Reading(std::string_view bytes, std::string path, std::int64_t file_time, const ReadOptions& options)
        : bytes_(bytes), path_(std::move(path)), file_time_(file_time), options_(options) {}

    ReadResult run(const CopyOf* copy);

private:
    void read(const CopyOf* copy);
    std::optional<std::size_t> choose(const std::vector<Project>& projects);
    void build(const Project& project, const Context& context, embedded::EditBuilder& builder);
    bool is_fcpxml(const Element& root);
    bool find_rate(const Project& project, Context& context);
    embedded::EditDescription description(const Project& project, const Context& context) const;
    void add_warnings(const embedded::Warnings& warnings);

    std::string_view bytes_;
    std::string path_;
    std::int64_t file_time_;
    ReadOptions options_;
    ReadResult result_;
};

bool Reading::is_fcpxml(const Element& root) {
    if (root.name() == "fcpxml") return true;
    result_.error =
        path_ + ": line " + std::to_string(root.line()) + ": isn't FCPXML, but \"" + std::string(root.name()) + "\"";
    return false;
}

// Told to run at a rate that counts alike, the edit and all its media run so much faster or slower, frame for frame.
bool Reading::find_rate(const Project& project, Context& context) {
    const Format& format = project.format;
    context.rate = options_.rate ? options_.rate : format.info;
    if (!context.rate) {
        result_.error = path_ + ": " + place_of(project.element) +
                        (format.rate ? ": no edit can have its frames a second" : ": doesn't tell its frames a second");
        result_.rate_missing = true;
        return false;
    }
    if (!format.info || format.info == context.rate) return true;
    if (format.info->nominal == context.rate->nominal)
        context.scale = format.info->rate() / context.rate->rate();
    else
        context.warn(project.element,
                     std::string("is at ") + format.info->name + " frames a second, not at " + context.rate->name +
                         ": its cuts may lie between frames",
                     WarningKind::rate);
    return true;
}

embedded::EditDescription Reading::description(const Project& project, const Context& context) const {
    embedded::EditDescription edit;
    edit.name = project.name;
    edit.project = project.library;
    edit.rate = context.rate;
    edit.drop_frame = project.sequence.attribute("tcFormat") == "DF" && context.rate->can_drop();
    const std::optional<Fraction> start = context.time(project.sequence, "tcStart");
    if (start) edit.start_frame = (*start * context.rate->rate()).nearest();
    const std::int64_t changed = parse_date(project.element.attribute("modDate"));
    edit.modification_time = changed ? changed : file_time_;
    return edit;
}

void Reading::add_warnings(const embedded::Warnings& warnings) {
    for (const embedded::Warning& warning : warnings)
        result_.warnings.push_back({warning.kind, path_ + ": " + warning.text});
}

void Reading::read(const CopyOf* copy) {
    xml::Document document;
    if (!document.parse(bytes_)) {
        result_.error = path_ + ": " + document.error();
        return;
    }
    const Element root = document.root();
    if (!is_fcpxml(root)) return;
    embedded::Warnings warnings;
    const Resources resources(root, warnings);
    const std::vector<Project> projects = projects_of(root, Context(resources, warnings), stem_of(path_),
                                                      options_.list_only ? std::string() : options_.sequence);
    const std::optional<std::size_t> chosen = copy ? copy->project : choose(projects);
    Context context(resources, warnings);
    if (!chosen || !find_rate(projects[*chosen], context)) return;
    context.all_effects = options_.all_effects;
    embedded::EditDescription edit = description(projects[*chosen], context);
    if (copy) edit.identity = "copy:" + edit.name;
    embedded::EditBuilder builder(std::move(edit));
    const CopyOf of_this{*chosen, file_time_};
    builder.set_unrender(
        timeline::copies_as_they_are(bytes_, [options = options_, from = path_, of_this](const std::string& text) {
            return Reading(text, from, of_this.file_time, options).run(&of_this).edit;
        }));
    build(projects[*chosen], context, builder);
}

/// Which project is read; none, where they are only listed, or none is named.
std::optional<std::size_t> Reading::choose(const std::vector<Project>& projects) {
    std::vector<Sequence> sequences = sequences_of(projects);
    if (!options_.list_only || sequences.empty()) return choose_sequence(sequences, options_, path_, result_);
    result_.sequences = std::move(sequences);
    return std::nullopt;
}

void Reading::build(const Project& project, const Context& context, embedded::EditBuilder& builder) {
    ChannelMaker channels(context, project, builder);
    channels.add_pictures();
    channels.add_sounds();
    context.tell_of_left_out();
    result_.edit = builder.finish();
    add_warnings(context.warnings);
    add_warnings(builder.warnings());
    if (!result_.edit) result_.error = path_ + ": the edit can't be stored";
}

ReadResult Reading::run(const CopyOf* copy) {
    try {
        read(copy);
    } catch (const ReadError& error) {
        result_.error = path_ + ": " + error.message;
    }
    return std::move(result_);
}

} // namespace

ReadResult read_fcpxml_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                             const ReadOptions& options) {
    return Reading(bytes, path_for_messages, file_time, options).run(nullptr);
}

ReadResult read_fcpxml(const std::string& path, const ReadOptions& options) {
    return read_whole(read_fcpxml_bytes, file_of_bundle(path), path, options);
}

} // namespace formats
