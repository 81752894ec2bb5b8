#pragma once
// What a log doesn't say surely of an edit that is written with its numbers.

#include "embedded/warning.h"
#include "formats/key_lookup.h"

#include <array>
#include <string>

namespace formats {

/// Told once a kind, with the first that it is true of and how many more there are.
class LogDoubts {
public:
    /// `log` outlives it; where it is null nothing is noted.
    explicit LogDoubts(const LogLookup& log) : log_(log) {}

    /// Frames of a reel from `first` to `last`, both inclusive, each of which is `share` frames of film. `where` names
    /// them to people.
    void note(const std::string& where, const std::string& reel, std::int64_t first, std::int64_t last,
              const embedded::Fraction& share);
    void tell(embedded::Warnings& warnings) const;

private:
    enum Kind { missing, beyond, ambiguous, kinds };

    struct Doubt {
        std::string first;
        int count = 0;
    };

    void add(Kind kind, const std::string& where);

    const LogLookup& log_;
    std::array<Doubt, kinds> doubts_;
};

} // namespace formats
