#include "formats/scans/scan_stretches.h"

namespace formats {
namespace {

using embedded::WarningKind;
using Count = std::optional<std::int64_t> ScanFrame::*;

/// A sequence full of breaks is told of in so many lines.
constexpr std::size_t most_told = 20;

class Breaker {
public:
    Breaker(const ScanFiles& files, ScanFrames& scan, embedded::Warnings& warnings)
        : files_(files), scan_(scan), frames_(scan.frames), warnings_(warnings) {}

    std::vector<Stretch> stretches() {
        fill(&ScanFrame::key, scan_.frame_perforations, "key number");
        fill(&ScanFrame::time, 1, "timecode");
        std::vector<Stretch> made;
        for (std::size_t i = 0; i < frames_.size(); ++i) {
            const std::string reason = i == 0 ? "first" : reason_to_break(i);
            if (reason.empty()) {
                made.back().last = i;
                continue;
            }
            made.push_back({i, i});
            if (i > 0) tell_break(i, reason);
        }
        if (told_ > most_told) tell(0, std::to_string(told_ - most_told) + " more rows begin in this sequence");
        return made;
    }

private:
    std::uint64_t number(std::size_t i) const { return files_.files[frames_[i].file].number; }

    void tell(std::size_t i, const std::string& what, WarningKind kind = WarningKind::doubt) {
        warnings_.emplace_back(kind, files_.path(frames_[i].file) + ": " + what);
    }

    void tell_break(std::size_t i, const std::string& reason) {
        if (++told_ <= most_told) tell(i, reason + "; a row begins here");
    }

    // From each frame that has the count to the next that has it.
    void fill(Count count, int step, const std::string& what) {
        std::size_t known = frames_.size();
        for (std::size_t i = 0; i < frames_.size(); ++i) {
            if (!(frames_[i].*count)) continue;
            if (known < i && i - known > 1 && agree(known, i, count, step)) fill_between(known, i, count, step, what);
            known = i;
        }
    }

    bool agree(std::size_t a, std::size_t b, Count count, int step) const {
        const std::int64_t way = static_cast<std::int64_t>(b - a);
        return number(b) - number(a) == b - a && *(frames_[b].*count) - *(frames_[a].*count) == way * step;
    }

    void fill_between(std::size_t a, std::size_t b, Count count, int step, const std::string& what) {
        const std::size_t lacking = b - a - 1;
        const std::string others = lacking == 1   ? ""
                                   : lacking == 2 ? ", nor has the one behind it"
                                                  : ", nor have the " + std::to_string(lacking - 1) + " behind it";
        tell(a + 1, "has no " + what + others + "; counted on, as those around agree", WarningKind::note);
        for (std::size_t i = a + 1; i < b; ++i)
            frames_[i].*count = *(frames_[i - 1].*count) + step;
    }

    std::string reason_to_break(std::size_t i) const {
        if (const std::uint64_t lacking = number(i) - number(i - 1) - 1)
            return "the " + std::to_string(lacking) + (lacking == 1 ? " frame" : " frames") + " before it " +
                   (lacking == 1 ? "is" : "are") + " missing";
        const ScanFrame &before = frames_[i - 1], &here = frames_[i];
        if (!!before.key != !!here.key) return here.key ? "key numbers begin" : "key numbers end";
        if (here.key && *here.key != *before.key + scan_.frame_perforations)
            return "its key number is " + key_text(*here.key) + " behind " + key_text(*before.key);
        if (!!before.time != !!here.time) return here.time ? "timecodes begin" : "timecodes end";
        if (here.time && (before.standard.rate != here.standard.rate || before.standard.drop != here.standard.drop))
            return "its timecode counts otherwise than that before it";
        if (here.time && *here.time != *before.time + 1)
            return "its timecode is " + time_text(here) + " behind " + time_text(before);
        if (before.position && here.position && *here.position != *before.position + 1)
            return "its frame position is " + std::to_string(*here.position) + " behind " +
                   std::to_string(*before.position);
        return {};
    }

    std::string key_text(std::int64_t key) const { return scan_.key_point(key).get_string(); }

    static std::string time_text(const ScanFrame& frame) {
        return LabelPoint(static_cast<int>(*frame.time), TvStd_to_label_type(frame.standard)).get_string();
    }

    const ScanFiles& files_;
    ScanFrames& scan_;
    std::vector<ScanFrame>& frames_;
    embedded::Warnings& warnings_;
    std::size_t told_ = 0;
};

} // namespace

std::vector<Stretch> stretches_of(const ScanFiles& files, ScanFrames& scan, embedded::Warnings& warnings) {
    return Breaker(files, scan, warnings).stretches();
}

} // namespace formats
