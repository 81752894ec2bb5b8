// "quillbrook edit show": what the library will see of an edit.

#include "embedded/edit_builder.h"
#include "embedded/warning.h"
#include "tool/command.h"
#include "tool/event_rows.h"
#include "tool/open_edit.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

struct EditShowJob {
    EditInput edit;
    bool sequences = false;
};

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
    std::cout << "\nPositions are frames of the edit, source positions frames of the source from its start and its "
                 "timecodes.\n";
}

void show_channels(const EditPtr& edit, ChannelKind kind) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(kind), 0);
    int number = 0;
    for (const int chan : channels) {
        std::cout << '\n'
                  << letter_of(kind) << ++number << ": " << word_of(kind) << ", track " << chan
                  << subtype_text(edit->getChanSubtype(chan)) << '\n'
                  << describe_events(edit, chan, embedded::EditBuilder::cues_of(edit));
    }
}

void show_sequences(const std::vector<formats::Sequence>& sequences) {
    for (const formats::Sequence& sequence : sequences) {
        std::cout << '"' << one_line(sequence.name) << '"';
        if (sequence.rate) std::cout << ", " << sequence.rate->name << "fps";
        if (!sequence.place.empty()) std::cout << ", " << one_line(sequence.place);
        std::cout << '\n';
    }
}

int run(const EditShowJob& job) {
    if (job.sequences) {
        show_sequences(sequences_of(job.edit));
        return exit_done;
    }
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    tell_warnings(warnings, false);
    show_head(edit);
    show_channels(edit, picture_kind);
    show_channels(edit, sound_kind);
    return exit_done;
}

void add_options(OptionTable& options, EditShowJob& job) {
    add_edit_input(options, job.edit);
    options.add({{"--sequences", "", "List the sequences that the file holds, for --sequence", job.sequences}});
}

constexpr const char* examples = R"(Examples:
  quillbrook edit show reel.otio
  quillbrook edit show reel.otio --rate 23.976 --all-effects
  quillbrook edit show project.xml --sequences
  quillbrook edit show reel1.edl --rate 24)";

} // namespace

extern const Command edit_show_command{"edit show", "Show what the library will see of an edit", examples,
                                       prepare<EditShowJob, add_options, run>};

} // namespace tool
