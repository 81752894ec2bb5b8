#include "reports/reuse_scan.h"

#include "base/code_text.h"
#include "base/format_text.h"
#include "base/frame_math.h"
#include "base/lasting.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "base/text_columns.h"
#include "cutlist/cutlist_options.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/film_overlap.h"
#include "reports/report_context.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>

namespace {

constexpr const char* column_names[] = {"shot_name", "cam_reel", "keycode_in", "keycode_out", "keycode_missing",
                                        "labeltype", "count",    "further",    "event"};

const DBFieldDesc* reuse_columns() {
    static const Lasting<TextColumns<std::size(column_names)>> schema(column_names);
    return schema.value().columns;
}

constexpr int unset_frame = 100000000;

bool is_eligible(const dbrecord& row) {
    if (number_in(row, cf_optical_record) == 1) return false;
    if (number_in(row, cf_track) == 1) return true;
    return !cutlist_options().pull_match_assembly && number_in(row, cf_optical_ref) != 0;
}

/// Texts that begin with the same characters, as many as a roll's prefix has, are of one roll.
bool is_same_roll(const char* a, const char* b) {
    const int prefix = report_context().film_cvt->prefix_length();
    return std::strncmp(a, b, static_cast<std::size_t>(prefix)) == 0;
}

FilmPiece load_piece(const recdb& table, unsigned index) {
    const CutlistOptions& options = cutlist_options();
    cut_report cut;
    cut.load_film(*table.get_record(index), options.pull_match_assembly, options.chan_type, options.audio_opticals);
    return {index, cut.cut_key_in, cut.cut_key_out.sample, cut.speed, cut.keycode_missing};
}

ListText text_at(LabelPoint point, int sample) {
    point.set_sample(sample);
    return point_text(point);
}

/// The overlap of two pieces, from its first frame to its last.
void add_case(ReuseScan& scan, const FilmPiece& later, const FilmPiece& earlier) {
    recdb& table = *scan.table;
    const int last_frame = whole_part(later.in.cvt()->samples_per_frame() * earlier.speed);
    const int low = std::max(earlier.in.sample, later.in.sample);
    const int high = frame_difference(std::min(earlier.out, later.out), last_frame);
    table.set_field(later.record, cf_flags, "T");
    table.set_field(earlier.record, cf_flags, "T");

    const dbrecord& wanted_again = *table.get_record(later.record);
    char events[16];
    format_text(events, "%s/%s", text_in(wanted_again, cf_event), text_in(*table.get_record(earlier.record), cf_event));
    dbrecord& row = *scan.cases->get_record(static_cast<unsigned>(scan.cases->add_records(1)));
    row.set_field(rf_event, events, true);
    row.set_field(rf_cam_reel, text_in(wanted_again, cf_cam_reel), true);
    row.set_field(rf_shot_name, text_in(wanted_again, cf_shot_name), true);
    row.set_field(rf_keycode_in, text_at(later.in, low).text, true);
    row.set_field(rf_keycode_out, text_at(later.in, high).text, true);
    row.set_field(rf_keycode_missing, later.keycode_missing);
    row.set_field(rf_labeltype, label_type_to_edlstr(later.in.type()), true);
    ++scan.reuse_count;
    ++scan.case_count;
}

/// The eligible records of the roll that begins at `first`.
Vector<FilmPiece> pieces_of_roll(ReuseScan& scan, unsigned first) {
    const recdb& table = *scan.table;
    const LightweightString<char> roll = table.getField(first, cf_keycode_in);
    const unsigned count = table.get_num_records();
    Vector<FilmPiece> pieces;
    for (unsigned index = first; index < count; ++index) {
        const dbrecord& row = *table.get_record(index);
        if (!is_eligible(row)) continue;
        if (!is_same_roll(text_in(row, cf_keycode_in), roll.c_str())) break;
        scan.note_range(index);
        pieces.push_back(load_piece(table, index));
    }
    return pieces;
}

void scan_roll(ReuseScan& scan, unsigned first) {
    scan.reset();
    const Vector<FilmPiece> pieces = pieces_of_roll(scan, first);
    const Vector<std::uint32_t> overlaps = first_overlaps(pieces, cutlist_options().butt);
    for (std::size_t place = pieces.size(); place-- > 0;) {
        if (overlaps[place] != no_piece) add_case(scan, pieces[place], pieces[overlaps[place]]);
    }
}

bool starts_roll(const dbrecord& row, const char* previous) {
    return is_real_reel(text_in(row, cf_cam_reel)) && is_eligible(row) &&
           !is_same_roll(text_in(row, cf_keycode_in), previous);
}

/// The frame of a key number, read as one of the film of the run.
int film_frame(const recdb& table, unsigned index, cutdb_field field) {
    char text[20] = "";
    table.get_record(index)->in_field(field, text, sizeof text - 1);
    LabelPoint point(0, report_context().film_cvt);
    point.set_sample(text);
    return point.sample / point.cvt()->samples_per_frame();
}

} // namespace

ReuseScan::ReuseScan(recdb& scanned, LoggerHandle& log)
    : table(&scanned), cases(new recdb(reuse_columns())), logger(&log) {
    reset();
}

void ReuseScan::reset() {
    last_frame = 0;
    first_frame = frame_span = unset_frame;
}

void ReuseScan::note_range(unsigned index) {
    int first = film_frame(*table, index, cf_keycode_in);
    const int last = film_frame(*table, index, cf_keycode_out);
    if (first < 0) {
        say(*logger, text_key_below_zero, level_left_out);
        return;
    }
    if (first < first_frame) {
        first_frame = first;
        frame_span = frame_difference(last_frame, first);
    } else {
        first = first_frame;
    }
    if (last > last_frame) {
        last_frame = last;
        frame_span = frame_difference(last, first);
    }
}

std::unique_ptr<ReuseScan> scan_reuse(recdb& table, LoggerHandle& logger) {
    say(logger, text_scanning_for_reuse);
    sort_by(table, {cf_keycode_in, cf_keycode_out, -1});
    auto scan = std::make_unique<ReuseScan>(table, logger);
    const unsigned count = table.get_num_records();
    LightweightString<char> previous;
    for (unsigned index = 0; index < count; ++index) {
        if (!starts_roll(*table.get_record(index), previous.c_str())) continue;
        if (index + 1 == count) break; // nothing left to compare with
        previous = table.getField(index, cf_keycode_in);
        scan_roll(*scan, index);
    }
    sort_by(*scan->cases, {rf_cam_reel, rf_keycode_in, -1});
    return scan;
}

ReuseScan& run_reuse_scan(recdb& table, LoggerHandle& logger) {
    ReuseScan*& scan = report_context().reuse_scan;
    if (!scan) scan = scan_reuse(table, logger).release();
    return *scan;
}

void release_reuse_scan() {
    delete report_context().reuse_scan;
    report_context().reuse_scan = nullptr;
}
