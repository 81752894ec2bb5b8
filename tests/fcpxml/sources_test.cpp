// What is known of the media: names, reels, timecode, film numbers and the log's fields.

#include "tests/fcpxml/fcpxml_texts.h"

#include "embedded/edit_facts.h"

#include <gtest/gtest.h>

using namespace fcpxml_texts;
using embedded::WarningKind;

namespace {

constexpr const char* studio = "com.apple.proapps.studio.";

std::string md(const std::string& key, const std::string& value) {
    return "<md key=\"" + key + "\" value=\"" + value + "\"/>";
}
std::string metadata(const std::string& entries) { return "<metadata>" + entries + "</metadata>"; }

EditPtr source_with(const std::string& of_clip, const std::string& of_asset = {}) {
    const std::string asset = R"(<asset id="own" name="Asset" start="0s" duration="99s" hasVideo="1" format="r24" )"
                              R"(src="file:///x/A%20012.mov">)" +
                              of_asset + "</asset>";
    const auto result = read(with_spine(clip("A", R"(duration="2s")", of_clip, "own"), R"(format="r24")", asset));
    return source_at(result.edit, 0, 0);
}

std::string field(const EditPtr& source, const char* key) {
    strp_field value;
    return read_edit_field(source.get(), key, value) == 0 ? static_cast<const char*>(value) : "";
}
std::string reel(const EditPtr& source, int medium = 1, int roll = 2) {
    return source->getReelId(medium, roll).c_str();
}

TEST(FcpxmlSources, ReelSceneAndTakeComeFromTheClipBeforeTheAsset) {
    const EditPtr source =
        source_with(metadata(md(std::string(studio) + "reel", "R1") + md(std::string(studio) + "scene", "12")),
                    metadata(md(std::string(studio) + "reel", "R2") + md(std::string(studio) + "shot", "3")));
    EXPECT_EQ(reel(source), "R1");
    EXPECT_EQ(field(source, "scene"), "12");
    EXPECT_EQ(field(source, "take"), "3");
}

TEST(FcpxmlSources, WithoutAReelItIsTheNameOfTheAssetAndThenOfTheFile) {
    EXPECT_EQ(reel(source_with({})), "Asset");
    const std::string asset =
        R"(<asset id="own" start="0s" duration="9s" hasVideo="1" format="r24" src="file:///x/A%20012.mov"/>)";
    const auto result = read(with_spine(clip("A", R"(duration="2s")", {}, "own"), R"(format="r24")", asset));
    EXPECT_EQ(reel_at(result.edit, 0, 0), "A 012");
}

TEST(FcpxmlSources, AReelMayBeAnArray) {
    EXPECT_EQ(reel(source_with(R"(<metadata><md key="com.apple.proapps.studio.reel"><array><string>A7</string>)"
                               R"(<string>A8</string></array></md></metadata>)")),
              "A7");
}

TEST(FcpxmlSources, TakesAndReelsOfOtherWritersAreKnownByTheEndOfTheirKeys) {
    const EditPtr source = source_with(metadata(md("org.example.Tape", "T1") + md(std::string(studio) + "take", "4")));
    EXPECT_EQ(reel(source), "T1");
    EXPECT_EQ(field(source, "take"), "4");
}

TEST(FcpxmlSources, FilmNumbersStandUnderKeysOfTheUsersOwn) {
    const std::string custom = "com.apple.proapps.custom.";
    const EditPtr source =
        source_with(metadata(md(custom + "KN Start", "KJ 12 3456-7890+05") + md(custom + "Camera Roll", "A012") +
                             md(custom + "lab_roll", "L7") + md(custom + "Soundroll", "S3") +
                             md(custom + "Ink Number", "AA12 1234+00") + md(custom + "TC 24", "01:00:00:10")));
    EXPECT_EQ(key_at(source, 0), "KJ1234567890+05");
    EXPECT_EQ(key_at(source, 1), "KJ1234567891+13") << "24 frames later";
    EXPECT_EQ(reel(source, 2, 1), "A012");
    EXPECT_EQ(reel(source, 10, 1), "L7");
    EXPECT_EQ(reel(source, 4, 3), "S3");
    EXPECT_STREQ(source->getLabel(user_label_timecode, {medium_source_24p, 1})->get_string(0), "01:00:00:10");
}

TEST(FcpxmlSources, AKeyNumberThatCantBeReadIsTold) {
    const auto result = read(with_spine(clip("A", R"(duration="2s")", metadata(md("a.b.keycode", "no number")))));
    EXPECT_TRUE(warns(result, "\"A\": \"NONUMBER\" can't be read as its key number", WarningKind::dropped) ||
                warns(result, "can't be read as its key number", WarningKind::dropped));
}

TEST(FcpxmlSources, AFilmRateOfTheUsersOwnCounts) {
    const EditPtr source = source_with(metadata(md("a.b.film_rate", "16")));
    EXPECT_DOUBLE_EQ(mPosn_Xlate(2.0, medium_edit, medium_film, source), 32);
    const auto result = read(with_spine(clip("A", R"(duration="2s")", metadata(md("a.b.film_rate", "slow")))));
    EXPECT_TRUE(warns(result, "\"slow\" can't be read as its film rate", WarningKind::dropped));
}

TEST(FcpxmlSources, ANoteIsTheDescriptionAndElseTheKeywords) {
    const std::string keywords = R"(<keyword start="0s" duration="1s" value="snow, truck"/><keyword value="tree"/>)";
    EXPECT_EQ(field(source_with("<note>over her shoulder</note>" + keywords), "description"), "over her shoulder");
    EXPECT_EQ(field(source_with(keywords), "description"), "snow, truck, tree");
}

TEST(FcpxmlSources, NamesWithLineEndsAreMadeVisible) {
    const auto result = read(with_spine(clip("A&#10;B", R"(duration="2s")")));
    ASSERT_TRUE(result.edit);
    const std::string name = toUTF8(source_at(result.edit, 0, 0)->getName()).c_str();
    EXPECT_EQ(name.find('\n'), std::string::npos);
    EXPECT_NE(name.find('A'), std::string::npos);
}

TEST(FcpxmlSources, BookmarksOfMegabytesAreSteppedOver) {
    const EditPtr source = source_with({}, "<bookmark>" + std::string(3U << 20U, 'Q') + "</bookmark>");
    EXPECT_EQ(reel(source), "Asset");
}

TEST(FcpxmlSources, TimecodeIsThatOfTheMedium) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="3605s" duration="2s")", {}, "hour")), "0-48 A@01:00:05:00");
    const auto result = read(with_spine(clip("A", R"(duration="2s")", {}, "hour")));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@01:00:00:00");
    EXPECT_TRUE(warns(result, "has no \"start\"; taken as the first frame of its media"));
}

