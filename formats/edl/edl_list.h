#pragma once
// A whole CMX 3600 edit list as it is written: its events with their comments, and what wasn't understood.

#include "embedded/warning.h"
#include "formats/edl/edl_event.h"

namespace formats::edl {

/// A mark of the editor, on the record's timecode.
struct Locator {
    int line = 0;
    Timecode record;
    std::string text;
};

/// Lines that stand together and share a number.
struct Event {
    std::string number;
    std::vector<EventLine> lines;
    std::optional<Timecode> picture_delay, sound_delay; ///< of a split edit
    std::string transition_name;
    std::vector<Locator> locators;
};

struct Warning {
    int line = 0; ///< 0: the list as a whole
    std::string text;
    embedded::WarningKind kind = embedded::WarningKind::dropped;
};

struct EventList {
    std::string title;
    /// The frame code mode before the first event, or a ";" on the record side. It holds for the whole record.
    bool record_drop = false;
    int drop_line = 0;          ///< the first that speaks of drop-frame; 0 if none does
    std::optional<double> rate; ///< frames a second, where a line says so
    int largest_frames = 0;     ///< of all timecodes
    std::vector<Event> events;
    std::vector<Warning> warnings;
};

/// Lines that aren't understood are left out with a warning; they never move other events, as each stands at
/// its own record timecode.
EventList parse_list(std::string_view bytes);

/// A key number in a text, in any spelling with two letters and six digits before the count; nothing without one.
/// With `strict` it must have its frames, as names may look alike.
std::optional<KeyNumber> find_key_number(std::string_view text, bool strict);

} // namespace formats::edl
