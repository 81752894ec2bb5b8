#include "changelist/lists/list_section.h"

#include "changelist/changelist_options.h"
#include "reports/report.h"

#include <cstdio>

const ListHeads& chosen_heads(const ListLayouts& layouts) {
    const ChangelistOptions& options = changelist_options();
    if (options.use_scene_take) return options.show_edge_codes ? layouts.scene_take_and_keys : layouts.scene_take;
    return options.show_edge_codes ? layouts.name_and_keys : layouts.name;
}

void start_section(report& out, const char* title, const ListHeads& heads) {
    char lines[200];
    std::snprintf(lines, sizeof lines, "%s\n%s", heads.first, heads.second);
    out.tab_stops = heads.stops;
    out.print("\n\n\n\n\n\n");
    out.print("%s", title);
    out.print("%s", lines);
    out.plain_rule();
    out.print("\n");
}
