// All commands, and what the help says above and below them.

#include "tool/command.h"

#include <string_view>

namespace tool {

extern const Command cutlist_command, print_command, changelist_command;
extern const Command edit_show_command, describe_command, check_command, explain_command;
extern const Command order_command, conform_command, export_command, web_command;
extern const Command log_import_command, log_scan_command, log_merge_command, log_show_command, log_check_command;

namespace {

constexpr CommandGroup groups[] = {
    {"edit", "Look at edit files"},
    {"log", "Make, show and check logging tables"},
};

} // namespace

const std::vector<const Command*>& all_commands() {
    static const std::vector<const Command*> commands{
        &cutlist_command,   &print_command,     &changelist_command, &check_command,
        &explain_command,   &order_command,     &conform_command,    &export_command,
        &describe_command,  &edit_show_command, &log_import_command, &log_scan_command,
        &log_merge_command, &log_show_command,  &log_check_command,  &web_command,
    };
    return commands;
}

const CommandGroup* group_of(const Command& command) {
    const std::string_view name = command.name;
    for (const CommandGroup& group : groups)
        if (name.substr(0, name.find(' ')) == group.name && name != group.name) return &group;
    return nullptr;
}

const char* const about = "Film lists from edits: cutlist tables and paged reports.";

const char* const main_examples = R"(Examples:
  quillbrook cutlist reel.otio -o lists/reel.txt
  quillbrook print lists/reel.cdb -o lists/again.txt --lists assembly,opticals
  quillbrook changelist --old monday/r1.cdb --new friday/r1.cdb -o lists/changes.txt
  quillbrook edit show reel.otio
  quillbrook log import dailies/*.ale -o show.RDB

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 changes that aren't proved.
"quillbrook help COMMAND" tells of one command.)";

} // namespace tool
