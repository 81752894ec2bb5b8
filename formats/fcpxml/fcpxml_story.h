#pragma once
// Brings storylines down to runs of items.
//
// Every element has a clock of its own, which reads `start` at its first frame; `offset` is the place of that frame on
// the clock of its parent:
//
//     spine    0 . . . . . 10 . . . . . 20
//     clip                 |100 . . 105 . 110|     offset 10, start 100
//     connected               |0 . . 3|            offset 102 on the clip's clock: at 12 on the spine's
//
// A connected item is as long as it says, whatever it is connected to; a contained one (in a clip, a compound clip or
// an angle) shows only what the item around it shows.

#include "formats/fcpxml/fcpxml_frames.h"
#include "formats/fcpxml/fcpxml_layers.h"
#include "formats/fcpxml/fcpxml_source.h"
#include "formats/fcpxml/fcpxml_speed.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace formats::fcpxml {

/// The spine of a sequence, where its time begins, and its frames a second.
struct Storyline {
    Element sequence;
    Fraction start; ///< the reading at its first frame: its timecode
    Fraction rate;
};

class StoryReader {
public:
    /// `sound` reads what is heard instead of what is seen.
    StoryReader(const Context& context, bool sound) : context_(context), sound_(sound) {}

    Storyline storyline_of(const Element& sequence) const;
    /// All runs of a sequence, on its own clock; the first is its spine. The sources of their events are numbers of
    /// `shots()`.
    Runs runs_of(const Storyline& storyline);
    /// The same of one item on its own, which then begins at 0.
    Runs runs_of_item(const Element& item, const Fraction& rate);
    const std::vector<Shot>& shots() const { return shots_; }

private:
    /// What an item stands in.
    struct Level {
        Lane lane;
        Fraction rate; ///< frames a second of the sequence
        int depth = 0;
        bool nested = false; ///< in a clip that holds others, whose gaps are none of the edit's
        bool own_sound_off = false, connected_sound_off = false; ///< of what lies in a synchronised clip

        Level in(int lane_of_child) const;
    };
    /// One child of a storyline.
    struct Member {
        Element element;
        Fraction place, length;
        bool transition = false;
    };
    /// How an item's own clock lies on that of what it stands in.
    struct Clock {
        Fraction place, start;
        Fraction pace = 1; ///< seconds outside a second of its own

        Fraction at(const Fraction& own) const { return place + (own - start) * pace; }
    };
    /// What a nest shows, and the reading of its clock at its first frame.
    struct Content {
        Runs runs;
        Fraction start;
        std::optional<Frames> frames = {}; ///< of a sequence; other clips have no frames of their own

        timeline::Stretch settled(const timeline::Stretch& stretch) const;
    };

    std::vector<Member> members_of(const Element& spine, const Fraction& zero, const Level& level);
    void settle(std::vector<Member>& members, const Level& level);
    std::optional<Fraction> length_of_member(const Element& child, const Level& level);
    Fraction zero_of(const Element& spine, const Fraction& start, const Fraction& rate) const;
    void add_spine(const Element& spine, const Fraction& zero, const Level& level, Runs& runs);
    Fraction cut_of(const std::vector<Member>& members, std::size_t transition) const;
    void add_transition(const std::vector<Member>& members, std::size_t at, const Fraction& cut, const Level& level,
                        Items& row);
    void warn_of_items_in(const Element& transition) const;
    void add_marks_of_transition(const Member& transition, const Fraction& row_start, Items& row);

    /// An item of exactly that length; what is connected to it goes to `runs`.
    Items item(const Element& element, const Fraction& place, const Fraction& length, const Level& level, Runs& runs);
    void add_connected(const Element& parent, const Clock& clock, const Level& level, Runs& runs);
    void add_connected(const Element& child, const Fraction& place, const Level& level, Runs& runs);
    void add_contained(const Element& parent, const Clock& clock, const Fraction& length, const Level& level,
                       Runs& runs);
    void add_split_sound(const Element& element, const Clock& clock, const Level& level, Runs& runs);

    Element chosen(const Element& element);
    Fraction start_of(const Element& element) const;
    Fraction length_of(const Element& element, const Level& level);
    Fraction pace_of(const Element& element, const Level& level) const;
    Format media_format_of(const Element& element) const;
    std::optional<Fraction> rate_inside(const Element& clip) const;

    Items content_of(const Element& element, const Clock& clock, const Fraction& length, const Level& level);
    void warn_missing(const Element& element) const;
    Shot shot_of(const Element& element, const Asset* asset) const;
    Items media(const Element& element, const Clock& clock, const Fraction& length, const Level& level);
    Items made(const Element& element, const Fraction& length, const std::string& identity);
    Items nest(const Element& element, const Content& content, const Clock& clock, const Fraction& length,
               const Level& level);
    /// None where several pictures lie above each other.
    std::optional<Items> piece_of_nest(const Element& element, const Content& content, const Span& span,
                                       const Fraction& pace, const Level& level);
    std::optional<Items> frozen_nest(const Element& element, const Content& content, const Span& span,
                                     const Fraction& pace, const Level& level);
    static Fraction frame_of(const Content& content, const Level& level);
    Fraction normal_speed(const Item& item, const Fraction& frame) const;
    /// `speed` in frames of the row for one of what shows it.
    void tell_if_uneven(const Element& element, const Items& row, const Fraction& speed, const Fraction& frame);
    Items rendered(const Element& element, const Content& content, const Span& span, const Fraction& pace);
    std::optional<Items> one_row(const Element& element, const Content& content, const timeline::Stretch& stretch);
    Items missing(const Element& element, const Fraction& length);
    bool shows(const Element& element, const Asset& asset) const;
    /// Whether it has a picture, so that its markers stand on a picture channel.
    bool seen(const Element& element) const;
    std::vector<Span> spans_of(const Element& element, const Clock& clock, const Fraction& length, const Level& level);
    void adopt(const Element& element, Items& items);
    void add_marks(const Element& element, const Clock& clock, Items& items);
    void tell_of_marks(const Element& element) const;

    const Content* compound(const Element& ref_clip, const Level& level);
    const Content* angle(const Element& mc_clip, const Level& level);
    const Content* content_of_media(const Element& key, const Element& sequence, const Element& spine,
                                    const Level& level);
    const Content& contained(const Element& clip, const Level& level);
    Content read_contained(const Element& clip, const Level& level);

    int add_shot(Shot shot);
    void check_work(const Element& element) const;
    void check_depth(const Element& element, const Level& level) const;
    Fraction half_frame(const Level& level) const { return Fraction(1) / (level.rate * 2); }

    const Context& context_;
    const bool sound_;
    std::vector<Shot> shots_;
    std::unordered_map<std::uint32_t, Content> contents_; ///< by the element that holds them
    std::unordered_set<std::uint32_t> open_;              ///< those that are being read
    std::size_t work_ = 0;
};

} // namespace formats::fcpxml
