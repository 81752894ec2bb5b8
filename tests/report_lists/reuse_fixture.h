#pragma once
// A table in which film is used again, and the cases that a scan finds in it.

#include "reports/reuse_scan.h"
#include "tests/reports/list_fixture.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

/// Shot, roll, start and end of the overlap, missing key, kind, events.
using Cases = std::vector<std::array<std::string, 7>>;

inline Cases cases_of(const ReuseScan& scan) {
    Cases all;
    for (unsigned index = 0; index < scan.cases->get_num_records(); ++index) {
        const auto text = [&](unsigned field) { return std::string(scan.cases->getField(index, field).c_str()); };
        all.push_back({text(rf_shot_name), text(rf_cam_reel), text(rf_keycode_in), text(rf_keycode_out),
                       text(rf_keycode_missing), text(rf_labeltype), text(rf_event)});
    }
    return all;
}

/// A letter a record: its flag, or a point.
inline std::string flags_of(const recdb& table) {
    std::string flags;
    for (unsigned index = 0; index < table.get_num_records(); ++index) {
        const auto flag = table.getField(index, cf_flags);
        flags += flag.empty() ? "." : flag.c_str();
    }
    return flags;
}

class ReuseTest : public ListTest {
protected:
    ReuseTest() { add_header(); }
    ~ReuseTest() override { release_reuse_scan(); }

    /// The next event, of 32 frames.
    cut_s film(const std::string& name, const std::string& roll, const std::string& in, const std::string& out) {
        const int event = static_cast<int>(table.get_num_records()) + 1;
        cut_s cut = shot(event, event * 32, event * 32 + 32, name.c_str(), in.c_str(), out.c_str());
        put_text(cut.cam_reel, roll.c_str());
        return cut;
    }
    Cases cases() {
        scan = scan_reuse(table, logger);
        return cases_of(*scan);
    }
    std::string flags() const { return flags_of(table); }

    std::unique_ptr<ReuseScan> scan;
};
