#include "base/table_order.h"
#include "reports/pull_event.h"
#include "reports/pull_list.h"
#include "reports/reuse_report.h"
#include "tests/report_lists/reuse_fixture.h"

namespace {

const std::string long_rule = "\n" + std::string(129, '_') + "\n";

class PullList : public ReuseTest {
protected:
    std::string list() {
        release_reuse_scan();
        return printed([this](report& out) { print_pull_list(out, table, logger); });
    }
    /// The part of a list from below its heads to its end.
    static std::string entries(const std::string& list, const std::string& end) {
        const std::size_t last = list.find(end);
        EXPECT_NE(last, std::string::npos);
        const std::size_t rule = list.rfind(long_rule, last);
        const std::size_t from = rule + long_rule.size() + 1;
        return list.substr(from, last - from);
    }
    std::string pulled() { return entries(list(), "\nEnd of pull list"); }
    std::string event(cut_report cut, int reused = 0, int optical_list = 0) {
        return printed([&](report& out) {
            static constexpr int stops[] = {5, 15, 34, 44, 65, 0};
            out.tab_stops = stops;
            print_pull_event(out, cut, reused, true, optical_list);
        });
    }
    cut_report loaded(const cut_s& cut) {
        add(cut);
        cut_report result;
        result.load(*table.get_record(table.get_num_records() - 1), 0, 1, 0);
        return result;
    }
    cut_s plain(const std::string& name = "1A") { return film(name, "A001", "KJ1234560010+00", "KJ1234560012+00"); }
    cut_s other(const std::string& name, const std::string& roll = "A001") {
        return film(name, roll, "KJ1234560020+00", "KJ1234560022+00");
    }
};

TEST_F(PullList, IsAPageByReel) {
    add(plain());
    const std::string entry = "1    A001      1A                    2+00      KJ1234560010+00   NO INKCODE\n"
                              "                                                       0011+15   NO INKCODE\n"
                              "\n";
    EXPECT_EQ(list(), "Edit:         REEL 1                    Project: HARBOUR \n"
                      "Edit dated:   1 January 2026 10:00:00   Format:  35mm 4perf\n"
                      "Report dated: 9 September 2001 01:46:40 CUTTING-COPY version 9 \n"
                      "\n"
                      "                                PICTURE TRACK 1\n"
                      "                              PULL LIST BY REEL ID" +
                          long_rule + long_rule +
                          "Evt  Roll      Shot name            length          KeyKode       Inkcode\n"
                          "                                                  start/end      start/end" +
                          long_rule + "\n" + entry + "\nEnd of pull list" + long_rule + "<FF>\n");
}

// The first record of the table is no entry of the second list, so that list carries on the roll of the first.
TEST_F(PullList, TheNegCutFormBringsTheOpticalsPullList) {
    options().pull_match_assembly = 0;
    add(plain());
    cut_s inside = other("inside");
    inside.optical_ref = 12;
    inside.event = 0;
    add(inside);
    cut_s upper = other("upper", "B002");
    upper.optical_ref = 12;
    upper.track = 2;
    upper.keycode_in = key("KL1234560020+00");
    upper.keycode_out = key("KL1234560021+00");
    add(upper);
    cut_s master = other("master");
    master.optical_record = 1;
    master.optical_ref = 12;
    add(master);
    const std::string text = list();
    EXPECT_NE(text.find("                            PULL LIST BY CAMERA ROLL" + long_rule + long_rule +
                        "Evt  Roll      Shot name            length          KeyKode      \n"
                        "                                                  start/end" +
                        long_rule +
                        "\n"
                        "1    A001      1A                    2+00      KJ1234560010+00\n"
                        "                                                       0011+15\n"
                        "\n"
                        "\n"
                        "End of pull list"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("                       OPTICALS PULL LIST BY CAMERA ROLL" + long_rule +
                        "Evt          Roll      Shot name            length          KeyKode\n"
                        "                                                          start/end" +
                        long_rule +
                        "\n"
                        "OPTICAL#12             inside                2+00      KJ1234560020+00\n"
                        "                                                               0021+15\n"
                        "\n"
                        "OPTICAL#12   B002      upper                 2+00      KL1234560020+00\n"
                        "                                                               0020+15\n"
                        "\n"
                        "\n"
                        "End of opticals pull list" +
                        long_rule + "<FF>\n"),
              std::string::npos)
        << text;
}

TEST_F(PullList, TitlesNameTheOrder) {
    options().pull_sort_by_keycode = 1;
    EXPECT_NE(list().find("\n                              PULL LIST BY INKCODE\n"), std::string::npos);
    options().pull_match_assembly = 0;
    const std::string text = list();
    EXPECT_NE(text.find("\n                            PULL LIST BY KEYKODE ROLL\n"), std::string::npos);
    EXPECT_NE(text.find("\n                       OPTICALS PULL LIST BY KEYKODE ROLL\n"), std::string::npos);
}

TEST_F(PullList, SoundHasInkNumbersAloneAndNoWordOfReuse) {
    options().chan_type = 2;
    options().pull_match_assembly = 0;
    add(plain("one"));
    cut_s again = plain("two");
    again.inkcode_in = key("ABCD0010+00", 43);
    again.inkcode_out = key("ABCD0012+00", 43);
    again.track = 1;
    again.optical_ref = 4;
    add(again);
    const std::string text = list();
    EXPECT_NE(text.find("                              PULL LIST BY REEL ID"), std::string::npos);
    EXPECT_NE(text.find("Evt  Roll      Shot name            length                        Inkcode\n"
                        "                                                                 start/end"),
              std::string::npos)
        << text;
    EXPECT_EQ(pulled(), "1    A001      one                   2+00   **                   NO INKCODE\n"
                        "                                                                 NO INKCODE\n"
                        "\n"
                        "2              two                   2+00   **                   ABCD0010+00\n"
                        "                                                                     0011+15\n"
                        "\n");
    EXPECT_EQ(text.find("NOTE"), std::string::npos);
    EXPECT_EQ(text.find("RE-USE"), std::string::npos);
    EXPECT_EQ(text.find("OPTICALS"), std::string::npos);
    EXPECT_EQ(report_context().reuse_scan->reuse_count, 1);
}

TEST_F(PullList, ReuseIsNotedMarkedAndReported) {
    add(plain("one"));
    add(plain("two"));
    const std::string text = list();
    EXPECT_NE(text.find("REEL ID" + long_rule +
                        "\n\n***NOTE: 1 case of material re-use in this list\n"
                        "***  see summary report after pull-list\n" +
                        long_rule + "Evt"),
              std::string::npos);
    EXPECT_NE(text.find("   2+00   ** KJ1234560010+00"), std::string::npos) << text;
    EXPECT_NE(text.find("                               RE-USE OF MATERIAL" + long_rule +
                        " roll: A001     shot: two           from KJ1234560010+00 to 0011+15\n"
                        "\nEnd of re-use report" +
                        long_rule + "<FF>\n"),
              std::string::npos)
        << text;
    add(plain("three"));
    EXPECT_NE(list().find("***NOTE: 2 cases of material"), std::string::npos);
}

TEST_F(PullList, TheNoteOfTheNegCutFormNamesBothLists) {
    options().pull_match_assembly = 0;
    for (const char* name : {"one", "two", "three"})
        add(plain(name));
    EXPECT_NE(list().find("\n\n***NOTE: 2 cases of material re-use in the pull-list and opticals pull-list\n"
                          "***  see summary report after the opticals pull-list\n"),
              std::string::npos);
}

TEST_F(PullList, ARollIsNamedOnceARunWhenSortedByRoll) {
    add(plain("one"));
    add(other("two"));
    cut_s third = other("three", "B002");
    third.keycode_in = key("KK1234560020+00");
    third.keycode_out = key("KK1234560022+00");
    add(third);
    std::string text = pulled();
    EXPECT_NE(text.find("1    A001      one"), std::string::npos);
    EXPECT_NE(text.find("2              two"), std::string::npos);
    EXPECT_NE(text.find("3    B002      three"), std::string::npos);
    options().pull_sort_by_keycode = 1;
    text = pulled();
    EXPECT_NE(text.find("1    A001      one"), std::string::npos);
    EXPECT_NE(text.find("2    A001      two"), std::string::npos);
}

TEST_F(PullList, ARollIsNamedAgainAtTheTopOfAPage) {
    for (int event = 0; event < 20; ++event)
        add(film("s", "A001", "KJ123456" + std::to_string(1000 + 10 * event) + "+00",
                 "KJ123456" + std::to_string(1002 + 10 * event) + "+00"));
    const std::string text = list();
    const std::size_t page = text.find("<FF>");
    ASSERT_LT(page, text.find("End of pull list"));
    std::size_t named = 0;
    for (std::size_t at = text.find("A001"); at != text.npos; at = text.find("A001", at + 1))
        ++named;
    EXPECT_EQ(named, 2u);
    EXPECT_NE(text.find("<FF>\nEdit:  REEL 1                  PULL LIST         9 September 2001 01:46:40  page 2\n"
                        "\n"
                        "Evt  Roll      Shot name"),
              std::string::npos);
}

TEST_F(PullList, WhatIsNoFilmPrintsNothing) {
    cut_s black = plain();
    black.special = 98;
    EXPECT_EQ(event(loaded(black)), "");
}

TEST_F(PullList, ABlackEventCanTurnThePage) {
    cut_s black = plain();
    black.special = 98;
    add(black);
    table.set_field(0, cf_optical_ref, 1);
    const auto turns_ahead_of_end = [this](int line) {
        const std::string text = printed([&](report& out) {
            out.line = line;
            print_opticals_pull_list(out, table, logger);
        });
        return text.find("<FF>") < text.find("End of");
    };
    // The heading takes 11 lines; an entry's three fit below line 55 of 60 at the lowest.
    EXPECT_FALSE(turns_ahead_of_end(44));
    EXPECT_TRUE(turns_ahead_of_end(45));
}

TEST_F(PullList, HandlesAreAddedAtBothEnds) {
    options().pull_match_assembly = 0;
    options().pull_handle = 24;
    EXPECT_EQ(event(loaded(plain())), "1    A001      1A                    5+00      KJ1234560008+08\n"
                                      "                                                       0013+07\n"
                                      "\n");
}

TEST_F(PullList, HandlesGoTheOtherWayWhereKeysRunBackward) {
    options().pull_match_assembly = 0;
    options().pull_handle = 24;
    const cut_s backward = film("1A", "A001", "KJ1234560012+00", "KJ1234560010+00");
    cut_report cut = loaded(backward);
    ASSERT_EQ(cut.direction, -1);
    EXPECT_EQ(event(cut), "1    A001      1A                    5+00      KJ1234560013+08\n"
                          "                                                       0008+07\n"
                          "\n");
}

TEST_F(PullList, LengthsInFramesAreNumbers) {
    options().edit_units = 1;
    options().pull_handle = 8;
    EXPECT_EQ(event(loaded(plain())).substr(0, 44), "1    A001      1A                      48   ");
}

TEST_F(PullList, AMissingKeyIsSaid) {
    options().pull_match_assembly = 0;
    cut_s cut = plain();
    cut.keycode_missing = 1;
    EXPECT_EQ(event(loaded(cut)), "1    A001      1A                    2+00      NO KEYKODE\n"
                                  "                                               NO KEYKODE\n\n");
}

TEST_F(PullList, InkNumbersHaveHandlesToo) {
    options().pull_handle = 8;
    cut_s cut = plain();
    cut.inkcode_in = key("ABCD0010+00", 43);
    cut.inkcode_out = key("ABCD0012+00", 43);
    EXPECT_EQ(event(loaded(cut)), "1    A001      1A                    3+00      KJ1234560009+08   ABCD0009+08\n"
                                  "                                                       0012+07       0012+07\n\n");
}

TEST_F(PullList, AFreezeFrameTakesNothingOffItsEnd) {
    options().pull_match_assembly = 0;
    cut_s cut = plain();
    cut.speed = 0.0;
    EXPECT_NE(event(loaded(cut)).find("        0012+00\n"), std::string::npos);
}

TEST_F(PullList, ReusedEntriesAreMarked) {
    EXPECT_NE(event(loaded(plain()), 1).find("2+00   ** KJ1234560010+00"), std::string::npos)
        << event(loaded(plain()), 1);
    EXPECT_EQ(event(loaded(plain()), 0).find("**"), std::string::npos);
}

TEST_F(PullList, LongNamesAreCut) {
    EXPECT_NE(event(loaded(plain("a name of many more letters"))).find("A001      a name of many mor    2+00"),
              std::string::npos)
        << event(loaded(plain("a name of many more letters")));
}

TEST_F(PullList, PictureLeavesOutUpperTracksAndTheNegCutFormAllOpticals) {
    cut_s inside = plain("inside");
    inside.optical_ref = 1;
    add(inside);
    cut_s upper = other("upper");
    upper.track = 2;
    add(upper);
    EXPECT_NE(pulled().find("inside"), std::string::npos);
    EXPECT_EQ(pulled().find("upper"), std::string::npos);
    options().pull_match_assembly = 0;
    EXPECT_EQ(pulled(), "");
}

TEST_F(PullList, ProgressIsLogged) {
    options().pull_match_assembly = 0;
    add(plain("one"));
    add(plain("two"));
    list();
    for (const int id : {10473, 10476, 10477, 10478})
        EXPECT_TRUE(logger.said(toUTF8(resourceStrW(id)).c_str(), 0)) << id;
}

/// Two entries that only their third key tells apart, the later one first in the table.
class PullOrder : public PullList {
protected:
    struct Codes {
        const char* roll;
        const char* key;
        const char* ink;
    };
    void put(const char* name, const Codes& codes) {
        cut_s cut = shot(static_cast<int>(table.get_num_records()) + 1, 0, 32, name, codes.key, codes.key);
        put_text(cut.cam_reel, codes.roll);
        cut.inkcode_in = cut.inkcode_out = key(codes.ink, 43);
        add(cut);
    }
    std::string order(const Codes& later, const Codes& earlier) {
        table.delete_records(0, table.get_num_records());
        put("LATER", later);
        put("EARLIER", earlier);
        release_reuse_scan();
        run_reuse_scan(table, logger); // which sorts by key number
        sort_by(table, {cf_event, -1});
        const std::string text = printed([this](report& out) { print_pull_list(out, table, logger); });
        return text.find("EARLIER") < text.find("LATER") ? "by the third key" : "as they came";
    }

    const Codes plain_codes = {"A001", "KJ1234560010+00", "ABCD0010+00"};
    const Codes roll_behind = {"B001", "KJ1234560010+00", "ABCD0010+00"};
    const Codes key_behind = {"A001", "KJ1234560020+00", "ABCD0010+00"};
    const Codes ink_behind = {"A001", "KJ1234560010+00", "ABCD0020+00"};
};

TEST_F(PullOrder, OfTheCuttingCopyEndsWithTheKeyNumberOrTheRoll) {
    EXPECT_EQ(order(key_behind, plain_codes), "by the third key");
    options().pull_sort_by_keycode = 1;
    EXPECT_EQ(order(roll_behind, plain_codes), "by the third key");
}

TEST_F(PullOrder, OfTheNegativeEndsWithTheInkNumberOrTheRoll) {
    options().pull_match_assembly = 0;
    EXPECT_EQ(order(ink_behind, plain_codes), "by the third key");
    options().pull_sort_by_keycode = 1;
    EXPECT_EQ(order(roll_behind, plain_codes), "by the third key");
}

TEST_F(PullOrder, OfSoundIsThatOfTheCuttingCopy) {
    options().chan_type = 2;
    options().pull_match_assembly = 0;
    EXPECT_EQ(order(key_behind, plain_codes), "by the third key");
    options().pull_sort_by_keycode = 1;
    EXPECT_EQ(order(roll_behind, plain_codes), "by the third key");
}

// The second key comes before the third, whichever that is.
TEST_F(PullOrder, TheThirdKeyIsTheLast) {
    const Codes ink_before_key = {"A001", "KJ1234560020+00", "ABCD0005+00"};
    EXPECT_EQ(order(plain_codes, ink_before_key), "by the third key");
    options().pull_match_assembly = 0;
    const Codes key_before_ink = {"A001", "KJ1234560005+00", "ABCD0020+00"};
    EXPECT_EQ(order(plain_codes, key_before_ink), "by the third key");
}

class ReuseReport : public ReuseTest {
protected:
    std::string report_text() {
        run_reuse_scan(table, logger);
        return printed([this](report& out) { print_reuse_report(out, table, logger); });
    }
    std::string lines() {
        const std::string text = below_heading(report_text());
        return text.substr(0, text.find("\nEnd of"));
    }
};

TEST_F(ReuseReport, SharedFilmIsToldFromItsFirstFrameToItsLast) {
    add(film("a shot of many letters", "A001", "KJ1234560011+13", "KJ1234560014+00"));
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    EXPECT_EQ(lines(), " roll: A001     shot: a shot of man from KJ1234560011+13 to 0011+15\n");
}

TEST_F(ReuseReport, PiecesThatMeetAreAButtEdit) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("second", "A001", "KJ1234560012+00", "KJ1234560014+00"));
    EXPECT_EQ(lines(), " roll: A001     shot: second        KJ1234560012+00 (butt edit)\n");
}

