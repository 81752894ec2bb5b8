#include "bench/long_cut.h"

#include <random>

namespace bench {

using made_cut::Cut;
using made_cut::Shot;

Cut long_cut(int events, int rolls) {
    Cut cut;
    for (int event = 0; event < events; ++event) {
        Shot shot;
        const int roll = event % rolls;
        shot.roll = "KJ0000" + std::to_string(10 + roll);
        shot.cam_reel = "A0" + std::to_string(10 + roll);
        shot.frame = 200 * (event / rolls);
        shot.length = 40 + event % 50;
        shot.name = "take " + std::to_string(event);
        cut.push_back(shot);
    }
    return cut;
}

Cut reused_cut(int events) {
    constexpr int rolls = 40, uses = 35, starts = 250, frames_between_takes = 1000;
    Cut cut = long_cut(events, rolls);
    const int takes = (events + uses - 1) / uses;
    for (int event = 0; event < events; ++event) {
        const int take = event * 37 % takes;
        Shot& shot = cut[static_cast<std::size_t>(event)];
        shot.roll = "KJ0000" + std::to_string(10 + take % rolls);
        shot.cam_reel = "A0" + std::to_string(10 + take % rolls);
        shot.frame = frames_between_takes * (take / rolls) + event * 13 % starts;
    }
    return cut;
}

Cut recut_of(Cut cut) {
    std::mt19937 random(7);
    const auto any = [&] { return random() % cut.size(); };
    for (std::size_t change = 0; change < cut.size() / 10; ++change) {
        cut[any()].length -= 5;
        std::swap(cut[any()], cut[any()]);
        if (change % 2 == 0) cut[any()].roll = "KN000099";
    }
    return cut;
}

} // namespace bench
