#include "tests/support/recuts.h"

#include <algorithm>
#include <random>

namespace recuts {
namespace {

constexpr int rolls = 5;
constexpr int frames_between_takes = 64;
constexpr int longest_extension = 20;

class Cutter {
public:
    Cutter(std::uint32_t seed, const Kinds& kinds, int reels, int events)
        : random_(seed), kinds_(kinds), reels_(reels), events_(events) {}

    Recut make();

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    bool one_in(int chances) { return below(chances) == 0; }

    Shot new_film();
    Shot any_event();
    Cut new_reel();
    void change(std::vector<Cut>& cut);
    void trim(Shot& shot);
    void extend(std::vector<Cut>& cut, Shot& shot);
    void split(Cut& reel, std::size_t at);
    void move(std::vector<Cut>& cut, std::size_t from, std::size_t at);
    void use_again(std::vector<Cut>& cut, const Shot& shot);
    void dissolve(std::vector<Cut>& cut);

    std::mt19937 random_;
    Kinds kinds_;
    int reels_;
    int events_;
    int next_frame_[rolls] = {100, 100, 100, 100, 100};
    int takes_ = 0;
};

Shot Cutter::new_film() {
    constexpr double speeds[] = {2.0, 0.5, 1.5, -1.0, -2.0, 0.0, 1.005, 0.995, 1.012, 3.0};
    const int roll = below(rolls);
    Shot shot;
    shot.roll = "KJ00000" + std::to_string(roll);
    shot.cam_reel = "A00" + std::to_string(roll);
    shot.name = "take " + std::to_string(++takes_);
    shot.length = 1 + below(one_in(3) ? 6 : 80);
    if (one_in(2)) shot.ink = 10000 + next_frame_[roll];
    if (kinds_.varispeed && one_in(5)) shot.speed = speeds[below(std::size(speeds))];
    const int covered = static_cast<int>(shot.length * std::abs(shot.speed)) + 1;
    shot.frame = next_frame_[roll] + frames_between_takes + (shot.speed < 0 ? covered : 0);
    next_frame_[roll] = shot.frame + covered + frames_between_takes;
    return shot;
}

Shot Cutter::any_event() {
    if (kinds_.black && one_in(6)) return made_cut::black(1 + below(30));
    return new_film();
}

Cut Cutter::new_reel() {
    Cut reel;
    for (int left = 1 + below(events_); left > 0; --left)
        reel.push_back(any_event());
    return reel;
}

bool is_plain_film(const Shot& shot) { return shot.special == 0 && shot.speed == 1.0; }

void Cutter::trim(Shot& shot) {
    if (shot.length < 2) return;
    const int frames = 1 + below(shot.length - 1);
    if (one_in(2) && is_plain_film(shot)) {
        shot.frame += frames;
        if (shot.ink >= 0) shot.ink += frames;
    }
    shot.length -= frames;
}

// The film of an event, and how often it lies in the cut.
int uses_of(const std::vector<Cut>& cut, const Shot& shot) {
    int uses = 0;
    for (const Cut& reel : cut)
        for (const Shot& other : reel)
            uses += other.roll == shot.roll && other.frame < shot.frame + shot.length &&
                    shot.frame < other.frame + other.length;
    return uses;
}

void Cutter::extend(std::vector<Cut>& cut, Shot& shot) {
    const Shot before = shot;
    const int frames = 1 + below(longest_extension);
    if (one_in(2) && is_plain_film(shot)) {
        shot.frame -= frames;
        if (shot.ink >= 0) shot.ink -= frames;
    }
    shot.length += frames;
    if (!kinds_.reuse && shot.special == 0 && uses_of(cut, shot) > 1) shot = before;
}

// In two, with a few frames of the middle lost or something put between, or neither.
void Cutter::split(Cut& reel, std::size_t at) {
    if (reel[at].length < 4 || !is_plain_film(reel[at])) return;
    Shot tail = reel[at];
    const int head_length = 1 + below(tail.length - 2);
    const int lost = one_in(2) ? below(tail.length - head_length) : 0;
    reel[at].length = head_length;
    tail.frame += head_length + lost;
    if (tail.ink >= 0) tail.ink += head_length + lost;
    tail.length -= head_length + lost;
    const bool parted = one_in(2);
    reel.insert(reel.begin() + static_cast<std::ptrdiff_t>(at) + 1, tail);
    if (parted) reel.insert(reel.begin() + static_cast<std::ptrdiff_t>(at) + 1, any_event());
}

void Cutter::move(std::vector<Cut>& cut, std::size_t from, std::size_t at) {
    const Shot shot = cut[from][at];
    cut[from].erase(cut[from].begin() + static_cast<std::ptrdiff_t>(at));
    Cut& to = one_in(2) ? cut[from] : cut[static_cast<std::size_t>(below(static_cast<int>(cut.size())))];
    to.insert(to.begin() + below(static_cast<int>(to.size()) + 1), shot);
}

void Cutter::use_again(std::vector<Cut>& cut, const Shot& shot) {
    Shot again = shot;
    if (one_in(2)) trim(again);
    Cut& to = cut[static_cast<std::size_t>(below(static_cast<int>(cut.size())))];
    to.insert(to.begin() + below(static_cast<int>(to.size()) + 1), again);
}

void Cutter::change(std::vector<Cut>& cut) {
    const auto from = static_cast<std::size_t>(below(static_cast<int>(cut.size())));
    Cut& reel = cut[from];
    const auto place = reel.begin() + below(static_cast<int>(reel.size()) + 1);
    const int what = below(8);
    if (reel.empty() || what == 0) {
        reel.insert(place, any_event());
        return;
    }
    const auto at = static_cast<std::size_t>(below(static_cast<int>(reel.size())));
    if (what == 1) {
        reel.erase(reel.begin() + static_cast<std::ptrdiff_t>(at));
    } else if (what == 2) {
        trim(reel[at]);
    } else if (what == 3) {
        extend(cut, reel[at]);
    } else if (what == 4) {
        split(reel, at);
    } else if (what == 5 && kinds_.reuse) {
        use_again(cut, Shot(reel[at]));
    } else {
        move(cut, from, at);
    }
}

// Where two events meet: a dissolve, or a fade at black. Both give up frames for it.
void Cutter::dissolve(std::vector<Cut>& cut) {
    for (Cut& reel : cut) {
        for (std::size_t at = 0; at + 1 < reel.size(); ++at) {
            Shot& out = reel[at];
            Shot& in = reel[at + 1];
            const bool room = out.length > 30 && in.length > 30 && is_plain_film(out) && is_plain_film(in);
            if (!room || !one_in(3)) continue;
            const int length = 2 + below(24);
            out.out_op = "DO";
            in.in_op = "DI";
            out.out_length = in.in_length = length;
            out.length -= length;
            in.frame += length;
            if (in.ink >= 0) in.ink += length;
            in.length -= length;
        }
    }
}

Recut Cutter::make() {
    Recut recut;
    for (int left = 1 + below(reels_); left > 0; --left)
        recut.old_reels.push_back(new_reel());
    if (kinds_.reuse && one_in(2)) use_again(recut.old_reels, Shot(recut.old_reels[0][0]));
    recut.new_reels = recut.old_reels;
    while (static_cast<int>(recut.new_reels.size()) < reels_ && one_in(4))
        recut.new_reels.push_back(new_reel());
    for (int changes = below(2 * events_); changes > 0; --changes)
        change(recut.new_reels);
    for (Cut& reel : recut.new_reels)
        if (reel.empty()) reel.push_back(new_film());
    if (kinds_.transitions) {
        dissolve(recut.old_reels);
        dissolve(recut.new_reels);
    }
    return recut;
}

} // namespace

Recut make_recut(std::uint32_t seed, const Kinds& kinds, int reels, int events) {
    return Cutter(seed, kinds, reels, events).make();
}

} // namespace recuts
