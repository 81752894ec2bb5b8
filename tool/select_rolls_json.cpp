#include "tool/select_rolls_json.h"

namespace tool {

void put_select_rolls(JsonWriter& out, const film::SelectRolls& selects) {
    if (selects.rolls.empty()) return;
    out.begin_array("rolls");
    for (const film::SelectRoll& roll : selects.rolls) {
        out.begin_object();
        out.put("roll", roll.name);
        out.put("kind", label_type_to_edlstr(roll.kind));
        out.put("frames", roll.frames);
        out.put("timecode_kind", label_type_to_edlstr(selects.building.timecode));
        out.put("timecode_in", selects.timecode_at(0));
        out.put("timecode_out", selects.timecode_at(roll.frames));
        out.end_object();
    }
    out.end_array();
}

void put_roll_place(JsonWriter& out, const film::SelectRolls& selects, std::size_t piece) {
    if (selects.rolls.empty() || !selects.places[piece].is_laid()) return;
    const film::RollPlace& place = selects.places[piece];
    out.begin_object("on_roll");
    out.put("roll", selects.rolls[place.roll].name);
    out.put("first_place", place.frames.first);
    out.put("last_place", place.frames.last);
    out.put("timecode_kind", label_type_to_edlstr(selects.building.timecode));
    out.put("first_timecode", selects.building.start + place.frames.first);
    out.put("timecode_in", selects.timecode_at(place.frames.first));
    out.put("timecode_out", selects.timecode_at(place.frames.last + 1));
    out.end_object();
}

} // namespace tool
