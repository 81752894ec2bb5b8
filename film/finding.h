#pragma once
// What is wrong or doubtful of the film that an edit's lists name.

#include "embedded/fraction.h"

#include <cstdint>
#include <string>
#include <vector>

namespace film {

enum class Severity : unsigned char {
    wrong, ///< film is named that isn't the frame's, or film that is needed isn't named
    doubt,
    note,
};

/// What kinds of things are found; the order is that of the table of codes.
enum class Code : unsigned char {
    reel_prefix,
    log_ambiguous,
    log_overrun,
    key_conflict,
    outside_media,
    not_listed,
    dropped,
    replaced,
    reading,
    no_key,
    no_roll,
    no_log_row,
    no_ink,
    no_film,
    optical_error,
    used_twice,
    too_close,
    transition_at_speed,
    from_zero,
    between_frames,
    inexact,
    reverse,
    key_past_9999,
    film_kind,
    name_cut,
    bad_text,
    rate,
    codes
};

/// One kind: its name, which stays, and what a user does about it.
struct CodeInfo {
    const char* name;
    const char* advice;
};

const CodeInfo& info_of(Code code);
const char* name_of(Severity severity);

/// Where something was found; what isn't known is empty, or 0, or below 0.
struct FoundAt {
    std::string file;
    std::string where;       ///< line or object, as messages name it; it may name the file itself
    std::string channel;     ///< "V1"
    int event = 0;           ///< as the assembly numbers it
    std::int64_t frame = -1; ///< film frames from the edit's start
    std::string timecode;    ///< of that frame, in the edit
    std::string name;        ///< of the shot, or what else names the thing

    std::string roll, tape;      ///< of the film there
    std::string source_timecode; ///< on that tape
};

struct Finding {
    Code code = Code::reading;
    Severity severity = Severity::doubt;
    FoundAt place;
    std::string what; ///< with the numbers, in one sentence without a full stop
    std::string advice() const { return info_of(code).advice; }
};

using Findings = std::vector<Finding>;

/// Worst first, then by position, then by kind.
void sort_findings(Findings& findings);

/// "29 frames", "1 frame".
std::string counted(std::int64_t number, const char* one, const char* many);
std::string frames_text(std::int64_t number);
/// "3/2"; what a file holds as a decimal number, as that.
std::string fraction_text(const embedded::Fraction& value);

} // namespace film
