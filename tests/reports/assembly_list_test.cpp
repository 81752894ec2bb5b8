#include "reports/assembly_list.h"
#include "tests/reports/list_fixture.h"

#include <climits>
#include <limits>

namespace {

class AssemblyList : public ListTest {
protected:
    AssemblyList() { add_header(); }

    std::string list() {
        return printed([this](report& out) { print_assembly_list(out, table, logger); });
    }
    /// From the first event on.
    std::string events() {
        const std::string text = below_heading(list());
        const std::string body = text.substr(text.find("_\n") + 3);
        return body.substr(0, body.find("\nEnd of"));
    }
    std::string event(const cut_s& cut) {
        dbrecord* row = table.get_record(static_cast<unsigned>(table.add_records(1)));
        cut.to_record(*row);
        const bool neg_cut = options().pull_match_assembly == 0 && options().chan_type != 2;
        return printed([&](report& out) {
            cut_report loaded;
            loaded.load(*row, neg_cut ? 0 : 1, options().chan_type, options().audio_opticals);
            neg_cut ? print_neg_cut_event(out, loaded) : print_cutting_copy_event(out, loaded);
        });
    }
    static cut_s plain_shot() { return shot(3, 16, 48, "12A-3", "KJ1234560010+00", "KJ1234560012+00"); }
    static cut_s master(int event, int layers, int error) {
        cut_s cut;
        cut.event = event;
        cut.optical_record = 1;
        cut.optical_ref = 2;
        cut.optical_in = cut.edit_in = 20;
        cut.optical_out = cut.edit_out = 50;
        cut.optical_layer_count = layers;
        cut.optical_error = error;
        put_text(cut.optical_name, "Glow");
        return cut;
    }
};

TEST_F(AssemblyList, IsAPageOfItsOwn) {
    add(plain_shot());
    const std::string rule = std::string(129, '_') + "\n";
    EXPECT_EQ(list(), "Edit:         REEL 1                    Project: HARBOUR \n"
                      "Edit dated:   1 January 2026 10:00:00   Format:  35mm 4perf\n"
                      "Report dated: 9 September 2001 01:46:40 CUTTING-COPY version 9 \n"
                      "\n"
                      "                                PICTURE TRACK 1\n"
                      "                                 ASSEMBLY LIST\n" +
                          rule + "     Start        Length   Roll      Shot      KeyKodes            Inkcodes\n" +
                          rule +
                          "\n"
                          "3    0001+00       2+00    A001      12A-3     KJ1234560010+00     NO INKCODE\n"
                          "                                                       0011+15     NO INKCODE\n"
                          "\n"
                          "     0003+00\n"
                          "End of assembly list\n" +
                          rule + "<FF>\n");
}

TEST_F(AssemblyList, TheNegCutFormHasNoInkNumbers) {
    options().pull_match_assembly = 0;
    add(plain_shot());
    const std::string text = list();
    EXPECT_NE(text.find("NEG-CUT version 9 \n\n                                 PICTURE TRACK\n"), std::string::npos);
    EXPECT_NE(text.find("     Start        Length   Roll      Shot      KeyKodes\n"), std::string::npos);
    EXPECT_EQ(events(), "3    0001+00       2+00    A001      12A-3     KJ1234560010+00 \n"
                        "                                                       0011+15\n"
                        "\n"
                        "     0003+00");
}

TEST_F(AssemblyList, AnEmptyTableClosesWithATotalOfNought) {
    options().edit_units = 1;
    EXPECT_EQ(events(), "      000000");
}

TEST_F(AssemblyList, InFramesTheTotalHasSixDigits) {
    options().edit_units = 1;
    add(plain_shot());
    EXPECT_EQ(events(), "3     000016         32    A001      12A-3     KJ1234560010+00     NO INKCODE\n"
                        "                                                       0011+15     NO INKCODE\n"
                        "\n"
                        "      000048");
}

TEST_F(AssemblyList, AnyUnitButFramesIsFeet) {
    options().edit_units = 2;
    add(plain_shot());
    add(master(0, 2, 0));
    const std::string text = events();
    EXPECT_NE(text.find("3    0001+00       2+00 "), std::string::npos) << text;
    EXPECT_NE(text.find("Length 30   MARK FROM footage 0001+04"), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.rfind('\n') + 1), "     0003+00");
}

TEST_F(AssemblyList, SoundRunsInTheOrderOfEvents) {
    options().chan_type = 2;
    for (const int match : {0, 1}) {
        options().pull_match_assembly = match;
        table.delete_records(0, table.get_num_records());
        add(shot(2, 0, 20, "second", "KJ1234560010+00", "KJ1234560011+04"));
        add(shot(1, 20, 40, "first", "KJ1234560020+00", "KJ1234560021+04"));
        const std::string text = events();
        EXPECT_LT(text.find("first"), text.find("second")) << match;
    }
}

TEST_F(AssemblyList, AnEventThatIsReducedToNothingCountsTowardTheTotal) {
    add(shot(1, 32, 32, "gone", "KJ1234560010+00", "KJ1234560010+00"));
    EXPECT_EQ(events(), "1     ** In cutting-copy, this event is reduced to nothing.\n"
                        "\n"
                        "     0002+00");
}

