// What stands above all lists of a change run.

#include "base/frame_math.h"
#include "changelist/change_reports.h"
#include "changelist/changelist_options.h"
#include "host/edit.h"
#include "quillbrook/logging_tables.h"
#include "reports/report.h"

#include <algorithm>
#include <string_view>

namespace {

/// The next number of a dotted version.
std::string_view take_number(std::string_view& version) {
    const std::string_view number = version.substr(0, version.find('.'));
    version.remove_prefix(std::min(number.size() + 1, version.size()));
    return number;
}

void print_version(report& out) {
    std::string_view rest = filmDllVersionStr();
    const std::string_view major = take_number(rest);
    const std::string_view minor = take_number(rest);
    out.print("              Version %.*s.%.*s (quillbrook %s)\n", static_cast<int>(major.size()), major.data(),
              static_cast<int>(minor.size()), minor.data(), filmDllVersionStr());
}

/// Empty where the edit can't be opened.
LightweightString<char> name_of_edit(const Cookie& cookie) {
    EditPtr edit;
    edit.i_open(cookie, edit_open_default);
    if (!edit) return {};
    const LightweightString<char> name = toUTF8(edit->getName());
    edit.i_close();
    return name;
}

} // namespace

void write_banner(report& out) {
    const ChangelistOptions& options = changelist_options();
    out.print("\n\n          QUILLBROOK CHANGE LIST\n");
    print_version(out);
    out.print("              Date: |d\n\n");
    const LightweightString<char> old_name = name_of_edit(options.old_cookie);
    const LightweightString<char> new_name = name_of_edit(options.new_cookie);
    out.print("          Old Sequence: %s  \n", old_name.c_str());
    out.print("          New Sequence: %s  \n", new_name.c_str());
    out.print("          Track: %s%d\n", options.chan_type == picture_channel ? "V" : "A",
              frame_sum(static_cast<int>(options.chan_num), 1));
}
