#include "reports/opticals_list.h"
#include "tests/report_lists/drawing_text.h"
#include "tests/reports/list_fixture.h"

namespace {

const std::string long_rule = "\n" + std::string(129, '_') + "\n";
const std::string short_rule = std::string(78, '_') + "\n";
const std::string layer_rule = "\n" + std::string(79, '-') + "\n";

class OpticalsList : public ListTest {
protected:
    OpticalsList() { add_header(); }

    std::string list() {
        return printed([this](report& out) { print_opticals_list(out, table, logger); });
    }
    /// The opticals on one page, without the heading.
    std::string opticals() {
        options().one_page_optical = 0;
        return below_heading(list());
    }
    static cut_s master(int ref, int layers = 0, int event = 0) {
        cut_s cut;
        cut.optical_record = 1;
        cut.optical_ref = ref;
        cut.event = event;
        cut.optical_layer_count = layers;
        cut.optical_in = cut.edit_in = 16;
        cut.optical_out = cut.edit_out = 48;
        put_text(cut.optical_name, "Glow");
        return cut;
    }
    static cut_s component(int ref, int track, int edit_in, int edit_out, const char* name) {
        cut_s cut = shot(0, edit_in, edit_out, name, "KJ1234560010+00", "KJ1234560012+00");
        cut.optical_ref = ref;
        cut.track = track;
        return cut;
    }
    static cut_s with_out(cut_s cut, int length) {
        put_text(cut.fx_op_out, "D");
        put_text(cut.fx_name_out, "Dissolve");
        cut.fx_len_out = length;
        return cut;
    }
    static cut_s with_in(cut_s cut, int length) {
        put_text(cut.fx_op_in, "D");
        cut.fx_len_in = length;
        return cut;
    }
    static std::string error(const std::string& reason) {
        return "\n     The description of this optical is in error\n" + reason +
               "     - Please manually review its details here and in the assembly list\n";
    }
    static int count(const std::string& text, const std::string& part) {
        int found = 0;
        for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
            ++found;
        return found;
    }
};

const std::string no_components = "     - there appear to be no components\n";
const std::string overlaps = "     - possibly because it overlaps with another optical\n";

TEST_F(OpticalsList, AReelWithoutOpticalsPrintsAPageThatSaysSo) {
    add(shot(1, 0, 32, "1A", "KJ1234560010+00", "KJ1234560012+00"));
    const std::string expected = "Edit:         REEL 1                    Project: HARBOUR \n"
                                 "Edit dated:   1 January 2026 10:00:00   Format:  35mm 4perf\n"
                                 "Report dated: 9 September 2001 01:46:40 CUTTING-COPY version 9 \n"
                                 "\n"
                                 "                                PICTURE TRACK 1\n"
                                 "                                 OPTICALS LIST" +
                                 long_rule + "The reel contains no opticals\n<FF>\n";
    EXPECT_EQ(list(), expected);
    EXPECT_FALSE(logger.lines.empty());
}

TEST_F(OpticalsList, AnEmptyTableHasNoOpticals) { EXPECT_EQ(opticals(), "The reel contains no opticals\n<FF>\n"); }

TEST_F(OpticalsList, ATransitionIsSummedUpAndDrawn) {
    add(master(3, 0, 7));
    add(with_out(component(3, 1, 0, 40, "1A"), 8));
    add(with_in(component(3, 1, 48, 80, "2B"), 8));
    EXPECT_EQ(opticals(), "\n"
                          "OPTICAL#3   <Glow>    Assembly event 7\n"
                          "      begin footage: 0001+00   end footage: 0002+15   frame length: 32\n" +
                              short_rule + roll_heads('A', 'B') +
                              "SHOT: 1A roll: A001                           -----SPACER 40 FRAMES-----\n"
                              "length: 48                                                 :\n"
                              "begin:    0000+00 KJ1234560010+00                          :\n"
                              "                  V                                        :\n"
                              "                  V                       SHOT: 2B roll: A001\n"
                              "                  V                       length: 40\n"
                              "                  V                                        V\n"
                              "   *Dissolve*  FX start 0002+08   FX end 0002+15   FX len 8\n"
                              "                         ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n"
                              "start OUT:0002+08 KJ1234560012+00         start IN:0002+08 KJ1234560009+08\n"
                              "full  OUT:0002+15         0012+07         full  IN:0002+15         0009+15\n"
                              "                  :                       end:     0004+15         0011+15\n" +
                              long_rule);
}

TEST_F(OpticalsList, AnyUnitButFramesIsFeet) {
    options().edit_units = 2;
    add(master(1, 1));
    const std::string text = opticals();
    EXPECT_NE(text.find("      begin footage: 0001+00   end footage: 0002+15   frame length: 32\n"), std::string::npos);
    EXPECT_NE(text.find("           FX start: 0001+00        FX end: 0002+15      FX length: 32\n"), std::string::npos);
}

TEST_F(OpticalsList, TheHeadLineGoesByLayersAndEvent) {
    add(master(1, 0, 0));
    add(master(2, 0, 5));
    add(master(3, 1, 0));
    add(master(4, 1, 5));
    const std::string text = opticals();
    EXPECT_NE(text.find("\nOPTICAL#1   <Glow>\n"), std::string::npos);
    EXPECT_NE(text.find("\nOPTICAL#2   <Glow>    Assembly event 5\n"), std::string::npos);
    EXPECT_NE(text.find("\nOPTICAL#3\n"), std::string::npos);
    EXPECT_NE(text.find("\nOPTICAL#4      Assembly event 5\n"), std::string::npos);
}

TEST_F(OpticalsList, EffectsOfALayeredOpticalAreListedInFootageByTheirLastFrame) {
    add(master(2, 2));
    cut_s second = master(2, 2);
    put_text(second.optical_name, "Matte");
    second.edit_out = 44;
    add(second);
    add(master(5));
    const std::string text = opticals();
    EXPECT_EQ(text.find("\n"
                        "OPTICAL#2\n"
                        "      begin footage: 0001+00   end footage: 0002+15   frame length: 32\n"
                        "           <Glow>\n"
                        "           FX start: 0001+00        FX end: 0002+15      FX length: 32\n"
                        "           <Matte>\n"
                        "           FX start: 0001+00        FX end: 0002+11      FX length: 28\n" +
                        short_rule + error(no_components) + long_rule + "\nOPTICAL#5   <Glow>\n"),
              0u);
    EXPECT_EQ(count(text, "OPTICAL#2"), 1);
}

TEST_F(OpticalsList, InFramesAnEffectsEndIsOneHigher) {
    options().edit_units = 1;
    add(master(2, 1));
    EXPECT_EQ(opticals().find("\n"
                              "OPTICAL#2\n"
                              "      begin frame:  000016   end frame:  000047   frame length: 32\n"
                              "           <Glow>\n"
                              "           FX start:  000016        FX end:  000048      FX length: 32\n"),
              0u);
}

TEST_F(OpticalsList, MastersOfATransitionAreOpticalsOfTheirOwn) {
    add(master(2));
    add(master(2));
    EXPECT_EQ(count(opticals(), "OPTICAL#2   <Glow>\n"), 2);
}

TEST_F(OpticalsList, AnOpticalInErrorIsNotDrawn) {
    cut_s bad = master(1);
    bad.optical_error = 1;
    add(bad);
    add(component(1, 1, 16, 48, "1A"));
    const std::string text = opticals();
    EXPECT_NE(text.find(short_rule + error(overlaps) + long_rule), std::string::npos);
    EXPECT_EQ(text.find("SHOT"), std::string::npos);
}

TEST_F(OpticalsList, AnOpticalWithoutComponentsSaysSo) {
    add(master(1));
    add(component(2, 1, 16, 48, "1A"));
    EXPECT_NE(opticals().find(short_rule + error(no_components) + long_rule), std::string::npos);
}

TEST_F(OpticalsList, WithAPageEachTheNextOpticalBeginsANewPage) {
    add(master(1));
    add(master(2));
    EXPECT_EQ(count(opticals(), "<FF>"), 0);
    options().one_page_optical = 1;
    const std::string text = below_heading(list());
    EXPECT_EQ(count(text, long_rule + "<FF>\nEdit:  REEL 1                  OPTICALS LIST     "), 2);
    EXPECT_NE(
        text.find("Edit:  REEL 1                  OPTICALS LIST     9 September 2001 01:46:40  page 3\n" + long_rule),
        std::string::npos);
}

TEST_F(OpticalsList, LayersAreDrawnOnRollsOfTheirOwn) {
    add(master(1, 2));
    add(component(1, 1, 16, 48, "1A"));
    add(component(1, 2, 20, 44, "2B"));
    const std::string text = opticals();
    EXPECT_NE(text.find(short_rule + "                             -- Layer  1  of  2 --\n" + roll_heads('A', 'B') +
                        row("SHOT: 1A roll: A001", right_colon)),
              std::string::npos);
    EXPECT_NE(text.find(layer_rule + "                             -- Layer  2  of  2 --\n" + roll_heads('C', 'D') +
                        row("SHOT: 2B roll: A001", right_colon)),
              std::string::npos);
    EXPECT_EQ(text.substr(text.size() - (layer_rule + long_rule).size()), layer_rule + long_rule);
}

TEST_F(OpticalsList, LayersAreNotHeldAgainstTheirCount) {
    add(master(1, 2));
    for (const int track : {1, 2, 3})
        add(component(1, track, 16, 48, "1A"));
    EXPECT_NE(opticals().find("                             -- Layer  3  of  2 --\n" + roll_heads('E', 'F')),
              std::string::npos);
}

TEST_F(OpticalsList, ShotsAlternateBetweenTheRolls) {
    add(master(1, 1));
    add(component(1, 1, 16, 32, "1A"));
    add(component(1, 1, 40, 48, "2B"));
    const std::string text = opticals();
    EXPECT_NE(text.find(row("SHOT: 1A roll: A001", "      -----SPACER 16 FRAMES-----")), std::string::npos);
    EXPECT_NE(text.find(colons() + row(left_colon, "      -----SPACER 8 FRAMES-----") + colons() +
                        row("     -----SPACER 16 FRAMES-----", "  SHOT: 2B roll: A001")),
              std::string::npos);
}

TEST_F(OpticalsList, ALayerBeginsOnTheLeftButATransitionsTrackStaysOnItsSide) {
    for (const int layers : {1, 0}) {
        table.delete_records(0, table.get_num_records());
        add(master(1, layers));
        add(component(1, 1, 16, 32, "1A"));
        add(component(1, 2, 16, 32, "2B"));
        const std::string text = opticals();
        const std::string second =
            layers ? row("SHOT: 2B roll: A001", right_colon) : row(left_colon, "  SHOT: 2B roll: A001");
        EXPECT_NE(text.find(second), std::string::npos) << text;
        EXPECT_EQ(count(text, layers ? "C-ROLL" : "A-ROLL"), layers ? 1 : 2);
    }
}

TEST_F(OpticalsList, TransitionsRunOnFromShotToShot) {
    add(master(1));
    add(with_out(component(1, 1, 0, 32, "1A"), 8));
    add(with_out(with_in(component(1, 1, 40, 60, "2B"), 8), 4));
    add(with_in(component(1, 1, 64, 96, "3C"), 4));
    const std::string text = opticals();
    EXPECT_EQ(count(text, "SHOT: 2B"), 1);
    EXPECT_EQ(count(text, "SHOT: 3C"), 1);
    EXPECT_EQ(count(text, "FX start"), 2);
    EXPECT_NE(text.find(row(left_colon, right_vee) + row("     -----SPACER 20 FRAMES-----", right_vee) +
                        row(left_colon, right_vee) + row("SHOT: 3C roll: A001", right_vee)),
              std::string::npos)
        << text;
}

TEST_F(OpticalsList, ATransitionWithoutAPartnerEndsTheMainTrack) {
    add(master(1, 2));
    add(component(1, 1, 16, 32, "1A"));
    add(with_out(component(1, 1, 32, 40, "2B"), 8));
    add(component(1, 2, 16, 48, "3C"));
    const std::string text = opticals();
    EXPECT_EQ(count(text, "SHOT: 1A"), 1);
    EXPECT_EQ(count(text, "SHOT: 2B"), 0);
    EXPECT_EQ(count(text, "SHOT: 3C"), 0);
}

TEST_F(OpticalsList, ATransitionWithoutAPartnerIsPlainOnOtherTracks) {
    add(master(1, 2));
    add(component(1, 1, 16, 32, "1A"));
    add(with_out(component(1, 2, 16, 40, "2B"), 8));
    add(component(1, 3, 16, 48, "3C"));
    const std::string text = opticals();
    EXPECT_NE(text.find(row("SHOT: 2B roll: A001", right_colon)), std::string::npos);
    EXPECT_EQ(count(text, "SHOT: 3C"), 1);
}

TEST_F(OpticalsList, APartnerMustComeInByATransition) {
    add(master(1));
    add(with_out(component(1, 1, 16, 32, "1A"), 8));
    add(component(1, 1, 40, 48, "2B"));
    EXPECT_EQ(count(opticals(), "SHOT"), 0);
}

TEST_F(OpticalsList, AShotThatOnlyComesInIsTakenAsDrawnUnlessItBeginsATrack) {
    add(master(1));
    add(with_in(component(1, 1, 16, 32, "1A"), 4));
    add(with_in(component(1, 1, 32, 48, "2B"), 4));
    const std::string text = opticals();
    EXPECT_EQ(count(text, "SHOT: 1A"), 1);
    EXPECT_EQ(count(text, "SHOT: 2B"), 0);
}

TEST_F(OpticalsList, ComponentsAreFoundBelowTheirOwnOptical) {
    add(master(10));
    add(master(2));
    add(component(10, 1, 16, 48, "ten"));
    add(component(2, 1, 16, 48, "two"));
    add(shot(1, 0, 16, "plain", "KJ1234560010+00", "KJ1234560012+00"));
    const std::string text = opticals();
    EXPECT_LT(text.find("OPTICAL#2"), text.find("SHOT: two"));
    EXPECT_LT(text.find("SHOT: two"), text.find("OPTICAL#10"));
    EXPECT_LT(text.find("OPTICAL#10"), text.find("SHOT: ten"));
    EXPECT_EQ(text.find("plain"), std::string::npos);
}

} // namespace