TEST_F(AssemblyList, PictureRunsInTheOrderOfTheEditWithOpticalsBehindTheirCut) {
    add(master(0, 2, 0));
    add(shot(2, 20, 50, "second", "KJ1234560010+00", "KJ1234560012+00"));
    add(shot(1, 0, 20, "first", "KJ1234560010+00", "KJ1234560011+04"));
    const std::string text = events();
    const std::size_t first = text.find("first");
    const std::size_t second = text.find("second");
    const std::size_t effect = text.find("EFFECT - Glow - (OPTICAL#2)");
    ASSERT_NE(effect, std::string::npos);
    EXPECT_LT(first, second);
    EXPECT_LT(second, effect);
}

TEST_F(AssemblyList, AnEffectHasItsHeading) {
    add(master(0, 1, 0));
    EXPECT_EQ(events(), "                EFFECT - Glow - (OPTICAL#2)\n"
                        "                           Length 30   MARK FROM footage 0001+04\n"
                        "\n"
                        "     0000+00")
        << "it doesn't count toward the total";
    options().edit_units = 1;
    EXPECT_NE(events().find("Length 30   MARK FROM frame 000020\n"), std::string::npos);
}

TEST_F(AssemblyList, AnEffectInErrorIsAnEventIfItHasANumber) {
    add(master(0, 1, 1));
    EXPECT_EQ(events(), "     0000+00");
    add(master(5, 1, 1));
    EXPECT_NE(events().find("5    0001+04       1+14"), std::string::npos);
}

TEST_F(AssemblyList, TheNegCutFormListsAnOpticalAsOneLine) {
    options().pull_match_assembly = 0;
    add(master(4, 0, 0));
    EXPECT_EQ(events(), "4    0001+04       1+14       -- OPTICAL#2 --\n"
                        "\n"
                        "     0003+02");
}

TEST_F(AssemblyList, TheNegCutFormSkipsWhatIsInsideAnOpticalAndOpticalsInError) {
    options().pull_match_assembly = 0;
    add(master(4, 0, 1));
    cut_s inside = plain_shot();
    inside.event = 0;
    inside.optical_ref = 2;
    add(inside);
    EXPECT_EQ(events(), "     0000+00");
}

TEST_F(AssemblyList, SoundHasInkNumbersAlone) {
    options().chan_type = 2;
    options().chan_num = 4;
    options().pull_match_assembly = 0;
    cut_s cut = plain_shot();
    cut.inkcode_in = key("ABCD0010+00", 43);
    cut.inkcode_out = key("ABCD0012+00", 43);
    put_text(cut.fx_op_in, "FI");
    put_text(cut.fx_op_out, "FO");
    cut.fx_len_out = 4;
    add(cut);
    EXPECT_NE(list().find("                                  SOUND TRACK 4\n"), std::string::npos);
    EXPECT_EQ(events(), "3    0001+00       2+00    A001      12A-3                         ABCD0010+00\n"
                        "                                                                       0012+03\n"
                        "\n"
                        "     0003+00");
}

TEST_F(AssemblyList, SoundShowsNoMissingKeyEither) {
    options().chan_type = 2;
    cut_s cut = plain_shot();
    cut.keycode_missing = 1;
    EXPECT_EQ(event(cut).find("NO KEYKODE"), std::string::npos);
    EXPECT_NE(event(cut).find("NO INKCODE"), std::string::npos);
}

TEST_F(AssemblyList, AMissingKeyAndAStarAreShown) {
    cut_s cut = plain_shot();
    cut.keycode_missing = 1;
    cut.special = special_starred;
    EXPECT_EQ(event(cut), "3    0001+00       2+00    A001      12A-3     NO KEYKODE*         NO INKCODE\n"
                          "                                               NO KEYKODE          NO INKCODE\n"
                          "\n");
}

TEST_F(AssemblyList, AFreezeFrameTakesNothingOffItsEnd) {
    cut_s cut = plain_shot();
    cut.speed = 0.0;
    EXPECT_EQ(event(cut), "3    0001+00       2+00    A001      12A-3     KJ1234560010+00     NO INKCODE\n"
                          "                                                       0012+00     NO INKCODE\n"
                          "\n"
                          "                FREEZE-FRAME -- The shot above was frozen\n"
                          "\n");
}

TEST_F(AssemblyList, AnotherSpeedIsNamed) {
    cut_s cut = plain_shot();
    cut.speed = 0.5;
    EXPECT_NE(event(cut).find("\n\n                VARISPEED -- The shot above was run at 0.5 times play-speed\n\n"),
              std::string::npos);
}

TEST_F(AssemblyList, TheNegCutFormNamesSpeedsOneStopFurtherLeft) {
    options().pull_match_assembly = 0;
    cut_s cut = plain_shot();
    cut.speed = 1.5;
    EXPECT_NE(event(cut).find("\n     VARISPEED -- The shot above was run at 1.5 times play-speed\n\n"),
              std::string::npos);
    cut.speed = 0.0;
    EXPECT_NE(event(cut).find("\n     FREEZE-FRAME -- The shot above was frozen\n\n"), std::string::npos);
}

