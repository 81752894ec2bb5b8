#pragma once
// Long edits and logs as other programs write them, for measuring. The same numbers give the same bytes. Each take of
// an edit is used five times or so, as in a long film.

#include <string>

namespace bench {

// 24 frames a second, one picture track, a dissolve at every tenth cut.
std::string long_edit_list(int events);
/// `filters`: with the filters that some programs write for each clip, whatever was done to it.
std::string long_fcp7xml(int items, bool filters);
std::string long_fcpxml(int items);
/// Each clip leads through pulldown to tape and film.
std::string long_aaf(int clips);

// Rolls of takes of ten seconds, one after the other; 8,000 takes a tape, on FLEx and Keylog tapes 80.
std::string long_ale(int rows);
std::string long_flex(int rows);
std::string long_keylog(int rows);
/// Columns parted by tabs. It names no rate: 24.
std::string long_delimited(int rows);

/// An ALE of `rows` rows on tapes of 30 each.
std::string log_of_tapes(int rows);
/// An edit list of four events of each of its rows, in an order that leaps about the log.
std::string list_of_tapes(int events);

} // namespace bench
