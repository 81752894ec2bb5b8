#include "cutlist/upper_tracks.h"

#include "host/text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"

#include <algorithm>

namespace {

constexpr int mask_bits = 32;

/// What the search needs of a row.
struct row_extent {
    unsigned row;
    int track;
    int edit_in;
    int edit_out;
    int latest_out; ///< of this row and those of the track before it
};

// In table order, which is by track and then by edit position.
Vector<row_extent> upper_cuts(const cutdb& db) {
    Vector<row_extent> cuts;
    const unsigned rows = db.get_num_records();
    for (unsigned row = 0; row < rows; ++row) {
        const dbrecord& record = *db.get_record(row);
        const int track = number_in(record, cf_track);
        if (number_in(record, cf_optical_record) != 0 || track <= 1) continue;
        const int out = number_in(record, cf_edit_out);
        const bool same_track = !cuts.empty() && cuts.back().track == track;
        const int latest = same_track ? std::max(cuts.back().latest_out, out) : out;
        cuts.push_back({row, track, number_in(record, cf_edit_in), out, latest});
    }
    return cuts;
}

void give_reference(cutdb& db, unsigned index, int ref) {
    dbrecord& row = *db.get_record(index);
    rewrite_record(row);
    row.set_field(cf_optical_ref, ref);
}

void assign_under(cutdb& db, const Vector<row_extent>& cuts, const cut_s& optical) {
    const auto tracks = static_cast<std::uint32_t>(optical.optical_tracks);
    auto track_begin = cuts.begin();
    while (track_begin != cuts.end()) {
        const int track = track_begin->track;
        const auto track_end =
            std::partition_point(track_begin, cuts.end(), [&](const row_extent& c) { return c.track == track; });
        if (track <= mask_bits && (tracks >> (track - 1) & 1U) != 0) {
            auto cut = std::partition_point(track_begin, track_end,
                                            [&](const row_extent& c) { return c.latest_out <= optical.edit_in; });
            for (; cut != track_end && cut->edit_in < optical.edit_out; ++cut)
                if (cut->edit_out > optical.edit_in) give_reference(db, cut->row, optical.optical_ref);
        }
        track_begin = track_end;
    }
}

} // namespace

void assign_upper_tracks(cutdb& db) {
    const Vector<row_extent> cuts = upper_cuts(db);
    if (cuts.empty()) return;
    const unsigned rows = db.get_num_records();
    for (unsigned row = 0; row < rows; ++row) {
        if (number_in(*db.get_record(row), cf_optical_record) == 0) continue;
        cut_s optical;
        optical.from_record(*db.get_record(row));
        assign_under(db, cuts, optical);
    }
}
