#pragma once
// One cut as all its lists see it: the pieces of film of a channel, what joins them, and what the lab makes of them.

#include "documents/document.h"
#include "film/film_pieces.h"
#include "film/finding.h"
#include "host/recdb.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace documents {

/// Frames of the reel that take their film one behind the other from one stretch. The counts are of frame `start`.
struct FilmRun {
    std::int64_t start = 0, end = 0;
    const film::Strip* strip = nullptr; ///< the first of those that it is made of; the film's rolls and doubts are its
    film::Count key, ink, timecode, source;

    std::int64_t length() const { return end - start; }
    /// The numbers of the first frame and the last one that are shown.
    std::string first(const film::Count& count) const { return count.text_at(0); }
    std::string last(const film::Count& count) const { return count.text_at(length() - 1); }
    /// Frames of film from the first shown to the last, both included; nothing where the film isn't known.
    std::optional<std::int64_t> film_frames() const;
};

/// The film of frames [from, to) of a piece, in the order in which they are shown.
std::vector<FilmRun> runs_of(const film::Piece& piece, std::int64_t from, std::int64_t to);

/// What joins two pieces of a layer: both have film for all of its frames.
struct Joint {
    int layer = 0;
    std::int64_t start = 0, length = 0;
    std::string name; ///< "Dissolve", "Wipe 4"
    const film::Piece* before = nullptr;
    const film::Piece* behind = nullptr;
};

/// A piece as it stands in the reel: with its share of the transitions at its ends.
///
///     | before . . . . |\\\\\\\\|                 The film of both reaches over the whole joint; at the bench each
///                      |\\\\\\\\| . . behind |    has half of it, the odd frame the one before. Black takes none.
///     |------ share ------|------ share -----|
struct Share {
    const film::Piece* piece = nullptr;
    std::int64_t start = 0, end = 0;
    const Joint* out = nullptr; ///< at its end; null: a cut

    std::int64_t length() const { return end - start; }
};

struct LabEffect {
    std::string name;
    std::int64_t start = 0, end = 0;
};

/// What the lab makes as one piece.
struct LabOptical {
    int number = 0;
    int event = 0; ///< its number in the assembly of a neg cut, or that of its first piece; 0 where it has none
    std::int64_t start = 0, end = 0;
    std::vector<LabEffect> effects; ///< none: transitions alone
    bool misplaced = false;         ///< it lies over no event of the lowest track
};

/// Two pieces that meet on the negative.
struct Meeting {
    const film::Piece* first = nullptr; ///< earlier in the reel
    const film::Piece* second = nullptr;
    std::int64_t shared = 0; ///< frames that both use
    std::int64_t apart = 0;  ///< where none are, frames that lie between them
    film::Count key;         ///< of the first shared frame, or of the first frame of the later stretch
};

struct CutOptions {
    bool frames = false;   ///< positions and lengths in frames, in place of feet and frames
    int handles = 0;       ///< frames pulled beyond both ends
    int butt = 1;          ///< two pieces with fewer frames between them on the negative meet
    std::string reel;      ///< of the programme; may be empty
    bool by_table = false; ///< film and findings are those of the table alone
};

/// All of one channel. Pieces and joints point into it, so it stays where it was made.
struct CutFilm {
    TitleBlock title;
    CutOptions options;
    label_t film = label_none; ///< what feet are counted on
    bool neg_cut = false, sound = false;
    film::Strips strips;
    std::vector<film::Piece> pieces;  ///< by layer, then start
    std::vector<Joint> joints;        ///< the same
    std::vector<Share> shares;        ///< of the lowest track, in order
    std::vector<LabOptical> opticals; ///< by number
    film::Findings findings;
    std::vector<Meeting> meetings;                     ///< by reel
    std::multimap<int, const film::Piece*> in_optical; ///< by its number

    std::int64_t length() const;                 ///< of the reel, in frames
    const LabOptical* optical(int number) const; ///< null where there is none of that number
    /// The pieces of an optical, of all its layers.
    std::vector<const film::Piece*> pieces_of_optical(int number) const;
};

using CutFilmPtr = std::shared_ptr<const CutFilm>;

/// The cut of a table. `strips` and `findings` are those of its edit, or else of the table itself.
CutFilmPtr cut_film(film::Strips strips, const recdb& table, film::Findings findings, const CutOptions& options);

/// The film of an event as rows and drawings name it: "event-12"; of what the assembly doesn't number "piece-3".
std::string film_name(const CutFilm& cut, const film::Piece& piece);
std::string film_name(const LabOptical& optical);

} // namespace documents
