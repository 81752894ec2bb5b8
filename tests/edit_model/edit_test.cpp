// Edits and what they are asked: cookies, channels, labels, reels, stored values, cues, de-rendered copies.

#include "embedded/positions.h"
#include "embedded/services.h"
#include "made_edits.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

using namespace edit_model;
using embedded::LabelDescription;

namespace {

std::string text_of(const LightweightString<wchar_t>& text) { return toUTF8(text).c_str(); }

LabelDescription label(label_t type, const std::string& text) {
    LabelDescription description;
    description.type = type;
    description.text = text;
    return description;
}

EditPtr open(const Cookie& cookie) {
    EditPtr edit;
    edit.i_open(cookie, edit_open_default);
    return edit;
}

// An edit of one clip.
struct OneClip {
    explicit OneClip(const SourceDescription& source, EditDescription description = edit_named("One"))
        : builder(std::move(description)) {
        builder.add_source(source);
        builder.add_channel(1);
        builder.add_event(0, event_of(0, 4));
        edit = builder.finish();
        cookie = edit->get_edit_cel_p(0)->get_start_ceh().get_channel_event().cookie;
        source_edit = open(cookie);
    }

    EditBuilder builder;
    EditPtr edit, source_edit;
    Cookie cookie;
};

std::string cues_between(CueList* cues, double from, double to, const IdStamp& channel) {
    const std::unique_ptr<CueList> list(cues->extract(from, to, channel));
    if (!list) return "none";
    list->sort();
    std::string texts;
    for (unsigned i = 0; i < list->getNumCuePoints(0); ++i)
        texts += text_of(list->getCuePoint(i, 0)->text) + ";";
    return texts;
}

} // namespace

TEST(Cookies, ShowTheHashOfWhatTheyName) {
    EXPECT_EQ(embedded::fnv1a(""), 0x811C9DC5U);
    EXPECT_EQ(embedded::fnv1a("a"), 0xE40C292CU);
    SourceDescription source = source_named("A");
    source.identity = "a";
    EXPECT_STREQ(OneClip(source).cookie.asString(false).c_str(), "E40C292C");
    // The hash of "BLACK".
    EXPECT_STREQ(Cookie("68566C44", false).asString(false).c_str(), "68566C44");
    EXPECT_TRUE(Cookie("68566C44", false).isBlack());
    EXPECT_FALSE(open(Cookie("68566C44", false)));
}

TEST(Cookies, NameNothingUntilTheyAreGivenAnObject) {
    EXPECT_EQ(Cookie().type, 'I');
    EXPECT_EQ(Cookie("nonsense", false).type, 'I');
    EXPECT_EQ(Cookie(nullptr, false).type, 'I');
    EXPECT_TRUE(Cookie().asString(false).empty());
    EXPECT_EQ(convertCookie(Cookie(), cookie_edit, 255).type, 'E');
}

TEST(Cookies, OfATextOpenTheFirstStoredEditOfThatText) {
    EditBuilder builder(edit_named("two of one medium"));
    SourceDescription first = source_named("first"), second = source_named("second");
    first.identity = second.identity = "file:///one-medium-two-labels.mov";
    builder.add_source(first), builder.add_source(second);
    builder.add_channel(1);
    builder.add_event(0, event_of(1, 1));
    const EditPtr edit = builder.finish();
    const Cookie exact = edit->get_edit_cel_p(0)->get_start_ceh().get_channel_event().cookie;
    EXPECT_EQ(text_of(open(exact)->getName()), "second");
    EXPECT_EQ(text_of(open(Cookie(exact.asString(false).c_str(), false))->getName()), "first");
}

TEST(StoredEdits, LostMediaDoesNotOpen) {
    SourceDescription source = source_named("lost");
    source.opens = false;
    EXPECT_FALSE(OneClip(source).source_edit);
}

TEST(StoredEdits, CanBeOpenedAsLongAsTheyAreHeld) {
    Cookie edit_cookie, source_cookie;
    EditPtr kept;
    {
        OneClip one(source_named("kept"));
        edit_cookie = one.edit->cookie, source_cookie = one.cookie;
        EXPECT_EQ(open(edit_cookie).get(), one.edit.get());
        kept = one.source_edit;
    }
    EXPECT_FALSE(open(edit_cookie));
    EXPECT_EQ(text_of(kept->getName()), "kept");
    EXPECT_TRUE(open(source_cookie));
    kept.i_close();
    EXPECT_FALSE(open(source_cookie));
}

