// What rows left to the header of their own table, when they become rows of another.

#include "formats/logs/merged_header.h"
#include "logging/log_shot_list.h"
#include "quillbrook/logging_tables.h"
#include "tests/logging/film_tables.h"
#include "tests/support/recording_logger.h"

#include <gmock/gmock.h>

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const Columns plain_columns{"name", "reel", "start time", "end time", "cam reel", "snd start", "start keycode"};
const std::vector<std::string> plain_row{"n",  "R1",          "01:00:00:03",    "01:00:10:00",
                                         "A1", "02:00:00:05", "KJ1234561000+00"};

Columns all_columns() {
    Columns columns = plain_columns;
    for (const char* name :
         {"label_std", "snd label_std", "film label_std", "pulldown", "sequence", "frame origin", "cam label_std"})
        columns.push_back(name);
    return columns;
}

std::string field(const recdb& table, unsigned row, const char* column) {
    return table.getField(row, static_cast<unsigned>(table.get_fieldnum(column))).c_str();
}

Params with_revision(const Params& header) {
    Params all = header;
    all.insert(all.begin(), {"FILMDB", "Rev 16"});
    return all;
}

/// A table of one row joined to another.
class MergedHeader : public testing::Test {
protected:
    void merge(const Params& header, const Columns& columns, const std::vector<std::string>& row,
               const Params& first_header, const Columns& first_columns = all_columns()) {
        other_ = std::make_unique<MadeTable>(with_revision(header), columns, Records{row});
        merged_ = std::make_unique<MadeTable>(with_revision(first_header), first_columns, Records{plain_row});
        ASSERT_EQ(merged_->add_recdb(other_.get()), 0);
        warnings_ = keep_header_of(*other_, "b.RDB", *merged_, 1);
    }

    /// What a cutlist run reads of the last row, but for how film is counted.
    static std::vector<std::int32_t> shot_of(recdb& table) {
        RecordingLogger logger;
        const LogShotList list(table, -1, logger, 2);
        if (list.num_shots == 0) return {};
        const LogShot& shot = *list.shots[static_cast<std::size_t>(list.num_shots - 1)];
        return {shot.start.type(),
                shot.start.sample,
                shot.end.sample,
                shot.snd_start.type(),
                shot.snd_start.sample,
                shot.pulldown.on,
                shot.pulldown.on ? shot.pulldown.sequence : 0};
    }

    std::unique_ptr<MadeTable> other_, merged_;
    embedded::Warnings warnings_;
};

TEST_F(MergedHeader, RowsKeepWhatTheirHeaderSaid) {
    merge({{"label_std", "30fps"},
           {"cam label_std", "25fps"},
           {"film label_std", "16mm-1p"},
           {"frame origin", "N"},
           {"film_origin", "Y"},
           {"pulldown", "Y"},
           {"sequence", "3"}},
          plain_columns, plain_row, {{"label_std", "24fps"}, {"film label_std", "35mm-4p"}, {"pulldown", "N"}});
    EXPECT_EQ(field(*merged_, 1, "label_std"), "30fps");
    EXPECT_EQ(field(*merged_, 1, "cam label_std"), "25fps");
    EXPECT_EQ(field(*merged_, 1, "film label_std"), "16mm-1p");
    EXPECT_EQ(field(*merged_, 1, "frame origin"), "Y");
    EXPECT_EQ(field(*merged_, 1, "pulldown"), "Y");
    EXPECT_EQ(field(*merged_, 1, "sequence"), "3");
    EXPECT_EQ(field(*merged_, 0, "pulldown"), "");
}

TEST_F(MergedHeader, RowsOfAHeaderThatSaysNothingAreWhatThatMeans) {
    merge({}, plain_columns, plain_row,
          {{"label_std", "25fps"},
           {"snd label_std", "30fps"},
           {"film label_std", "16mm-1p"},
           {"frame origin", "Y"},
           {"pulldown", "Y"},
           {"sequence", "2"}});
    EXPECT_EQ(field(*merged_, 1, "label_std"), "24fps");
    EXPECT_EQ(field(*merged_, 1, "snd label_std"), "24fps");
    EXPECT_EQ(field(*merged_, 1, "film label_std"), "35mm-4p");
    EXPECT_EQ(field(*merged_, 1, "frame origin"), "N");
    EXPECT_EQ(field(*merged_, 1, "pulldown"), "N");
    EXPECT_EQ(field(*merged_, 1, "sequence"), "0");
}

TEST_F(MergedHeader, NothingIsWrittenWhereTheHeadersMeanTheSame) {
    merge({}, plain_columns, plain_row, {{"label_std", "24fps"}, {"film label_std", "35mm-4p"}, {"pulldown", "N"}});
    for (const char* column : {"label_std", "snd label_std", "film label_std", "frame origin", "pulldown", "sequence"})
        EXPECT_EQ(field(*merged_, 1, column), "") << column;
    EXPECT_THAT(warnings_, IsEmpty());
}

TEST_F(MergedHeader, ShotsAreReadAsOfTheirOwnTable) {
    const std::vector<std::string> rates{"", "24fps", "25fps", "29.97df"}, switches{"", "Y", "N"}, phases{"", "3"};
    for (const std::string& rate : rates)
        for (const std::string& on : switches)
            for (const std::string& phase : phases)
                for (const std::string& first_rate : rates)
                    for (const std::string& first_on : switches)
                        for (const std::string& first_phase : phases)
                            for (const std::string& own_on : switches) {
                                std::vector<std::string> row = plain_row;
                                row.resize(all_columns().size());
                                row[10] = own_on;
                                merge({{"label_std", rate},
                                       {"snd label_std", first_rate},
                                       {"pulldown", on},
                                       {"sequence", phase}},
                                      all_columns(), row,
                                      {{"label_std", first_rate},
                                       {"snd label_std", rate},
                                       {"pulldown", first_on},
                                       {"sequence", first_phase}});
                                ASSERT_EQ(shot_of(*other_), shot_of(*merged_))
                                    << rate << ' ' << on << ' ' << phase << " into " << first_rate << ' ' << first_on
                                    << ' ' << first_phase << ", row " << own_on;
                            }
}

TEST_F(MergedHeader, WhatTheFirstTableHasNoColumnForIsTold) {
    merge({}, plain_columns, plain_row, {{"label_std", "25fps"}}, plain_columns);
    EXPECT_THAT(warnings_,
                ElementsAre("b.RDB: rows are of label_std \"24fps\", and the first table has no column for it"));
    std::vector<std::string> row = plain_row;
    row.resize(all_columns().size());
    row[8] = "30fps";
    merge({}, all_columns(), row, {}, plain_columns);
    EXPECT_THAT(warnings_,
                ElementsAre("b.RDB: rows are of snd label_std \"30fps\", and the first table has no column for it"));
}

TEST_F(MergedHeader, OtherFilmThanThatOfTheFirstRowIsTold) {
    const Params film_of_16{{"film label_std", "16mm-1p"}};
    merge({}, plain_columns, plain_row, film_of_16);
    EXPECT_THAT(warnings_,
                ElementsAre("b.RDB: film is 35mm-4p, and cutlists read all rows as the first one's, 16mm-1p"));
    std::vector<std::string> without_key = plain_row;
    without_key.back() = "";
    merge({}, plain_columns, without_key, film_of_16);
    EXPECT_THAT(warnings_, IsEmpty());
    merge(film_of_16, plain_columns, plain_row, film_of_16);
    EXPECT_THAT(warnings_, IsEmpty());
}

} // namespace
