#include "changelist/lists/change_units.h"

#include "base/format_text.h"
#include "base/frame_math.h"
#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "host/fixed_text.h"

#include <cstring>

namespace {

/// What stands ahead of a number.
struct Leads {
    const char* length;
    const char* below;
    const char* zero;
    const char* above;
};

// By unit.
constexpr Leads unit_leads[] = {
    {"    ", "      - ", "        ", "      + "},
    {"    ", "      -", "       ", "      +"},
    {"", "  -", "   ", "  +"},
};

const Leads& leads_of(LengthUnit unit) { return unit_leads[static_cast<int>(unit)]; }

const char* sign_lead(const Leads& leads, int frames) {
    if (frames == 0) return leads.zero;
    return frames < 0 ? leads.below : leads.above;
}

EditLabel counted_from_zero(EditLabel label) {
    label.set_start(0);
    return label;
}

} // namespace

LengthText::LengthText(const char* lead, const char* number) {
    std::size_t used = 0;
    for (const char* part : {lead, number}) {
        put_text(text + used, sizeof text - used, part);
        used += std::strlen(text + used);
    }
}

LengthUnit list_unit() {
    const ChangelistOptions& options = changelist_options();
    if (options.units_timecode == 1) return LengthUnit::timecode;
    return options.units_feet == 1 ? LengthUnit::feet : LengthUnit::frames;
}

ChangeUnits::ChangeUnits(label_t film_std)
    : unit_(list_unit()), seq_label_(change_run().old_side.reel_label[0]), zero_label_(counted_from_zero(seq_label_)),
      foot_kind_(label_t_to_foot_label_t(film_std)) {}

LengthText ChangeUnits::length(int frames) const { return behind(leads_of(unit_).length, frames); }

LengthText ChangeUnits::signed_length(int frames) const {
    return behind(sign_lead(leads_of(unit_), frames), magnitude(frames));
}

LengthText ChangeUnits::behind(const char* lead, int frames) const {
    if (unit_ == LengthUnit::timecode) return {lead, zero_label_.get_string(frames)};
    if (unit_ == LengthUnit::feet) return {lead, foot_text(foot_kind_, frames).text};
    char digits[12];
    format_text(digits, "%07d", frames);
    return {lead, digits};
}

ListText foot_text(label_t foot_kind, int frames) {
    LabelPoint point(0, foot_kind);
    point.set_sample(frame_product(point.cvt()->samples_per_frame(), frames));
    return point_text(point);
}

int magnitude(int frames) { return frames < 0 ? frame_difference(0, frames) : frames; }