TEST_F(AssemblyList, AFadeInIsMarkedFromTheCut) {
    cut_s cut = plain_shot();
    put_text(cut.fx_op_in, "FI");
    cut.fx_len_in = 8;
    EXPECT_NE(event(cut).find("\n\n***** FADE-IN            Length 8    MARK FROM CUT\n\n"), std::string::npos)
        << event(cut);
    put_text(cut.fx_op_in, "D");
    EXPECT_EQ(event(cut).find("*****"), std::string::npos);
}

TEST_F(AssemblyList, AFadeOutIsMarkedFromItsKey) {
    cut_s cut = plain_shot();
    put_text(cut.fx_op_out, "FO");
    cut.fx_len_out = 8;
    cut.inkcode_in = cut.inkcode_out = key("ABCD0012+00", 43);
    EXPECT_NE(event(cut).find("\n\n***** FADE-OUT           Length 8    "
                              "MARK FROM KJ1234560012+00     ABCD0012+00\n\n"),
              std::string::npos)
        << event(cut);
}

TEST_F(AssemblyList, AnotherTransitionIsMarkedByItsName) {
    cut_s cut = plain_shot();
    put_text(cut.fx_op_out, "D");
    put_text(cut.fx_name_out, "A dissolve with a long name");
    cut.fx_len_out = 8;
    cut.keycode_missing = 1;
    EXPECT_NE(event(cut).find("\n***** A dissolve with a  Length 8    "
                              "MARK FROM NO KEYKODE          NO INKCODE\n"),
              std::string::npos)
        << event(cut);
    cut.fx_len_out = 0;
    EXPECT_EQ(event(cut).find("*****"), std::string::npos);
}

TEST_F(AssemblyList, NamesAreCutByBytes) {
    cut_s cut = plain_shot();
    cut.shot_name = fromUTF8("12345678\xC3\xA9tail", -1);
    const std::string text = event(cut);
    EXPECT_NE(text.find("12345678\xC3"), std::string::npos);
    EXPECT_EQ(text.find('\xA9'), std::string::npos);
}

TEST_F(AssemblyList, AnEmptyFieldNeverShowsTheRowBefore) {
    add(plain_shot());
    add(plain_shot());
    dbrecord& row = *table.get_record(1);
    row.set_field(cf_edit_in, "17", true);
    row.set_field(cf_cam_reel, "", true);
    row.set_field(cf_keylabeltype, "", true);
    row.set_field(cf_keycode_in, "", true);
    row.set_field(cf_keycode_out, "", true);
    EXPECT_NE(events().find("\n3    0001+01       1+15              12A-3                         NO INKCODE\n"),
              std::string::npos)
        << events();
}

TEST_F(AssemblyList, PagesRepeatTheirHeading) {
    for (int number = 1; number <= 20; ++number) {
        add(shot(number, number * 16, number * 16 + 16, "12A-3", "KJ1234560010+00", "KJ1234560011+00"));
    }
    const std::string text = list();
    const std::string rule = std::string(129, '_') + "\n";
    const std::string heading = "<FF>\n"
                                "Edit:  REEL 1                  ASSEMBLY LIST     9 September 2001 01:46:40  page 2\n"
                                "\n"
                                "     Start        Length   Roll      Shot      KeyKodes            Inkcodes\n" +
                                rule;
    const std::size_t page = text.find(heading);
    ASSERT_NE(page, std::string::npos) << text;
    EXPECT_EQ(text.compare(page + heading.size(), 3, "15 "), 0) << "the block of 4 lines that doesn't fit moves whole";
}

TEST_F(AssemblyList, APageThatBreaksInTheNextListsHeadingShowsTheOldOne) {
    table.add_param("edit_name", "\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n");
    table.add_param("edit_date", "\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n");
    const std::string text = printed([this](report& out) {
        print_assembly_list(out, table, logger);
        print_assembly_list(out, table, logger);
    });
    EXPECT_NE(text.find("ASSEMBLY LIST     9 September"), std::string::npos);
}

TEST_F(AssemblyList, AnyNumbersPrint) {
    for (const int form : {0, 1}) {
        for (const int units : {0, 1}) {
            options().pull_match_assembly = form;
            options().edit_units = units;
            cut_s cut = plain_shot();
            for (std::int32_t cut_s::*member :
                 {&cut_s::event, &cut_s::edit_in, &cut_s::fx_len_in, &cut_s::fx_len_out, &cut_s::optical_ref}) {
                cut.*member = INT_MIN;
            }
            cut.edit_out = INT_MAX;
            cut.optical_out = INT_MAX;
            cut.optical_in = INT_MIN;
            cut.speed = std::numeric_limits<double>::quiet_NaN();
            put_text(cut.fx_op_in, "D");
            put_text(cut.fx_op_out, "D");
            EXPECT_NE(event(cut), "");
            cut.optical_record = 1;
            EXPECT_NE(event(cut), "");
        }
    }
}

} // namespace
