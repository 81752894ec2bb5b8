// Film measured in feet, by what is known of each gauge.

#include "embedded/film_feet.h"
#include "embedded/label_kinds.h"

#include <gtest/gtest.h>

namespace {

using embedded::feet_text;
using embedded::perforations_of_foot;

label_t kind(const char* text) { return embedded::label_kind_of_text(text).type; }

TEST(FilmFeet, HaveSixtyFourPerforationsOfWideFilmAndFortyOf16mm) {
    for (const char* wide : {"35mm-4p", "35mm-3p", "35mm-2p", "35mm-8p", "35mm-4p-6d", "65mm-5p80", "65mm-15p120"})
        EXPECT_EQ(perforations_of_foot(kind(wide)), 64) << wide;
    EXPECT_EQ(perforations_of_foot(kind("16mm-1p")), 40);
    EXPECT_EQ(perforations_of_foot(kind("16mm-1p-5d")), 40);
}

TEST(FilmFeet, AreNoneOfWhatHasNoKeyNumbers) {
    for (const label_t none : {label_none, label_frames, label_tc_24, kind("35mm-4p-ft"), kind("16mm-1p-ink")})
        EXPECT_EQ(perforations_of_foot(none), 0) << none;
}

TEST(FilmFeet, AreToldInWholeFrames) {
    EXPECT_EQ(feet_text(kind("35mm-4p"), 16 * 7 + 5), "0007+05");
    EXPECT_EQ(feet_text(kind("16mm-1p"), 40 * 3 + 39), "0003+39");
    EXPECT_EQ(feet_text(kind("35mm-2p"), 32), "0001+00");
    EXPECT_EQ(feet_text(kind("35mm-8p"), 9), "0001+01");
    EXPECT_EQ(feet_text(kind("65mm-5p80"), 100), "");
    EXPECT_EQ(feet_text(label_none, 100), "");
}

} // namespace
