// Film logs: new ones, loaded ones and their headers.

#include "embedded/services.h"
#include "logging/log_columns.h"
#include "tests/logging/film_tables.h"

#include <gmock/gmock.h>
#include <memory>

using testing::ElementsAre;

namespace {

class LoadedFilm : public testing::Test {
protected:
    std::unique_ptr<OpenFilm> load(const Params& params, const Records& records = {}) {
        const std::string path = folder.file("log.RDB");
        put_bytes(path, table_bytes(params, {"name", "reel"}, records));
        return std::make_unique<OpenFilm>(wide(path));
    }
    std::unique_ptr<OpenFilm> load_revision(const std::string& value) { return load({{"FILMDB", value}}); }

    ScratchDirectory folder;
};

TEST(NewFilm, HasItsColumnsAndIsNotValidYet) {
    OpenFilm film;
    EXPECT_EQ(film.get_valid(), 0);
    ASSERT_EQ(film.get_num_fields(), 32U);
    EXPECT_STREQ(film.get_fieldname(0), "name");
    EXPECT_STREQ(film.get_fieldname(19), "snd start");
    EXPECT_STREQ(film.get_fieldname(31), "duration");
    EXPECT_EQ(film.get_fieldtype(1), DBFieldTypes::text);
    for (const unsigned field : {2U, 3U, 9U, 15U, 19U, 31U})
        EXPECT_EQ(film.get_fieldtype(field), DBFieldTypes::timecode) << field;
    EXPECT_EQ(film.get_num_records(), 0U);
    EXPECT_EQ(film.get_revision(), 16);
    EXPECT_EQ(film.get_error(), fdb_ok);
    EXPECT_STREQ(film.get_error_message(), "");
}

TEST(NewFilm, WritesItsHeaderInOrder) {
    ScratchDirectory folder;
    OpenFilm film(wide(folder.file("day.txt")), {});
    ASSERT_EQ(film.save_text(), 0);
    const std::string bytes = bytes_of_file(folder.file("day.RDB"));
    EXPECT_EQ(bytes.substr(0, bytes.find("\n\n")), "%recdb 2\nFILMDB=Rev 16\nlabel_std=25fps\nsnd label_std=25fps\n"
                                                   "film label_std=\nfilm rate=0     \nframe origin=N\npulldown=N");
}

TEST(NewFilm, TakesItsFileNameFromTheTableOrTheSource) {
    EXPECT_EQ(toUTF8(OpenFilm(L"/logs/day.one.txt", {}).get_filename()), "/logs/day.one.RDB");
    OpenFilm named(L"/logs/day.txt", L"/tables/own");
    EXPECT_EQ(toUTF8(named.get_filename()), "/tables/own");
    EXPECT_EQ(toUTF8(named.source_name), "/logs/day.txt");
}

TEST(NewFilm, VideoLogsHaveAnotherLayout) {
    unsigned count = 0;
    while (!videolog_fields()[count].name.empty())
        ++count;
    EXPECT_EQ(count, 15U);
    EXPECT_STREQ(videolog_fields()[5].name.c_str(), "pic qual");
    EXPECT_EQ(videolog_fields()[8].type, DBFieldTypes::timecode);
    EXPECT_EQ(videolog_fields()[15].type, DBFieldTypes::none);
}

TEST(Setters, WriteTheHeaderEachTime) {
    OpenFilm film;
    char title[] = "Day one";
    film.set_title(title);
    film.set_vid_std({rate(5), 1});
    film.set_snd_std({rate(2), 0});
    film.set_cam_std({rate(3), 0});
    film.set_film_std(gauge_16mm);
    film.set_film_origin(true);
    film.set_pulldown(true);
    film.set_sequence(3);
    film.set_picqual(7);
    EXPECT_EQ(param(film, "title"), "Day one");
    EXPECT_EQ(param(film, "label_std"), "29.97df");
    EXPECT_EQ(param(film, "snd label_std"), "24fps");
    EXPECT_EQ(param(film, "cam label_std"), "25fps");
    EXPECT_EQ(param(film, "film label_std"), "16mm-1p");
    EXPECT_EQ(param(film, "frame origin"), "Y");
    EXPECT_EQ(param(film, "pulldown"), "Y");
    EXPECT_EQ(param(film, "sequence"), "3");
    EXPECT_EQ(param(film, "pic qual"), "7");
}

TEST(Setters, AStandardThatIsNotSetReplacesOnlyThatOfThePicture) {
    OpenFilm film;
    film.set_cam_std({rate(5), 0});
    film.set_cam_std({});
    film.set_snd_std({});
    film.set_vid_std({});
    EXPECT_EQ(param(film, "cam label_std"), "29.97fps");
    EXPECT_EQ(param(film, "snd label_std"), "25fps");
    EXPECT_EQ(param(film, "label_std"), "");
    EXPECT_EQ(film.cam_std.rate, 0);
    EXPECT_EQ(film.snd_std.rate, 0);
}

TEST(Setters, APhaseWithoutPulldownIsNotWritten) {
    OpenFilm film;
    film.set_sequence(2);
    EXPECT_EQ(film.sequence, 2);
    EXPECT_EQ(param(film, "sequence"), "(none)");
}

TEST(Setters, PictureQualitiesOfZeroAreNotWritten) {
    OpenFilm film;
    film.set_picqual(4);
    film.set_picqual(0);
    EXPECT_EQ(film.picqual, 0);
    EXPECT_EQ(param(film, "pic qual"), "4");
}

TEST(Setters, TheFilmRateIsFilledUpToSixCharacters) {
    OpenFilm film;
    for (const auto& [value, text] : {std::pair(24.0, "24    "),
                                      {23.976, "23.976"},
                                      {23.9760239, "23.976"},
                                      {0.5, "0.5   "},
                                      {1234567.0, "1.23457e+06"}}) {
        film.set_film_rate(value);
        EXPECT_EQ(param(film, "film rate"), text);
        EXPECT_EQ(film.film_rate, value);
    }
}

TEST(Setters, TheChannelMaskStaysOutOfTheHeader) {
    OpenFilm film;
    film.set_chans(ChannelMask(5));
    EXPECT_EQ(film.chans.bits(), 5U);
    const OpenFilm copy(film);
    EXPECT_EQ(copy.chans.bits(), 5U);
    OpenFilm other;
    other = film;
    EXPECT_EQ(other.chans.bits(), 5U);
    EXPECT_EQ(param(film, "chans"), "(none)");
}

TEST_F(LoadedFilm, OfTheCurrentRevisionIsWithoutError) {
    const auto film = load({{"FILMDB", "Rev 16"},
                            {"label_std", "29.97df"},
                            {"snd label_std", "24fps"},
                            {"film label_std", "35mm-3p"},
                            {"film rate", "23.976"},
                            {"cam label_std", "24fps"},
                            {"pic qual", "3"}},
                           {{"1-1", "001"}});
    EXPECT_NE(film->get_valid(), 0);
    EXPECT_EQ(film->get_error(), fdb_ok);
    EXPECT_EQ(film->vid_std.rate, 5);
    EXPECT_EQ(film->vid_std.drop, 1);
    EXPECT_EQ(film->snd_std.rate, 2);
    EXPECT_EQ(film->film_std, gauge_35mm_3p);
    EXPECT_EQ(film->film_rate, 23.976);
    EXPECT_EQ(film->cam_std.rate, 3) << "nothing reads the camera's standard";
    EXPECT_EQ(film->picqual, 3);
    EXPECT_EQ(film->get_num_records(), 1U);
}

TEST_F(LoadedFilm, OfRevisions6To15IsUsableWithAnError) {
    for (const char* revision : {"Rev 6", "Rev 15", "xxxx7"}) {
        const auto film = load_revision(revision);
        EXPECT_NE(film->get_valid(), 0) << revision;
        EXPECT_EQ(film->get_error(), fdb_old_revision);
        EXPECT_STREQ(film->get_error_message(), "");
    }
    EXPECT_EQ(load_revision("Rev 6")->get_revision(), 6);
}

TEST_F(LoadedFilm, OfOtherRevisionsIsRefused) {
    struct {
        const char* revision;
        fdb_error error;
        const char* message;
    } const cases[] = {
        {"Rev 5", fdb_old_filmdb, "INPUT FILE IS OLD FILMDB: CODE NOT WRITTEN TO HANDLE THIS YET\n"},
        {"Rev -3", fdb_old_filmdb, "INPUT FILE IS OLD FILMDB: CODE NOT WRITTEN TO HANDLE THIS YET\n"},
        {"Rev 17", fdb_too_new, "INPUT FILE IS TOO NEW FOR THIS SOFTWARE VERSION:\n"},
        {"Rev 0", fdb_not_filmdb, "INPUT FILE NOT A FILMDB"},
        {"Rev x", fdb_not_filmdb, "INPUT FILE NOT A FILMDB"},
        {"16", fdb_not_filmdb, "INPUT FILE NOT A FILMDB"},
    };
    for (const auto& one : cases) {
        const auto film = load_revision(one.revision);
        EXPECT_EQ(film->get_valid(), 0) << one.revision;
        EXPECT_EQ(film->get_error(), one.error) << one.revision;
        EXPECT_STREQ(film->get_error_message(), one.message);
    }
    EXPECT_EQ(load({})->get_error(), fdb_not_filmdb);
}

TEST_F(LoadedFilm, ThatIsNoTableSaysSo) {
    OpenFilm film(wide(folder.file("missing.RDB")));
    EXPECT_EQ(film.get_valid(), 0);
    EXPECT_EQ(film.get_error(), fdb_load_failed);
    EXPECT_STREQ(film.get_error_message(), "Failed to load recdb");
}

TEST_F(LoadedFilm, HoldsAtMost32000Rows) {
    const auto film = load({{"FILMDB", "Rev 16"}}, Records(32001, {"a", "b"}));
    EXPECT_EQ(film->get_num_records(), 32000U);
}

TEST_F(LoadedFilm, TakesAPhaseOnlyWithPulldown) {
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"pulldown", "N"}, {"sequence", "3"}})->sequence, 0);
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"pulldown", "1"}, {"sequence", "3"}})->sequence, 0);
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"pulldown", "yes"}, {"sequence", "3"}})->sequence, 0);
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"pulldown", "y"}, {"sequence", "3"}})->sequence, 3);
}

