// Effects on events: stamps, nodes, components and material tracks.

#include "made_edits.h"

#include <gtest/gtest.h>

using namespace edit_model;
using embedded::EffectDescription;

namespace {

EffectDescription effect(const std::string& name, bool for_the_lab, std::vector<int> tracks = {}) {
    return {name, for_the_lab, std::move(tracks)};
}

EventDescription with_effects(EventDescription event, std::vector<EffectDescription> effects) {
    event.effects = std::move(effects);
    return event;
}

std::string text_of(const LightweightString<wchar_t>& text) { return toUTF8(text).c_str(); }

// Channel 0 is V1, channel 1 an FX channel, both over one source.
class Effects : public ::testing::Test {
protected:
    Effects() : builder(edit_named("Effects")) {
        builder.add_source(source_named("A"));
        builder.add_channel(1);
        builder.add_channel(1, 8);
    }

    void clip(int channel, const Fraction& duration, std::vector<EffectDescription> effects = {}) {
        builder.add_event(channel, with_effects(event_of(0, duration), std::move(effects)));
    }
    CelEventPair event(int channel, int index) {
        if (!edit) edit = builder.finish();
        cel = edit->get_edit_cel_p(channel);
        return CelEventPair(edit, ce_handle(cel.get(), 2 * index), channel);
    }
    static int magic(const IdStamp& stamp) { return stamp.valid() ? stamp.getMagicType() : -1; }
    std::string components_at(int channel, double time) {
        const EditGraphIterator graph(edit, channel, time, 0);
        Vector<Qb::Ptr<FXGraphNodeBase>> nodes;
        graph.findComponentsForCurrentEffect(nodes);
        std::string names = graph.found ? "" : "none";
        for (const auto& node : nodes)
            names += text_of(node->getName()) + ";";
        return names;
    }
    std::vector<int> tracks_at(int channel, double time) {
        Vector<int> tracks;
        EditGraphIterator(edit, channel, time, 0).findMaterialTracks(tracks);
        return {tracks.begin(), tracks.end()};
    }

    EditBuilder builder;
    EditPtr edit;
    Qb::Ptr<Cel> cel;
};

} // namespace

TEST_F(Effects, AClipWithoutEffectsHasAPlainObjectAndNoGraph) {
    clip(0, 4);
    CelEventPair pair = event(0, 0);
    EXPECT_EQ(magic(pair.getObjectID()), 1);
    EXPECT_FALSE(pair.inH().getEffectGraph().valid());
    EXPECT_FALSE(pair.getEffectHandle());
    EXPECT_EQ(components_at(0, 0.0), "none");
}

TEST_F(Effects, TheLabsEffectRaisesTheFlagOfTheInstance) {
    clip(0, 4, {effect("Grade", false), effect("Flop", true)});
    clip(0, 4, {effect("Grade", false)});
    const auto lab = event(0, 0).getEffectHandle();
    EXPECT_TRUE(dynamic_cast<EffectInstance_opu4h5a4j&>(*lab).flag);
    const auto other = event(0, 1).getEffectHandle();
    EXPECT_FALSE(dynamic_cast<EffectInstance_opu4h5a4j&>(*other).flag);
    EXPECT_EQ(magic(event(0, 0).getObjectID()), 0);
    EXPECT_EQ(magic(event(0, 0).inH().getEffectGraph()), 0);
}

TEST_F(Effects, OnlyTheLabsEffectsAreComponentsOffFxChannels) {
    clip(0, 4, {effect("Grade", false), effect("Flop", true)});
    clip(1, 4, {effect("Grade", false), effect("Flop", true)});
    event(0, 0);
    EXPECT_EQ(components_at(0, 0.0), "Flop;");
    EXPECT_EQ(components_at(1, 0.0), "Grade;Flop;");
}

TEST_F(Effects, AnFxChannelHoldsNothingButItsEffects) {
    clip(1, 4);
    builder.add_gap(1, 2, {effect("Title", false)});
    builder.add_transition(1, dissolve(1, 1));
    clip(1, 3, {effect("Matte", true)});
    CelEventPair title = event(1, 0);
    EXPECT_EQ(drawn(*cel), "b 4-6 | A 6-9");
    EXPECT_EQ(magic(title.getObjectID()), 3);
    EXPECT_EQ(title.getChanSubType(), chan_fx);
    EXPECT_EQ(components_at(1, 4.0), "Title;");
    EXPECT_EQ(builder.warnings().size(), 1U);
}

TEST_F(Effects, EffectsOfAGapElsewhereAreLeftOutWithAWarning) {
    builder.add_gap(0, 2, {effect("Title", true)});
    clip(0, 2);
    event(0, 0);
    EXPECT_EQ(drawn(*cel), "A 2-4");
    EXPECT_EQ(builder.warnings().size(), 1U);
}

TEST_F(Effects, MaterialTracksAreThoseOfTheEffectsThenOfTheItemThenItsOwn) {
    clip(1, 1, {effect("a", false, {3, 0}), effect("b", false, {0, 2})});
    EventDescription item = with_effects(event_of(0, 1), {effect("c", false)});
    item.effect_tracks = {5, 5, 4};
    builder.add_event(1, item);
    clip(1, 1, {effect("d", false)});
    event(1, 0);
    EXPECT_EQ(tracks_at(1, 0.0), (std::vector<int>{3, 0, 2}));
    EXPECT_EQ(tracks_at(1, 1.0), (std::vector<int>{5, 4}));
    EXPECT_EQ(tracks_at(1, 2.0), (std::vector<int>{1}));
    EXPECT_TRUE(tracks_at(1, 3.0).empty());
}

