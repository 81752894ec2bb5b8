// The seal of saved tables: what it is made of, and that nothing which parts from it is read.

#include "embedded/crc32.h"
#include "embedded/services.h"
#include "embedded/table_file.h"
#include "embedded/table_seal.h"
#include "tests/recdb/tables.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <climits>
#include <cstdint>

namespace {

const std::string sealed = "%recdb 2\n\na\tb\na\ta\n1\t2\n3\t4\n%end 2 31D0706B\n";
const std::string unsealed = "%recdb 1\n\na\tb\na\ta\n1\t2\n3\t4\n";

/// Why the bytes are refused; empty when they are read.
std::string fault_of(const std::string& bytes, std::size_t max_records = SIZE_MAX) {
    embedded::TableData table;
    std::string why;
    const bool read = embedded::read_table(bytes, max_records, &table, &why);
    EXPECT_EQ(read, why.empty());
    EXPECT_EQ(read, !table.columns.empty());
    return why;
}

std::string with(std::string bytes, const std::string& from, const std::string& to) {
    const std::size_t at = bytes.find(from);
    EXPECT_NE(at, std::string::npos);
    return bytes.replace(at, from.size(), to);
}

/// Reads tables that don't fit their seals, as long as it lives.
struct ReadBroken {
    ReadBroken() { embedded::set_host_setting("read_broken_tables", 1); }
    ~ReadBroken() { embedded::clear_host_settings(); }
};

Rows rows_in_spite(const std::string& bytes) {
    const ReadBroken switched;
    const ScratchDirectory scratch;
    put_bytes(scratch.file("t"), bytes);
    return rows_of(recdb(fromUTF8(scratch.file("t").c_str(), -1), INT_MAX, false));
}

TEST(Crc32, GivesTheKnownSums) {
    EXPECT_EQ(embedded::crc32(""), 0U);
    EXPECT_EQ(embedded::crc32("a"), 0xE8B7BE43U);
    EXPECT_EQ(embedded::crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(embedded::crc32("The quick brown fox jumps over the lazy dog"), 0x414FA339U);
    EXPECT_EQ(embedded::crc32(std::string(32, '\0')), 0x190A55ADU);
    EXPECT_EQ(embedded::crc32(std::string(32, '\xFF')), 0xFF6CAB0BU);
}

TEST(Crc32, GoesOnFromASumWhereverTheBytesAreParted) {
    const std::string bytes = "The quick brown fox jumps over the lazy dog";
    for (std::size_t at = 0; at <= bytes.size(); ++at)
        EXPECT_EQ(embedded::crc32(bytes.substr(at), embedded::crc32(bytes.substr(0, at))), 0x414FA339U) << at;
}

/// Bit by bit.
std::uint32_t plain_sum(std::string_view bytes) {
    std::uint32_t sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1U ^ (sum % 2 == 1 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

RC_GTEST_PROP(Crc32, IsThatOfItsBitsWhateverTheLengthAndWhereverTheBytesLie, ()) {
    const int length = *rc::gen::inRange(0, 200);
    const auto bytes = *rc::gen::container<std::string>(static_cast<std::size_t>(length), rc::gen::arbitrary<char>());
    const std::string_view part =
        std::string_view(bytes).substr(static_cast<std::size_t>(*rc::gen::inRange(0, length + 1)));
    RC_ASSERT(embedded::crc32(bytes) == plain_sum(bytes));
    RC_ASSERT(embedded::crc32(part) == plain_sum(part));
}

TEST(Seal, ClosesEverySavedTable) {
    const ScratchDirectory scratch;
    recdb table(three_columns());
    append_rows(table, {{"1", "a"}, {"2", "b"}, {"3", "c"}});
    table.set_filename(fromUTF8(scratch.file("t").c_str(), -1));
    ASSERT_EQ(table.save_text(), 0);
    const std::string bytes = bytes_of_file(scratch.file("t"));
    const std::size_t last = bytes.rfind('\n', bytes.size() - 2) + 1;
    char line[32];
    std::snprintf(line, sizeof line, "%%end 3 %08X\n", embedded::crc32(bytes.substr(0, last)));
    EXPECT_EQ(bytes.substr(last), line);
    EXPECT_EQ(fault_of(bytes), "");
}

TEST(Seal, EveryChangeOfOneByteIsRefused) {
    for (std::size_t at = 0; at < sealed.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            std::string bytes = sealed;
            bytes[at] = static_cast<char>(value);
            EXPECT_EQ(fault_of(bytes).empty(), bytes == sealed) << at << " " << value;
        }
    }
}

TEST(Seal, EveryChangeOfOneByteIsRefusedOfATableWithOneColumn) {
    embedded::TableData one;
    one.columns.push_back({"a", 'a'});
    one.insert_rows(0, 2);
    one.rows[0]->fields.set(0, "x");
    const std::string whole = embedded::table_text(one);
    ASSERT_EQ(fault_of(whole), "");
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(value);
            EXPECT_EQ(fault_of(bytes).empty(), bytes == whole) << at << " " << value;
        }
    }
}

TEST(Seal, EveryCutIsRefused) {
    for (std::size_t length = 0; length < sealed.size(); ++length)
        EXPECT_NE(fault_of(sealed.substr(0, length)), "") << length;
}

TEST(Seal, IsLookedAtHoweverFewRecordsAreRead) {
    EXPECT_EQ(fault_of(sealed, 1), "");
    EXPECT_NE(fault_of(with(sealed, "3\t4", "3\t5"), 1), "");
    EXPECT_NE(fault_of(with(sealed, "3\t4", "3\t5"), 0), "");
}

TEST(Seal, TheErrorSaysHowATableParts) {
    const std::string seal = "%end 2 31D0706B\n";
    EXPECT_EQ(fault_of(with(sealed, "3\t4", "3\t5")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "31D0706B", "31D0706C")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "31D0706B", "31d0706b")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "%end 2", "%end 02")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "a\tb\n", "a\\\tb\n")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "%recdb 2", "%recdb 1")), "changed since it was written");
    EXPECT_EQ(fault_of(with(sealed, "3\t4\n", "3\t4\n5\t6\n")), "changed since it was written: 3 rows, sealed with 2");
    EXPECT_EQ(fault_of(with(sealed, "3\t4\n", "")), "cut off behind row 1 of 2");
    EXPECT_EQ(fault_of(with(sealed, seal, "")), "cut off behind row 2");
    EXPECT_EQ(fault_of(with(sealed, seal, "%end 2 31D0")), "cut off behind row 2 of 2");
    EXPECT_EQ(fault_of(with(sealed, seal, "%end 2")), "cut off behind row 2");
    EXPECT_EQ(fault_of(sealed.substr(0, sealed.size() - 1)), "cut off behind row 2 of 2");
    const std::string odd = "%recdb 2\n\na\tb\nno types\n";
    EXPECT_EQ(fault_of(odd + embedded::seal_line(odd, 0)), "isn't a whole record table");
    EXPECT_EQ(fault_of("%recdb 2\n\na\tb\na\ta\n1\t2\n3"), "cut off behind row 1");
    EXPECT_EQ(fault_of("%recdb 2\n\na\tb\na\ta"), "cut off behind row 0");
    EXPECT_EQ(fault_of("%recdb 2\n\na\tb\n"), "cut off in its head");
    EXPECT_EQ(fault_of(sealed + "5\t6\n"), "goes on behind its seal");
    EXPECT_EQ(fault_of(sealed + seal), "goes on behind its seal");
    EXPECT_EQ(fault_of("\xEF\xBB\xBF" + sealed), "begins with a byte order mark, which no table has");
    EXPECT_EQ(fault_of(with(sealed, "%recdb 2\n", "%recdb 2\r\n")),
              "its lines end in CR LF, those of a table in LF alone");
    EXPECT_EQ(fault_of("%recdb 3\n\na\na\n"), "isn't a whole record table");
}

