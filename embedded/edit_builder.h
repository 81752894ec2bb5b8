#pragma once
// Makes edits in code. Readers of edit files and tests stand on it.
//
// A channel is a row of items (events, black, gaps) with transitions between them:
//
//        | A . . . . . . |\B . . . . . |      a transition runs from `in_offset` before the cut
//                    |---X---|                to `out_offset` behind it and takes no room of its own;
//        | A . . . . |  fx   | B . . . |      what becomes of it: both events give up their share
//
// All times are exact: seconds as fractions, from the start of the edit. They become doubles once, when the
// edit is finished, and are never snapped to frames.

#include "embedded/fraction.h"
#include "embedded/rates.h"
#include "embedded/warning.h"
#include "host/edit.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace embedded {

/// A label that a source or an edit carries.
struct LabelDescription {
    label_t type = label_none;
    std::string text; ///< start, in the kind's plain form; ignored where `sample` is set
    std::optional<int> sample;
    /// For timecode, frames a second that it steps with; where unset the kind's own.
    std::optional<Fraction> rate;
};

/// The files that film was scanned to, or is to be: one an image, numbered.
struct ImageFiles {
    std::string folder; ///< with its closing "/"; may be empty
    std::string prefix, suffix;
    std::int64_t first_frame = 0; ///< the number of the medium's first frame
    int digits = 0;               ///< that numbers are filled up to
    Fraction rate = 24;           ///< frames of film a second
};

/// Which of a source's reels: medium and roll.
using ReelLabel = std::pair<int, int>;
inline constexpr ReelLabel tape_reel{1, 2}, camera_reel{2, 1}, sound_reel{4, 3}, lab_reel{10, 1}, composite_reel{11, 1},
    reel_24p{15, 1};

/// Where an event's picture or sound comes from: one stored edit of the host.
struct SourceDescription {
    /// What its cookie's text is the hash of; equal for all clips of one medium.
    std::string identity;
    std::string name;      ///< UTF-8
    bool opens = true;     ///< false: media that is lost
    bool rendered = false; ///< rendered material
    /// The rate that decides its film rate, where `film_rate` doesn't.
    const RateInfo* rate = nullptr;
    std::optional<Fraction> film_rate; ///< film frames a second
    Fraction start_strip;              ///< seconds
    /// (0, -1), {1, 1} and {3, 1} answer the tape, and {4, 1} answers the sound reel, where they aren't given
    /// themselves.
    std::map<ReelLabel, std::string> reels;
    std::optional<LabelDescription> video_timecode, sound_timecode, timecode_24p, key, ink;
    std::string scene, take, description; ///< absent where empty
    std::optional<ImageFiles> images;
    std::optional<Fraction> length; ///< seconds of material from the first frame; unset where not known

    /// Empty where there is none; borrowed from `reels`.
    const std::string& reel(const ReelLabel& label) const;
};

/// One effect of an event.
struct EffectDescription {
    std::string name;
    bool for_the_lab = false;
    /// Absolute numbers of the channels that it draws on; empty: those of its item, else its own channel.
    std::vector<int> tracks;
};

using SourceId = int;

struct EventDescription {
    SourceId source = 0;
    Fraction duration;  ///< seconds on the edit, not below 0
    Fraction source_in; ///< seconds from the source's first frame, where the stretch of media begins
    /// How fast the media plays: 1 normal, 0 a freeze, below 0 backward over the same stretch, which is
    /// `duration` times the magnitude long.
    Fraction speed = 1;
    std::vector<EffectDescription> effects;
    std::vector<int> effect_tracks; ///< the item's own list of channels
    std::string label;              ///< how messages name the event
};

struct TransitionDescription {
    enum class Kind { dissolve, film_dissolve, wipe, other };

    Kind kind = Kind::dissolve;
    std::string name;
    int pattern = 1; ///< of a wipe
    bool reversed = false;
    Fraction in_offset;  ///< seconds before the cut
    Fraction out_offset; ///< seconds behind it
    std::string label;
};

struct CueDescription {
    Fraction time; ///< seconds from the start of the edit
    std::string text;
    int flags = 4;
};

/// What is known of the edit as a whole.
struct EditDescription {
    std::string name;
    std::string identity; ///< of its cookie; "edit:" and the name where empty
    std::string project;
    const RateInfo* rate = nullptr; ///< 24 where null
    bool drop_frame = false;
    std::int64_t start_frame = 0; ///< of its timecode
    std::optional<LabelDescription> timecode_24p;
    std::optional<Fraction> film_rate;
    std::int64_t modification_time = 0;
};

class EditBuilder {
public:
    explicit EditBuilder(EditDescription description);
    ~EditBuilder();
    EditBuilder(const EditBuilder&) = delete;
    EditBuilder& operator=(const EditBuilder&) = delete;

    /// `kind` 1 picture, 2 sound; sub-type 8 FX, 4 not listed. The result is the channel's absolute number,
    /// from 0 in the order of the calls.
    int add_channel(int kind, int subtype = 0);
    SourceId add_source(SourceDescription source);

    // Items of a channel, in order.
    void add_event(int channel, EventDescription event);
    void add_black(int channel, const Fraction& duration, std::vector<EffectDescription> effects = {},
                   std::vector<int> effect_tracks = {});
    /// A gap that makes no event. On an FX channel one with effects makes an effect event; elsewhere its
    /// effects are left out with a warning.
    void add_gap(int channel, const Fraction& duration, std::vector<EffectDescription> effects = {},
                 std::vector<int> effect_tracks = {});
    /// Stands at the cut between the item added last and the one added next, or at the channel's end.
    void add_transition(int channel, TransitionDescription transition);

    /// A cue of one channel, at the track's or at a clip's level; of equal times those of the stack come first,
    /// then tracks', then clips', each in the order of the calls.
    enum class CueLevel { stack, track, clip };
    void add_cue(int channel, CueLevel level, CueDescription cue);
    /// A cue on every channel.
    void add_stack_cue(CueDescription cue);

    /// How a de-rendered copy is made of this edit: `write` stores it at a path (false when it can't), `open`
    /// opens what it stored. Without it the copy can't be made.
    struct Unrender {
        std::function<bool(const std::string& path)> write;
        std::function<EditPtr(const std::string& path)> open;
    };
    void set_unrender(Unrender unrender);

    /// The edit, stored and open; it becomes the edit that is being listed. Ends the building. What was left
    /// out or cut is in `warnings`.
    EditPtr finish();
    const Warnings& warnings() const;
    /// The cues of the finished edit, owned by it.
    static CueList* cues_of(const EditPtr& edit);
    /// Where a cue of such a list stands, in seconds from the start of the edit.
    static double time_of_cue(const CueList& cues, unsigned index);
    /// The "project" of the description.
    static const std::string& project_of(const EditPtr& edit);

private:
    struct Impl;
    Impl* impl_;
};

/// A de-rendered copy is read in the middle of a run, where nobody asks for warnings: they wait here. Those of the copy
/// that was made last, but for what was told of its edit; taken once.
Warnings take_warnings_of_copy();
/// For readers, in `Unrender`.
void tell_of_copy(const Warnings& warnings);

/// 32-bit FNV-1a.
std::uint32_t fnv1a(const std::string& bytes);

} // namespace embedded
