#include "tool/roll_choices.h"

#include "tool/splice_options.h"
#include "tool/tool_error.h"

#include <algorithm>

namespace tool {
namespace {

/// Of the two that have a frame for each frame of film.
label_t timecode_of(const std::vector<film::OrderInput>& reels) {
    const bool all_25 = !reels.empty() && std::all_of(reels.begin(), reels.end(), [](const film::OrderInput& reel) {
        return reel.rate && reel.rate->nominal == 25;
    });
    return all_25 ? embedded::rate_info(Qb::frame_rate_25)->timecode : label_tc_24;
}

std::int64_t frame_of_start(const std::string& text, label_t timecode) {
    LabelPoint point(0, timecode);
    point.set_sample(text.c_str());
    if (!point.is_useful() || text != point.get_string())
        throw JobError("--start-timecode " + text + ": isn't a timecode of " + label_type_to_edlstr(timecode));
    return point.sample;
}

} // namespace

void add_roll_options(OptionTable& options, RollChoices& choices) {
    constexpr int most_feet = 100000;
    options.add({
        {"--build-rolls", "FEET", "Lay the pieces on new rolls of at most that length; 0 lays none",
         WholeNumber{choices.building.feet, 0, most_feet}},
        {"--leader", "FEET", "Leader at the head of a new roll",
         WholeNumber{choices.building.leader_feet, 0, most_feet}},
        splice_loss_option(choices.building.splices),
        {"--start-timecode", "TIMECODE", "Of the first frame of each new roll", choices.start},
        {"--roll-name", "NAME", "What the names of new rolls begin with", choices.building.name},
    });
}

void build_select_rolls(const RollChoices& choices, film::OrderToTell& order) {
    if (choices.building.feet == 0) return;
    film::RollBuilding building = choices.building;
    building.timecode = timecode_of(order.reels);
    building.start = frame_of_start(choices.start, building.timecode);
    order.selects = film::build_rolls(order.pieces, building);
    if (!order.selects.fault.empty()) throw JobError("--build-rolls: " + order.selects.fault);
}

std::vector<std::string> failures_of_rolls(const film::OrderToTell& order) {
    if (order.selects.building.feet == 0) return {};
    return film::prove_rolls(order.selects, order.pieces);
}

} // namespace tool
