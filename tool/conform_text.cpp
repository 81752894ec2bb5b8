#include "tool/conform_text.h"

#include "film/finding.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

using film::Conflict;
using film::ConformToTell;
using film::counted;
using film::CutUse;
using film::FilmRun;
using film::FrameRange;
using film::frames_text;
using film::Mend;
using film::Mending;
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

std::string range_text(const FrameRange& range, const char* between = " to ") {
    if (range.length() == 1) return std::to_string(range.first);
    return std::to_string(range.first) + between + std::to_string(range.last);
}

std::string film_text(const FilmRun& run, const FrameRange& frames) {
    const std::string first = run.text_at(frames.first);
    return frames.length() == 1 ? first : first + " to " + run.text_at(frames.last);
}

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

/// "R1 event 4".
std::string name_of(const ConformToTell& told, const CutUse& use) {
    std::string text = told.reels.size() > 1 ? "R" + std::to_string(use.reel + 1) + ' ' : "";
    if (use.event == 0) return text + "V" + std::to_string(use.layer + 1) + " at " + std::to_string(use.start);
    text += use.event == use.last_event ? "event " : "events ";
    return text + range_text({use.event, use.last_event});
}

std::string use_text(const ConformToTell& told, const CutUse& use) {
    std::string text = name_of(told, use) + ", " + range_text({use.start, use.end - 1});
    if (!use.name.empty()) text += ", \"" + one_line(use.name) + '"';
    text += ", " + (use.run.roll.empty() ? "no roll" : one_line(use.run.roll)) + ' ' + film_text(use.run, use.frames);
    if (use.printed) text += ", printed";
    return text + (use.off > 0 ? ", give or take " + frames_text(use.off) : "");
}

std::string where_text(const Conflict& conflict, const CutUse& use) {
    if (conflict.lacking == use.frames.length()) return "all of it";
    if (conflict.at_head && conflict.at_tail) return "at both ends";
    return conflict.at_head ? "at its head" : conflict.at_tail ? "at its tail" : "in its midst";
}

std::string frames_of(const ConformToTell& told, const Conflict& conflict) {
    std::string text;
    for (const FrameRange& frames : conflict.frames)
        text += (text.empty() ? "" : ", ") + film_text(told.uses[conflict.use].run, frames);
    return text;
}

std::string trouble_text(const ConformToTell& told, const Conflict& conflict) {
    const std::string count = frames_text(conflict.lacking) + (conflict.lacking == 1 ? " is " : " are ");
    switch (conflict.trouble) {
    case Trouble::gone:
        return count + "gone, " + where_text(conflict, told.uses[conflict.use]) + ": " + frames_of(told, conflict);
    case Trouble::twice:
        return count + "in " + use_text(told, told.uses[conflict.other]) + " too: " + frames_of(told, conflict);
    case Trouble::close:
        break;
    }
    const bool head = conflict.side == film::Side::head;
    return count + "lacking " + (head ? "ahead of it, " : "behind it, ") +
           (conflict.other == film::no_use ? "where a splice was before"
                                           : "where " + use_text(told, told.uses[conflict.other]) + " ends");
}

std::string shortening_text(const ConformToTell& told, const Mend& mend) {
    const CutUse& use = told.uses[mend.use];
    const auto part = [&](std::int64_t count, const char* end, const FrameRange& frames) {
        return "by " + frames_text(count) + " at its " + end + " (" + range_text(frames) + " of reel " +
               std::to_string(use.reel + 1) + ')';
    };
    std::string text = "shorten " + name_of(told, use) + ' ';
    if (mend.head > 0) text += part(mend.head, "head", film::head_of_edit(use, mend));
    if (mend.tail > 0) text += (mend.head > 0 ? " and " : "") + part(mend.tail, "tail", film::tail_of_edit(use, mend));
    return text;
}

std::string mend_text(const ConformToTell& told, const Mend& mend) {
    const std::string name = name_of(told, told.uses[mend.use]);
    switch (mend.mending) {
    case Mending::shorten:
        return shortening_text(told, mend);
    case Mending::duplicate:
        return "cut a dupe of its negative as " + name;
    case Mending::print:
        return "make " + name + " as an optical, from a print or an intermediate of that film";
    }
    return "";
}

std::string conflict_text(const ConformToTell& told, const Conflict& conflict, int number) {
    const std::string indent = "     ";
    const std::string count = std::to_string(number);
    std::string text = std::string(count.size() < 3 ? 3 - count.size() : 0, ' ') + count + ". " +
                       use_text(told, told.uses[conflict.use]) + '\n' + indent + trouble_text(told, conflict) + '\n';
    bool first = true;
    for (const Mend& mend : conflict.mends) {
        text += indent + (first ? "-> " : "or ") + mend_text(told, mend) + '\n';
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
    return "  " + place + ", " + one_line(strip.where) + ": frames " + range_text({strip.start, strip.end - 1}) +
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