TEST(FcpxmlSources, TheLengthOfTheMediumIsKnown) {
    EXPECT_EQ(embedded::length_of_source(source_with({})), embedded::Fraction(99));
    EXPECT_EQ(drawn_spine(clip("A", "", {}, "m24")), "0-24000 A@00:00:00:00") << "a clip without length is all of it";
}

TEST(FcpxmlSources, AnAddressOfTheMediumTellsItApart) {
    const std::string asset = R"(<asset id="own" name="Own" start="0s" duration="9s" hasVideo="1" format="r24">)"
                              R"(<media-rep kind="proxy-media" src="file:///p.mov"/>)"
                              R"(<media-rep kind="original-media" src="file:///m24.mov"/></asset>)";
    const auto result = read(
        with_spine(clip("A", R"(duration="1s")") + clip("A", R"(duration="1s")", {}, "own"), R"(format="r24")", asset));
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(0);
    ce_handle at = cel->get_start_ceh();
    const Cookie first = at.get_channel_event().cookie;
    at.increment(ce_all);
    at.increment(ce_all);
    EXPECT_EQ(first.identity[0], at.get_channel_event().cookie.identity[0]) << "the original, of both";
}

TEST(FcpxmlSources, AStillIsAFreezeOfItsOnlyFrame) {
    const auto result = read(with_spine(R"(<clip name="photo.jpg" start="4501s" duration="2s">)"
                                        R"(<video ref="still" offset="0s" duration="86400s"/></clip>)"));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 photo.jpg@*0");
}