TEST(Channels, AreListedByKindAndSubtype) {
    EditBuilder builder(edit_named("channels"));
    for (const auto& [kind, subtype] : {std::pair(1, 0), {2, 0}, {1, 8}, {1, 4}})
        builder.add_channel(kind, subtype);
    const EditPtr edit = builder.finish();
    Vector<int> all, fx;
    edit->getChans(all, 1, 0), edit->getChans(fx, 1, 8);
    EXPECT_EQ(std::vector<int>(all.begin(), all.end()), (std::vector<int>{0, 2, 3}));
    EXPECT_EQ(std::vector<int>(fx.begin(), fx.end()), (std::vector<int>{2}));
    EXPECT_EQ(edit->getFirstChan(2, 15), 1);
    int chan = 3;
    edit->getNextChan(chan, 1, 15);
    EXPECT_EQ(chan, no_more_channels);
    EXPECT_EQ(edit->getNumChans(), 4);
    EXPECT_EQ(edit->getChanSubtype(3), chan_unlisted);
    EXPECT_EQ(edit->get_edit_cel_p(9)->num_events, 0);
}

TEST(SourceLabels, AnswerByKindAndMediumBoundToWhatIsAsked) {
    SourceDescription source = source_named("labelled");
    source.video_timecode = label(label_t{4}, "01:00:00:00");
    source.video_timecode->rate = Fraction(25);
    source.sound_timecode = label(label_t{4}, "02:00:00:00");
    source.timecode_24p = label(label_tc_24, "03:00:00:00");
    source.key = label(label_key_35mm_4p, "KJ1234560123+05");
    const OneClip one(source);
    Edit& edit = *one.source_edit;
    EXPECT_STREQ(edit.getLabel(user_label_timecode, {1, 2})->get_string(0), "01:00:00:00");
    EXPECT_DOUBLE_EQ(edit.getLabel(user_label_timecode, {1, 2})->posn_step, 0.04);
    EXPECT_STREQ(edit.getLabel(user_label_timecode, {1, 3})->get_string(0), "02:00:00:00");
    EXPECT_STREQ(edit.getLabel(user_label_timecode, {4, 1})->get_string(0), "02:00:00:00");
    EXPECT_STREQ(edit.getLabel(user_label_timecode, {15, 1})->get_string(0), "03:00:00:00");
    EditLabel* key = edit.getLabel(user_label_key, {1, 1});
    EXPECT_STREQ(key->get_string(0), "KJ1234560123+05");
    EXPECT_EQ(edit.getLabel(user_label_key, {1, 1}), key);
    EXPECT_EQ(edit.getLabel(user_label_key, {2, 7})->get_MediumRoll(), MediumRollIdent(2, 7));
    EXPECT_EQ(key->end_set, 0);
    const EditLabel* ink = edit.getLabel(user_label_ink, {1, 9});
    EXPECT_FALSE(ink->is_valid());
    EXPECT_EQ(ink->get_MediumRoll(), MediumRollIdent(1, 1));
    EXPECT_FALSE(edit.getLabel(user_label_timecode, {8, 1})->is_valid());
}

TEST(SourceLabels, ATextThatCannotBeReadCountsAsAbsentWithAWarning) {
    SourceDescription source = source_named("broken");
    source.key = label(label_key_35mm_4p, "no digits");
    const OneClip one(source);
    EXPECT_FALSE(one.source_edit->getLabel(user_label_key, {1, 1})->is_valid());
    ASSERT_EQ(one.builder.warnings().size(), 1U);
    EXPECT_NE(one.builder.warnings()[0].text.find("broken"), std::string::npos);
}

TEST(EditLabels, AreTheEditsOwnTimecodeAndIts24FrameOne) {
    EditDescription description = edit_named("labels");
    description.rate = embedded::nearest_rate(29.97);
    description.drop_frame = true;
    description.start_frame = 107892;
    description.timecode_24p = label(label_tc_24, "10:00:00:00");
    const OneClip one(source_named("A"), description);
    EXPECT_STREQ(one.edit->getLabel(user_label_timecode, {8, 1})->get_string(0), "01:00:00;00");
    EXPECT_DOUBLE_EQ(one.edit->getLabel(user_label_timecode, {8, 1})->posn_step, 1001.0 / 30000.0);
    EXPECT_STREQ(one.edit->getLabel(user_label_timecode, {28, 1})->get_string(0), "10:00:00:00");
    EXPECT_FALSE(one.edit->getLabel(user_label_timecode, {15, 1})->is_valid());
    EXPECT_FALSE(one.edit->getLabel(user_label_key, {1, 1})->is_valid());
    EXPECT_TRUE(Qb::CurrentProject::getUseDropFrameTimecode());
    EXPECT_EQ(Qb::CurrentProject::getOutputImageFormat().rate_info().frame_rate(), one.edit->getFrameRate());
    EXPECT_DOUBLE_EQ(one.edit->getCelResolution(), 1001.0 / 30000.0);
}

