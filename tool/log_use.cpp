#include "tool/log_use.h"

#include "embedded/services.h"
#include "embedded/warning.h"
#include "formats/logs/log_reader.h"
#include "formats/logs/log_table.h"
#include "host/recdb.h"
#include "tool/open_logs.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <map>
#include <set>

namespace tool {
namespace {

/// What stands in place of the rolls of an event that has no row.
constexpr std::string_view no_row = "__NOSHOT";

/// Characters of a row's reel that are compared.
constexpr std::size_t reel_compared = 15;

using Names = std::set<std::string>;

std::string text_of(const dbrecord& record, int field) {
    const char* text = record.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

std::string upper_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string list_of(const Names& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + (name.empty() ? "none" : one_line(name));
    return list;
}

void add_standards(const EditPtr& edit, int chan, std::map<std::string, Names>& reels) {
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(chan);
    for (ce_handle handle = cel->get_start_ceh(); handle.valid(); handle.increment(ce_all)) {
        const ChannelEvent event = handle.get_channel_event();
        EditPtr source;
        if (!event.cookie.isEffect() && !event.cookie.isBlack()) source.i_open(event.cookie, edit_open_default);
        EditLabel* label = source ? source->getLabel(user_label_timecode, {1, 2}) : nullptr;
        if (label && label->is_valid())
            reels[source->getReelId({0, -1}).c_str()].insert(label_type_to_edlstr(label->type()));
    }
}

/// How the timecodes of each reel count.
std::map<std::string, Names> standards_of_reels(const EditPtr& edit, ChannelKind kind) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(kind), 0);
    std::map<std::string, Names> reels;
    for (const int chan : channels)
        add_standards(edit, chan, reels);
    return reels;
}

/// How the rows count in which a reel is looked for.
Names standards_of_rows(const std::vector<formats::LogRow>& rows, const std::string& reel) {
    Names standards;
    for (const formats::LogRow& row : rows) {
        const std::string own = upper_case(row[formats::LogField::reel].substr(0, reel_compared));
        if (row.start.is_useful() && upper_case(reel).compare(0, own.size(), own) == 0)
            standards.insert(label_type_to_edlstr(row.start.type()));
    }
    return standards;
}

} // namespace

void check_is_log_table(const std::string& path) {
    std::string bytes;
    if (!embedded::read_file(path, &bytes, nullptr)) throw JobError(path + ": couldn't be read");
    if (!formats::is_table(bytes))
        throw JobError(path + ": isn't a logging table; \"quillbrook log import\" makes one of logs");
    const std::string damage = embedded::fault_of_table(path);
    if (!damage.empty()) throw JobError(path + ": " + damage);
}

std::string fault_of_film(const std::string& path) {
    const recdb log(wide_path(path), INT_MAX, false);
    const char* header = log.get_param_val("film label_std");
    std::string film = header ? header : "";
    const int column = log.get_fieldnum("film label_std");
    const std::string of_first_row =
        column != -1 && log.get_num_records() != 0 ? text_of(*log.get_record(0), column) : "";
    if (!of_first_row.empty()) film = of_first_row;
    if (film.empty() || edlstr_to_label_type(film.c_str()) != label_none) return {};
    return path + ": \"" + one_line(film) + "\" of \"film label_std\" is no kind of film";
}

embedded::Warnings warnings_of_counting(const std::string& log, const EditPtr& edit, ChannelKind kind) {
    const std::vector<formats::LogRow> rows = formats::read_log(log).rows;
    embedded::Warnings warnings;
    for (const auto& [reel, standards] : standards_of_reels(edit, kind)) {
        const Names logged = standards_of_rows(rows, reel);
        const auto is_logged = [&logged = logged](const std::string& standard) { return logged.count(standard) != 0; };
        if (!logged.empty() && !std::all_of(standards.begin(), standards.end(), is_logged))
            warnings.push_back(log + ": reel \"" + one_line(reel) + "\" counts " + list_of(logged) + " there and " +
                               list_of(standards) + " in the edit; numbers found that way are wrong");
    }
    return warnings;
}

embedded::Warnings warnings_of_missing_rows(const std::string& log, const std::string& path) {
    const recdb table(wide_path(path), INT_MAX, false);
    if (!table.get_valid()) return {};
    const int event = table.get_fieldnum("event"), roll = table.get_fieldnum("cam_reel"),
              reel = table.get_fieldnum("src_reelid");
    int events = 0, missing = 0;
    Names reels;
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        const dbrecord& record = *table.get_record(i);
        if (text_of(record, event) == "0") continue;
        ++events;
        if (text_of(record, roll) != no_row) continue;
        ++missing;
        reels.insert(text_of(record, reel));
    }
    if (missing == 0) return {};
    return {log + ": no row for " + std::to_string(missing) + " of " + std::to_string(events) +
            " events; reels: " + list_of(reels)};
}

} // namespace tool
