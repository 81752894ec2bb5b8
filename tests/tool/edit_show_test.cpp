// "quillbrook edit show": all columns and notes of an edit that has them.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

namespace {

std::string range(int start, int length) {
    const auto time = [](int frames) {
        return R"({"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":)" + std::to_string(frames) + "}";
    };
    return R"({"OTIO_SCHEMA":"TimeRange.1","start_time":)" + time(start) + R"(,"duration":)" + time(length) + "}";
}

std::string clip(const std::string& name, int start, int length, const std::string& more) {
    return R"({"OTIO_SCHEMA":"Clip.1","name":")" + name + R"(","source_range":)" + range(start, length) + more + "}";
}

std::string marker(const std::string& name, int at, const std::string& more) {
    return R"({"OTIO_SCHEMA":"Marker.2","name":")" + name + R"(","marked_range":)" + range(at, 0) + more + "}";
}

std::string own(const std::string& fields) { return R"(,"metadata":{"quillbrook":{)" + fields + "}}"; }

std::string track(const std::string& kind, const std::string& more, const std::string& children) {
    return R"({"OTIO_SCHEMA":"Track.1","kind":")" + kind + "\"" + more + R"(,"children":[)" + children + "]}";
}

const std::string transition = R"({"OTIO_SCHEMA":"Transition.1","transition_type":"SMPTE_Dissolve","name":"Soft",)"
                               R"("in_offset":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":4},)"
                               R"("out_offset":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":8}})";

/// 48 frames with every number and reel, effects and marks, one of these in a dissolve into 24 backward at half speed;
/// black.
std::string pictures() {
    const std::string numbers = own(R"("reel":"VT1","snd_reel":"SR1","reel_24p":"P1","cam_reel":"A1",)"
                                    R"("keycode":"KJ1234560100+00","ink":"35mm-4p-ink","inkcode":"001K1000+00",)"
                                    R"("timecode":"01:00:00:00","sound_timecode":"02:00:00:00",)"
                                    R"("timecode_24p":"03:00:00:00")");
    const std::string effects = R"(,"effects":[{"OTIO_SCHEMA":"Effect.1","name":"Blow-up")" + own(R"("optical":true)") +
                                R"(},{"OTIO_SCHEMA":"Effect.1","name":"Flop")" + own(R"("optical":true)") + "}]";
    const std::string marks = R"(,"markers":[)" + marker("Slow here", 30, "") + "," +
                              marker("Ask Jo", 40, own(R"("flags":0)")) + "," + marker("Blend", 70, "") + "]";
    const std::string backward = R"(,"effects":[{"OTIO_SCHEMA":"LinearTimeWarp.1","time_scalar":-0.5}])";
    return clip("1-1", 24, 48, numbers + effects + marks) + "," + transition + "," +
           clip("1-2", 100, 24, backward + own(R"("reel":"VT2")")) + R"(,{"OTIO_SCHEMA":"Gap.1","source_range":)" +
           range(0, 12) + "}";
}

class EditShow : public ToolTest {
protected:
    std::string shown() {
        write("show.otio", R"({"OTIO_SCHEMA":"Timeline.1","name":"Show","global_start_time":)"
                           R"({"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":86400},)"
                           R"("tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" +
                               track("Video", "", pictures()) + "," +
                               track("Audio", own(R"("subtype":4)"), clip("Wind", 5, 20, own(R"("snd_reel":"SR2")"))) +
                               "]}}");
        return expect_done({"edit", "show", "show.otio"}).out;
    }
};

// 24 frames into each number are 1 foot and 8 frames, or a second. The dissolve takes 4 frames of the one before and 8
// of the one behind it, whose film runs down from the end of 12 frames from 100 on.
TEST_F(EditShow, HasEveryNumberReelEffectAndCue) {
    EXPECT_EQ(shown(), "Edit \"Show\", 24fps, from 01:00:00:00\n"
                       "Positions are frames of the edit, source positions frames of the source from its start and its "
                       "timecodes.\n"
                       "\n"
                       "V1: picture, track 0\n"
                       "  event  in  out  timecode in  kind      source in  source out  speed  name              reel  "
                       "sound reel  24P reel  cam reel  key              ink          timecode                   "
                       "sound timecode             24P timecode\n"
                       "      1   0   44  01:00:00:00  clip             24          68      1  1-1               VT1   "
                       "SR1         P1        A1        KJ1234560101+08  001K1001+08  01:00:01:00 - 01:00:02:20  "
                       "02:00:01:00 - 02:00:02:20  03:00:01:00 - 03:00:02:20\n"
                       "         44   56  01:00:01:20  dissolve                                Soft (12 frames)\n"
                       "      2  56   72  01:00:02:08  clip            107          99   -0.5  1-2               VT2   "
                       "                                                              00:00:04:11 - 00:00:04:03\n"
                       "      3  72   84  01:00:03:00  black\n"
                       "\n"
                       "  event  at  timecode     what    name       flag         tracks\n"
                       "      1                   effect  Blow-up                 0\n"
                       "      1                   effect  Flop                    0\n"
                       "      1   6  01:00:00:06  cue     Slow here  printed\n"
                       "      1  16  01:00:00:16  cue     Ask Jo     not printed\n"
                       "         46  01:00:01:22  cue     Blend      printed\n"
                       "\n"
                       "A1: sound, track 1, not listed\n"
                       "  event  in  out  timecode in  kind  source in  source out  speed  name  sound reel  timecode\n"
                       "      1   0   20  01:00:00:00  clip          5          25      1  Wind  SR2         "
                       "00:00:00:05 - 00:00:01:01\n");
}

} // namespace