TEST(Reels, AnswerForTheMediaThatStandForThem) {
    SourceDescription source = source_named("A");
    source.reels = {{{1, 2}, "R1"}, {{4, 3}, "S1"}, {{2, 1}, "C1"}};
    const OneClip one(source);
    for (const auto& [medium, roll] : {std::pair(0, -1), {1, 1}, {1, 2}, {3, 1}})
        EXPECT_STREQ(one.source_edit->getReelId(medium, roll).c_str(), "R1");
    EXPECT_STREQ(one.source_edit->getReelId(MediumRollIdent(4, 1)).c_str(), "S1");
    EXPECT_STREQ(one.source_edit->getReelId(2, 1).c_str(), "C1");
    EXPECT_TRUE(one.source_edit->getReelId(2, 2).empty());
    EXPECT_TRUE(one.edit->getReelId(1, 2).empty());
}

TEST(StoredValues, AreThereOnlyWhenTheyWereGiven) {
    EditDescription description = edit_named("values");
    description.modification_time = 1700000000;
    SourceDescription source = source_named("A");
    source.scene = "12A";
    const OneClip one(source, description);
    strp_field scene, take;
    EXPECT_EQ(read_edit_field(one.source_edit.get(), "scene", scene), 0);
    EXPECT_STREQ(scene, "12A");
    EXPECT_EQ(read_edit_field(one.source_edit.get(), "take", take), -1);
    int time = 0;
    EXPECT_EQ(read_edit_field(one.edit.get(), "modification_time", time), 0);
    EXPECT_EQ(time, 1700000000);
}

TEST(FilmRates, ComeFromTheEditThatIsAskedOrTheOneBeingListed) {
    EditDescription description = edit_named("rates");
    description.rate = embedded::nearest_rate(25.0);
    SourceDescription source = source_named("A");
    source.film_rate = Fraction(16);
    const OneClip one(source, description);
    EXPECT_TRUE(embedded::film_rate_of_edit(one.source_edit) == 16);
    EXPECT_TRUE(embedded::film_rate_of_edit(one.edit) == 25);
    EXPECT_TRUE(embedded::film_rate_of_edit(EditPtr()) == 25);
}

TEST(ListedEdit, IsTheOneBeforeAgainWhenTheLastIsClosed) {
    EditDescription description = edit_named("25");
    description.rate = embedded::nearest_rate(25.0);
    const OneClip outer(source_named("A"), description);
    { const OneClip inner(source_named("B")); }
    EXPECT_EQ(Qb::CurrentProject::getOutputImageFormat().rate_info().frame_rate(), outer.edit->getFrameRate());
}

TEST(Cues, AreTakenByChannelAndTimeInTheirOrder) {
    using Level = EditBuilder::CueLevel;
    EditBuilder builder(edit_named("cues"));
    builder.add_channel(1), builder.add_channel(1);
    builder.add_cue(0, Level::clip, {2, "clip", 4}), builder.add_cue(0, Level::track, {2, "track", 4});
    builder.add_stack_cue({2, "stack", 4}), builder.add_cue(0, Level::clip, {1, "early", 0});
    builder.add_cue(0, Level::clip, {4, "end", 4}), builder.add_cue(1, Level::clip, {3, "other", 4});
    builder.add_cue(0, Level::track, {2, "track 2", 4});
    const EditPtr edit = builder.finish();
    CueList* cues = EditBuilder::cues_of(edit);
    EXPECT_EQ(cues->getNumCuePoints(0), 7U);
    EXPECT_EQ(cues_between(cues, 0, 4, edit->getId(0)), "early;stack;track;track 2;clip;");
    EXPECT_EQ(cues_between(cues, 0, 4, edit->getId(1)), "stack;other;");
    EXPECT_EQ(cues_between(cues, 4, 5, edit->getId(0)), "end;");
    EXPECT_EQ(cues_between(cues, 5, 6, edit->getId(0)), "none");
    EXPECT_EQ(cues_between(cues, 0, 4, IdStamp()), "none");
    EXPECT_EQ(cues->getCuePoint(0, 0)->flags, 0);
    EXPECT_EQ(cues->getCuePoint(7, 0), nullptr);
}

