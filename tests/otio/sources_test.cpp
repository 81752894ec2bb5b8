// What a clip's medium is called, which reels and labels it has, and when it opens.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

const std::string missing = "null";

formats::ReadResult one(const std::string& made, const Extra& of_timeline = {}) {
    return read(timeline({track({made})}, of_timeline));
}

EditPtr source(const std::string& made, const Extra& of_timeline = {}) { return source_of(one(made, of_timeline)); }

std::string with_metadata(const std::string& fields) { return clip("A", 0, 4, "\"metadata\": {" + fields + "}"); }

std::string cookie(const std::string& media) {
    return points(one(clip("A", 0, 4, {}, media))).at(0).cookie.asString(false).c_str();
}

std::string hash(const std::string& identity) {
    char text[9];
    std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(embedded::fnv1a(identity)));
    return text;
}

TEST(OtioSource, CookiesHashTheAddressOfTheMediumElseTheName) {
    EXPECT_EQ(cookie(reference("\"target_url\": \"file:///x.mov\"")), hash("file:///x.mov"));
    EXPECT_EQ(cookie(object("ImageSequenceReference.1", "\"target_url_base\": \"/a/\", \"name_prefix\": \"b.\"")),
              hash("/a/b."));
    EXPECT_EQ(cookie(reference("\"name\": \"N\"")), hash("name:N"));
    EXPECT_EQ(cookie(reference()), hash("name:A"));
}

TEST(OtioSource, TheNameIsTheReferencesElseTheClipsElseThatOfTheFile) {
    const auto named = [](const std::string& clip_name, const std::string& media) {
        return name(source(clip(clip_name, 0, 4, {}, media)));
    };
    EXPECT_EQ(named("A", reference("\"name\": \"R\"")), "R");
    EXPECT_EQ(named("A", reference("\"target_url\": \"/d/x.mov\"")), "A");
    EXPECT_EQ(named("", reference("\"target_url\": \"/d.e/x.y.mov\"")), "x.y");
    EXPECT_EQ(named("", reference("\"target_url\": \"x\"")), "x");
    EXPECT_EQ(named("", object("GeneratorReference.1", "\"generator_kind\": \"bars\"")), "bars");
}

TEST(OtioSource, RenderedMaterialIsAnotherSourceThanTheSameMediumItself) {
    const formats::ReadResult both =
        read(timeline({track({clip("A", 0, 4), clip("A", 0, 4, quillbrook("\"rendered\": true"))})}));
    const std::vector<ChannelEvent> events = points(both);
    EXPECT_FALSE(RenderHistory::isRendered(events.at(0).cookie));
    EXPECT_TRUE(RenderHistory::isRendered(events.at(2).cookie));
}

TEST(OtioSource, MissingMediaOpensFromItsNumbers) {
    const auto opens = [](const Extra& extra, const std::string& media = missing) {
        return static_cast<bool>(source(clip("A", 0, 4, extra, media)));
    };
    EXPECT_FALSE(opens({}));
    EXPECT_FALSE(opens({}, object("MissingReference.1", "")));
    EXPECT_FALSE(opens(quillbrook("\"scene\": \"1\", \"timecode\": \"nonsense\", \"reel\": \"\"")));
    EXPECT_TRUE(opens(quillbrook("\"reel\": \"R1\"")));
    EXPECT_TRUE(opens(quillbrook("\"timecode\": \"01:00:00:00\"")));
    EXPECT_TRUE(opens(quillbrook("\"keycode\": \"KJ123456 7890+00\"")));
    EXPECT_TRUE(opens(quillbrook("\"inkcode\": \"AB 0012+03\"")));
    EXPECT_TRUE(opens({}, object("MissingReference.1", "\"available_range\": " + range(0, 9))));
    EXPECT_TRUE(opens({}, object("MissingReference.1", quillbrook("\"reel\": \"R1\""))));
}

TEST(OtioSource, ASecondClipSchemaHasAMapOfReferences) {
    const auto clip2 = [](const std::string& fields) {
        return one(object("Clip.2", source_range(0, 4) + ", \"name\": \"A\", " + fields));
    };
    const std::string map = "\"media_references\": {\"a\": " + reference("\"name\": \"RA\"") +
                            ", \"DEFAULT_MEDIA\": " + reference("\"name\": \"RD\"") + "}";
    EXPECT_EQ(name(source_of(clip2(map + ", \"active_media_reference_key\": \"a\""))), "RA");
    EXPECT_EQ(name(source_of(clip2(map))), "RD");
    const auto lacking = clip2(map + ", \"active_media_reference_key\": \"z\"");
    EXPECT_FALSE(source_of(lacking));
    EXPECT_TRUE(warns_of(lacking, "\"z\""));
}