// | a . |--x--| b . |     the transition begins where a, without length now, stands
TEST_F(Effects, AtATimeThatTwoEventsShareTheCallersIsTaken) {
    clip(0, 0, {effect("first", true)});
    builder.add_transition(0, dissolve(0, 1));
    clip(0, 4, {effect("second", true)});
    clip(0, 2, {effect("third", true)});
    event(0, 0).inH();
    EXPECT_EQ(drawn(*cel), "A 0-0 | x 0-1 | A 1-4 | A 4-6");
    EXPECT_EQ(components_at(0, 0.0), "first;");
    EXPECT_EQ(components_at(0, 1.0), "second;");
    EXPECT_EQ(components_at(0, 2.5), "second;");
    EXPECT_EQ(components_at(0, 4.0), "third;");
}

// |--x--| a | b . |     both events begin behind the transition
TEST_F(Effects, AnEventWithoutLengthIsFoundByTheOneWhoAskedForItsPlace) {
    clip(0, 4);
    builder.add_transition(0, dissolve(1, 0));
    clip(0, 0, {effect("short", true)});
    clip(0, 4, {effect("long", true)});
    event(0, 0);
    EXPECT_EQ(components_at(0, 4.0), "long;");
    event(0, 2).inH();
    EXPECT_EQ(components_at(0, 4.0), "short;");
    event(0, 3).inH();
    EXPECT_EQ(components_at(0, 4.0), "long;");
}

TEST_F(Effects, ADissolveIsAPlainNodeWithItsName) {
    clip(0, 4);
    builder.add_transition(0, dissolve(1, 1));
    clip(0, 4);
    CelEventPair pair = event(0, 1);
    EXPECT_EQ(magic(pair.inH().getEffectGraph()), 2);
    EXPECT_EQ(magic(pair.getObjectID()), 0);
    const auto node = edit->getVideoNode(pair.inH().getEffectGraph());
    EXPECT_EQ(text_of(node->getName()), "Cross");
    EXPECT_EQ(dynamic_cast<DissolveWipeEffect*>(node.get()), nullptr);
    EXPECT_TRUE(edit->getED2CookieForED5Effect(pair.inH()).isDissolve());
    EXPECT_EQ(components_at(0, 3.5), "none");
}

TEST_F(Effects, AWipeTellsItsPatternAndDirection) {
    TransitionDescription wipe = dissolve(1, 1);
    wipe.kind = TransitionDescription::Kind::wipe;
    wipe.pattern = 70000;
    wipe.reversed = true;
    clip(0, 4);
    builder.add_transition(0, wipe);
    clip(0, 4);
    const CelEventPair pair = event(0, 1);
    const Cookie cookie = convertCookie(edit->getED2CookieForED5Effect(pair.inH()), cookie_edit, 255);
    EXPECT_TRUE(cookie.isEffect() && cookie.isWipe() && !cookie.isDissolve());
    EXPECT_EQ(cookie.wipeType(), 70000U);
    EXPECT_EQ(cookie.wipeDirection(), wipe_reversed);
    const auto node = pair.getEffectHandle();
    const auto& effect_node = dynamic_cast<DissolveWipeEffect&>(*node);
    EXPECT_EQ(effect_node.getPattern(), 70000);
    EXPECT_TRUE(effect_node.isReversed());
}

TEST_F(Effects, OtherKindsOfTransitionAreOnlyEffects) {
    TransitionDescription other = dissolve(1, 1), film = dissolve(1, 1);
    other.kind = TransitionDescription::Kind::other;
    film.kind = TransitionDescription::Kind::film_dissolve;
    clip(0, 4), builder.add_transition(0, other), clip(0, 4), builder.add_transition(0, film), clip(0, 4);
    const Cookie first = edit ? Cookie() : (event(0, 1), edit->getED2CookieForED5Effect(event(0, 1).inH()));
    EXPECT_TRUE(first.isEffect());
    EXPECT_FALSE(first.isWipe() || first.isDissolve() || first.isFilmDissolve());
    EXPECT_TRUE(edit->getED2CookieForED5Effect(event(0, 3).inH()).isFilmDissolve());
    EXPECT_EQ(edit->getED2CookieForED5Effect(event(0, 0).inH()).type, cookie_invalid);
}

TEST_F(Effects, TheIteratorWalksEveryEventOnce) {
    clip(0, 1), clip(0, 2), clip(0, 3);
    event(0, 0);
    std::vector<double> ends;
    for (CelIterator at(edit, 0); at.valid(); ++at)
        ends.push_back(at.endEditTime());
    EXPECT_EQ(ends, (std::vector<double>{1.0, 3.0, 6.0}));
    EXPECT_FALSE(CelIterator(edit, 7).valid());
    EXPECT_FALSE(CelIterator(EditPtr(), 0).valid());
}

TEST(Positions, AreEqualWithinABillionth) {
    EXPECT_TRUE(valEqualsVal(1.0, 1.0 + 5e-10));
    EXPECT_FALSE(valEqualsVal(1.0, 1.0 + 2e-9));
}
