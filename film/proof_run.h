#pragma once
// One proof in the making: what its parts share.

#include "film/film_pieces.h"
#include "film/list_arithmetic.h"
#include "film/list_proof.h"
#include "film/printed_report.h"

#include <map>

namespace film {

/// Rules by number, in the order of `list_rules()`.
enum class Rule {
    none = -1,
    upper_track,
    transition_at_speed,
    from_zero,
    black_wipe,
    log_row,
    roll_carried,
    inexact,
    no_ink_kind,
    fx_end,
    unplaced,
    undrawn,
    undrawn_gap,
    upper_layers,
    name_cut,
    between_frames
};

/// An entry of any list, as messages name it.
struct EntryName {
    PrintedList list{};
    Place place;
    std::string text;
};

struct ProofRun {
    const PrintedReport& report;
    const ProofOptions& options;
    const std::vector<Piece>& pieces;
    ListProof& proof;
    ReelUnits units;
    bool sound = false, cutting_copy = false;
    std::multimap<int, const Piece*> main;                    ///< of the main track, by the number of their event
    std::map<int, std::vector<const Piece*>> in_optical = {}; ///< by the number of the optical
    std::map<const PullEntry*, const Piece*> pulled = {};     ///< what entries of pull lists were found to be
    /// Frames of the edit from which on, up to a furthest so far, shots have transitions between two frames of film.
    std::map<std::int64_t, std::int64_t> between = {};

    void fail(const EntryName& entry, std::int64_t frame, std::string what, Rule rule = Rule::none);
    void except(const EntryName& entry, std::int64_t frame, std::string what, Rule rule);
    /// A failure of a place or a length, which a transition between two frames of film may explain.
    void fail_place(const EntryName& entry, std::int64_t frame, std::string what, Rule rule = Rule::none);
    void find_between();

    /// A position or length of the reel; -1 with a failure where it can't be read.
    std::int64_t frame_in(const EntryName& entry, std::string_view text);
    std::int64_t length_in(const EntryName& entry, std::string_view text);
    /// A failure where the number isn't that one.
    void expect_number(const EntryName& entry, const char* what, std::int64_t stands, std::int64_t should,
                       std::int64_t frame = -1);

    /// Roll and name as a column of `width` bytes shows them.
    void check_roll(const EntryName& entry, std::string_view printed, const Piece& piece);
    void check_name(const EntryName& entry, std::string_view printed, const Piece& piece, std::size_t width);
    /// The name of an effect of an optical, or of its chain of transitions.
    void check_effect(const EntryName& entry, std::string_view printed, int optical);
    /// The codes of an entry over frames [from, to) of the edit.
    struct CodeTexts {
        std::string_view first, last;
        const char* missing; ///< "NO KEYKODE"
    };
    bool codes_agree(const Piece& piece, Count Strip::*number, const Shares& shares, int handles,
                     const CodeTexts& texts, double slack) const;
    void check_codes(const EntryName& entry, const Piece& piece, Count Strip::*number, const Shares& shares,
                     int handles, const CodeTexts& texts, double slack = 0.0);
    /// Whether the film of these frames lies between two samples.
    void check_frames(const EntryName& entry, const Piece& piece, Count Strip::*number, const Shares& shares,
                      const Codes& codes);
};

/// Each part proves one list, where the report holds it.
void prove_rolls(ProofRun& run);
void prove_pulls(ProofRun& run);
void prove_reuse(ProofRun& run);
void prove_assembly(ProofRun& run);
void prove_timecodes(ProofRun& run);
void prove_opticals(ProofRun& run);
void prove_doubts(ProofRun& run);

/// "event 12", "OPTICAL#3".
std::string event_name(int event);
std::string optical_name(int optical);

} // namespace film
