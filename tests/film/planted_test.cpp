// Random edits of a log with faults planted: each is found where it was planted, and nothing else is called wrong.

#include "tests/film/findings_fixture.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <set>
#include <utility>

using namespace film_test;

namespace {

constexpr int hour = 24 * 3600, row_length = 1000, slack = 31;

std::string timecode(int frame) {
    LabelPoint point(frame, label_tc_24);
    return point.get_string();
}

/// Two rolls of each tape, one right behind the other. Tapes "A" and "B" come first; "AX", which "A" begins, behind.
Records log_of_tapes() {
    Records rows;
    for (const std::string tape : {"A", "B", "AX"})
        for (int roll = 0; roll < 2; ++roll) {
            const int start = hour + roll * row_length;
            const std::string name = tape + std::to_string(roll);
            rows.push_back(row(tape, timecode(start), timecode(start + row_length), name,
                               "KJ" + std::to_string(100000 + static_cast<int>(rows.size())) + "0100+00"));
        }
    return rows;
}

using Fault = std::pair<Code, std::int64_t>;

/// An edit that grows event by event; `planted` tells what must be found, and where.
class Planting {
public:
    void add_event() {
        switch (between(0, 5)) {
        case 0:
            return add_overrun();
        case 1:
            return add_prefix_reel();
        case 2:
            return add_conflict();
        case 3:
            return add_short_media();
        default:
            return add_sound_one();
        }
    }
    void add_upper_clip() {
        const int v2 = checked_.builder.add_channel(1);
        const int at = between(0, 20), length = between(1, 20);
        checked_.builder.add_gap(v2, frames(at));
        checked_.builder.add_event(v2, event_of(checked_.builder.add_source(tape("B")), 100, length));
        planted.emplace(Code::not_listed, at);
    }
    Findings run() { return checked_.run(log_of_tapes()); }

    std::set<Fault> planted;

private:
    static int between(int low, int high) { return *rc::gen::inRange(low, high + 1); }
    static std::string plain_tape() { return between(0, 1) == 0 ? "A" : "B"; }
    static int length() { return between(5, 60); }
    /// A first frame well inside one of the two rows.
    static int inside(int length) {
        return between(0, 1) * row_length + slack + between(0, row_length - 2 * slack - length);
    }

    void add(const SourceDescription& source, int first, int length) {
        checked_.builder.add_event(checked_.v1, event_of(checked_.builder.add_source(source), first, length));
        now_ += length;
    }
    void add_sound_one() {
        const int frames = length();
        add(tape(plain_tape()), inside(frames), frames);
    }
    void add_overrun() {
        const int before = between(1, 40), behind = between(1, 29);
        planted.emplace(Code::log_overrun, now_ + before);
        add(tape(plain_tape()), row_length - before, before + behind);
    }
    void add_prefix_reel() {
        const int frames = length();
        planted.emplace(Code::reel_prefix, now_);
        planted.emplace(Code::log_overrun, now_);
        add(tape("AX"), inside(frames), frames);
    }
    void add_conflict() {
        const int frames = length();
        SourceDescription source = tape(plain_tape());
        source.key = LabelDescription{label_key_35mm_4p, "XX9999990000+00", {}, {}};
        planted.emplace(Code::key_conflict, now_);
        add(source, inside(frames), frames);
    }
    void add_short_media() {
        const int frames = length(), first = inside(frames);
        SourceDescription source = tape(plain_tape());
        source.length = logged::frames(first + between(0, frames - 1));
        planted.emplace(Code::outside_media, now_);
        add(source, first, frames);
    }

    Checked checked_;
    std::int64_t now_ = 0;
};

TEST(PlantedFaults, AreFoundAtTheirPlacesAndNothingElseIsWrong) {
    const bool held = rc::check("planted faults", [] {
        Planting planting;
        const int events = *rc::gen::inRange(1, 12);
        for (int i = 0; i < events; ++i)
            planting.add_event();
        if (*rc::gen::arbitrary<bool>()) planting.add_upper_clip();
        std::set<Fault> found;
        for (const Finding& finding : planting.run())
            if (finding.severity == Severity::wrong || finding.code == Code::key_conflict)
                found.emplace(finding.code, finding.place.frame);
        RC_ASSERT(found == planting.planted);
    });
    EXPECT_TRUE(held);
}

} // namespace
