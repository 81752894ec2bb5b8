// Documents as a whole: sequences, repeated elements, markers, what is refused.

#include "formats/edit_readers.h"
#include "formats/file_kind.h"
#include "tests/fcp7xml/fcp7_texts.h"

#include <gmock/gmock.h>

using namespace fcp7_texts;
using testing::HasSubstr;

namespace {

const std::string cut = track(clip({"A", 0, 10, 0, 10}));

std::string named(const std::string& name, const std::string& items = cut) {
    return sequence(items, rate(24), "", name);
}

TEST(Fcp7Documents, AreToldByTheirContent) {
    EXPECT_EQ(formats::kind_of_file(document("")), formats::FileKind::fcp7xml);
    std::string wide = "\xFE\xFF";
    for (const char c : document(named("Reel 1")))
        wide += std::string{'\0', c};
    EXPECT_EQ(formats::kind_of_file(wide), formats::FileKind::fcp7xml);
    EXPECT_EQ(shown(read_document(wide)), "0-10 A@01:00:00:00");
    const formats::EditReader* reader = formats::edit_reader_of(formats::FileKind::fcp7xml, "cut.txt");
    ASSERT_TRUE(reader);
    EXPECT_STREQ(reader->extension, ".xml");
}

TEST(Fcp7Documents, TheEditHasTheNameRateAndTimecodeOfItsSequence) {
    const auto result = read_document(document(
        tag("project", tag("name", "Show") +
                           tag("children", sequence(cut, rate(30, true) + timecode("107892", "01:00:00;00",
                                                                                   tag("displayformat", "DF")))))));
    ASSERT_TRUE(result.edit) << result.error;
    EXPECT_STREQ(toUTF8(result.edit->getName()).c_str(), "Reel 1");
    EXPECT_EQ(embedded::EditBuilder::project_of(result.edit), "Show");
    EXPECT_EQ(result.edit->getSourceFrameRate(), embedded::nearest_rate(29.97)->code);
    EXPECT_TRUE(model(result).drop_frame);
    EXPECT_STREQ(result.edit->getLabel(user_label_timecode, {medium_edit, 1})->get_label_point(0.0).get_string(),
                 "01:00:00;00");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Documents, ARateThatIsGivenWinsOverTheSequences) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(23.976);
    const auto result = read_document(document(named("Reel 1")), options);
    EXPECT_EQ(result.edit->getSourceFrameRate(), embedded::nearest_rate(23.976)->code);
    EXPECT_EQ(shown(result, 0, 23.976), "0-10 A@01:00:00:00");
}

TEST(Fcp7Documents, NothingRunsAThousandthBelowTwentyFive) {
    const auto result = read_document(document(sequence(cut, rate(25, true))));
    EXPECT_EQ(result.edit->getSourceFrameRate(), embedded::nearest_rate(25)->code);
}

TEST(Fcp7Documents, TheRateMayStandInItemsOnlyOrNowhere) {
    const std::string bare = tag("name", "A") + tag("start", "0") + tag("end", "5") + tag("in", "0") + tag("out", "5");
    const std::string item = tag("clipitem", bare + rate(25));
    EXPECT_EQ(read_document(document(sequence(track(item), ""))).edit->getSourceFrameRate(),
              embedded::nearest_rate(25)->code);
    EXPECT_EQ(read_document(document(sequence(track(tag("clipitem", bare)), ""))).error,
              "a.xml: line 4: sequence \"Reel 1\": nothing tells its frames a second");
    const auto odd = read_document(document(sequence(track(item), rate(15))));
    EXPECT_EQ(odd.error, "a.xml: line 4: sequence \"Reel 1\": 15 frames a second are no rate of an edit");
    EXPECT_TRUE(odd.rate_missing);
}

