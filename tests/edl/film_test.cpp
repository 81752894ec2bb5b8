// Which film the frames of a list show, where something moves its events or two lines speak of one place.

#include "tests/edl/listed_edit.h"

#include <gmock/gmock.h>

using namespace edl_tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The key number of the first frame that an event shows; transitions count as events.
std::string first_key(const EditPtr& edit, int channel, int event) {
    const ChannelEvent in = event_at(edit, channel, event);
    return key_at(source_of(in.cookie), in.source_time);
}

// The picture begins 16 frames after the sound, a foot further on.
TEST(EdlFilm, KeyNumberIsOfTheSourceInOfBothSidesOfASplit) {
    const formats::ReadResult result = read("001  A B C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                            "SPLIT:    VIDEO DELAY=  00:00:00:16\n"
                                            "002  B B C 01:00:00:00 01:00:02:00 10:00:02:00 10:00:04:00\n"
                                            "* KEY NUMBER: KJ1234560100+00\n");
    EXPECT_THAT(told(result), IsEmpty());
    EXPECT_EQ(drawn(result.edit, 0), "0-64 A@01:00:00:00 | 64-96 B@01:00:00:16");
    EXPECT_EQ(first_key(result.edit, 0, 1), "KJ1234560101+00");
    EXPECT_EQ(first_key(result.edit, 1, 1), "KJ1234560100+00");
}

//     shown     26 . . . 5|4 3 2 1      the four lowest frames lie under the next event
//     key                         100+00
TEST(EdlFilm, KeyNumberIsOfTheSourceInOfAReverseShotThatIsCut) {
    const std::string list = "001  A V C 01:00:00:00 01:00:01:02 10:00:00:00 10:00:01:02\n"
                             "M2   A       -024.0       01:00:00:00\n"
                             "* KEY NUMBER: KJ1234560100+00\n"
                             "002  B V C 02:00:00:00 02:00:00:05 10:00:00:22 10:00:01:03\n";
    EXPECT_EQ(drawn(read(list).edit, 0), "0-22 A@01:00:01:01*-1 | 22-27 B@02:00:00:00");
    EXPECT_EQ(first_key(read(list).edit, 0, 0), "KJ1234560101+09");
}

TEST(EdlFilm, KeyNumberOfAReverseShotIsThatOfItsFirstFrameWhereTheSourceInIs) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(24.0);
    options.reverse_from_first = true;
    const formats::ReadResult result =
        formats::read_edl_texts({{"001  A V C 01:00:01:01 01:00:00:00 10:00:00:00 10:00:01:02\n"
                                  "M2   A       -024.0       01:00:01:01\n* KEY NUMBER: KJ1234560101+09\n",
                                  "a.edl", 0}},
                                options);
    EXPECT_EQ(drawn(result.edit, 0), "0-26 A@01:00:01:01*-1");
    EXPECT_EQ(first_key(result.edit, 0, 0), "KJ1234560101+09");
}

TEST(EdlFilm, KeyNumberOfWhatATransitionComesFromIsThatOfTheClipThere) {
    const std::string list = "001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                             "002  A V C 01:00:02:00 01:00:02:00 10:00:02:00 10:00:02:00\n"
                             "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n"
                             "* FROM CLIP NAME: Lamp\n* KEY NUMBER: KJ1234560103+00\n";
    EXPECT_EQ(first_key(read(list).edit, 0, 0), "KJ1234560100+00");
    std::string own = list;
    own.insert(own.find("002"), "* KEY NUMBER: KJ1234560200+00\n");
    EXPECT_EQ(first_key(read(own).edit, 0, 0), "KJ1234560200+00");
}

constexpr const char* other_place = "001  A V C     01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                    "002  A V C     03:00:02:00 03:00:02:00 10:00:02:00 10:00:02:00\n"
                                    "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n";

TEST(EdlFilm, ATransitionComesFromThePlaceOfItsReelThatTheListSays) {
    const formats::ReadResult result = read(other_place);
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@01:00:00:00 | 48-48 A@03:00:02:00 | 48-60 diss | 60-96 B@02:00:00:12");
    EXPECT_THAT(told(result), ElementsAre("a.edl: line 2: its transition comes from another place of reel \"A\" than "
                                          "line 1 ends at; the later line counts"));
}

