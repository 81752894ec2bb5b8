// Positions carried from one medium to another.
//
// Every medium but film and ink counts seconds; those two count film frames.

#include "embedded/positions.h"

#include "embedded/clamped.h"
#include "embedded/label_kinds.h"
#include "embedded/rates.h"
#include "host/labels.h"

namespace {

using embedded::film_rate_of_edit;

constexpr double rate_without_edit = 24.0;

bool counts_film(MediumRollMedium medium) { return medium == medium_film || medium == medium_ink; }

double translate(double posn, MediumRollMedium from, MediumRollMedium to, double film_rate) {
    if (counts_film(from) == counts_film(to)) return posn;
    return counts_film(to) ? embedded::floor_of_position(posn * film_rate) : posn / film_rate;
}

/// Film frames a second by the steps of a timecode label.
double film_rate_of_label(const EditLabel& label) {
    const embedded::TimecodeBase* base = embedded::timecode_base(label.type());
    if (!base || !(label.posn_step > 0.0)) return rate_without_edit;
    return embedded::film_share(base->count).to_double() / label.posn_step;
}

/// The rate of the side that counts seconds, where it is set, then that of the other side, then the label's.
double film_rate_of_params(const MPosn_Xlate_Params& params, MediumRollMedium from, const EditLabel& to) {
    const Qb::FrameRate seconds_side = counts_film(from) ? params.to() : params.from();
    const Qb::FrameRate film_side = counts_film(from) ? params.from() : params.to();
    for (const Qb::FrameRate code : {seconds_side, film_side}) {
        if (const embedded::RateInfo* rate = embedded::rate_info(code)) {
            return embedded::film_rate_of(*rate).to_double();
        }
    }
    return film_rate_of_label(to);
}

} // namespace

double mPosn_Xlate(double posn, MediumRollMedium from, MediumRollMedium to, const EditPtr& edit) {
    if (counts_film(from) == counts_film(to)) return posn;
    const double film_rate = film_rate_of_edit(edit).to_double();
    return translate(posn, from, to, film_rate > 0.0 ? film_rate : rate_without_edit);
}

double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const EditPtr& edit) {
    return to ? mPosn_Xlate(posn, from, to->get_MediumRoll().medium, edit) : posn;
}

double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const MPosn_Xlate_Params& params) {
    if (!to) return posn;
    return translate(posn, from, to->get_MediumRoll().medium, film_rate_of_params(params, from, *to));
}
