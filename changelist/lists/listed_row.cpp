#include "changelist/lists/listed_row.h"

#include "changelist/changelist_options.h"
#include "reports/report.h"

namespace {

constexpr std::size_t shown_name_chars = 16;

LightweightString<char> shown_name(const dbrecord& row) {
    return toUTF8(LightweightString<wchar_t>(shot_name_field(row).view().substr(0, shown_name_chars)));
}

} // namespace

void ListedRow::print_shot(report& out) const {
    if (changelist_options().use_scene_take) {
        out.print("\t %.16s\t %.16s", text(hf_scene), text(hf_take));
    } else {
        out.print("\t %s", shown_name(row_).c_str());
    }
}
