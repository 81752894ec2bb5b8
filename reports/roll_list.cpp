#include "reports/roll_list.h"

#include "base/messages.h"
#include "reports/cutdb.h"
#include "reports/list_headings.h"

void print_roll_list(report& out, recdb& table, LoggerHandle& logger) {
    say(logger, text_writing_rolls);
    print_list_header(out, table, "                               LIST OF ROLLS USED");
    out.print("\n");
    table.tag_all_different(cf_cam_reel);
    table.set_show_tags_only(1);
    for (unsigned index = 0; index < table.get_num_records(); ++index) {
        const LightweightString<char> roll = table.getField(index, cf_cam_reel);
        if (is_real_reel(roll.c_str())) out.print("     %-30.30s\n", roll.c_str());
    }
    out.end_list("\nEnd of list of rolls used");
    table.set_show_tags_only(0);
}
