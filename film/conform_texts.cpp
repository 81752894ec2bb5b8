#include "film/conform_texts.h"

#include "film/finding.h"

namespace film {
namespace {

std::string film_text(const FilmRun& run, const FrameRange& frames) {
    const std::string first = run.text_at(frames.first);
    return frames.length() == 1 ? first : first + " to " + run.text_at(frames.last);
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

std::string shortening_text(const ConformToTell& told, const Mend& mend) {
    const CutUse& use = told.uses[mend.use];
    const auto part = [&](std::int64_t count, const char* end, const FrameRange& frames) {
        return "by " + frames_text(count) + " at its " + end + " (" + range_text(frames) + " of reel " +
               std::to_string(use.reel + 1) + ')';
    };
    std::string text = "shorten " + name_of(told, use) + ' ';
    if (mend.head > 0) text += part(mend.head, "head", head_of_edit(use, mend));
    if (mend.tail > 0) text += (mend.head > 0 ? " and " : "") + part(mend.tail, "tail", tail_of_edit(use, mend));
    return text;
}

} // namespace

std::string range_text(const FrameRange& range) {
    if (range.length() == 1) return std::to_string(range.first);
    return std::to_string(range.first) + " to " + std::to_string(range.last);
}

std::string name_of(const ConformToTell& told, const CutUse& use) {
    std::string text = told.reels.size() > 1 ? "R" + std::to_string(use.reel + 1) + ' ' : "";
    if (use.event == 0) return text + "V" + std::to_string(use.layer + 1) + " at " + std::to_string(use.start);
    text += use.event == use.last_event ? "event " : "events ";
    return text + range_text({use.event, use.last_event});
}

std::string use_text(const ConformToTell& told, const CutUse& use) {
    std::string text = name_of(told, use) + ", " + range_text({use.start, use.end - 1});
    if (!use.name.empty()) text += ", \"" + use.name + '"';
    text += ", " + (use.run.roll.empty() ? "no roll" : use.run.roll) + ' ' + film_text(use.run, use.frames);
    if (use.printed) text += ", printed";
    return text + (use.off > 0 ? ", give or take " + frames_text(use.off) : "");
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
    const bool head = conflict.side == Side::head;
    return count + "lacking " + (head ? "ahead of it, " : "behind it, ") +
           (conflict.other == no_use ? "where a splice was before"
                                     : "where " + use_text(told, told.uses[conflict.other]) + " ends");
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

} // namespace film