TEST(Cues, AHairBeforeAnEdgeBelongToTheEventBehindIt) {
    EditBuilder builder(edit_named("hair"));
    builder.add_channel(1);
    builder.add_stack_cue({Fraction(19999995, 10000000), "near", 4});
    const EditPtr edit = builder.finish();
    CueList* cues = EditBuilder::cues_of(edit);
    EXPECT_EQ(cues_between(cues, 1, 2, edit->getId(0)), "none");
    EXPECT_EQ(cues_between(cues, 2, 3, edit->getId(0)), "near;");
}

namespace {

EditBuilder::Unrender fake_copies(bool writes) {
    EditBuilder::Unrender unrender;
    unrender.write = [writes](const std::string& path) { return writes && bool(std::ofstream(path) << "copy"); };
    unrender.open = [](const std::string& path) {
        if (!std::filesystem::exists(path)) return EditPtr();
        EditBuilder copy(edit_named("name of the file"));
        copy.add_channel(1), copy.add_channel(2);
        return copy.finish();
    };
    return unrender;
}

EditPtr rendered_edit(std::optional<EditBuilder::Unrender> unrender) {
    SourceDescription source = source_named("rendered");
    source.rendered = true;
    EditBuilder builder(edit_named("Reel 7"));
    builder.add_source(source);
    builder.add_channel(1);
    builder.add_event(0, event_of(0, 4));
    if (unrender) builder.set_unrender(*unrender);
    return builder.finish();
}

} // namespace

TEST(RenderedMaterial, IsSeenOnTheEditAndOnItsSource) {
    const EditPtr edit = rendered_edit(std::nullopt);
    EXPECT_TRUE(RenderHistory::editContainsRenderedMaterial(edit));
    EXPECT_TRUE(RenderHistory::isRendered(edit->get_edit_cel_p(0)->get_start_ceh().get_channel_event().cookie));
    const OneClip plain(source_named("A"));
    EXPECT_FALSE(RenderHistory::editContainsRenderedMaterial(plain.edit));
    EXPECT_FALSE(RenderHistory::isRendered(plain.cookie));
    EXPECT_FALSE(RenderHistory::isRendered(Cookie("68566C44", false)));
}

TEST(DerenderedCopies, AreStoredEditsThatKeepTheName) {
    EditPtr edit = rendered_edit(fake_copies(true));
    Cookie cookie;
    {
        const EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(edit);
        ASSERT_NE(copy.edit, nullptr);
        cookie = copy.edit->cookie;
    }
    char hash[9];
    std::snprintf(hash, sizeof hash, "%08X", embedded::fnv1a("copy:Reel 7"));
    EXPECT_STREQ(cookie.asString(false).c_str(), hash);
    const std::filesystem::path file =
        std::filesystem::path(embedded::work_directory()) / (hash + std::string(".otio"));
    EXPECT_TRUE(std::filesystem::exists(file));
    EditPtr copy = open(cookie);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->cookie, cookie);
    EXPECT_EQ(text_of(copy->getName()), "Reel 7");
    EXPECT_EQ(copy->getNumChans(), 2);
    const auto backup = file.string() + ".bak1";
    EXPECT_TRUE(bool(std::ofstream(backup) << "older"));
    EditManager::deleteEditFileAndBackups(cookie, {}, 1);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(std::filesystem::exists(backup));
    copy.i_close();
    EXPECT_FALSE(open(cookie));
}

TEST(DerenderedCopies, AreRefusedWhereTheyCannotBeWrittenOrRead) {
    EXPECT_EQ(RenderHistory::makeCopyAndUnrenderAll(rendered_edit(std::nullopt)).edit, nullptr);
    EXPECT_EQ(RenderHistory::makeCopyAndUnrenderAll(rendered_edit(fake_copies(false))).edit, nullptr);
    EXPECT_EQ(RenderHistory::makeCopyAndUnrenderAll(EditPtr()).edit, nullptr);
    EditBuilder::Unrender unreadable = fake_copies(true);
    unreadable.open = [](const std::string&) { return EditPtr(); };
    EXPECT_EQ(RenderHistory::makeCopyAndUnrenderAll(rendered_edit(unreadable)).edit, nullptr);
}

TEST(DerenderedCopies, DeletingAnEditWithoutAFileLeavesItOpen) {
    const OneClip one(source_named("A"));
    EditManager::deleteEditFileAndBackups(one.edit->cookie, {}, 1);
    EXPECT_TRUE(open(one.edit->cookie));
}