TEST(EdlFilm, ATransitionGoesOnWithTheClipWithinAFrame) {
    for (const char* from : {"01:00:01:23", "01:00:02:00", "01:00:02:01"}) {
        std::string list = other_place;
        for (std::size_t at = 0; (at = list.find("03:00:02:00")) != std::string::npos;)
            list.replace(at, 11, from);
        EXPECT_EQ(drawn(read(list).edit, 0), "0-48 A@01:00:00:00 | 48-60 diss | 60-96 B@02:00:00:12") << from;
        EXPECT_THAT(told(read(list)), IsEmpty()) << from;
    }
}

TEST(EdlFilm, ATransitionGoesOnWithTheClipOverMidnight) {
    EXPECT_EQ(drawn(read("001  A V C     23:59:59:00 00:00:01:00 10:00:00:00 10:00:02:00\n"
                         "002  A V C     00:00:01:00 00:00:01:00 10:00:02:00 10:00:02:00\n"
                         "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n")
                        .edit,
                    0),
              "0-48 A@23:59:59:00 | 48-60 diss | 60-96 B@02:00:00:12");
}

// At twice the speed 96 frames are used, and some lists write as many as the record has.
TEST(EdlFilm, ATransitionGoesOnWithAClipOfASpeedByEitherSourceOut) {
    const auto list = [](const std::string& from) {
        return "001  A V C     01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\nM2   A   048.0   01:00:00:00\n"
               "002  A V C     " +
               from + " " + from +
               " 10:00:02:00 10:00:02:00\n"
               "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n";
    };
    for (const char* from : {"01:00:02:00", "01:00:04:00"}) {
        EXPECT_EQ(drawn(read(list(from)).edit, 0), "0-48 A@01:00:00:00*2 | 48-60 diss | 60-96 B@02:00:00:12") << from;
    }
    EXPECT_EQ(drawn(read(list("01:00:03:00")).edit, 0),
              "0-48 A@01:00:00:00*2 | 48-48 A@01:00:03:00 | 48-60 diss | 60-96 B@02:00:00:12");
    const std::string slower = "M2   A   012.0   01:00:04:00\n";
    EXPECT_EQ(drawn(read(list("01:00:04:00") + slower).edit, 0),
              "0-48 A@01:00:00:00*2 | 48-48 A@01:00:04:00*0.5 | 48-60 diss | 60-96 B@02:00:00:12");
}

// Backward the clip ends at the lowest frame of its stretch, where the line without length has its source in.
TEST(EdlFilm, ATransitionGoesOnWithAReverseClip) {
    EXPECT_EQ(drawn(read("001  A V C     01:00:02:00 01:00:04:00 10:00:00:00 10:00:02:00\nM2 A -024.0 01:00:02:00\n"
                         "002  A V C     01:00:02:00 01:00:02:00 10:00:02:00 10:00:02:00\n"
                         "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n")
                        .edit,
                    0),
              "0-48 A@01:00:03:23*-1 | 48-60 diss | 60-96 B@02:00:00:12");
}

TEST(EdlFilm, ATransitionOfADelayedPictureGoesOnWithTheClipThatRunsOn) {
    const formats::ReadResult result = read("001  A V C     01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                            "SPLIT:    VIDEO DELAY=  00:00:00:06\n"
                                            "002  A V C     01:00:02:00 01:00:02:00 10:00:02:00 10:00:02:00\n"
                                            "002  B V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-54 A@01:00:00:00 | 54-66 diss | 66-96 B@02:00:00:18");
    EXPECT_THAT(told(result), IsEmpty());
}

// What came from no reel is known by its name alone.
TEST(EdlFilm, ATransitionComesFromTheMaterialThatTheListNames) {
    const auto list = [](const std::string& from) {
        return "001  AX V C     00:00:00:00 00:00:02:00 10:00:00:00 10:00:02:00\n* FROM CLIP NAME: Map\n"
               "002  AX V C     00:00:02:00 00:00:02:00 10:00:02:00 10:00:02:00\n"
               "002  B  V D 012 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n* FROM CLIP NAME: " +
               from + "\n";
    };
    EXPECT_EQ(drawn(read(list("Map")).edit, 0), "0-48 Map@00:00:00:00 | 48-60 diss | 60-96 B@02:00:00:12");
    EXPECT_EQ(drawn(read(list("Sky")).edit, 0),
              "0-48 Map@00:00:00:00 | 48-48 Sky@00:00:02:00 | 48-60 diss | 60-96 B@02:00:00:12");
}

