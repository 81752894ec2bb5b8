#pragma once
// Plain lists beside a cutlist, one line a piece of film, for readers who want the cut flat. Each goes to a file of
// its own under the report's name. They read the table as the track analysis left it and sort it; nothing is told
// of a list that couldn't be written.

class LoggerHandle;
class cutdb;

/// ".sl1": every optical, track by track each piece of material within it.
void write_sl1_file(cutdb* db, LoggerHandle& logger);
/// ".sl2": the same for opticals with a cue; they keep the numbers that they have in ".sl1".
void write_sl2_file(cutdb* db, LoggerHandle& logger);
/// ".sl3": the main track as one layer, its clips cut around the opticals.
void write_sl3_file(cutdb* db, LoggerHandle& logger);
/// ".sl4": every event with a cue, at its full length.
void write_sl4_file(cutdb* db, LoggerHandle& logger);
