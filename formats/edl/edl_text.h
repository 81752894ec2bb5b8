#pragma once
// The lines of edit lists in the making.

#include "embedded/fraction.h"
#include "embedded/rates.h"
#include "formats/key_spelling.h"
#include "host/labels.h"

#include <cstdint>
#include <optional>
#include <string>

namespace formats::edl {

/// One line of an event; times are frames of the list since midnight, of any day.
struct WrittenLine {
    std::string reel;
    std::string channels;
    std::string type = "C"; ///< "C", "D", "W001"
    int frames = 0;         ///< of the transition
    std::int64_t source_in = 0, source_out = 0;
    std::int64_t record_in = 0, record_out = 0;
    bool source_drop = false;
};

/// The record's counting.
struct Counting {
    const embedded::RateInfo* rate = nullptr;
    bool drop = false;
};

/// Since midnight, of a frame of any day.
std::int64_t frame_of_day(std::int64_t frame, const Counting& counting);
std::string timecode_text(std::int64_t frame, const Counting& counting);
std::string event_text(int number, const WrittenLine& line, const Counting& record);
/// "M2   A012     012.0                01:00:00:00"
std::string speed_text(const std::string& reel, const std::string& speed, std::int64_t source_in,
                       const Counting& source);

/// A speed in frames a second as lists write it, "-012.5"; with as many decimals as it needs, up to six. Nothing where
/// those don't tell it, or where it would be read as normal speed and isn't.
std::optional<std::string> exact_speed(const embedded::Fraction& speed, const embedded::RateInfo& rate);
/// The nearest that can be written.
std::string nearest_speed(const embedded::Fraction& speed, const embedded::RateInfo& rate);

/// "* KEY NUMBER: KJ1234560100+05 35mm-4p CYCLE FROM 01:00:02:08"; nothing where it wouldn't be read again as that. The
/// timecode is that of a frame of tape with which one of film begins, where the source in isn't such.
std::optional<std::string> key_comment(LabelPoint key, const KeySpelling& spelling, const std::string& cycle = {});

/// The text in one line, its blanks as a list's fields keep them.
std::string field_text(const std::string& text);

} // namespace formats::edl
