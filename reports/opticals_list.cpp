#include "reports/opticals_list.h"

#include "base/code_text.h"
#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "cutlist/cutlist_options.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/list_headings.h"
#include "reports/optical_drawing.h"
#include "reports/report_context.h"

#include <algorithm>

namespace {

constexpr char layer_rule[] = "\n-------------------------------------------------------------------------------\n";

bool is_master(const dbrecord& row) { return number_in(row, cf_optical_record) != 0; }

bool is_layered(const cut_s& master) { return master.optical_layer_count > 0; }

/// Where the components of each optical begin in the sorted table.
class ComponentIndex {
public:
    explicit ComponentIndex(const recdb& table) {
        for (unsigned index = 0; const dbrecord* row = table.get_record(index); ++index) {
            if (!is_master(*row)) entries_.push_back({number_in(*row, cf_optical_ref), index});
        }
        std::sort(entries_.begin(), entries_.end());
    }

    /// False when the optical has none.
    bool find(int optical, unsigned& index) const {
        const auto found = std::lower_bound(entries_.begin(), entries_.end(), Entry{optical, 0});
        if (found == entries_.end() || found->optical != optical) return false;
        index = found->index;
        return true;
    }

private:
    struct Entry {
        int optical;
        unsigned index;

        bool operator<(const Entry& other) const {
            return optical != other.optical ? optical < other.optical : index < other.index;
        }
    };

    Vector<Entry> entries_;
};

/// Draws the components of one optical, layer below layer.
class OpticalDrawing {
public:
    OpticalDrawing(report& out, const recdb& table, const cut_s& master) : out_(out), table_(table), master_(master) {}

    void draw(unsigned first) {
        for (unsigned index = first; dbrecord* row = table_.get_record(index); ++index) {
            if (is_master(*row) || number_in(*row, cf_optical_ref) != master_.optical_ref) return;
            cut_report cut;
            load(cut, *row);
            if (!draw_component(cut, table_.get_record(index + 1))) return;
        }
    }

private:
    static void load(cut_report& cut, dbrecord& row) {
        cut.load_listed(row, 0, cutlist_options().chan_type, cutlist_options().audio_opticals);
    }
    static bool on_same_track(const cut_report& cut, const cut_report& next) {
        return next.optical_record == 0 && next.optical_ref == cut.optical_ref && next.track == cut.track;
    }

    /// False when the drawing ends here.
    bool draw_component(cut_report& cut, dbrecord* next_row) {
        if (cut.track == prev_track_) {
            const bool drawn_as_incoming = cut.fx_op_in[0] && !cut.fx_op_out[0];
            if (drawn_as_incoming) return true;
            first_on_layer_ = 0;
        } else {
            begin_layer(cut);
        }
        prev_track_ = cut.track;

        cut_report next;
        if (next_row) load(next, *next_row);
        const bool goes_on = next_row && on_same_track(cut, next);
        if (!cut.fx_op_out[0]) {
            draw_shot(cut, goes_on);
            return true;
        }
        if (!next_row) return false;
        if (goes_on && next.fx_op_in[0]) {
            print_optical_transition(out_, cut, next, side_, left_end_, right_end_, first_on_layer_, layer_);
            return true;
        }
        // Its transition leads nowhere.
        if (cut.track == 1) return false;
        draw_shot(cut, false);
        return true;
    }

    void begin_layer(const cut_report& cut) {
        if (is_layered(master_)) {
            print_layer_head();
            side_ = 0;
        } else {
            layer_ = 1;
        }
        left_end_ = right_end_ = cut.edit_in;
        first_on_layer_ = 1;
    }

    void print_layer_head() {
        if (layer_++ != 0) out_.print(layer_rule);
        out_.need_lines(10);
        out_.print("                             -- Layer  %d  of  %d --\n", layer_, master_.optical_layer_count);
    }

    void draw_shot(cut_report& cut, bool more_on_track) {
        print_optical_shot(out_, cut, side_, left_end_, right_end_, first_on_layer_, layer_, more_on_track);
    }

