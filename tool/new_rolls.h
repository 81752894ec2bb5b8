#pragma once
// Edits whose film was spliced onto new rolls: their sources become the pieces on those rolls.
//
//     event    | source A012, from its frame 100 on |
//     order    piece 3 of A012, frames 92 to 155, on SEL001 from 01:00:08:17 on
//     event    | source SEL001, from its frame 8 on |         the same film

#include "embedded/warning.h"
#include "film/film_uses.h"
#include "film/log_rows.h"
#include "formats/key_lookup.h"
#include "host/edit.h"
#include "tool/order_file.h"

#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tool {

/// Pieces by their film, and by their places on the new rolls.
class NewRolls {
public:
    explicit NewRolls(std::vector<PieceOnRoll> pieces);
    NewRolls(const NewRolls&) = delete;
    NewRolls& operator=(const NewRolls&) = delete;

    /// The piece that holds most of those frames, of the run's own roll before others; null where none holds any.
    const PieceOnRoll* holding(const film::FilmRun& run, const film::FrameRange& frames) const;
    /// The piece at a timecode of a new roll; null where there is none.
    const PieceOnRoll* at(const std::string& roll, std::int64_t timecode) const;
    /// The strips with the numbers of the film that lies on the rolls, by tape and timecode; without numbers where
    /// nothing lies there.
    film::Strips back_to_film(film::Strips strips) const;

private:
    using FilmKey = std::tuple<label_t, std::string, int>;

    std::vector<PieceOnRoll> pieces_;
    std::map<FilmKey, std::vector<const PieceOnRoll*>> by_film_; ///< each by first frame
    std::map<std::pair<std::string, std::int64_t>, const PieceOnRoll*>
        at_; ///< by roll in upper case and first timecode
};

/// The roll of a frame of a reel, by its timecode's frames since midnight. Empty where it isn't known.
using RollOfFrame = std::function<std::string(const std::string& reel, std::int64_t frame)>;
/// By the rows of a log; null where there is none. `log` outlives it.
RollOfFrame rolls_of_log(const film::LogRows* log);

/// The same edit with the pieces as the sources of its pictures. `keys` and `roll_of` tell what the edit itself
/// doesn't. What has none stays as it is, and is told. Throws `JobError` where film lies on no new roll.
EditPtr on_new_rolls(const EditPtr& edit, const NewRolls& rolls, const formats::LogLookup& keys,
                     const RollOfFrame& roll_of, embedded::Warnings& warnings);

} // namespace tool
