#pragma once
// Which film the bench list keeps, and what of it stays where it lies.

#include "changelist/bench/kept_pieces.h"
#include "quillbrook/changelist.h"

struct ChosenPieces {
    KeptPieces pieces;
    change_cost cost;
    change_cost simple_cost; ///< of deleting and inserting what differs
};

/// The cost that is asked for is never above the simple one. Where none is, there are never more steps than shots
/// that differ, those that leave and those that come.
ChosenPieces choose_pieces(const BenchCuts& cuts, const Vector<MatchedPiece>& matched, bench_goal goal);