TEST_F(LoadedFilm, TheFirstSpellingOfTheOriginWinsEvenWhenItSaysNo) {
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"film_origin", "N"}, {"frame origin", "Y"}})->film_origin, 0);
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"film_origin", "y"}, {"frame origin", "N"}})->film_origin, 1);
    EXPECT_EQ(load({{"FILMDB", "Rev 16"}, {"frame origin", "Y"}})->film_origin, 1);
}

TEST_F(LoadedFilm, CopiesWithEverythingItKnows) {
    const auto film = load({{"FILMDB", "Rev 9"}, {"pulldown", "Y"}, {"sequence", "2"}, {"film rate", "24"}},
                           {{"1-1", "001"}, {"1-2", "002"}});
    film->set_error_message("%s", std::string(300, 'x').c_str());
    const OpenFilm copy(*film);
    OpenFilm assigned;
    assigned = *film;
    for (OpenFilm one : {copy, assigned}) {
        EXPECT_EQ(one.get_num_records(), 2U);
        EXPECT_EQ(one.get_revision(), 9);
        EXPECT_EQ(one.get_error(), fdb_old_revision);
        EXPECT_EQ(one.get_error_message(), std::string(127, 'x'));
        EXPECT_EQ(one.sequence, 2);
        EXPECT_EQ(one.film_rate, 24.0);
        EXPECT_NE(one.get_valid(), 0);
    }
}

