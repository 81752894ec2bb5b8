// The timecode list covers each event of the channel, and its timecodes are those of the frames.

#include "film/proof_run.h"

namespace film {
namespace {

/// Frames of a timecode for each frame of film.
Fraction frames_each(label_t kind) {
    LabelPoint second(0, kind);
    second.set_sample("00:00:01:00");
    switch (second.sample) {
    case 30:
        return {5, 4};
    case 48:
    case 50:
        return 2;
    case 60:
        return {5, 2};
    default:
        return 1;
    }
}

std::string timecode_text(label_t kind, std::int64_t sample) { return code_of(kind, "", sample); }

class TimecodeProof {
public:
    TimecodeProof(ProofRun& run, const std::vector<TimecodeEntry>& list) : run_(run), list_(list) {}

    void run() {
        int number = 0;
        for (const TimecodeEntry& entry : list_) {
            const EntryName name{PrintedList::timecodes, entry.place, event_name(entry.event)};
            run_.expect_number(name, "event", entry.event, ++number);
            const auto found = run_.main.find(entry.event);
            if (found == run_.main.end())
                run_.fail(name, -1, "the channel has no such event");
            else
                prove_entry(name, entry, *found->second);
        }
        const int events = run_.main.empty() ? 0 : run_.main.rbegin()->first;
        if (number < events) run_.expect_number({PrintedList::timecodes, {}, ""}, "events", number, events);
    }

private:
    void prove_entry(const EntryName& name, const TimecodeEntry& entry, const Piece& piece) {
        prove_reel(name, entry.edit_in, piece.cut_in);
        prove_reel(name, entry.edit_out, piece.cut_out);
        prove_source(name, entry.source_in, piece, piece.cut_in);
        prove_source(name, entry.source_out, piece, piece.cut_out);
        const std::string& name_text = piece.first().name;
        if (!piece.black() && !piece.unknown() && entry.shot != trimmed("20" + name_text) &&
            name_text.find('|') == std::string::npos)
            run_.fail(name, piece.start, "shot \"" + std::string(entry.shot) + "\", should be \"20" + name_text + '"');
        const std::string& tape = piece.first().rolls.tape;
        if (!piece.black() && !tape.empty() && entry.reel != trimmed(tape.substr(0, 8)))
            run_.fail(name, piece.start, "reel \"" + std::string(entry.reel) + "\", should be \"" + tape + '"');
    }

    // Four frames of film are five of timecode at 30 frames a second, and so on.
    void prove_reel(const EntryName& name, std::string_view printed, std::int64_t frame) {
        const label_t kind = run_.options.timecode;
        const auto start = sample_of(kind, "", run_.options.timecode_start);
        const auto stands = sample_of(kind, "", printed);
        if (!start || !stands)
            return run_.fail(name, frame, '"' + std::string(printed) + "\" is no timecode of the edit");
        const std::int64_t should = *start + (Fraction(frame) * frames_each(kind)).floor();
        if (*stands != should)
            run_.fail(name, frame, "stands at " + std::string(printed) + ", should be " + timecode_text(kind, should));
    }

    void prove_source(const EntryName& name, std::string_view printed, const Piece& piece, std::int64_t frame) {
        const Strip& strip = piece.at(piece.cut_in);
        if (!strip.timecode) return;
        const auto stands = sample_of(strip.timecode.kind, "", printed);
        const std::int64_t should = strip.timecode.frame_at(frame - strip.start);
        const int off = strip.timecode.step.den() == 1 || frame == piece.cut_in ? 0 : 1;
        if (!stands || std::abs(*stands - should) > off)
            run_.fail(name, frame,
                      "source " + std::string(printed) + ", should be " + timecode_text(strip.timecode.kind, should));
    }

    ProofRun& run_;
    const std::vector<TimecodeEntry>& list_;
};

} // namespace

void prove_timecodes(ProofRun& run) {
    if (run.report.timecodes) TimecodeProof(run, *run.report.timecodes).run();
}

} // namespace film
