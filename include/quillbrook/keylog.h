#pragma once
// Import of Keylog files: text reports of film transfers in fixed columns, one line a take.

#include "host/settings.h"
#include "quillbrook/logging_tables.h"

#include <cstdint>
#include <cstdio>

/// A logging table that fills itself from a Keylog file when it is made.
class QUILLBROOK_API ftldb : public filmdb {
public:
    /// Reads all of `file`. `get_valid` tells the outcome, 1 after a good read; what was wrong goes to
    /// `logger`, which must outlive the call, and nothing at all is said of a file that can't be opened. The
    /// table's own file name is `tableName`, or where that is empty `file` with the extension ".RDB". Lines
    /// hold 511 characters.
    ftldb(const LightweightString<wchar_t>& file, LoggerHandle& logger, LightweightString<wchar_t> tableName);
    /// A table with the same rows, header and reel; the file stays with the original.
    ftldb(const ftldb& other);
    ftldb& operator=(const ftldb& other);
    ~ftldb() override;

    /// The video reel that the file names, at most 8 characters and as it stands there; the table's own.
    const char* get_reelid();
    /// Puts a reel into every row. What `get_reelid` gives stays the file's.
    /// Where the table fails under it, the table is invalid afterwards.
    void set_reelid(const char* text);

protected:
    /// The file. It stays open behind an import that failed, for a derived class to close.
    std::FILE* file = nullptr;

private:
    void import(const LightweightString<wchar_t>& file);
    // The state of an import. A line is read into `line`, its columns cut apart in place by the offsets of the header.

    /// Bytes of `line`, the closing zero among them.
    static constexpr int line_size = 512;
    /// Room for the columns of a header.
    static constexpr int offset_slots = 48;

    /// Skips to the header line and notes its columns; false without one.
    bool find_header();
    /// The line behind the header: gauge and timecode standard of the whole file. False where it lacks.
    bool read_standards();
    /// The video reel, from the comments of that line.
    void read_reelid();
    /// All further lines, a row each.
    void read_records();
    /// All columns of a row from the line in hand. `record` counts from 1.
    void fill_row(dbrecord& row, int record);
    /// What some columns need beyond a copy.
    void apply_rule(int column, char (&text)[256], dbrecord& row, int record, TCInf std);
    /// The row's name, of scene and take.
    void name_take(char (&text)[256], int record);
    /// The line's comments behind the notes.
    void add_comments(char (&text)[256]);

    /// Turns the header into lower case and finds each column in it.
    void set_offsets(char* header);
    /// Where a column begins, from 0; -1 where the header lacks it, which is told unless it may lack.
    int get_offset(const char* header, const char* name);
    /// 1 for a column that may lack without a word.
    int optional_field(const char* name);
    /// Reads a record's line. Its first column's length less 1; 0 for a line to be skipped, -1 at the end of the file.
    int getline();
    /// Reads the second line of a record behind the first.
    bool continue_line();
    /// The text of a column of the line in hand; empty where the header lacks it.
    const char* column_text(int column) const;
    /// The file's standard, drop-frame where that column of the line says so.
    TCInf get_tv_standard(int column);
    /// Its text, good until the next call.
    const char* get_std_edlstr(int column);
    /// 0: pull-in texts never become phases.
    int pulldown_index(char* text);

    char line[line_size] = {};
    /// 1 where the header holds the last column, else 2.
    /// Lines of the file that one record takes.
    std::int32_t lines_per_record = 2;
    char reel_id[12] = {};
    /// Where each column begins, from 0; -1 where it lacks, -2 behind the last.
    int offsets[offset_slots] = {};
    /// Bytes that a line must have: up to its comments.
    std::int32_t min_line_length = 0;
    /// Of the import; not owned.
    LoggerHandle* logger = nullptr;
};
