#include "film/source_facts.h"

#include "embedded/edit_facts.h"
#include "embedded/label_kinds.h"
#include "embedded/rates.h"
#include "film/edit_walk.h"

#include <cmath>

namespace film {
namespace {

std::string field_of(const EditPtr& source, const char* key) {
    strp_field field;
    return read_edit_field(source.get(), key, field) == 0 ? static_cast<const char*>(field) : "";
}

std::string reel_of(const EditPtr& source, int medium, int roll) {
    return source->getReelId(MediumRollIdent(medium, roll)).c_str();
}

LabelPoint start_of(const EditPtr& source, UserLabelType kind, const MediumRollIdent& ident) {
    const EditLabel* label = source->getLabel(kind, ident);
    return label->is_valid() ? label->get_label_point(0) : LabelPoint();
}

/// Timecode steps by the whole number that it counts, by 1000/1001 of that, or by that of the edit with which it goes
/// frame for frame.
Fraction rate_of_steps(label_t kind, double seconds) {
    const embedded::TimecodeBase* base = embedded::timecode_base(kind);
    if (!base) return 1;
    constexpr double tolerance = 1e-6;
    for (const Fraction rate : {Fraction(base->count), Fraction(base->count * 1000, 1001)})
        if (std::abs(rate.to_double() * seconds - 1.0) < tolerance) return rate;
    const embedded::RateInfo* listed = seconds > 0.0 ? embedded::nearest_rate(1.0 / seconds) : nullptr;
    if (listed && std::abs(listed->rate().to_double() * seconds - 1.0) < tolerance) return listed->rate();
    return seconds > 0.0 ? Fraction(1) / Fraction::exactly(seconds) : Fraction(base->count);
}

Rolls rolls_of(const EditPtr& source, int film_reel) {
    constexpr int camera_medium = 2, lab_medium = 10, daily_medium = 11;
    Rolls rolls;
    rolls.camera = reel_of(source, camera_medium, 1);
    rolls.listed = film_reel ? reel_of(source, film_reel, 1) : rolls.camera;
    rolls.lab = reel_of(source, lab_medium, 1);
    rolls.daily = reel_of(source, daily_medium, 1);
    rolls.tape = reel_of(source, medium_source_picture, 2);
    rolls.sound = reel_of(source, medium_sound, 3);
    rolls.timecode_24 = reel_of(source, medium_source_24p, 1);
    return rolls;
}

void read_source(const Cookie& cookie, int film_reel, SourceFacts& facts) {
    EditPtr source;
    source.i_open(cookie, edit_open_default);
    if (!source) return;
    facts.opens = true;
    facts.rendered = RenderHistory::isRendered(cookie);
    facts.name = toUTF8(source->getName()).c_str();
    facts.scene = field_of(source, "scene");
    facts.take = field_of(source, "take");
    facts.rolls = rolls_of(source, film_reel);
    facts.timecode = start_of(source, user_label_timecode, {medium_source_picture, 2});
    facts.key = start_of(source, user_label_key, {medium_source_picture, 1});
    facts.ink = start_of(source, user_label_ink, {medium_source_picture, 1});
    const double step = source->getLabel(user_label_timecode, {medium_source_picture, 2})->posn_step;
    facts.timecode_rate = rate_of_steps(facts.timecode.type(), step);
    facts.film_rate = film_rate(source);
    facts.start_strip = Fraction::exactly(source->getStartStripTime());
    facts.length = embedded::length_of_source(source);
}

} // namespace

Rolls rolls_of(const LogRow& row, const std::string& tape, int film_reel) {
    const struct {
        int medium;
        const std::string& roll;
    } choices[] = {{2, row.camera}, {3, row.reel}, {4, row.sound}, {10, row.lab}, {11, row.daily}};
    Rolls rolls{row.reel, row.camera, row.lab, row.daily, tape, row.sound, row.timecode_24};
    for (const auto& choice : choices)
        if (choice.medium == film_reel && !choice.roll.empty()) rolls.listed = choice.roll;
    return rolls;
}

// A source's cookie tells it from all others by a text's hash and a serial number.
const SourceFacts& SourceStore::of(const Cookie& cookie) {
    const std::uint64_t key = (std::uint64_t{cookie.identity[0]} << 32U) | cookie.identity[1];
    const auto [known, fresh] = known_.try_emplace(key);
    if (fresh) read_source(cookie, film_reel_, known->second);
    return known->second;
}

} // namespace film