TEST_F(ReuseReport, MissingKeysHaveALineOfTheirOwn) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    cut_s second = film("second", "A001", "KJ1234560011+00", "KJ1234560014+00");
    second.keycode_missing = 1;
    add(second);
    add(film("third", "B001", "KK1234560010+00", "KK1234560012+00"));
    cut_s fourth = film("fourth", "B001", "KK1234560012+00", "KK1234560014+00");
    fourth.keycode_missing = 1;
    add(fourth);
    EXPECT_EQ(lines(), " roll A001     shot second        from (NO KEYKODE) to (NO KEYKODE)\n"
                       " roll B001     shot fourth        (NO KEYKODE) (butt edit)\n");
}

TEST_F(ReuseReport, WithoutCasesNothingIsPrinted) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    EXPECT_EQ(report_text(), "");
    release_reuse_scan();
    EXPECT_EQ(printed([this](report& out) { print_reuse_report(out, table, logger); }), "");
}

TEST_F(ReuseReport, LaterPagesHaveAHeadingWithoutHeads) {
    for (int event = 0; event < 120; ++event)
        add(film("s", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    EXPECT_NE(report_text().find("<FF>\n"
                                 "Edit:  REEL 1                  RE-USE LIST       9 September 2001 01:46:40  page 2" +
                                 long_rule + " roll: A001"),
              std::string::npos);
}

} // namespace