TEST(FcpxmlSources, TitlesAndGeneratorsAreRenderedMaterialByTheirNames) {
    const auto result = read(with_spine(R"(<title ref="text" name="Opening" duration="1s"/>)"
                                        R"(<video ref="clouds" name="Sky" start="3600s" duration="1s"/>)"));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 Opening@ | 24-48 Sky@");
    EXPECT_TRUE(RenderHistory::editContainsRenderedMaterial(result.edit));
    EXPECT_EQ(reel_at(result.edit, 0, 0), "");
}

TEST(FcpxmlSources, AnEditWithRenderedMaterialHasACopyThatIsTheSame) {
    const auto result =
        read(with_spine(R"(<title ref="text" name="Opening" duration="1s"/>)" + clip("A", R"(duration="1s")")));
    const EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(result.edit);
    ASSERT_TRUE(copy.edit);
    EditPtr opened;
    opened.i_open(copy.edit->cookie, edit_open_default);
    EXPECT_EQ(drawn(opened, 0), drawn(result.edit, 0));
    EXPECT_STRNE(opened->cookie.asString(false).c_str(), result.edit->cookie.asString(false).c_str());
}

TEST(FcpxmlSources, AGeneratorCalledBlackIsBlack) {
    EXPECT_EQ(drawn_spine(R"(<video ref="b" name="Custom" duration="1s"/>)", R"(format="r24")",
                          R"(<effect id="b" name="Black"/>)"),
              "0-24 black");
}

TEST(FcpxmlSources, ARefToNothingIsMissingMedia) {
    const auto clip_of_nothing = read(with_spine(R"(<asset-clip ref="r99" name="Lost" start="5s" duration="1s"/>)"));
    EXPECT_EQ(drawn(clip_of_nothing.edit, 0), "0-24 Lost@00:00:05:00") << "a timecode is enough to find film by";
    EXPECT_TRUE(warns(clip_of_nothing, "\"Lost\": refers to \"r99\", which isn't there", WarningKind::replaced));
    const auto compound_of_nothing = read(with_spine(R"(<ref-clip ref="r98" name="Gone" duration="1s"/>)"));
    EXPECT_FALSE(source_at(compound_of_nothing.edit, 0, 0));
    EXPECT_TRUE(warns(compound_of_nothing, "\"Gone\": refers to \"r98\", which isn't there", WarningKind::replaced));
}

TEST(FcpxmlSources, MissingMediaOpensByWhateverFilmIsFoundBy) {
    const auto opens = [](const std::string& of_clip) {
        const auto result = read(with_spine(clip("Lost", R"(duration="1s")", of_clip, "r99")));
        return static_cast<bool>(source_at(result.edit, 0, 0));
    };
    EXPECT_FALSE(opens(""));
    EXPECT_TRUE(opens(metadata(md("a.b.keycode", "KJ123456-7890+05"))));
    EXPECT_TRUE(opens(metadata(md("a.b.inkcode", "AA121234+00"))));
    EXPECT_TRUE(opens(metadata(md("a.b.reel", "A012"))));
}

TEST(FcpxmlSources, OfTwoResourcesWithOneIdTheFirstCounts) {
    const std::string more = R"(<asset id="m24" name="Second" start="0s" duration="9s" hasVideo="1" format="r24"/>)";
    const auto result = read(with_spine(clip("A", R"(duration="1s")"), R"(format="r24")", more));
    EXPECT_EQ(reel_at(result.edit, 0, 0), "M24");
    EXPECT_TRUE(warns(result, "there is another resource \"m24\" before it"));
}

TEST(FcpxmlSources, EffectsAreTheLabsWhereAllAre) {
    const std::string inside = R"(<adjust-transform scale="2 2"/><filter-video ref="clouds" name="Blur"/>)"
                               R"(<filter-video name="Off" enabled="0"/>)";
    formats::ReadOptions options;
    options.all_effects = true;
    const std::string file = with_spine(clip("A", R"(duration="2s")", inside));
    EXPECT_EQ(embedded::facts_of_channel(read(file).edit, 0).at(0).lab_tracks.size(), 0U);
    EXPECT_EQ(embedded::facts_of_channel(read(file, options).edit, 0).at(0).lab_tracks, std::vector<int>{0});
}

} // namespace
