#include "film/conform_facts.h"

namespace film {

std::vector<label_t> ConformToTell::kinds() const {
    std::set<label_t> kinds;
    for (const CutUse& use : uses)
        if (!use.printed) kinds.insert(use.run.kind);
    return {kinds.begin(), kinds.end()};
}

FrameRange head_of_edit(const CutUse& use, const Mend& mend) { return {use.start, use.start + mend.head - 1}; }

FrameRange tail_of_edit(const CutUse& use, const Mend& mend) { return {use.end - mend.tail, use.end - 1}; }

std::int64_t troubled_uses(const Conform& conform) {
    std::set<std::size_t> uses;
    for (const Conflict& conflict : conform.conflicts)
        uses.insert(conflict.use);
    return static_cast<std::int64_t>(uses.size());
}

} // namespace film
