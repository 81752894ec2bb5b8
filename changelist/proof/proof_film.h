#pragma once
// What the proof knows of film: whose frame is whose.

#include "changelist/proof/film_strips.h"
#include "changelist/steps/kept_steps.h"

/// A short text by value.
struct FilmText {
    char text[80] = "";
};

/// The film of an event, or of a step that puts new film in.
///
/// Filler is the same wherever its word is. Other film is told by its roll and its key number: exactly at plain
/// speed; at a speed of its own only as far as one frame of the cut goes.
struct FilmOfProof {
    explicit FilmOfProof(const CutEvent& event) : FilmOfProof(event.key_in, event.cam_reel, event.speed) {}
    explicit FilmOfProof(const change_step& step) : FilmOfProof(step.first_key, step.cam_reel, step.speed) {}
    FilmOfProof(const LabelPoint& first_key, const char* roll, double film_speed);

    bool is_filler() const;
    bool is_plain() const;
    /// Samples of a frame of the film.
    int film_frame() const;
    /// Samples on the film for a frame of the cut.
    double pace() const { return film_frame() * (is_plain() ? 1.0 : speed); }
    /// The sample at which a frame lies.
    double sample(std::int64_t offset) const;
    FilmText text(std::int64_t offset) const;

    LabelPoint key;
    char cam_reel[10] = "";
    double speed = 1.0;
};

/// The events of a cut that have a length, as they lie on their reels.
Vector<const CutEvent*> film_in_order(const Vector<CutEvent>& cut);

/// All film that gets onto the bench, by number: the old cut's events in order, then what steps put in.
class ProofFilm {
public:
    explicit ProofFilm(const Vector<CutEvent>& old_cut);

    const Vector<const CutEvent*>& old_events() const { return old_events_; }
    std::size_t add(const change_step& step);

    bool is_old(const FilmStretch& stretch) const { return stretch.film < old_events_.size(); }
    /// The stretch begins with that frame of the old cut.
    bool is_old_frame(const FilmStretch& stretch, int reel, int frame) const;
    /// `behind` follows `ahead` on a reel of the old cut.
    bool runs_on(const FilmStretch& ahead, const FilmStretch& behind) const;
    /// The stretch begins with that key number, or nobody can say: filler, film at a speed of its own and numbers
    /// that aren't known pass.
    bool has_key(const FilmStretch& stretch, const LabelPoint& key) const;
    /// Frames from the start of `stretch` that are the film `wanted` from `offset` on, `length` at most.
    std::int64_t frames_alike(const FilmStretch& stretch, const FilmOfProof& wanted, std::int64_t offset,
                              std::int64_t length) const;
    /// The first frame of a stretch.
    FilmText text(const FilmStretch& stretch) const { return films_[stretch.film].text(stretch.offset); }
    FilmText old_frame_text(const FilmStretch& stretch) const;

private:
    Vector<const CutEvent*> old_events_;
    Vector<FilmOfProof> films_;
};
