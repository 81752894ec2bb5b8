#include "tool/log_use.h"

#include "embedded/services.h"
#include "formats/log_reader.h"
#include "formats/log_table.h"
#include "host/recdb.h"
#include "tool/open_logs.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <climits>
#include <set>

namespace tool {
namespace {

/// What stands in place of the rolls of an event that has no row.
constexpr std::string_view no_row = "__NOSHOT";

using Standards = std::set<std::string>;

std::string text_of(const dbrecord& record, int field) {
    const char* text = record.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

struct Use {
    int events = 0, without_row = 0;
    std::set<std::string> reels_without_row;
    Standards standards; ///< of the events that have a row
};

Use use_of_log(const recdb& table) {
    const int event = table.get_fieldnum("event"), roll = table.get_fieldnum("cam_reel"),
              reel = table.get_fieldnum("src_reelid"), standard = table.get_fieldnum("prim_tc_std");
    Use use;
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        const dbrecord& record = *table.get_record(i);
        if (text_of(record, event) == "0") continue;
        ++use.events;
        if (text_of(record, roll) == no_row) {
            ++use.without_row;
            use.reels_without_row.insert(text_of(record, reel));
        }
        if (const std::string text = text_of(record, standard); !text.empty()) use.standards.insert(text);
    }
    return use;
}

Standards standards_of_rows(const std::string& log) {
    Standards standards;
    for (const formats::LogRow& row : formats::read_log(log).rows)
        if (row.start.is_useful()) standards.insert(label_type_to_edlstr(row.start.type()));
    return standards;
}

std::string standard_of_edit(const recdb& table) {
    const char* text = table.get_param_val("edit label_std");
    return text ? label_type_to_edlstr(TvStd_to_label_type(edlstr_to_tv_standard(text))) : "";
}

std::string list_of(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + (name.empty() ? "none" : one_line(name));
    return list;
}

bool share_one(const Standards& a, const Standards& b) {
    return std::any_of(a.begin(), a.end(), [&b](const std::string& standard) { return b.count(standard) != 0; });
}

} // namespace

void check_is_log_table(const std::string& path) {
    std::string bytes;
    if (!embedded::read_file(path, &bytes, nullptr)) throw JobError(path + ": couldn't be read");
    if (!formats::is_table(bytes))
        throw JobError(path + ": isn't a logging table; \"quillbrook log import\" makes one of logs");
}

std::vector<std::string> warnings_of_log(const std::string& log, const std::string& path) {
    const recdb table(wide_path(path), INT_MAX, false);
    if (!table.get_valid()) return {};
    const Use use = use_of_log(table);
    Standards own = use.standards;
    if (own.empty()) own.insert(standard_of_edit(table));
    std::vector<std::string> warnings;
    const Standards rows = standards_of_rows(log);
    if (!rows.empty() && !share_one(own, rows))
        warnings.push_back(log + ": its timecodes count " + list_of(rows) + ", the edit's " + list_of(own) +
                           "; numbers found that way are wrong");
    if (use.without_row > 0)
        warnings.push_back(log + ": no row for " + std::to_string(use.without_row) + " of " +
                           std::to_string(use.events) + " events; reels: " + list_of(use.reels_without_row));
    return warnings;
}

} // namespace tool