TEST(Seal, ATableOfTheOlderVersionHasNone) {
    EXPECT_EQ(fault_of(unsealed), "");
    EXPECT_EQ(fault_of(unsealed.substr(0, unsealed.size() - 1)), "");
    embedded::TableData table;
    ASSERT_TRUE(embedded::read_table(unsealed, SIZE_MAX, &table));
    EXPECT_EQ(embedded::table_text(table), sealed);
}

TEST(Seal, ARecordMayReadAsOne) {
    embedded::TableData table;
    table.columns.push_back({"a", 'a'});
    table.insert_rows(0, 1);
    table.rows[0]->fields.set(0, "%end 0 12345678");
    EXPECT_EQ(fault_of(embedded::table_text(table)), "");
    EXPECT_EQ(fault_of("%recdb 1\n\na\na\n%end 0 12345678\n"), "");
}

TEST(BrokenTables, AreReadAsFarAsTheyGoWhenTheSettingSaysSo) {
    const Rows both{{"1", "2"}, {"3", "4"}};
    EXPECT_EQ(rows_in_spite(sealed), both);
    EXPECT_EQ(rows_in_spite(with(sealed, "%end 2", "%end 7")), both);
    EXPECT_EQ(rows_in_spite(with(sealed, "31D0706B\n", "31D0")), both);
    EXPECT_EQ(rows_in_spite(with(sealed, "%end 2", "%enx 2")), both);
    EXPECT_EQ(rows_in_spite(with(sealed, "%end 2 31D0706B\n", "")), both);
    EXPECT_EQ(rows_in_spite(with(sealed, "4\n%end 2 31D0706B\n", "4")), (Rows{{"1", "2"}}));
    EXPECT_EQ(rows_in_spite(sealed + "5\t6\n"), (Rows{{"1", "2"}, {"3", "4"}, {"5", "6"}}));
    EXPECT_EQ(rows_in_spite("%recdb 2\n\na\tb\na\ta\n"), Rows{});
    EXPECT_EQ(rows_in_spite("%recdb 2\n\na\tb\n"), Rows{});
}

TEST(BrokenTables, WithARecordOfTheOldVersionStayRefused) {
    const ReadBroken switched;
    EXPECT_EQ(fault_of("%recdb 1\n\na\tb\na\ta\n1\n"), "isn't a whole record table");
}

TEST(BrokenTables, AreToldOfByTheirPath) {
    const ScratchDirectory scratch;
    put_bytes(scratch.file("t"), with(sealed, "3\t4\n", ""));
    EXPECT_EQ(embedded::fault_of_table(scratch.file("t")), "cut off behind row 1 of 2");
    EXPECT_EQ(embedded::fault_of_table(scratch.file("none")), "No such file or directory");
    put_bytes(scratch.file("t"), sealed);
    EXPECT_EQ(embedded::fault_of_table(scratch.file("t")), "");
}

} // namespace
