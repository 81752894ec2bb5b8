#include "reports/report_context.h"

#include "base/format_text.h"
#include "base/frame_math.h"
#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "host/recdb.h"

#include <string_view>

namespace {

bool in_frames() { return cutlist_options().edit_units == 1; }

} // namespace

ReportContext& report_context() {
    static ReportContext context;
    return context;
}

void take_film_standard(const recdb& table) {
    ReportContext& context = report_context();
    const char* standard = table.get_param_val("film label_std");
    if (!standard) standard = "";
    context.film_label = edlstr_to_label_type(standard, user_label_key);
    context.ink_label = edlstr_to_label_type(standard, user_label_ink);

    const char* mixed = table.get_param_val("mixed_kc_standard");
    if (mixed && std::string_view(mixed) == "1") context.mixed_standards = cutlist_options().edit_units = 1;
}

// A standard without feet is listed in frames.
void choose_unit() {
    ReportContext& context = report_context();
    context.film_cvt = get_static_label_cvt(context.film_label);
    context.ink_cvt = get_static_label_cvt(context.ink_label);
    context.frame_label = EditLabel(label_t_to_foot_label_t(context.film_label), MediumRollIdent(medium_film, 1));
    const label_t feet = context.frame_label.type();
    if (feet != label_none && feet != label_frames) return;
    context.frame_label.set_type(context.film_label);
    cutlist_options().edit_units = 1;
}

const char* format_name() {
    const ReportContext& context = report_context();
    return context.mixed_standards ? "-- Mixed Edgecode Format --" : edgecode_name(context.film_cvt->label_type());
}

ListText footage(int frame) {
    LabelPoint point(0, label_t_to_foot_label_t(report_context().film_label));
    point.set_sample(frame_product(point.cvt()->samples_per_frame(), frame));
    return point_text(point);
}

ListText position_text(int frame) {
    if (!in_frames()) return footage(frame);
    ListText out;
    format_text(out.text, " %6.6d", frame);
    return out;
}

ListText length_text(int frames) {
    ListText out;
    if (in_frames()) {
        format_text(out.text, " %6.1d", frames);
    } else {
        put_text(out.text, footage_text(footage(frames).text));
    }
    return out;
}
