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
    ftldb(const ftldb& other);
    ftldb& operator=(const ftldb& other);
    ~ftldb() override;

    /// The video reel that the file names, at most 8 characters and as it stands there; the table's own.
    const char* get_reelid();
    /// Puts a reel into every row. What `get_reelid` gives stays the file's.
    void set_reelid(const char* text);

protected:
    /// The file. It stays open behind an import that failed, for a derived class to close.
    std::FILE* file = nullptr;

private:
    void import(const LightweightString<wchar_t>& file);
    static constexpr int line_size = 512;
    static constexpr int offset_slots = 48;

    bool find_header();
    bool read_standards();
    void read_reelid();
    void read_records();
    void fill_row(dbrecord& row, int record);
    void apply_rule(int column, char (&text)[256], dbrecord& row, int record, TCInf std);
    void name_take(char (&text)[256], int record);
    void add_comments(char (&text)[256]);

    void set_offsets(char* header);
    int get_offset(const char* header, const char* name);
    int optional_field(const char* name);
    int getline();
    bool continue_line();
    const char* column_text(int column) const;
    TCInf get_tv_standard(int column);
    const char* get_std_edlstr(int column);
    int pulldown_index(char* text);

    char line[line_size] = {};
    std::int32_t lines_per_record = 2;
    char reel_id[12] = {};
    int offsets[offset_slots] = {};
    std::int32_t min_line_length = 0;
    LoggerHandle* logger = nullptr;
};