TEST(EdlFilm, AKeyFadesOutFromThePlaceThatItsLineSays) {
    const auto list = [](const std::string& source, const std::string& speed) {
        return "001  A V K B     01:00:00:00 01:00:04:00 10:00:00:00 10:00:04:00\n"
               "001  T V K   000 05:00:00:00 05:00:02:00 10:00:01:00 10:00:03:00\n"
               "002  T V KO  012 " +
               source + " 10:00:03:00 10:00:03:12\n" + speed;
    };
    EXPECT_EQ(drawn(read(list("05:00:02:00 05:00:02:12", "")).edit, 1),
              "24-72 T@05:00:00:00 | 72-84 diss | 84-84 black");
    EXPECT_EQ(drawn(read(list("05:30:00:00 05:30:00:12", "")).edit, 1),
              "24-72 T@05:00:00:00 | 72-72 T@05:30:00:00 | 72-84 diss | 84-84 black");
    EXPECT_EQ(drawn(read(list("05:30:00:00 05:30:00:12", "M2 T -024.0 05:30:00:00\n")).edit, 1),
              "24-72 T@05:00:00:00 | 72-72 T@05:30:00:11*-1 | 72-84 diss | 84-84 black");
}

TEST(EdlFilm, AFreezeIsOneWhateverItsSourceIsLong) {
    for (const char* out : {"01:00:00:01", "01:00:02:00"})
        EXPECT_EQ(
            drawn(read("001  A V C 01:00:00:00 " + std::string(out) + " 10:00:00:00 10:00:02:00\n* * FREEZE FRAME\n")
                      .edit,
                  0),
            "0-48 A@01:00:00:00*0")
            << out;
}

// Both lines of the second event are of one reel and timecode.
TEST(EdlFilm, TwoSpeedsAtOnePlaceGoToTheLinesInTheirOrder) {
    EXPECT_EQ(
        drawn(read("001  A V C     01:00:00:00 01:00:02:00 10:00:00:00 10:00:01:00\nM2   A   048.0   01:00:00:00\n"
                   "002  A V C     01:00:02:00 01:00:02:00 10:00:01:00 10:00:01:00\n"
                   "002  A V D 006 01:00:02:00 01:00:04:00 10:00:01:00 10:00:03:00\n"
                   "M2   A   048.0   01:00:02:00\nM2   A   024.0   01:00:02:00\n")
                  .edit,
              0),
        "0-24 A@01:00:00:00*2 | 24-30 diss | 30-72 A@01:00:02:06");
}

TEST(EdlFilm, TheSignOfASpeedMayStandByItself) {
    EXPECT_EQ(
        drawn(read("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\nM2   A  - 024.0  01:00:00:00\n").edit,
              0),
        "0-48 A@01:00:01:23*-1");
}

TEST(EdlFilm, ASplitMayStandBetweenTheLinesOfItsEvent) {
    const formats::ReadResult result = read("001  A B C     01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                            "SPLIT:    VIDEO DELAY=  00:00:00:06\n"
                                            "002  A B C     01:00:02:00 01:00:02:00 10:00:02:00 10:00:02:00\n"
                                            "SPLIT:    AUDIO DELAY=  00:00:00:12\n"
                                            "002  B B D 010 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n");
    EXPECT_THAT(told(result), IsEmpty());
    EXPECT_EQ(drawn(result.edit, 0), "0-54 A@01:00:00:00 | 54-64 diss | 64-96 B@02:00:00:16");
    EXPECT_EQ(drawn(result.edit, 1), "0-60 A@01:00:00:00 | 60-70 diss | 70-96 B@02:00:00:22");
}

TEST(EdlFilm, AnEventThatItsDelayOutlastsIsTold) {
    const formats::ReadResult result = read("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                            "SPLIT:    VIDEO DELAY=  00:00:02:12\n"
                                            "002  B V C 02:00:00:00 02:00:02:00 10:00:02:00 10:00:04:00\n"
                                            "003  C V C 03:00:00:00 03:00:02:00 10:00:04:00 10:00:06:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-96 A@01:00:00:00 | 96-144 C@03:00:00:00");
    EXPECT_THAT(told(result),
                ElementsAre("a.edl: line 3: its delay is 60 frames long and it is 48; the event is left out"));
}

