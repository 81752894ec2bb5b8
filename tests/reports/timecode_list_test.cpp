#include "reports/timecode_list.h"
#include "tests/reports/list_fixture.h"

#include <climits>

namespace {

class TimecodeList : public ListTest {
protected:
    TimecodeList() {
        add_header();
        table.add_param("edit_vidtc_start", "01:00:00:00");
        table.add_param("edit_vidtc_std", "24fps");
        table.add_param("edit_24ptc_start", "10:00:00:00");
        table.add_param("edit_24ptc_std", "24fps");
        options().chan_type = 2;
    }

    static cut_s sound(int event, int edit_in, int edit_out) {
        cut_s cut;
        cut.event = event;
        cut.edit_in = edit_in;
        cut.edit_out = edit_out;
        put_text(cut.src_reelid, "S1");
        cut.shot_name = fromUTF8("12A-3", -1);
        cut.prim_tc.set_type(label_tc_24);
        cut.prim_tc.set_start("05:00:00:00");
        cut.prim_tc.end = edit_out - edit_in;
        return cut;
    }
    std::string list() {
        return printed([this](report& out) { print_timecode_assembly_list(out, table, logger); });
    }
    std::string events() {
        const std::string text = below_heading(list());
        const std::string body = text.substr(text.find("_\n") + 3);
        return body.substr(0, body.find("\nEnd of"));
    }
};

TEST_F(TimecodeList, IsAPageOfItsOwnWithoutATotal) {
    add(sound(1, 0, 48));
    const std::string rule = std::string(129, '_') + "\n";
    EXPECT_EQ(list(), "Edit:         REEL 1                    Project: HARBOUR \n"
                      "Edit dated:   1 January 2026 10:00:00   Format:  35mm 4perf\n"
                      "Report dated: 9 September 2001 01:46:40 CUTTING-COPY version 9 \n"
                      "                                  SOUND TRACK 1\n"
                      "                             TIMECODE ASSEMBLY LIST\n" +
                          rule +
                          "     Edit IN        Source IN              Roll     Shot name\n"
                          "     /OUT (excl)    /OUT (excl)\n" +
                          rule +
                          "\n"
                          "  1  01:00:00:00    05:00:00:00              S1   2012A-3\n"
                          "     01:00:02:00    05:00:02:00\n"
                          "\n"
                          "\n"
                          "End of timecode assembly list\n" +
                          rule + "<FF>\n");
}

TEST_F(TimecodeList, TakesThe24FrameTimecodeWhereTheHostSaysSo) {
    embedded::set_host_setting("audio_cutlist_24P", 1);
    add(sound(1, 24, 48));
    EXPECT_EQ(events().substr(0, 16), "  1  10:00:01:00");
}

TEST_F(TimecodeList, SkipsRecordsThatAreNoEvents) {
    add(sound(0, 0, 48));
    cut_s failed = sound(2, 0, 48);
    failed.optical_record = failed.optical_error = 1;
    add(failed);
    EXPECT_EQ(events(), "");
}

TEST_F(TimecodeList, ListsAnOpticalThatIsNotInErrorAndAnEventThatIs) {
    cut_s optical = sound(1, 0, 48);
    optical.optical_record = 1;
    add(optical);
    cut_s event = sound(2, 48, 96);
    event.optical_error = 1;
    add(event);
    EXPECT_NE(events().find("  1  01:00:00:00"), std::string::npos);
    EXPECT_NE(events().find("  2  01:00:02:00"), std::string::npos);
}

TEST_F(TimecodeList, RunsInTheOrderOfEvents) {
    add(sound(2, 48, 96));
    add(sound(1, 0, 48));
    EXPECT_LT(events().find("  1  01:00:00:00"), events().find("  2  01:00:02:00"));
}

TEST_F(TimecodeList, ATableWithoutItsTimecodePrintsBlanks) {
    table.add_param("edit_vidtc_start", "");
    table.add_param("edit_vidtc_std", "");
    add(sound(1, 0, 48));
    EXPECT_EQ(events().substr(0, 31), "  1                 05:00:00:00");
}

TEST_F(TimecodeList, AnyNumbersPrint) {
    cut_s cut = sound(INT_MAX, 0, 0);
    cut.edit_in = INT_MIN;
    cut.edit_out = INT_MAX;
    cut.prim_tc.end = INT_MIN;
    add(cut);
    EXPECT_NE(list().find("End of timecode assembly list"), std::string::npos);
}

} // namespace
