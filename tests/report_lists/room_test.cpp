// How much room each piece of a list asks for before it begins: it stays on its page with just that many lines left,
// and goes to the next one with a line less.

#include "reports/assembly_list.h"
#include "reports/optical_drawing.h"
#include "reports/opticals_list.h"
#include "reports/pull_list.h"
#include "reports/timecode_list.h"
#include "tests/report_lists/reuse_fixture.h"

#include <algorithm>
#include <functional>

namespace {

constexpr int whole_page = 60;

class Room : public ReuseTest {
protected:
    using Printer = std::function<void(report&)>;

    /// Whether a piece that is printed with so many lines left begins on a new page.
    bool breaks(int lines_left, const Printer& print) {
        const std::string text = printed([&](report& out) {
            out.line = whole_page - out.bottom_margin - 1 - lines_left;
            print(out);
        });
        return text.rfind("<FF>", 0) == 0;
    }
    void expect_room(int lines, const Printer& print) {
        EXPECT_FALSE(breaks(lines, print)) << lines << " lines are enough";
        EXPECT_TRUE(breaks(lines - 1, print)) << lines - 1 << " lines are too few";
    }

    /// Whether a new page begins right before `piece` of a list, on pages that leave so many lines there. `piece`
    /// doesn't stand on the second page of a longer one.
    bool breaks_before(const std::string& piece, int lines_left, const Printer& print) {
        const auto text_on = [&](int page_length) {
            release_reuse_scan();
            return printed([&](report& out) {
                out.page_length = page_length;
                print(out);
            });
        };
        const std::string whole = text_on(2000);
        const std::size_t at = whole.find(piece);
        EXPECT_NE(at, std::string::npos) << whole;
        constexpr int first_line = 4;
        const auto line = first_line + std::count(whole.begin(), whole.begin() + static_cast<long>(at), '\n');
        const std::string text = text_on(static_cast<int>(line) + 2 + lines_left);
        return text.find("<FF>") < text.find(piece);
    }
    void expect_room_before(const std::string& piece, int lines, const Printer& print) {
        EXPECT_FALSE(breaks_before(piece, lines, print)) << lines << " lines are enough";
        EXPECT_TRUE(breaks_before(piece, lines - 1, print)) << lines - 1 << " lines are too few";
    }

    static cut_report loaded() {
        cut_report cut;
        cut.edit_in = 16;
        cut.edit_out = 48;
        cut.cut_key_in = key("KJ1234560010+00");
        cut.cut_key_out = key("KJ1234560012+00");
        return cut;
    }
    static cut_report joined() {
        cut_report cut = loaded();
        put_text(cut.fx_op_out, "D");
        cut.fx_len_out = 8;
        return cut;
    }
    static cut_s master(int layers) {
        cut_s cut;
        cut.optical_record = 1;
        cut.optical_ref = 3;
        cut.optical_layer_count = layers;
        cut.optical_out = cut.edit_out = 32;
        return cut;
    }
    static cut_s component(int track) {
        cut_s cut = shot(0, 0, 32, "1A", "KJ1234560010+00", "KJ1234560012+00");
        cut.optical_ref = 3;
        cut.track = track;
        return cut;
    }
    void print_opticals(report& out) { print_opticals_list(out, table, logger); }
};

TEST_F(Room, AnOpticalAsksForTwentyTwoLines) {
    add(component(1));
    add(master(0));
    expect_room_before("\nOPTICAL#3", 22, [this](report& out) { print_opticals(out); });
}

TEST_F(Room, ALayerAsksForTenLines) {
    options().one_page_optical = 0;
    for (const int track : {1, 2})
        add(component(track));
    add(master(2));
    expect_room_before("                             -- Layer  2", 10, [this](report& out) { print_opticals(out); });
}

TEST_F(Room, AShotOfADrawingAsksForSevenLines) {
    for (const int first : {0, 1}) {
        expect_room(7, [first](report& out) {
            cut_report cut = loaded();
            int side = 0, left = 16, right = 16;
            print_optical_shot(out, cut, side, left, right, first, 1, 0);
        });
    }
}

TEST_F(Room, ATransitionOfADrawingAsksForTwelveLines) {
    for (const int first : {0, 1}) {
        expect_room(12, [first](report& out) {
            cut_report from = joined(), to = loaded();
            int side = 0, left = 16, right = 16;
            print_optical_transition(out, from, to, side, left, right, first, 1);
        });
    }
}

TEST_F(Room, AnEventOfTheAssemblyListAsksForFourLines) {
    expect_room(4, [](report& out) {
        cut_report cut = loaded();
        print_cutting_copy_event(out, cut);
    });
}

TEST_F(Room, AnEffectOfTheAssemblyListAsksForTwoLines) {
    expect_room(2, [](report& out) {
        cut_report cut = loaded();
        print_effect_block(out, cut);
    });
}

TEST_F(Room, AShotForTheNegativeAsksForThreeLinesAndAnOpticalForOne) {
    cut_report cut = loaded();
    expect_room(3, [&cut](report& out) { print_neg_cut_event(out, cut); });
    cut.optical_record = 1;
    expect_room(1, [&cut](report& out) { print_neg_cut_event(out, cut); });
}

TEST_F(Room, AnEventOfTheTimecodeListAsksForTwoLines) {
    options().chan_type = 2;
    add(shot(1, 0, 16, "first", "KJ1234560010+00", "KJ1234560011+00"));
    add(shot(2, 16, 32, "second", "KJ1234560020+00", "KJ1234560021+00"));
    expect_room_before("  2  ", 2, [this](report& out) { print_timecode_assembly_list(out, table, logger); });
}

TEST_F(Room, AnEntryOfThePullListAsksForThreeLines) {
    add(shot(1, 0, 16, "first", "KJ1234560010+00", "KJ1234560011+00"));
    add(shot(2, 16, 32, "second", "KK1234560020+00", "KK1234560021+00"));
    expect_room_before("2              second", 3, [this](report& out) { print_pull_list(out, table, logger); });
}

} // namespace
