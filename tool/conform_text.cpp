#include "tool/conform_text.h"

#include "film/conform_texts.h"
#include "film/finding.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

using film::Conflict;
using film::ConformToTell;
using film::counted;
using film::Mend;
using film::Trouble;

constexpr const char* method_texts[] = {"A and B rolls; transitions are printed from both",
                                        "single strand; transitions are opticals",
                                        "single strand, ultrasonic; transitions are opticals"};

struct Section {
    Trouble trouble;
    const char* heading;
};

constexpr Section sections[] = {
    {Trouble::gone, "GONE: a splice of an earlier cut spent what this cut needs"},
    {Trouble::twice, "USED TWICE: there is one such piece of negative"},
    {Trouble::close, "TOO CLOSE: too little film beyond a cut for its splice"},
};

std::string input_text(const film::OrderInput& input) { return one_line(input.edit) + ", " + one_line(input.file); }

std::string splices_text(const ConformToTell& told) {
    std::string text;
    for (const label_t kind : told.kinds()) {
        const film::SpliceLoss loss = told.rules.loss_of(kind);
        text += std::string("Splices in ") + label_type_to_edlstr(kind) + ": " +
                counted(loss.count, loss.perforations ? "perforation" : "frame",
                        loss.perforations ? "perforations" : "frames") +
                " on either side (" + told.rules.source_of(kind) + ")\n";
    }
    return text;
}

std::string head_text(const ConformToTell& told) {
    std::string text = told.first_cut() ? "BEFORE THE FIRST CUT\n\n" : "CONFORM\n\n";
    int number = 0;
    for (const film::OrderInput& reel : told.reels)
        text += "Reel " + std::to_string(++number) + ": " + input_text(reel) + '\n';
    number = 0;
    for (const std::vector<film::OrderInput>& cut : told.cuts) {
        text += "Cut " + std::to_string(++number) + ": ";
        for (std::size_t i = 0; i < cut.size(); ++i)
            text += (i == 0 ? "" : "; ") + input_text(cut[i]);
        text += '\n';
    }
    if (!told.log.empty()) text += "Log: " + one_line(told.log) + '\n';
    text += std::string("Method: ") + method_texts[static_cast<std::size_t>(told.rules.method)] + '\n';
    return text + splices_text(told) + "The last frame is included; frames of a reel count from 0.\n";
}

std::string conflict_text(const ConformToTell& told, const Conflict& conflict, int number) {
    const std::string indent = "     ";
    const std::string count = std::to_string(number);
    std::string text = std::string(count.size() < 3 ? 3 - count.size() : 0, ' ') + count + ". " +
                       one_line(film::use_text(told, told.uses[conflict.use])) + '\n' + indent +
                       one_line(film::trouble_text(told, conflict)) + '\n';
    bool first = true;
    for (const Mend& mend : conflict.mends) {
        text += indent + (first ? "-> " : "or ") + one_line(film::mend_text(told, mend)) + '\n';
        first = false;
    }
    return text;
}

std::string section_text(const ConformToTell& told, const Section& section, int& number) {
    std::string text;
    for (const Conflict& conflict : told.conform.conflicts) {
        if (conflict.trouble != section.trouble) continue;
        if (text.empty()) text = std::string("\n") + section.heading + '\n';
        text += conflict_text(told, conflict, ++number);
    }
    return text;
}

std::string unheld_line(const std::string& place, const film::Strip& strip) {
    return "  " + place + ", " + one_line(strip.where) + ": frames " + film::range_text({strip.start, strip.end - 1}) +
           (strip.name.empty() ? "" : ", \"" + one_line(strip.name) + '"') + '\n';
}

std::string unheld_text(const ConformToTell& told) {
    std::string text;
    if (!told.unheld.empty()) text += "\nCAN'T BE HELD: no numbers that tell its film frame by frame\n";
    for (const film::UnknownFilm& film : told.unheld)
        text += unheld_line("reel " + std::to_string(film.reel + 1), film.strip);
    if (!told.unheld_cuts.empty()) text += "\nNOT COUNTED: what these splices spent, as no numbers tell their film\n";
    for (const ConformToTell::UnheldCut& cut : told.unheld_cuts)
        text += unheld_line("cut " + std::to_string(cut.cut + 1) + ", reel " + std::to_string(cut.film.reel + 1),
                            cut.film.strip);
    return text;
}

std::string verdict_of(const ConformToTell& told) {
    const film::Conform& conform = told.conform;
    std::string text = "\nEnds of cut film: ";
    if (!told.first_cut()) text += std::to_string(conform.standing_ends) + " stand as they were cut, ";
    text += std::to_string(conform.new_ends) + " are new\n";
    if (told.conforms()) return text + "CAN BE CONFORMED\n";
    return text + "CAN'T BE CONFORMED as it stands: " + counted(film::troubled_uses(conform), "piece", "pieces") + '\n';
}

} // namespace

std::string conform_text(const ConformToTell& told) {
    std::string text = head_text(told);
    int number = 0;
    for (const Section& section : sections)
        text += section_text(told, section, number);
    return text + unheld_text(told) + verdict_of(told);
}

} // namespace tool
