#pragma once
// What a source says of its film, read once for all events that use it.

#include "film/film_strip.h"
#include "film/log_rows.h"
#include "host/edit.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace film {

struct SourceFacts {
    bool opens = false;
    bool rendered = false;
    std::string name, scene, take;
    Rolls rolls;
    LabelPoint timecode, key, ink;  ///< of the first frame; not useful where there is none
    Fraction timecode_rate = 24;    ///< true timecode frames a second
    Fraction film_rate = 24;        ///< film frames a second
    Fraction start_strip;           ///< seconds; what labels without a log don't count
    std::optional<Fraction> length; ///< seconds
};

/// The rolls of a log's row for an event of a reel.
Rolls rolls_of(const LogRow& row, const std::string& tape, int film_reel);

class SourceStore {
public:
    /// `film_reel` is the medium whose roll lists print.
    explicit SourceStore(int film_reel) : film_reel_(film_reel) {}
    /// Good as long as the store lives.
    const SourceFacts& of(const Cookie& cookie);

private:
    const int film_reel_;
    std::unordered_map<std::uint64_t, SourceFacts> known_;
};

} // namespace film
