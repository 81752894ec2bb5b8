// Where material comes from: timecode at many rates, reels, logs, film data, made-up material.

#include "tests/fcp7xml/fcp7_texts.h"

#include <gmock/gmock.h>

#include <chrono>

using namespace fcp7_texts;
using testing::HasSubstr;

namespace {

std::string one(const std::string& medium, const std::string& more = "", int in = 0, int length = 10) {
    return clip({"A", 0, length, in, in + length, medium, more});
}

std::string film_data(const std::string& content) { return tag("filmdata", content); }

std::string key(const std::string& prefix, const std::string& frames, const std::string& more = "") {
    return tag("keycode", tag("prefix", prefix) + tag("feetframes", frames) + more);
}

std::string key_of(const formats::ReadResult& result, double time = 0) {
    return result.edit ? key_at(source_at(result.edit, 0, 0), time) : result.error;
}

std::string label_at(const EditPtr& source, UserLabelType label, int medium, double time) {
    EditLabel* found = source->getLabel(label, {medium, 1});
    return found->is_valid() ? found->get_label_point(time).get_string() : "";
}

TEST(Fcp7Timecode, DropFrameSourcesInANonDropSequence) {
    const std::string drop = tag("displayformat", "DF");
    const auto result = read(one(file("a.mov", rate(30, true) + timecode("107892", "01:00:00;00", drop)), "", 1798),
                             rate(30, true) + timecode("107892", "", tag("displayformat", "NDF")));
    EXPECT_EQ(start_timecode(result.edit), "01:00:59;28");
    EXPECT_FALSE(model(result).drop_frame);
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Timecode, TheTextCountsWhereTheFrameLacks) {
    const auto at = [](const std::string& text, const std::string& more = "") {
        const auto result = read(one(file("a.mov", rate(30, true) + timecode("", text, more))), rate(30, true));
        return start_timecode(result.edit) + (told(result).empty() ? "" : " !");
    };
    EXPECT_EQ(at("01:00:00;02"), "01:00:00;02");
    EXPECT_EQ(at("00;10;00;00", tag("displayformat", "DF")), "00:10:00;00");
    EXPECT_EQ(at(" 00:00:01.05"), "00:00:01:05");
    EXPECT_EQ(at("01:00:00:30"), "00:00:00:00 !");
    EXPECT_EQ(at("01:60:00:00"), "00:00:00:00 !");
    EXPECT_EQ(at("one"), "00:00:00:00 !");
}

TEST(Fcp7Timecode, TheFrameCountsWhereTheTextIsAtOdds) {
    const auto result = read(one(file("a.mov", timecode("240", "01:00:00:00"))));
    EXPECT_EQ(start_timecode(result.edit), "00:00:10:00");
    EXPECT_EQ(told(result),
              "line 4: file \"a.mov\": its timecode says frame 240 but \"01:00:00:00\"; the frame counts");
}

TEST(Fcp7Timecode, ANumberThatDropFrameLeavesOutIsTheNextThatThereIs) {
    const auto at = [](int timebase, const std::string& text) {
        const auto result = read(one(file("a.mov", rate(timebase, true) + timecode("", text))), rate(timebase, true));
        return start_timecode(result.edit) + (told(result).empty() ? "" : " !");
    };
    EXPECT_EQ(at(30, "01:01:00;00"), "01:01:00;02 !");
    EXPECT_EQ(at(30, "01:01:00;01"), "01:01:00;02 !");
    EXPECT_EQ(at(30, "01:10:00;00"), "01:10:00;00");
    EXPECT_EQ(at(30, "01:01:01;00"), "01:01:01;00");
    EXPECT_EQ(at(60, "01:01:00;03"), "01:01:00;04 !");
    const auto whole = read(clip({"A", 0, 10, 0, 10}), rate(30, true) + timecode("", "01:01:00;00"));
    EXPECT_THAT(told(whole), HasSubstr("sequence \"Reel 1\": its timecode is \"01:01:00;00\", which drop-frame leaves "
                                       "out; it counts as the next that there is"));
    EXPECT_STREQ(LabelPoint(model(whole).timecode.point).get_string(), "01:01:00;02");
}

TEST(Fcp7Timecode, OneBeyondADayIsDoubted) {
    const auto result = read(one(file("a.mov", timecode("", "25:00:00:00"))));
    EXPECT_EQ(start_timecode(result.edit), "01:00:00:00");
    EXPECT_EQ(told(result), "line 4: file \"a.mov\": its timecode is \"25:00:00:00\", but a day has 24 hours");
}

TEST(Fcp7Timecode, OfSeveralThatOfTheSourceCounts) {
    const std::string other = timecode("240", "", tag("source", "aux1") + reel("AUX"));
    const auto both = read(one(file("a.mov", other + timecode("48", "", tag("source", "source") + reel("TK01")))));
    EXPECT_EQ(start_timecode(both.edit), "00:00:02:00");
    EXPECT_EQ(reel_at(both.edit, 0, 0), "TK01");
    EXPECT_EQ(told(both), "");
    const auto alone = read(one(file("a.mov", other)));
    EXPECT_EQ(start_timecode(alone.edit), "00:00:10:00");
    EXPECT_EQ(told(alone), "line 4: file \"a.mov\": has no timecode of its own but \"aux1\", which counts");
}

TEST(Fcp7Timecode, WithoutAnyItBeginsAtNothing) {
    EXPECT_EQ(start_timecode(read(one(file("a.mov", ""), "", 24)).edit), "00:00:01:00");
    const auto item = read(one(file("a.mov", ""), timecode("48")));
    EXPECT_EQ(start_timecode(item.edit), "00:00:02:00");
}

TEST(Fcp7Timecode, ThereIsNoDropFrameAtMostRates) {
    const auto result = read(one(file("a.mov", timecode("86400", "", tag("displayformat", "DF")))));
    EXPECT_EQ(start_timecode(result.edit), "01:00:00:00");
    EXPECT_THAT(told(result), HasSubstr("there is no drop-frame timecode at 24 frames a second; counted without"));
}

TEST(Fcp7Rates, FilmAndVideoKeepStep) {
    // Frame 2864 of a proxy of film, 24, is frame 3580 of its file, 29.97.
    const std::string proxy =
        file("a.mov", rate(30, true) + timecode("107892", "", tag("displayformat", "DF")), "5071");
    for (const bool ntsc : {false, true}) {
        const auto result = read(one(proxy, rate(24, ntsc), 2864), rate(24, ntsc));
        EXPECT_EQ(start_timecode(result.edit), "01:01:59;12") << ntsc;
        EXPECT_EQ(told(result), "");
    }
    // Film frames count on as they do in the sequence.
    const auto film = read(one(proxy, rate(24) + film_data(key("KJ291010", "0000+00")), 2864), rate(24));
    EXPECT_EQ(key_of(film, 2864.0 / 24), "KJ2910100179+00");
}

TEST(Fcp7Rates, AFileAt24IsFrameForFrameIn23976) {
    const auto result = read(one(file("a.mov", rate(24) + timecode("86400")), rate(24, true), 2400), rate(24, true));
    EXPECT_EQ(start_timecode(result.edit), "01:01:40:00");
}

TEST(Fcp7Rates, VideoMayHoldASlowerFile) {
    const auto result =
        read(one(file("a.mov", rate(24, true) + timecode("86400")), rate(30, true), 300), rate(30, true));
    EXPECT_EQ(start_timecode(result.edit), "01:00:10:00");
}

TEST(Fcp7Rates, ItemsCountAtTheirOwnRate) {
    const std::string item = clip({"A", 536, 636, 12, 62, file("a.mov", rate(30) + timecode("0")), rate(15)});
    const auto result = read(item, rate(30));
    EXPECT_EQ(shown(result, 0, 30), "0-536 black | 536-636 A@00:00:00:24");
    EXPECT_EQ(source_frames(result.edit, 0, 1, 30), "24-124");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Rates, ATimecodeThatNoLabelCountsIsTakenAtTheEdits) {
    const auto result = read(one(file("a.mov", rate(15) + timecode("150")), rate(15), 15), rate(30));
    EXPECT_EQ(start_timecode(result.edit), "00:00:11:00");
    EXPECT_THAT(told(result), HasSubstr("no timecode counts 15 frames a second; counted in 30"));
}

TEST(Fcp7Rates, OneThatCannotBeReadIsTold) {
    for (const char* timebase : {"0", "23.976"}) {
        const std::string odd = tag("rate", tag("timebase", timebase));
        const auto result = read(one(file(), odd, 24));
        EXPECT_EQ(start_timecode(result.edit), "01:00:01:00");
        EXPECT_THAT(told(result), HasSubstr("isn't a rate that is known; that of what it stands in counts"));
        EXPECT_EQ(told(read(one(file(), tag("filter", tag("effect", tag("parameter", odd))), 24))), "");
    }
}

TEST(Fcp7Rates, AreFoundAtOnceHoweverManyItemsHaveNone) {
    std::string items;
    for (int i = 0; i < 20'000; ++i)
        items += clip({"A", i, i + 1, 0, 1, "<file id=\"lost\"/>"});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(read(items).edit->getNumChans(), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

TEST(Fcp7Rates, SecondsCountBetweenPalAndFilm) {
    const auto result = read(one(file("a.mov", rate(25) + timecode("0")), rate(25), 50), rate(24));
    EXPECT_EQ(start_timecode(result.edit), "00:00:02:00");
}

TEST(Fcp7Rates, TheTicksOfSomeStillsSayThatTheirInCountsAsTheirFileDoes) {
    // 107,891 frames at 29.97 are an hour.
    const std::string ticks = tag("pproTicksIn", "914450328792000");
    const std::string titles = file("a.mov", rate(30, true) + timecode("0"), "200000");
    const auto still = read(clip({"A", 0, 24, 107891, 107915, titles, rate(24, true) + ticks}), rate(24, true));
    EXPECT_EQ(start_timecode(still.edit), "00:59:56:11");
    EXPECT_THAT(told(still), HasSubstr("its in counts frames of its file, not its own"));
    const auto other = read(clip({"A", 0, 24, 86313, 86337, titles, rate(24, true) + ticks}), rate(24, true));
    EXPECT_EQ(start_timecode(other.edit), "00:59:56:11");
    EXPECT_EQ(told(other), "");
}

TEST(Fcp7Rates, TheTicksOfAStillSayItNearItsStartToo) {
    // 5 frames of 30; at 24 they would be 4.
    const std::string ticks = tag("pproTicksIn", "42336000000");
    const auto still = read(clip({"A", 0, 24, 5, 29, file("a.mov", rate(30) + timecode("0")), rate(24) + ticks}));
    EXPECT_EQ(start_timecode(still.edit), "00:00:00:05");
    EXPECT_THAT(told(still), HasSubstr("its in counts frames of its file, not its own"));
}

TEST(Fcp7Rates, OffsetsOfMixedRatesAndSubclipsMoveTheIn) {
    EXPECT_EQ(start_timecode(
                  read(one(file(), tag("subclipinfo", tag("startoffset", "48") + tag("endoffset", "9")), 24)).edit),
              "01:00:03:00");
    const std::string video = file("a.mov", rate(30, true) + timecode("0"));
    EXPECT_EQ(start_timecode(read(one(video, rate(24, true) + tag("mixedratesoffset", "2"), 24), rate(24, true)).edit),
              "00:00:01:02");
}

TEST(Fcp7Reels, TheFilesReelTheItemsAndThenTheNameOfTheFile) {
    const auto reel_of = [](const std::string& item) { return reel_at(read(item).edit, 0, 0); };
    const std::string own = timecode("0", "", reel("TK02"));
    EXPECT_EQ(reel_of(one(file("a.mov", timecode("0", "", reel("TK01"))), own)), "TK01");
    EXPECT_EQ(reel_of(one(file("a.mov", timecode("0", "", reel(""))), own)), "TK02");
    EXPECT_EQ(reel_of(one(file("A012_1-2.mov"))), "A012_1-2");
    for (const std::string url : {"file:///D%3a/film/A%20012.mov", "file://localhost/D%3A/A%20012.mov", "A 012.mov"})
        EXPECT_EQ(reel_of(one("<file id=\"f\">" + tag("pathurl", url) + "</file>")), "A 012") << url;
    EXPECT_EQ(reel_of(one("", own)), "TK02");
    EXPECT_EQ(reel_of(one("<file id=\"f\">" + rate(24) + "</file>")), "A");
}

TEST(Fcp7Logs, SceneTakeAndDescriptionOfTheClipElseOfItsClipInTheBin) {
    const std::string master = "<clip id=\"m\">" + tag("name", "A") +
                               tag("logginginfo", tag("scene", "9") + tag("shottake", "8") + tag("lognote", "good")) +
                               "</clip>";
    const auto log_of = [&](const std::string& more, const std::string& bin) {
        const auto result = read_document(document(bin + sequence(track(one(file(), more)))));
        const EditPtr source = source_at(result.edit, 0, 0);
        const auto field = [&](const char* name) {
            LightweightString<char> text;
            source->values->in(name, text);
            return std::string(text.c_str());
        };
        return field("scene") + "/" + field("take") + "/" + field("description");
    };
    const std::string own = tag("logginginfo", tag("description", "sea") + tag("scene", "1A") + tag("shottake", "2"));
    const std::string id = tag("masterclipid", "m");
    EXPECT_EQ(log_of(own + id, master), "1A/2/sea");
    EXPECT_EQ(log_of(tag("logginginfo", tag("scene", "") + tag("shottake", "2")) + id, master), "9/2/good");
    EXPECT_EQ(log_of(own + film_data(tag("filmslate", tag("scene", "7") + tag("take", "6"))), ""), "7/6/sea");
    EXPECT_EQ(log_of(tag("masterclipid", "other"), master), "//");
}

TEST(Fcp7Film, KeyNumbersAreThoseOfTheFirstFrameOfTheFile) {
    const auto result = read(
        one(file(),
            film_data(key("KJ291010", "5867+00") + tag("cameraroll", "A012") + tag("labroll", "7") +
                      tag("dailyroll", "D3") + tag("inknumber", tag("prefix", "AA") + tag("feetframes", "0120+00")) +
                      tag("filmstandard", "35mm4p")),
            100));
    const EditPtr source = source_at(result.edit, 0, 0);
    EXPECT_EQ(key_at(source, 100.0 / 24), "KJ2910105873+04");
    EXPECT_EQ(label_at(source, user_label_ink, medium_ink, 100), "AA__0126+04");
    EXPECT_STREQ(source->getReelId(medium_film, 1).c_str(), "A012");
    EXPECT_STREQ(source->getReelId(10, 1).c_str(), "7");
    EXPECT_STREQ(source->getReelId(11, 1).c_str(), "D3");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Film, EveryWayToWriteAKeyNumber) {
    const auto written = [](const std::string& content) {
        const auto result = read(one(file(), film_data(content)));
        return key_of(result) + (told(result).empty() ? "" : " !");
    };
    EXPECT_EQ(written(key("KJ291010", "5867+07")), "KJ2910105867+07");
    EXPECT_EQ(written(key("KJ291010", "586707")), "KJ2910105867+07");
    EXPECT_EQ(written(key("KJ291010", "5867")), "KJ2910105867+00");
    EXPECT_EQ(written(key("KJ 29 1010", "5867 + 07")), "KJ2910105867+07");
    EXPECT_EQ(written(key("kj291010", "5867&amp;07")), "KJ2910105867+07");
    EXPECT_EQ(written(key("KJ291010", "5867+12", tag("perfoffset", "1")) + tag("filmstandard", "35mm3p")),
              "KJ2910105867+12.1");
    EXPECT_EQ(written(key("KJ291010", "5867+12", tag("perfoffset", "0")) + tag("filmstandard", "16mm20")),
              "KJ2910105867+12");
    EXPECT_EQ(written(key("", "")), "");
    EXPECT_EQ(written(key("KJ291010", "")), " !");
    EXPECT_EQ(written(key("KJ291010", "many")), " !");
}

TEST(Fcp7Film, AKeyNumberIsNotGuessedFromPartsOfAnotherLength) {
    const auto told_of = [](const std::string& prefix, const std::string& frames) {
        const auto result = read(one(file(), film_data(key(prefix, frames))));
        EXPECT_EQ(key_of(result), "") << prefix << " " << frames;
        return told(result);
    };
    EXPECT_EQ(told_of("KJ12345", "5867+07"), "line 4: clip item \"A\": \"KJ12345\", \"5867+07\" can't be read as its "
                                             "key number, which is left out");
    for (const char* prefix : {"KJ123456789", "K1234567", "12345678", "KJ12345A", ""})
        EXPECT_NE(told_of(prefix, "5867+07"), "") << prefix;
    for (const char* frames : {"+07", "58670", "5867007"})
        EXPECT_NE(told_of("KJ123456", frames), "") << frames;
    EXPECT_EQ(key_of(read(one(file(), film_data(key("KJ-12-34-56", "12+07"))))), "KJ1234560012+07");
}

TEST(Fcp7Film, NorIsAnInkNumber) {
    const auto ink = [](const std::string& prefix, const std::string& frames) {
        const auto result =
            read(one(file(), film_data(tag("inknumber", tag("prefix", prefix) + tag("feetframes", frames)))));
        return label_at(source_at(result.edit, 0, 0), user_label_ink, medium_ink, 0) +
               (told(result).empty() ? "" : " !");
    };
    EXPECT_EQ(ink("1234", "12+07"), "12340012+07");
    EXPECT_EQ(ink("12", "5867+07"), "12__5867+07");
    EXPECT_EQ(ink("A-1", "5867+07"), "A-1_5867+07");
    EXPECT_EQ(ink("", "5867+07"), "    5867+07");
    EXPECT_EQ(ink("12345", "0120+00"), " !");
}

TEST(Fcp7Film, EmptyFilmDataOfAnItemHideNothing) {
    const std::string bin = "<clip id=\"m\">" + film_data(key("KJ291010", "5867+00")) + "</clip>";
    EXPECT_EQ(
        key_of(read_document(document(bin + sequence(track(one(file(), tag("masterclipid", "m") + film_data(""))))))),
        "KJ2910105867+00");
}

TEST(Fcp7Film, NumbersThatRunBackwardsOrOfUnknownFilmAreLeftOut) {
    const auto backwards = read(one(file(), film_data(key("KJ291010", "5867+00", tag("reversed", "TRUE")))));
    EXPECT_EQ(key_of(backwards), "");
    EXPECT_THAT(told(backwards), HasSubstr("its key numbers run backwards, which no list can follow"));
    const auto unknown = read(one(file(), film_data(key("KJ291010", "5867+00") + tag("filmstandard", "8mm"))));
    EXPECT_EQ(key_of(unknown), "");
    EXPECT_THAT(told(unknown), HasSubstr("\"8mm\" is no film standard that is known, so its numbers are left out"));
}

TEST(Fcp7Film, AnInkNumberMayStandAlone) {
    const auto result =
        read(one(file(), film_data(tag("inknumber", tag("prefix", "007B") + tag("feetframes", "004312")))));
    const EditPtr source = source_at(result.edit, 0, 0);
    EXPECT_EQ(label_at(source, user_label_ink, medium_ink, 0), "007B0043+12");
    EXPECT_EQ(key_at(source, 0), "");
}

TEST(Fcp7Film, FilmDataOfTheBinCountWhereTheItemHasNone) {
    const std::string bin = "<clip id=\"m\">" + tag("name", "A") + film_data(key("KJ291010", "5867+00")) + "</clip>";
    const auto with = [&](const std::string& more) {
        return read_document(document(bin + sequence(track(one(file(), tag("masterclipid", "m") + more)))));
    };
    EXPECT_EQ(key_of(with("")), "KJ2910105867+00");
    EXPECT_EQ(told(with(film_data(key("KJ291010", "5867+00")))), "");
    const auto other = with(film_data(key("KJ291010", "5868+00")));
    EXPECT_EQ(key_of(other), "KJ2910105868+00");
    EXPECT_THAT(told(other), HasSubstr("its key number isn't that of its clip in the bin; its own counts"));
}

TEST(Fcp7Film, TheTelecineSpeedTellsHowManyFilmFramesAreInASecond) {
    const auto rate_of = [](const std::string& speed, int timebase, bool ntsc) {
        const auto result = read(one(file("a.mov", rate(timebase, ntsc)), film_data(tag("telecinespeed", speed))),
                                 rate(timebase, ntsc));
        return source_at(result.edit, 0, 0)->impl()->film_rate;
    };
    EXPECT_FALSE(rate_of("24", 24, true));
    EXPECT_FALSE(rate_of("24", 30, true));
    EXPECT_EQ(rate_of("30", 30, true), embedded::Fraction(30000, 1001));
    EXPECT_EQ(rate_of("24", 25, false), embedded::Fraction(24));
    EXPECT_FALSE(rate_of("30", 24, false));
}

TEST(Fcp7Generated, SlugIsBlackAndOthersAreRenderedUnderTheirName) {
    const auto generator = [](const std::string& name, const std::string& id, int start) {
        return "<generatoritem>" + places({"", start, start + 10, 86400, 86410}) + tag("name", name) +
               tag("effect", tag("name", name) + tag("effectid", id)) + "</generatoritem>";
    };
    const std::string slug = tag("mediaSource", "Slug");
    const auto result = read(generator("Schwarz", "Slug", 0) + generator("Title 1", "Text", 10) +
                             clip({"Black Video", 20, 30, 86313, 86323, file("b", slug)}) +
                             clip({"Bars", 30, 40, 0, 10, file("c", slug)}));
    EXPECT_EQ(shown(result), "0-10 black | 10-20 Title 1@ | 20-30 black | 30-40 Bars@");
    const auto title = read(clip({"Graphic", 0, 10, 0, 10, file("d", tag("mediaSource", "GraphicAndType"))}));
    EXPECT_EQ(shown(title), "0-10 Graphic@");
    EXPECT_EQ(reel_at(result.edit, 0, 1) + reel_at(result.edit, 0, 3), "");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Generated, ATitleIsNotBlackForItsName) {
    const auto made = [](const std::string& name, const std::string& source) {
        return shown(read(clip({name, 0, 10, 0, 10, file("d", tag("mediaSource", source))})));
    };
    for (const char* name : {"Slug", "black", "BLACK VIDEO", "Black Video 2"})
        EXPECT_EQ(made(name, "Slug"), "0-10 black") << name;
    for (const std::string name : {"Blackmail", "Black Rain main title", "Blackout"})
        EXPECT_EQ(made(name, "Slug"), "0-10 " + name + "@");
    EXPECT_EQ(made("Black", "GraphicAndType"), "0-10 Black@");
}

TEST(Fcp7Generated, StillsAreHeld) {
    const auto marked = read(one(file(), tag("stillframe", "TRUE") + tag("stillframeoffset", "48")));
    EXPECT_EQ(shown(marked), "0-10 A@01:00:02:00*0");
    EXPECT_EQ(shown(read(one(file("a.png", timecode("0"), "1"), "", 86400))), "0-10 A@00:00:00:00*0");
    // Pictures in a row are no still.
    const auto row = read(one(file("a.0001.png", timecode("0"), "500"), "", 24));
    EXPECT_EQ(shown(row) + told(row), "0-10 A@00:00:01:00");
    const auto doubted = read(one(file("a.png", timecode("0"), "500"), "", 24));
    EXPECT_EQ(shown(doubted), "0-10 A@00:00:01:00");
    EXPECT_THAT(told(doubted), HasSubstr("its file is a picture, but 500 frames long; it is read as a series"));
}

TEST(Fcp7Effects, FiltersAreEffectsUnlessTheyDoNothing) {
    const auto filter = [](const std::string& name, const std::string& category, const std::string& more) {
        return tag("filter",
                   tag("effect", tag("name", name) + tag("effectid", name) + tag("effectcategory", category) + more));
    };
    const std::string idle = filter("basic", "motion",
                                    parameter("scale", tag("value", "100.0")) +
                                        parameter("center", tag("value", tag("horiz", "0") + tag("vert", "0")))) +
                             filter("Opacity", "motion", parameter("opacity", tag("value", "100"))) +
                             filter("Distort", "motion",
                                    parameter("ulcorner", tag("value", tag("horiz", "-0.5") + tag("vert", "-0.5"))) +
                                        parameter("lrcorner", tag("value", tag("horiz", "0.5") + tag("vert", "0.5")))) +
                             tag("filter", tag("enabled", "FALSE") + tag("effect", tag("name", "Blur")));
    formats::ReadOptions options;
    options.all_effects = true;
    const auto effects_of = [&](const std::string& more) {
        const auto result = read_document(document(sequence(track(one(file(), more)))), options);
        std::string names;
        for (const auto& graph : model(result).graphs)
            for (const auto& component : graph.components)
                names += std::string(toUTF8(component->getName()).c_str()) + ";";
        return names;
    };
    EXPECT_EQ(effects_of(idle), "");
    EXPECT_EQ(effects_of(idle + filter("basic", "motion", parameter("scale", tag("value", "93.8"))) +
                         filter("Mirror", "Perspective", "")),
              "basic;Mirror;");
}

TEST(Fcp7Effects, TransitionsAreToldByTheirIdsAndCategories) {
    const auto kind = [](const std::string& name, const std::string& more) {
        return shown(
            read(clip({"A", 0, -1, 0, 12}) + transition(8, 12, "center", name, more) + clip({"B", -1, 20, 0, 12})));
    };
    const auto drawn_with = [](const std::string& what) {
        return "0-8 A@01:00:00:00 | 8-12 " + what + " | 12-20 B@01:00:00:04";
    };
    const std::string wipe = tag("effectcategory", "Wipe") + tag("wipecode", "24");
    EXPECT_EQ(kind("Cross Dissolve", tag("effectcategory", "Dissolve")), drawn_with("diss"));
    EXPECT_EQ(kind("Film Dissolve", ""), drawn_with("film"));
    EXPECT_EQ(kind("Edge Wipe", wipe), drawn_with("wipe24"));
    EXPECT_EQ(kind("Edge Wipe", wipe + tag("reverse", "TRUE")), drawn_with("wipe24r"));
    EXPECT_EQ(kind("Dip to Black", tag("effectcategory", "Dissolve")), drawn_with("other"));
    const auto part =
        read(clip({"A", 0, -1, 0, 12}) + transition(8, 12, "center", "Cross Dissolve", tag("endratio", "0.5")) +
             clip({"B", -1, 20, 0, 12}));
    EXPECT_THAT(told(part), HasSubstr("begins or ends part of the way"));
}

} // namespace