TEST(OtioSource, ReelsComeFromTheirKeys) {
    const EditPtr edit =
        source(clip("A", 0, 4,
                    quillbrook("\"reel\": \"R\", \"snd_reel\": \"S\", \"reel_24p\": \"P\", \"cam_reel\": \"C\","
                               "\"lab_reel\": \"L\", \"comp_reel\": 12")));
    EXPECT_EQ(reel(edit, 1, 2), "R");
    EXPECT_EQ(reel(edit, 3, 1), "R");
    EXPECT_EQ(reel(edit, 1, 1), "R");
    EXPECT_EQ(reel(edit, 0, -1), "R");
    EXPECT_EQ(reel(edit, 4, 3), "S");
    EXPECT_EQ(reel(edit, 4, 1), "S");
    EXPECT_EQ(reel(edit, 15, 1), "P");
    EXPECT_EQ(reel(edit, 2, 1), "C");
    EXPECT_EQ(reel(edit, 10, 1), "L");
    EXPECT_EQ(reel(edit, 11, 1), "12");
    EXPECT_EQ(reel(edit, 7, 1), "");
}

TEST(OtioSource, MetadataCountInTheirOrder) {
    const std::string own = R"("quillbrook": {"reel": "own"})", list = R"("cmx_3600": {"reel": "list"})",
                      columns = R"("ALE": {"Camroll": "c", "tAPE": "columns"})",
                      others = R"("x": {"tape": "tape of x"}, "y": {"reel": "reel of y"})";
    const auto of = [](const std::string& of_clip, const std::string& of_media) {
        return reel(
            source(clip("A", 0, 4, "\"metadata\": {" + of_clip + "}", reference("\"metadata\": {" + of_media + "}"))),
            1, 2);
    };
    EXPECT_EQ(of(own, own), "own");
    EXPECT_EQ(of(R"("quillbrook": {"reel": "clip"})", own), "clip");
    EXPECT_EQ(of(list + "," + columns + "," + others, own), "own");
    EXPECT_EQ(of(columns + "," + others, list), "list");
    EXPECT_EQ(of(others, columns), "columns");
    EXPECT_EQ(of(others, others), "tape of x");
    EXPECT_EQ(of(R"("x": {"tape": "t", "reel": "r"})", {}), "r");
    EXPECT_EQ(of(R"("quillbrook": {"reel": ""}, "cmx_3600": {"reel": 0.5})", {}), "0.5");
}

TEST(OtioSource, ColumnsOfOtherProgramsAreFoundByNameInAnyCase) {
    const EditPtr edit = source(with_metadata(
        R"("ALE": {"KN START": "kj 12 3456-7890+02", "ink number": "AB  0012+03", "CAMROLL": "C", "Labroll": "L",
            "Soundroll": "S", "Sound TC": "02:00:00:00", "TC 24": "03:00:00:00", "Scene": 4, "Take": "2"})"));
    EXPECT_EQ(label(edit, user_label_key, medium_film), "KJ1234567890+02");
    EXPECT_EQ(label(edit, user_label_ink, medium_ink), "AB  0012+03");
    EXPECT_EQ(reel(edit, 2, 1) + reel(edit, 10, 1) + reel(edit, 4, 3), "CLS");
    EXPECT_EQ(label(edit, user_label_timecode, medium_sound), "02:00:00:00");
}

TEST(OtioSource, VideoTimecodeIsTheTextElseTheRangeElseNought) {
    const auto video = [](const std::string& made, const Extra& of_timeline = {}) {
        return label(source(made, of_timeline), user_label_timecode, medium_source_picture, 2);
    };
    const std::string media = reference("\"available_range\": " + range(86400, 240, 24));
    EXPECT_EQ(video(clip("A", 3600, 4, {}, media)), "01:00:00:00");
    EXPECT_EQ(video(clip("A", 3600, 4, quillbrook("\"timecode\": \"05:00:00:00\""), media)), "05:00:00:00");
    EXPECT_EQ(video(clip("A", 3600, 4)), "00:00:00:00");
    EXPECT_EQ(video(clip("A", 0, 4, {}, object("GeneratorReference.1", "\"generator_kind\": \"bars\""))), "");
}

