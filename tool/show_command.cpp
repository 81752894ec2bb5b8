// "quillbrook edit show": what the library will see of an edit.

#include "embedded/edit_builder.h"
#include "embedded/warning.h"
#include "tool/event_rows.h"
#include "tool/open_edit.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

std::string subtype_text(EditChanSubType subtype) {
    switch (subtype) {
    case chan_plain:
        return "";
    case chan_unlisted:
        return ", not listed";
    case chan_fx:
        return ", FX";
    }
    return ", sub-type " + std::to_string(static_cast<int>(subtype));
}

void show_head(const EditPtr& edit) {
    EditLabel* timecode = edit->getLabel(user_label_timecode, {medium_video, 1});
    std::cout << "Edit \"" << one_line(narrow(edit->getName())) << "\", "
              << tv_standard_to_edlstr({edit->getSourceFrameRate(),
                                        static_cast<std::uint8_t>(Qb::CurrentProject::getUseDropFrameTimecode())});
    if (timecode->is_valid()) std::cout << ", from " << timecode->get_string(0);
    const std::string& project = embedded::EditBuilder::project_of(edit);
    if (!project.empty()) std::cout << ", project \"" << one_line(project) << '"';
    std::cout << "\nPositions are frames of the edit, source positions seconds of the source.\n";
}

void show_channels(const EditPtr& edit, int kind) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(kind), 0);
    int number = 0;
    for (const int chan : channels) {
        std::cout << '\n'
                  << (kind == 2 ? 'A' : 'V') << ++number << ": " << (kind == 2 ? "sound" : "picture") << ", track "
                  << chan << subtype_text(edit->getChanSubtype(chan)) << '\n'
                  << describe_events(edit, chan, embedded::EditBuilder::cues_of(edit));
    }
}

} // namespace

int run(const ShowJob& job) {
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    tell_warnings(warnings, false);
    show_head(edit);
    show_channels(edit, 1);
    show_channels(edit, 2);
    return exit_done;
}

} // namespace tool
