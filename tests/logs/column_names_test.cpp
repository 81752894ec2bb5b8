// The names that columns of logs have, and what each holds.

#include "formats/logs/column_names.h"

#include <gtest/gtest.h>

using namespace formats;

namespace {

struct Names {
    LogField field;
    std::vector<std::string_view> names;
};

const std::vector<Names> spellings = {
    {LogField::name, {"Name", "Clip name", "Clip", "Shot name", "EDL clip name"}},
    {LogField::reel,
     {"Tape", "Tape name", "TapeID", "Video reel", "VTRoll", "Reel", "Reel name", "Source tape", "source_tape"}},
    {LogField::start,
     {"Start", "Start time", "Start TC", "Start timecode", "VTTC_IN", "TC in", "Timecode in", "In", "Source In"}},
    {LogField::end,
     {"End", "End time", "End TC", "End timecode", "VTTC_OUT", "TC out", "Timecode out", "Out", "Source Out"}},
    {LogField::duration, {"Duration"}},
    {LogField::frames, {"DUR_FRAMES", "DUR_FR", "Frames"}},
    {LogField::rate, {"FPS", "Frame rate", "label_std", "Source FPS"}},
    {LogField::cam_reel, {"Camroll", "Cam reel", "Camera roll", "Camera reel", "Roll/Card"}},
    {LogField::lab_reel, {"Labroll", "Lab reel"}},
    {LogField::comp_reel, {"Daily roll", "Dailies roll", "DLYROLL", "Comp reel"}},
    {LogField::snd_reel, {"Soundroll", "Snd reel", "Sound reel"}},
    {LogField::snd_start, {"Sound TC", "Snd start", "NAGRA_IN"}},
    {LogField::key_start,
     {"KN Start", "Start keycode", "KEYIN", "Key start", "Key number", "Key", "Keycode", "Keycode in", "Keycode start",
      "Keykode", "Keykode start"}},
    {LogField::key_end, {"KN End", "KEYOUT", "Key end", "Keycode out", "Keycode end", "End keycode"}},
    {LogField::key_length, {"KN Dur", "FOOTAGE"}},
    {LogField::film, {"KN Film", "Film label_std", "Film format", "Gauge"}},
    {LogField::perforation, {"Perf", "PERFIN", "Start perf"}},
    {LogField::ink_start, {"Ink Number", "Start inkcode", "Ink start", "INK_IN", "Ink"}},
    {LogField::pulldown, {"Pullin"}},
    {LogField::cadence, {"Cadence"}},
    {LogField::start_24p, {"TC 24", "Start 24p code"}},
    {LogField::reel_24p, {"24p reel"}},
    {LogField::cam_code, {"start camcode", "Camera TC", "Cam TC 24", "Film TC"}},
    {LogField::cam_date, {"Shoot date", "cam_date"}},
    {LogField::scene, {"Scene", "Slate"}},
    {LogField::take, {"Take", "Shot"}},
    {LogField::who, {"DOP", "Who"}},
    {LogField::description, {"DESCRIPT", "Description"}},
    {LogField::notes, {"Comments", "Comment", "Notes"}},
    {LogField::tag, {"Tag"}},
    {LogField::track, {"V"}},
    {LogField::record_in, {"Record In"}},
};

TEST(ColumnNames, EachHoldsItsFieldAndNoOther) {
    for (const Names& one : spellings) {
        for (const std::string_view name : one.names) {
            const LogColumns columns({name});
            for (int field = 0; field < static_cast<int>(LogField::count); ++field)
                EXPECT_EQ(columns.has(static_cast<LogField>(field)), field == static_cast<int>(one.field)) << name;
        }
    }
}

TEST(ColumnNames, EveryFieldHasAName) { EXPECT_EQ(spellings.size(), log_fields); }

// Of two columns for one field the first of the list counts where it says something, wherever they stand.
TEST(ColumnNames, TheFirstOfTheListCountsAndTheNextWhereThatIsEmpty) {
    for (const Names& one : spellings) {
        for (std::size_t i = 0; i + 1 < one.names.size(); ++i) {
            if (one.names[i + 1] == "source_tape") continue; // the same name again
            const LogColumns columns({one.names[i + 1], one.names[i]});
            LogCells row;
            columns.fill({{"second", 1}, {"first", 8}}, row);
            EXPECT_EQ(row[one.field].text, "first") << one.names[i];
            LogCells other;
            columns.fill({{"second", 1}, {"", 8}}, other);
            EXPECT_EQ(other[one.field].text, "second") << one.names[i];
        }
    }
}

} // namespace
