#pragma once
// Which of the pieces stay where they lie; all others are moved, or deleted and inserted. Those that stay have the
// same order on their reel in both cuts. Each choice is the best there is for the pieces given, in the time of
// n log n.

#include "changelist/bench/kept_pieces.h"

/// The most film stays.
void keep_most_film(KeptPieces& pieces);
/// The fewest lifts and moves, where everything else is moved. Of choices as good as each other, the most film stays.
void keep_for_fewest_moves(const BenchCuts& cuts, KeptPieces& pieces);
/// The fewest splices opened and made, where everything else is deleted and inserted. What is in order stays: it costs
/// no splice to do a reel anew.
void keep_for_fewest_splices(const BenchCuts& cuts, KeptPieces& pieces);
