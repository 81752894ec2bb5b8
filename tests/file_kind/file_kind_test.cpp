// Files are told by their bytes.

#include "formats/file_kind.h"
#include "tests/support/project_paths.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

using formats::FileKind;
using formats::kind_of_file;
using namespace std::string_literals;

namespace {

std::string example(const std::string& name) {
    std::ostringstream bytes;
    bytes << std::ifstream(project_folder() + "/examples/" + name, std::ios::binary).rdbuf();
    return bytes.str();
}

std::string with_crlf(const std::string& text) {
    std::string result;
    for (const char c : text)
        result += c == '\n' ? "\r\n"s : std::string(1, c);
    return result;
}

struct Sample {
    std::string bytes;
    FileKind kind;
};

TEST(FileKinds, ExamplesOfTheProjectAreKnown) {
    const std::pair<const char*, FileKind> files[] = {
        {"reel/reel.otio", FileKind::otio},
        {"edl/ferryman.edl", FileKind::edl},
        {"edl/days.ale", FileKind::ale},
        {"edl/night.flx", FileKind::flex},
        {"reel/expected/reel.cdb", FileKind::cutlist},
        {"edl/expected/show.RDB", FileKind::logging_table},
        {"reel/expected/reel.txt", FileKind::report},
        {"recut/expected/changes-feet.txt", FileKind::report},
    };
    for (const auto& [name, kind] : files)
        EXPECT_EQ(kind_of_file(example(name)), kind) << name;
}

TEST(FileKinds, OthersAreToldByTheirHeads) {
    const Sample samples[] = {
        {"", FileKind::empty},
        {"%recdb 2\nCHGDB=Rev 8\n\nA\na\n", FileKind::changelist_work},
        {"%recdb 1\nx=CUTDB=\n\nA\na\n", FileKind::other_table},
        {"%recdb 1\nx=y\n\nA\na\n\nCUTDB=\n", FileKind::other_table},
        {"{\"format\":\"quillbrook changes\"}", FileKind::change_document},
        {"[1, 2]", FileKind::json},
        {"<?xml version=\"1.0\"?>\n<!DOCTYPE xmeml>\n<xmeml version=\"5\">", FileKind::fcp7xml},
        {"<?xml version=\"1.0\"?>\n<fcpxml version=\"1.9\">", FileKind::fcpxml},
        {"<html></html>", FileKind::xml},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more", FileKind::aaf},
        {"%PDF-1.7\n", FileKind::pdf},
        {"PK\x03\x04", FileKind::zip},
        {"\xFF\xFET\0"s, FileKind::wide_text},
        {"RIFF\0\0\0\0"s, FileKind::binary},
        {"dear lab,\n", FileKind::text},
        {" \n\t", FileKind::text},
        {"Record#  EVENT CAMROLL SOUNDROLL\n", FileKind::keylog},
    };
    for (const Sample& sample : samples)
        EXPECT_EQ(kind_of_file(sample.bytes), sample.kind) << sample.bytes;
}

TEST(FileKinds, TablesNameTheirKindInAnyCase) {
    for (const char* name : {"FILMDB", "filmdb", "FilmDb"})
        EXPECT_EQ(kind_of_file("%recdb 1\n"s + name + "=Rev 16\n\nname\na\n"), FileKind::logging_table) << name;
    EXPECT_EQ(kind_of_file("%recdb 1\ncutdb=Rev 22\n\nA\na\n"), FileKind::cutlist);
    EXPECT_EQ(kind_of_file("%recdb 1\nchgdb=Rev 8\n\nA\na\n"), FileKind::changelist_work);
    EXPECT_EQ(kind_of_file("{\"otio_schema\": \"\"}"), FileKind::json);
}

TEST(FileKinds, TablesThatAnEditorChangedAreToldAsThat) {
    const std::string table = example("reel/expected/reel.cdb");
    EXPECT_EQ(kind_of_file(with_crlf(table)), FileKind::crlf_table);
    EXPECT_EQ(kind_of_file("\xEF\xBB\xBF" + table), FileKind::marked_table);
    EXPECT_EQ(kind_of_file(table.substr(0, 9)), FileKind::other_table);
}

TEST(FileKinds, MarkAndLineEndsDontHideOtherTexts) {
    EXPECT_EQ(kind_of_file("\xEF\xBB\xBF" + with_crlf(example("edl/ferryman.edl"))), FileKind::edl);
    EXPECT_EQ(kind_of_file("\xEF\xBB\xBF" + example("reel/reel.otio")), FileKind::otio);
    EXPECT_EQ(kind_of_file(with_crlf(example("edl/days.ale"))), FileKind::ale);
}

TEST(FileKinds, ListWithAFewWordsAheadIsAnEditListStill) {
    EXPECT_EQ(kind_of_file(std::string(20000, ' ') + "\n" + example("edl/ferryman.edl")), FileKind::edl);
}

TEST(FileKinds, CommandIsNamedWhereOneTakesTheFile) {
    EXPECT_EQ(formats::told_kind(FileKind::cutlist), "is a cutlist table; \"quillbrook print\" takes it");
    EXPECT_EQ(formats::told_kind(FileKind::pdf), "is a PDF document");
    EXPECT_EQ(formats::told_kind(FileKind::empty), "is empty");
    EXPECT_STREQ(formats::command_for(FileKind::edl), "cutlist");
}

} // namespace
