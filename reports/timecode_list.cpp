#include "reports/timecode_list.h"

#include "base/code_text.h"
#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "cutlist/cutlist_options.h"
#include "host/edit.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/list_headings.h"
#include "reports/report_context.h"

#include <limits>

namespace {

constexpr int timecode_stops[] = {5, 20, 35, 50, 0};

constexpr char heads[] = "\tEdit IN\tSource IN\t        Roll\t  Shot name\n\t/OUT (excl)\t/OUT (excl)";

MediumRollMedium output_medium() {
    const ShotVideoMetadata& format = Qb::CurrentProject::getOutputImageFormat();
    return getMediumRollfromOutputDetails(format.scan_mode(), format.rate_info().frame_rate());
}

template <std::size_t N> void copy_parameter(char (&target)[N], const recdb& table, const char* name) {
    put_text(target, table.get_param_val(name));
}

/// Film frames of the edit as its timecode.
class EditTimecode {
public:
    explicit EditTimecode(const recdb& table) : label_(label_none, MediumRollIdent(1, 1)) {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        if (config_int("audio_cutlist_24P", 0, lowest, highest)) {
            start(table, "edit_24ptc_std", "edit_24ptc_start", medium_edit_24p);
        } else {
            start(table, "edit_vidtc_std", "edit_vidtc_start", output_medium());
        }
    }

    /// Good until the next call.
    const char* of(int frame) const {
        const int samples = frame_product(report_context().film_cvt->samples_per_frame(), frame);
        const double film = frames_.sample_to_posn(frames_.get_sample(samples));
        const double time = mPosn_Xlate(film, medium_film, &label_, translation_);
        return label_.get_string(label_.posn_to_sample(time));
    }

private:
    void start(const recdb& table, const char* kind_name, const char* start_name, MediumRollMedium medium) {
        char kind[12];
        char text[20];
        copy_parameter(kind, table, kind_name);
        copy_parameter(text, table, start_name);
        label_.set_MediumRoll(MediumRollIdent(medium, 1));
        label_.set_type(edlstr_to_label_type(kind));
        label_.set_start(text);
    }

    EditLabel label_;
    EditLabel frames_{report_context().film_label, MediumRollIdent(medium_film, 1)};
    MPosn_Xlate_Params translation_{Qb::frame_rate_unset, Qb::frame_rate_unset};
};

void print_event(report& out, const cut_report& cut, const EditTimecode& edit_time) {
    out.need_lines(2);
    out.print("%3d\t%s\t%s\t%12.12s\t20%s\n", cut.event, edit_time.of(cut.edit_in), cut.prim_tc.get_string(0),
              cut.src_reelid, toUTF8(cut.shot_name).c_str());
    out.print("\t%s\t%s\n\n", edit_time.of(cut.edit_out), cut.prim_tc.get_string(cut.prim_tc.end));
}

} // namespace

void print_timecode_assembly_list(report& out, recdb& table, LoggerHandle& logger) {
    const CutlistOptions& options = cutlist_options();
    say(logger, text_writing_timecodes);
    sort_by(table, {cf_event, -1});
    print_list_header(out, table, "                             TIMECODE ASSEMBLY LIST");
    out.tab_stops = timecode_stops;
    print_heads(out, heads);
    set_page_heading(out, table, 20, "   ASSEMBLY LIST     ", "\n\n", heads);

    const EditTimecode edit_time(table);
    for (unsigned index = 0; dbrecord* row = table.get_record(index); ++index) {
        cut_report cut;
        cut.load(*row, 0, options.chan_type, options.audio_opticals);
        if (cut.event == 0 || (cut.optical_record && cut.optical_error)) continue;
        print_event(out, cut, edit_time);
    }
    out.end_list("\nEnd of timecode assembly list");
}
