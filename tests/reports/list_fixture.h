#pragma once
// A list run on a table made in code: options and shared state fresh, the clock still, files in memory.

#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/report.h"
#include "reports/report_context.h"
#include "tests/support/environment.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_lines.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>

#include <string>

class ListTest : public testing::Test {
protected:
    ListTest() {
        cutlist_options() = CutlistOptions();
        options().chan_type = 1;
        report_context().mixed_standards = 0;
        set_film(static_cast<label_t>(10));
    }
    ~ListTest() override {
        cutlist_options() = CutlistOptions();
        report_context() = ReportContext();
        embedded::clear_host_settings();
    }

    static CutlistOptions& options() { return cutlist_options(); }

    static void set_film(label_t kind) {
        report_context().film_label = kind;
        report_context().film_cvt = get_static_label_cvt(kind);
    }

    static LabelPoint key(const char* text, int kind = 10) {
        LabelPoint point(0, static_cast<label_t>(kind));
        point.set_sample(text);
        return point;
    }

    /// An event of one shot on 35mm.
    static cut_s shot(int event, int edit_in, int edit_out, const char* name, const char* key_in, const char* key_out) {
        cut_s cut;
        cut.event = event;
        cut.track = 1;
        cut.edit_in = edit_in;
        cut.edit_out = edit_out;
        cut.shot_name = fromUTF8(name, -1);
        put_text(cut.cam_reel, "A001");
        cut.keycode_in = key(key_in);
        cut.keycode_out = key(key_out);
        return cut;
    }

    void add(const cut_s& cut) { cut.to_record(*table.get_record(static_cast<unsigned>(table.add_records(1)))); }

    void add_header() {
        table.add_param("edit_name", "Reel 1");
        table.add_param("project_name", "Harbour");
        table.add_param("edit_date", "1 January 2026 10:00:00");
        table.add_param("film label_std", "35mm-4p");
        table.add_param("mixed_kc_standard", "0");
    }

    /// What a printing operation writes.
    template <class Printer> std::string printed(Printer printer) {
        MemoryStream::Contents contents;
        {
            report out{Qb::Ptr<stream>(new MemoryStream(contents))};
            out.page_length = 60;
            out.top_margin = out.bottom_margin = 1;
            static constexpr int stops[] = {5, 16, 27, 37, 47, 67, 0};
            out.tab_stops = stops;
            printer(out);
        }
        return plain_lines(contents.bytes);
    }

    /// A list without the first-page heading, which the first rule closes.
    static std::string below_heading(const std::string& list) {
        const std::size_t rule = list.find("\n____");
        return list.substr(list.find('\n', rule + 1) + 1);
    }

    EnvironmentValue zone{"TZ", "UTC"};
    EnvironmentValue now{"SOURCE_DATE_EPOCH", "1000000000"};
    RecordingLogger logger;
    cutdb table{&logger};
};