TEST(Fcp7Documents, OfSeveralSequencesOneIsNamed) {
    const std::string text =
        document(named("Reel 1") + tag("bin", tag("children", named("Reel 2", track(clip({"B", 0, 5, 0, 5}))))));
    const auto result = read_document(text);
    EXPECT_EQ(result.error, "a.xml: holds 2 sequences: \"Reel 1\" (line 4), \"Reel 2\" (line 4)");
    EXPECT_TRUE(result.sequence_missing);
    formats::ReadOptions options;
    options.sequence = "Reel 2";
    EXPECT_EQ(shown(read_document(text, options)), "0-5 B@01:00:00:00");
    options.list_only = true;
    const auto list = read_document(text, options);
    ASSERT_EQ(list.sequences.size(), 2U);
    EXPECT_EQ(list.sequences[1].name, "Reel 2");
    EXPECT_EQ(list.sequences[1].rate, embedded::nearest_rate(24.0));
    EXPECT_FALSE(list.edit);
}

TEST(Fcp7Documents, ASequenceThatStandsTwiceByItsIdCountsOnce) {
    const auto result =
        read_document(document("<sequence id=\"Reel 1\"/>" + tag("bin", tag("children", named("Reel 1")))));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:00");
}

TEST(Fcp7Documents, ABinOfClipsOnlyAndSequencesWithoutTracksAreRefused) {
    EXPECT_EQ(
        read_document(document(tag("bin", tag("children", "<clip id=\"c\">" + tag("name", "A") + "</clip>")))).error,
        "a.xml: holds no sequence");
    const auto beside = read_document(document("<sequence id=\"lost\"/>" + sequence(track(""))));
    EXPECT_EQ(told(beside), "line 4: sequence: isn't in the document, but for its id");
    EXPECT_EQ(read_document(document(sequence(""))).error, "a.xml: line 4: sequence \"Reel 1\": holds no track");
    EXPECT_EQ(read_document("<xmem/>").error, "a.xml: line 1: isn't FCP 7 XML, but <xmem>");
    EXPECT_EQ(read_document("<xmeml>").error, "a.xml: line 1: the text breaks off");
    EXPECT_EQ(formats::read_fcp7xml("/nowhere/a.xml").error.substr(0, 16), "/nowhere/a.xml: ");
}

TEST(Fcp7Documents, OnlySoundIsAnEditToo) {
    const auto result = read_document(document(sequence("", rate(24), cut)));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:00");
    EXPECT_EQ(result.edit->getNumChans(), 1);
}