TEST(OtioSource, VideoTimecodeDropsForASemicolonOrTheTimelinesWord) {
    const auto video = [](const std::string& fields, const Extra& of_timeline = {}) {
        return label(source(clip("A", 0, 4, quillbrook(fields)), of_timeline), user_label_timecode,
                     medium_source_picture, 2);
    };
    EXPECT_EQ(video(R"("timecode_std": "29.97fps", "timecode": "01:00:00;02")"), "01:00:00;02");
    EXPECT_EQ(video(R"("timecode_std": "29.97fps", "timecode": "01:00:00:02")"), "01:00:00:02");
    EXPECT_EQ(video(R"("timecode_std": "29.97fps", "timecode": "01:00:00:02")", quillbrook("\"drop_frame\": true")),
              "01:00:00;02");
    EXPECT_EQ(video(R"("timecode_std": "25fps", "timecode": "01:00:00;02")"), "01:00:00:02");
}

TEST(OtioSource, ATextThatIsNoLabelCountsAsAbsentWithAWarningThatNamesTheClip) {
    const auto result =
        one(with_metadata(R"("quillbrook": {"keycode": "what?"}, "ALE": {"KN Start": "KJ123456 0001+00"})"));
    EXPECT_EQ(label(source_of(result), user_label_key, medium_film), "");
    EXPECT_TRUE(warns_of(result, "tracks/children[0]/children[0] \"A\": \"WHAT?\""));
}

TEST(OtioSource, FilmKindsDecideTheFormsOfKeyAndInk) {
    const auto film = [](const std::string& fields) {
        return source(
            clip("A", 0, 4, quillbrook("\"keycode\": \"KJ1234560012+05\", \"inkcode\": \"ab120034+05\", " + fields)));
    };
    EXPECT_EQ(label(film("\"film\": \"35mm-3p\""), user_label_key, medium_film), "KJ1234560012+05.1");
    EXPECT_EQ(label(film("\"film\": \"35mm-4p-ft\""), user_label_key, medium_film), "KJ1234560012+05");
    EXPECT_EQ(label(film("\"film\": \"nitrate\""), user_label_key, medium_film), "");
    EXPECT_EQ(label(film("\"film\": \"frames\""), user_label_key, medium_film), "");
    EXPECT_EQ(label(film("\"ink\": \"35mm-4p\""), user_label_ink, medium_ink), "ab120034+05");
    EXPECT_EQ(label(film("\"ink\": \"nitrate\""), user_label_ink, medium_ink), "");
}

TEST(OtioSource, TimesCountFromTheMediasFirstFrame) {
    const std::string media = reference("\"available_range\": " + range(100, 50));
    EXPECT_EQ(points(one(clip("A", 103, 4, {}, media))).at(0).source_time, 3.0);
    EXPECT_EQ(points(one(clip("A", 103, 4))).at(0).source_time, 103.0);
    const auto whole = one(bare_clip("\"name\": \"A\", \"media_reference\": " + media));
    EXPECT_EQ(points(whole).at(0).source_time, 0.0);
    EXPECT_EQ(points(whole).at(1).source_time, 50.0);
}

TEST(OtioSource, TheStripStartsAtNoughtUnlessTold) {
    EXPECT_EQ(source(clip("A", 0, 4))->getStartStripTime(), 0.0);
    EXPECT_EQ(source(clip("A", 0, 4, quillbrook("\"start_strip\": 1.5")))->getStartStripTime(), 1.5);
}

TEST(OtioSource, ARateOutsideTheListCountsAsTheEdits) {
    const std::string media = reference("\"available_range\": " + range(48000, 480000, 48000));
    const auto result = one(clip("A", 1, 4, {}, media), "\"global_start_time\": " + moment(0, 25));
    EXPECT_EQ(label(source_of(result), user_label_timecode, medium_source_picture, 2), "00:00:01:00");
    EXPECT_EQ(source_of(result)->getFrameRate(), Qb::frame_rate_25);
}

TEST(OtioSource, AFilmRateThatIsNoneIsRefused) {
    EXPECT_NE(
        error_of(timeline({track({clip("A", 0, 4, quillbrook("\"film_rate\": 0"))})})).find("\"A\": \"film_rate\""),
        std::string::npos);
}

