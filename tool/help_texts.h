#pragma once
// What the command says of itself.

namespace tool {

inline constexpr const char* about = "Film lists from edits: cutlist tables and paged reports.";

inline constexpr const char* main_examples = R"(Examples:
  quillbrook cutlist reel.otio -o lists/reel.txt
  quillbrook print lists/reel.cdb -o lists/again.txt --lists assembly,opticals
  quillbrook changelist --old monday/r1.cdb --new friday/r1.cdb -o lists/changes.txt
  quillbrook edit show reel.otio
  quillbrook log import dailies/*.ale -o show.RDB

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 changes that aren't proved.
"quillbrook COMMAND --help" tells of one command.)";

inline constexpr const char* cutlist_examples = R"(Examples:
  quillbrook cutlist reel.otio -o lists/reel.txt
      lists the first picture channel: lists/reel.txt and the table lists/reel.cdb
  quillbrook cutlist reel.otio -o lists/neg.txt --neg-cut --frames --set pgm_id=R1
      a neg-cut list in frames, with a programme identifier in its headings
  quillbrook cutlist reel.otio -o lists/pull.txt --lists rolls,pull --handles 8 --sort-by-key
      what to pull from the vault, 8 frames longer at each end, by key number
  quillbrook cutlist reel.otio -o lists/reel.txt --single-layer 1,3
      also lists/reel.sl1 and lists/reel.sl3
  quillbrook cutlist reel.otio -o lists/sound.txt --channel A2
      the second sound channel
  quillbrook cutlist reel.otio -o lists/reel.txt --overwrite --config allow_auto_unrender=0
      lists rendered material as it stands
  quillbrook cutlist reel1.edl --rate 24 --log show.RDB -o lists/reel1.txt
      an edit list, with its key numbers from a logging table
  quillbrook cutlist pictures.edl titles.edl --rate 25 -o lists/titles.txt --channel V2
      two edit lists of one programme; the second picture track)";

inline constexpr const char* print_examples = R"(Examples:
  quillbrook print lists/reel.cdb -o lists/again.txt
      all lists, by the library's default options
  quillbrook print lists/reel.cdb -o lists/rolls.txt --lists rolls
      the list of rolls alone
  quillbrook print lists/sound.cdb -o lists/sound.txt --set chan_type=2 --set chan_num=3
      a table of a sound channel)";

inline constexpr const char* changelist_examples = R"(Examples:
  quillbrook changelist --old monday/r1.cdb --new friday/r1.cdb -o lists/changes.txt
      what to do to the cutting copy of a reel: all lists, lengths in frames
  quillbrook changelist --old old/r1.cdb old/r2.cdb --new new/r1.cdb new/r2.cdb new/r3.cdb -o changes.txt
      a picture of several reels, one table a reel
  quillbrook changelist --old a.cdb --new b.cdb -o changes.txt --lists summary,changes --units feet --scene-take
      two of the lists, in feet and frames, with scene and take
  quillbrook changelist --old a.cdb --new b.cdb -o changes.txt --edits monday.otio friday.otio
      names both edits at the head of the list
  quillbrook changelist --old a.cdb --new b.cdb -o bench.txt --lists bench --prove --json bench.json
      the steps for the bench, carried out on the old cut as a check, and written for scripts too

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 a list asked for with --prove doesn't make the new cut.)";

inline constexpr const char* show_examples = R"(Examples:
  quillbrook edit show reel.otio
  quillbrook edit show reel.otio --rate 23.976 --all-effects
  quillbrook edit show reel1.edl --rate 24)";

inline constexpr const char* log_import_examples = R"(Examples:
  quillbrook log import dailies/*.ale -o show.RDB
      all of the dailies' logs as one table
  quillbrook log import day3.csv -o day3.RDB --rate 29.97 --film "35mm,3perf" --reel 003
      a log that says neither its rate nor its film nor its tape
  quillbrook log import transfer.ftl -o transfer.RDB --as-keylog
      a Keylog file, read column by column as the library has always read it)";

inline constexpr const char* log_merge_examples = R"(Examples:
  quillbrook log merge week1.RDB week2.RDB -o show.RDB)";

inline constexpr const char* log_show_examples = R"(Examples:
  quillbrook log show show.RDB
  quillbrook log show day1.ale)";

inline constexpr const char* log_check_examples = R"(Examples:
  quillbrook log check show.RDB && quillbrook cutlist reel1.edl --rate 24 --log show.RDB -o lists/reel1.txt
      goes on only when nothing is wrong
  quillbrook log check dailies/*.ale
      all of the dailies as one log, so that overlaps between files are found too

Exit status: 0 nothing is wrong, 1 something is, 2 wrong usage.)";

} // namespace tool