TEST(Fcp7Documents, AFileMayStandInFullBehindItsRepetition) {
    const auto result = read(clip({"A", 0, 10, 0, 10, "<file id=\"sea.mov\"/>"}) + clip({"B", 10, 20, 24, 34}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:00 | 10-20 B@01:00:01:00");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Documents, OneIdMayNameThingsOfSeveralKinds) {
    const std::string nest = "<sequence id=\"sea.mov\">" + tag("name", "N") + rate(24) +
                             tag("media", tag("video", track(clip({"X", 0, 10, 0, 10, "<file id=\"sea.mov\"/>"})))) +
                             "</sequence>";
    const auto result = read(clip({"A", 0, 10, 0, 10}) + clip({"B", 10, 20, 0, 10, nest}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:00 | 10-20 X@01:00:00:00");
}

TEST(Fcp7Documents, AFileThatIsNowhereIsDoubtedAndDoesNotOpen) {
    const auto result = read(clip({"A", 0, 10, 24, 34, "<file id=\"lost\"/>"}));
    EXPECT_FALSE(source_at(result.edit, 0, 0));
    EXPECT_EQ(told(result), "line 4: clip item \"A\": its file isn't in the document");
    // Film is conformed from its numbers.
    const auto known = read(clip({"A", 0, 10, 24, 34, "<file id=\"lost\"/>", timecode("0", "", reel("TK01"))}));
    EXPECT_EQ(shown(known), "0-10 A@00:00:01:00");
}

TEST(Fcp7Documents, NamesAreTextsOfTheirOwn) {
    const std::string long_name(150, '\xC3');
    std::string umlauts;
    for (const char c : long_name)
        umlauts += std::string{c, '\xA4'};
    const auto result = read(clip({"Sea &amp; &lt;Sky&gt;", 0, 10, 0, 10}) + clip({"two\rlines", 10, 20, 0, 10}) +
                             clip({umlauts, 20, 30, 0, 10}));
    EXPECT_EQ(shown(result), "0-10 Sea & <Sky>@01:00:00:00 | 10-20 two\xE2\x90\x8Alines@01:00:00:00 | 20-30 " +
                                 umlauts + "@01:00:00:00");
}

TEST(Fcp7Documents, MarkersOfTheSequenceStandOnEveryChannelAndThoseOfClipsOnTheirs) {
    const std::string in_clip = tag("marker", tag("name", "look") + tag("in", "105") + tag("out", "-1")) +
                                tag("marker", tag("name", "outside") + tag("in", "99"));
    const std::string of_sequence = tag("marker", tag("comment", "reel change") + tag("in", "7") + tag("out", "9")) +
                                    tag("marker", tag("name", "nowhere") + tag("in", "-1"));
    const auto result = read_document(
        document(sequence(track(clip({"A", 2, 12, 100, 110, file(), in_clip})) + track(""), rate(24) + of_sequence)));
    EXPECT_EQ(cues(result.edit, 0), "7 reel change, 7 look");
    EXPECT_EQ(cues(result.edit, 1), "7 reel change");
    EXPECT_EQ(told(result), "line 4: marker \"nowhere\": stands nowhere in the sequence and is left out");
}

TEST(Fcp7Documents, MarkersOfRetimedClipsStandWhereTheirFrameIsShown) {
    const std::string marker = tag("marker", tag("name", "look") + tag("in", "110"));
    const auto at = [&](const std::string& more) {
        return cues(read(clip({"A", 0, 20, 50, 70, file(), marker + more})).edit);
    };
    EXPECT_EQ(at(time_remap("200")), "5 look");
    EXPECT_EQ(at(time_remap("-100", false, false, graph({{"0", "165"}, {"100", "65"}}))), "5 look");
    EXPECT_EQ(at(time_remap("0", false, false, graph({{"0", "110"}, {"100", "110"}}))), "");
}

TEST(Fcp7Documents, EntitiesAndOtherTricksAreRefused) {
    EXPECT_EQ(read_document("<!DOCTYPE xmeml [<!ENTITY a \"b\">]>\n<xmeml/>").error,
              "a.xml: line 1: defines the entity \"a\", which isn't taken");
    EXPECT_EQ(shown(read_document(document(std::string(1U << 20, ' ') + named("Reel 1")))), "0-10 A@01:00:00:00");
}

TEST(Fcp7Documents, OfVeryManyThingsToTellTheRestIsCounted) {
    std::string items;
    for (int i = 0; i < 11'000; ++i)
        items += clip({"A" + std::to_string(i), 5, 5, 0, 0, ""});
    const auto result = read(items);
    EXPECT_EQ(result.warnings.size(), 10'001U);
    EXPECT_EQ(result.warnings.back().text, "a.xml: there are 1000 things more to tell of it");
}

TEST(Fcp7Documents, TextsCutAnywhereAreErrorsAndDamagedOnesErrorsOrEdits) {
    const std::string whole = document(sequence(
        track(clip({"A", 0, -1, 0, 20, file(), time_remap("50")}) + transition(10, 20) + clip({"B", -1, 40, 0, 30}))));
    for (std::size_t size = 0; size + 2 < whole.size(); size += 7)
        EXPECT_THAT(read_document(whole.substr(0, size)).error, HasSubstr("a.xml: line ")) << size;
    for (std::size_t at = 0; at < whole.size(); at += 3)
        for (const char put : {'9', '-', '<', ' ', '\0'}) {
            std::string damaged = whole;
            damaged[at] = put;
            const auto result = read_document(damaged);
            EXPECT_EQ(!result.edit, !result.error.empty()) << at << put;
        }
}

} // namespace
