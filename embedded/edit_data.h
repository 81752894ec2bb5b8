#pragma once
// What stands behind the handles of the edit model.

#include "embedded/edit_builder.h"
#include "embedded/edit_facts.h"
#include "embedded/edit_recipe.h"
#include "embedded/services.h"
#include "embedded/warning.h"
#include "host/edit.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace embedded {

/// What a cookie names.
enum class ObjectKind : std::uint8_t { none, edit, black, dissolve, film_dissolve, wipe, other_effect };

constexpr auto stamp_zero = IdStampMagic::none;
constexpr auto stamp_plain_object = static_cast<IdStampMagic::MagicType>(1);
constexpr auto stamp_transition_graph = static_cast<IdStampMagic::MagicType>(2);
constexpr auto stamp_effect_object = static_cast<IdStampMagic::MagicType>(3);

Cookie cookie_of_edit(const std::string& identity, std::uint32_t serial);
Cookie cookie_of_black();
Cookie cookie_of_transition(const TransitionDescription& transition);

/// One event of a list: its two points, and where they lie without transitions.
struct CelEvent {
    ChannelEvent in, out;
    ChannelEvent whole_in, whole_out;
    IdStamp object;
    IdStamp graph;
    bool transition = false;
    /// Made only because a transition stands beside it.
    bool only_beside_transition = false;
};

using CelEvents = std::vector<CelEvent>;

/// The effect graph of one event; its stamp's number is its place in the edit.
struct EffectGraph {
    Qb::Ptr<FXGraphNodeBase> node;
    std::vector<Qb::Ptr<FXGraphNodeBase>> components;
    std::vector<int> material_tracks;
};

/// The graph of an event with effects: on an FX channel every effect is a component, elsewhere the lab's.
EffectGraph graph_of_effects(const EventDescription& event, int channel, bool fx_channel);
EffectGraph graph_of_transition(const TransitionDescription& transition);

/// Places of an event list that several `Cel`s share.
Qb::Ptr<Cel> make_cel(std::shared_ptr<const CelEvents> events, double resolution);

struct Channel {
    int kind = picture_channel;
    int subtype = 0;
    Qb::Ptr<Cel> cel;
};

/// One cue of a list. Its order among cues of one time is `rank`.
struct CueEntry {
    double time = 0.0;
    int channel = -1; ///< -1 every one
    std::size_t rank = 0;
    Cue cue;
};

/// A cue list of entries that are in order.
CueList* make_cue_list(std::vector<CueEntry> entries, int channels);

class PictureFormat : public ShotVideoMetadata {
public:
    explicit PictureFormat(Qb::FrameRate rate) : rate_(rate) {}
    Qb::Image::ScanMode scan_mode() const override { return Qb::Image::scan_unset; }
    const VideoFrameRateInfo& rate_info() const override { return rate_; }

private:
    struct Rate : VideoFrameRateInfo {
        explicit Rate(Qb::FrameRate code) : code_(code) {}
        Qb::FrameRate frame_rate() const override { return code_; }
        Qb::FrameRate code_;
    } rate_;
};

/// A label ready to be handed out.
struct LabelStart {
    LabelPoint point;
    double step = 0.0; ///< 0 is the kind's own
};

/// The label of a description; none where its text can't be read.
std::optional<LabelStart> label_start(const LabelDescription& description);

/// What an edit has that was cut: channels, effects, cues.
struct Sequence {
    std::string project;
    bool drop_frame = false;
    std::vector<Channel> channels;
    std::vector<std::vector<EventFacts>> facts; ///< by channel
    EditRecipe recipe;
    std::vector<EffectGraph> graphs;
    std::vector<EditPtr> sources;
    std::unique_ptr<CueList> cues;
    EditBuilder::Unrender unrender;
    bool rendered_material = false;
    LabelStart timecode;
    std::optional<LabelStart> timecode_24p;
    /// Channel and event of the last pair that was asked for its place: of two events at one time, the one
    /// that a caller goes on to ask about.
    mutable std::pair<int, int> last_asked{-1, -1};
};

/// What a source edit has of its medium.
struct Medium {
    bool opens = true;
    bool rendered = false;
    std::map<ReelLabel, std::string> reels;
    std::optional<LabelStart> video_timecode, sound_timecode, timecode_24p, key, ink;
    std::optional<Fraction> length;
};

/// The rate that counts where none is given.
const RateInfo& default_rate();

} // namespace embedded

struct Cel::Impl {
    std::shared_ptr<const embedded::CelEvents> events;
};

struct Edit::Impl {
    explicit Impl(const embedded::RateInfo& edit_rate) : rate(&edit_rate), format(edit_rate.code) {}

    use_count users;
    Cookie cookie;
    std::string name;
    const embedded::RateInfo* rate;
    std::optional<embedded::Fraction> film_rate;
    double start_strip = 0.0;
    embedded::settings_block values;
    embedded::PictureFormat format;
    /// Of the two only one is there.
    std::unique_ptr<embedded::Sequence> sequence;
    std::unique_ptr<embedded::Medium> medium;
    std::map<std::tuple<int, int, int>, EditLabel> labels;
};