TEST(EdlFilm, AKeyNumberInAMarkIsOfTheFrameThere) {
    const auto list = [](const std::string& at) {
        return "001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n* LOC: " + at + " RED KJ 12 3456-0100+00\n";
    };
    EXPECT_EQ(first_key(read(list("10:00:00:00")).edit, 0, 0), "KJ1234560100+00");
    EXPECT_EQ(first_key(read(list("10:00:01:00")).edit, 0, 0), "");
    EXPECT_THAT(told(read(list("10:00:01:00"))),
                ElementsAre("a.edl: line 2: a key number of a frame inside of the event isn't read"));
}

//     tape at 30    |10 |11 |12 |13 |14 |15 |     the event begins at 11, whose film began with 10
//     film at 24    |100+00|+01 |+02 |+03 |+04 |
TEST(EdlFilm, AKeyNumberMayTellWhereTheCycleOfItsFilmBegins) {
    const auto list = [](const std::string& number) {
        return "* FRAME RATE: 30\n001  A V C 01:00:02:11 01:00:03:11 10:00:00:00 10:00:01:00\n* KEY NUMBER: " + number +
               "\n";
    };
    const auto keys = [](const formats::ReadResult& result) {
        const ChannelEvent in = event_at(result.edit, 0, 0);
        const EditPtr source = source_of(in.cookie);
        return key_at(source, in.source_time) + " - " + key_at(source, in.source_time + 29.0 / 30);
    };
    const formats::ReadResult from_10 = read(list("KJ1234560100+00 35mm-4p CYCLE FROM 01:00:02:10"), 30);
    EXPECT_THAT(told(from_10), IsEmpty());
    EXPECT_EQ(drawn(from_10.edit, 0, 30), "0-30 A@01:00:02:11");
    EXPECT_EQ(keys(from_10), "KJ1234560100+00 - KJ1234560101+08") << "30 frames are 24 of film";
    EXPECT_EQ(keys(read(list("KJ1234560100+00"), 30)), "KJ1234560100+00 - KJ1234560101+07") << "29 are 23.2";
    EXPECT_EQ(keys(read(list("KJ1234560100+00 cycle from 01:00:02:08"), 30)), "KJ1234560100+00 - KJ1234560101+07")
        << "2.4 to 25.6";
    EXPECT_EQ(keys(read(list("KJ1234560100+00 CYCLE FROM 01:00:00:00"), 30)), "KJ1234560100+00 - KJ1234560101+08")
        << "56.8 to 80";
}

TEST(EdlFilm, ACycleThatCantBeIsTold) {
    const auto told_of = [](const std::string& number) {
        const formats::ReadResult result =
            read("001  A V C 01:00:02:11 01:00:03:11 10:00:00:00 10:00:01:00\n* KEY NUMBER: " + number + "\n", 30);
        EXPECT_EQ(first_key(result.edit, 0, 0), "");
        return told(result);
    };
    EXPECT_THAT(told_of("KJ1234560100+00 CYCLE FROM 01:00:02:12"),
                ElementsAre("a.edl: line 1: a key number whose cycle begins behind it isn't read"));
    EXPECT_THAT(told_of("KJ1234560100+00 CYCLE FROM NOON"),
                ElementsAre("a.edl: line 2: not understood: \"* KEY NUMBER: KJ1234560100+00 CYCLE FROM NOON\""));
    EXPECT_THAT(told_of("KJ1234560000+01 CYCLE FROM 01:00:02:08"),
                ElementsAre("a.edl: line 1: \"KJ1234560000+01\" has a cycle that begins below 0000+00"));
}

TEST(EdlFilm, AFullNameOfAReelThatIsNoneOfTheEventsIsTold) {
    EXPECT_THAT(told(read("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                          "FINAL CUT PRO REEL: A001C002_long REPLACED BY: B\n")),
                ElementsAre("a.edl: line 2: reel \"B\" isn't one of the event's; its full name isn't taken"));
}

} // namespace