    report& out_;
    const recdb& table_;
    const cut_s& master_;
    int prev_track_ = 0;
    int side_ = 0;
    int left_end_ = 0;
    int right_end_ = 0;
    int first_on_layer_ = 0;
    int layer_ = 0;
};

void print_head_line(report& out, const cut_s& master) {
    out.print("OPTICAL#%d", master.optical_ref);
    if (!is_layered(master)) out.print("   <%.30s>", master.optical_name);
    if (master.event >= 1) {
        out.print(is_layered(master) ? "      Assembly event %d" : "    Assembly event %d", master.event);
    }
    out.print("\n");
}

void print_range(report& out, const cut_s& master) {
    const char* const unit = cutlist_options().edit_units == 1 ? "frame" : "footage";
    out.print("      begin %s: %s   end %s: %s   frame length: %d\n", unit, position_text(master.optical_in).text, unit,
              position_text(frame_difference(master.optical_out, 1)).text,
              frame_difference(master.optical_out, master.optical_in));
}

// Footage names the effect's last frame, a count of frames the one behind it.
void print_effect(report& out, const cut_s& effect) {
    const bool in_frames = cutlist_options().edit_units == 1;
    const int end = in_frames ? effect.edit_out : frame_difference(effect.edit_out, 1);
    out.print("           <%.30s>\n", effect.optical_name);
    out.print("           FX start: %s        FX end: %s      FX length: %d\n", position_text(effect.edit_in).text,
              position_text(end).text, frame_difference(effect.edit_out, effect.edit_in));
}

/// The effects of a layered optical, one a master; the result is the index behind the last.
unsigned print_effects(report& out, const recdb& table, const cut_s& master, unsigned index) {
    print_effect(out, master);
    for (; dbrecord* row = table.get_record(index); ++index) {
        if (!is_master(*row) || number_in(*row, cf_optical_ref) != master.optical_ref) break;
        cut_s effect;
        effect.read_listed(*row);
        print_effect(out, effect);
    }
    return index;
}

void print_error(report& out, const char* reason) {
    out.print("\n");
    out.print("     The description of this optical is in error\n");
    out.print("%s", reason);
    out.print("     - Please manually review its details here and in the assembly list\n");
}

void print_description(report& out, const recdb& table, const ComponentIndex& components, const cut_s& master) {
    unsigned first = 0;
    if (master.optical_error) {
        print_error(out, "     - possibly because it overlaps with another optical\n");
    } else if (!components.find(master.optical_ref, first)) {
        print_error(out, "     - there appear to be no components\n");
    } else {
        OpticalDrawing(out, table, master).draw(first);
        if (is_layered(master)) out.print(layer_rule);
    }
}

/// The result is the index behind the masters of this optical.
unsigned print_optical(report& out, const recdb& table, const ComponentIndex& components, unsigned index) {
    cut_s master;
    master.read_listed(*table.get_record(index++));
    out.need_lines(22);
    out.print("\n");
    print_head_line(out, master);
    print_range(out, master);
    if (is_layered(master)) index = print_effects(out, table, master, index);
    out.print("______________________________________________________________________________\n");
    print_description(out, table, components, master);
    out.rule();
    if (cutlist_options().one_page_optical) out.new_page();
    return index;
}

} // namespace

void print_opticals_list(report& out, recdb& table, LoggerHandle& logger) {
    say(logger, text_writing_opticals);
    sort_by(table, {cf_optical_record, cf_optical_ref, cf_track, cf_edit_in, -1});
    print_list_header(out, table, "                                 OPTICALS LIST");
    set_page_heading(out, table, 20, "   OPTICALS LIST     ", "\n", "");

    const ComponentIndex components(table);
    bool any = false;
    for (unsigned index = 0; const dbrecord* row = table.get_record(index);) {
        if (is_master(*row)) {
            index = print_optical(out, table, components, index);
            any = true;
        } else {
            ++index;
        }
    }
    if (!any) out.print("The reel contains no opticals\n\f");
}