// 24 in an edit at 23.976: five thousand frames on, the key number is five thousand frames on.
TEST(OtioSource, AStandardOfTheSisterRateIsTheEditsFrameForFrame) {
    const auto key_at = [](const std::string& standard, double rate) {
        const Extra extra = quillbrook("\"keycode\": \"KJ1234560000+00\", \"timecode\": \"01:00:00:00\"" +
                                       (standard.empty() ? "" : ", \"timecode_std\": \"" + standard + "\""));
        const std::string media = reference("\"available_range\": " + range(0, 9000, rate));
        const auto result = one(bare_clip("\"name\": \"A\", \"media_reference\": " + media + ", " + extra + ", " +
                                          source_range(5000, 10, rate)),
                                "\"global_start_time\": " + moment(0, rate));
        const EditPtr medium = source_of(result);
        const double posn = mPosn_Xlate(points(result).at(0).source_time, medium_edit, medium_film, medium);
        return std::string(medium->getLabel(user_label_key, {medium_film, 1})->get_label_point(posn).get_string());
    };
    EXPECT_EQ(key_at("", 23.976), "KJ1234560312+08");
    EXPECT_EQ(key_at("24fps", 23.976), "KJ1234560312+08");
    EXPECT_EQ(key_at("23.976fps", 24), "KJ1234560312+08");
    EXPECT_EQ(key_at("30fps", 29.97), "KJ1234560250+00");
    EXPECT_EQ(key_at("29.97df", 30), "KJ1234560250+00");
}

TEST(OtioSource, AStandardOfTheSisterRateStillSaysHowItDrops) {
    const auto video = [](const std::string& standard) {
        const Extra extra = quillbrook("\"timecode\": \"01:00:00:02\", \"timecode_std\": \"" + standard + "\"");
        return label(source(clip("A", 0, 4, extra), "\"global_start_time\": " + moment(0, 30)), user_label_timecode,
                     medium_source_picture, 2);
    };
    EXPECT_EQ(video("29.97df"), "01:00:00;02");
    EXPECT_EQ(video("29.97fps"), "01:00:00:02");
}

TEST(OtioSource, TheTimelinesFilmRateHoldsForMaterialOfTheEditsRate) {
    const auto film_frames = [](const std::string& fields) {
        const EditPtr medium = source(clip("A", 0, 4, quillbrook(fields)),
                                      with("\"global_start_time\": " + moment(0, 30), quillbrook("\"film_rate\": 30")));
        return mPosn_Xlate(10.0, medium_edit, medium_film, medium);
    };
    EXPECT_EQ(film_frames(""), 300.0);
    EXPECT_EQ(film_frames("\"film_rate\": 25"), 250.0);
    EXPECT_EQ(film_frames("\"timecode_std\": \"29.97fps\""), 300.0);
    EXPECT_EQ(film_frames("\"timecode_std\": \"25fps\""), 250.0);
}

TEST(OtioSource, TheTimelinesFilmRateHoldsForRenderedNestsToo) {
    const std::string nest = stack({track({clip("B", 0, 4)}), track({clip("C", 0, 4)})});
    const EditPtr medium =
        source(nest, with("\"global_start_time\": " + moment(0, 30), quillbrook("\"film_rate\": 30")));
    EXPECT_EQ(mPosn_Xlate(10.0, medium_edit, medium_film, medium), 300.0);
}

TEST(OtioSource, AReferenceOfAnUnknownTypeIsMissingMedia) {
    const auto with_media = [](const char* schema) {
        return timeline({track({clip("A", 0, 4, {}, object(schema, ""))})});
    };
    EXPECT_TRUE(
        warns_of(read(with_media("HoloReference.1")), "its media reference is of an unknown type: missing media"));
    EXPECT_EQ(drawn(with_media("HoloReference.1")), drawn(with_media("MissingReference.1")));
}

TEST(OtioSource, AStandardThatIsNoneIsToldOf) {
    const auto result = one(clip("A", 0, 4, quillbrook("\"timecode\": \"01:00:00:00\", \"timecode_std\": \"99fps\"")));
    EXPECT_TRUE(warns_of(result, "\"99fps\" of \"timecode_std\" is no timecode standard"));
}

TEST(OtioSource, AFilmRateMayBeWrittenInAnyWay) {
    const auto frames = [](const std::string& rate) {
        const EditPtr medium = source(clip("A", 0, 4, quillbrook("\"film_rate\": " + rate)));
        return mPosn_Xlate(10.0, medium_edit, medium_film, medium);
    };
    for (const char* rate : {"16", "\"16\"", "\"48/3\"", "\"1.6e1\"", "16.0"})
        EXPECT_EQ(frames(rate), 160.0) << rate;
    EXPECT_NE(error_of(timeline({track({clip("A", 0, 4, quillbrook("\"film_rate\": \"slow\""))})})), "");
}

} // namespace