class Template : public testing::Test {
protected:
    Template() { embedded::set_record_table_directory(folder.path()); }
    ~Template() override { embedded::set_record_table_directory(""); }

    std::unique_ptr<filmdb> make(const std::string& revision) {
        put_bytes(folder.file("film.dbt"), table_bytes({{"FILMDB", revision}}, {"name", "own"}, {{"a", "b"}}));
        testing::internal::CaptureStdout();
        std::unique_ptr<filmdb> film(filmdb::make());
        said = testing::internal::GetCapturedStdout();
        return film;
    }

    ScratchDirectory folder;
    std::string said;
};

TEST_F(Template, IsAPlainNewTableWhereThereIsNone) {
    const std::unique_ptr<filmdb> film(filmdb::make());
    EXPECT_EQ(film->get_num_fields(), 32U);
    EXPECT_EQ(film->get_valid(), 0);
}

TEST_F(Template, GivesColumnsHeaderAndRows) {
    const auto film = make("Rev 16");
    EXPECT_EQ(film->get_num_fields(), 2U);
    EXPECT_EQ(film->get_num_records(), 1U);
    EXPECT_EQ(said, "");
}

TEST_F(Template, OfAnOlderRevisionIsPassedOverWithAWarning) {
    const auto film = make("Rev 15");
    EXPECT_EQ(film->get_num_fields(), 32U);
    EXPECT_EQ(film->get_error(), fdb_ok);
    EXPECT_EQ(said, "WARNING: Database template file <\\QBPROJ\\FILM.DBT> is not the most recent revision\n");
}

TEST_F(Template, ThatCannotBeUsedComesBackInvalid) {
    const auto film = make("Rev 17");
    EXPECT_EQ(film->get_error(), fdb_too_new);
    EXPECT_EQ(film->get_valid(), 0);
    EXPECT_EQ(said, "");
}

TEST(Version, IsNotEmpty) { EXPECT_STRNE(filmDllVersionStr(), ""); }

} // namespace
