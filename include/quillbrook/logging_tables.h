#pragma once
// Film logging tables: where each shot of the film material lies, one row a shot.
//
// A table is a `recdb`: rows, columns, header parameters, loading and saving are the host's. What stands here
// is the schema, the header of a log and the rules about both. Nothing writes to a logger, and an instance is
// used by one thread at a time. Where the host's tables or memory fail under one of these operations the table
// is invalid from then on, and `get_error_message` says why; what the host throws while its own `recdb` is made
// or copied is the host's own affair.

#include "host/edit.h"
#include "host/labels.h"
#include "host/recdb.h"
#include "quillbrook/export.h"

/// Outcome of the last load. Not every value but 0 is a failure: `get_valid` decides.
enum fdb_error : std::int32_t {
    fdb_ok = 0,
    fdb_load_failed = 1,   ///< the file couldn't be read as a table
    fdb_not_filmdb = 2,    ///< the header has no revision, or revision 0
    fdb_old_filmdb = 3,    ///< revision below 6
    fdb_too_new = 4,       ///< revision above 16
    fdb_missing_field = 5, ///< only a result of `add_any_recdb`
    fdb_old_revision = 6,  ///< revision 6 to 15: usable, but not current
};

/// What any log has: a revision, standards of picture and sound, a picture quality, a channel mask and the
/// state of the last load. The setters also write the header.
class QUILLBROOK_API loggingdb : public recdb {
public:
    /// A table with the same rows, header and state. Nothing is shared, and the file on disc stays with both names.
    loggingdb(const loggingdb& other);
    loggingdb& operator=(const loggingdb& other);
    ~loggingdb() override;

    /// The header's "Title".
    void set_title(char* text);
    /// The standard of the picture's timecode, "label_std".
    void set_vid_std(TCInf std);
    /// That of the sound's, "snd label_std". A standard that isn't set leaves the header as it was.
    void set_snd_std(TCInf std);
    /// The quality of the picture, "pic qual". Values of 0 and below leave the header as it was.
    void set_picqual(int value);
    /// The channels that were logged. Not kept in the header.
    void set_chans(const ChannelMask& mask);

    /// Of the last load, or of the last `add_any_recdb`.
    fdb_error get_error();
    /// At most 127 characters, for the host to show; the table's own.
    const char* get_error_message();
    /// 16 in a new table, in a loaded one what its header says.
    int get_revision();

protected:
    /// Reads a table of at most `max_records` rows; `get_valid` is 0 where that fails.
    loggingdb(const LightweightString<wchar_t>& name, int max_records);
    /// An empty table of that schema, which must outlive it.
    explicit loggingdb(DBFieldDesc* fields);

    /// The state and the header of a new table, which isn't valid yet.
    void init();
    void set_param(const char* key, const char* value);
    /// Into the header as decimal text.
    void add_int_param(const char* key, int value);
    /// Into the header as the standard's text.
    void add_std(const char* key, TCInf std);
    /// The table can't be trusted any more.
    void fail();
    /// Formats into `error_message`, cut to what it holds.
    void set_error_message(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Colons between the digits of a timecode text, and before the last part a semicolon, or a full stop
    /// where `drop` is 0. In place.
    static void drop_fix(char* text, int drop);
    /// Takes white space off the end, then all double quotes, and cuts to 255 characters. In place.
    static void input_clean(char* text);
    /// Empties a text that can't be a timecode. 1 if that was for a character that no timecode has, else 0.
    static int tc_clean(char* text);

    // What the setters set and a load finds; the header holds the same as text.

    /// 0 before `init` or a load.
    std::int32_t revision = 0;
    /// The standards are 25 frames without drop until they are set or loaded.
    TCInf vid_std{Qb::frame_rate_25, 0};
    TCInf snd_std{Qb::frame_rate_25, 0};
    /// 0: not known.
    std::int32_t picqual = 0;
    /// No channels until they are set.
    ChannelMask chans{0};
    fdb_error error = fdb_ok;
    /// Zero-terminated; empty while nothing went wrong.
    char error_message[128] = {};
};

/// A log of film: camera rolls, key and ink numbers, pulldown.
class QUILLBROOK_API filmdb : public loggingdb {
public:
    /// A new table without rows; not valid until somebody declares it so.
    filmdb();
    /// The same with a file name: `tableName`, or where that is empty `name` with the extension ".RDB".
    /// Nothing is read or written on disc.
    filmdb(const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& tableName);
    /// Loads a table of at most 32,000 rows. Look at `get_valid`, then at `get_error`.
    explicit filmdb(const LightweightString<wchar_t>& name);
    /// As of the base, with all that concerns film.
    filmdb(const filmdb& other);
    filmdb& operator=(const filmdb& other);
    ~filmdb() override;

    /// The table that a new log starts from: the template "film.dbt" of the record table directory where
    /// there is one of the current revision, else a new table. A template that can't be used at all comes
    /// back invalid. The caller deletes the result; null when there is no memory for one.
    static filmdb* make();

    /// Appends the rows of another table, which stays the caller's. One of the current revision is appended
    /// as it stands; of any other the columns "name", "reel", "start time", "end time", "label_std",
    /// "cam reel" and "start keycode" must be there, and columns are joined by name. The result is 0, 1 when
    /// nothing could be appended, or `fdb_missing_field` with the last missing column in the message.
    int add_any_recdb(recdb* other);

    /// A standard that isn't set leaves the header as it was.
    void set_cam_std(TCInf std);
    /// The gauge, "film label_std"; `gauge_unset` leaves the header as it was.
    void set_film_std(film_gauge gauge);
    /// Film frames a second.
    void set_film_rate(double rate);
    /// True: timecodes were made from film, frame for frame or by pulldown.
    void set_film_origin(bool on);
    /// True: film frames were spread over video frames, so the phase counts.
    void set_pulldown(bool on);
    /// The phase at midnight. The header takes it only while pulldown is on.
    void set_sequence(int value);

protected:
    /// 0, or -1 when a required column lacks.
    int check_fields(recdb* other);
    /// Copies a row into row `record`, by the names of the columns.
    void stuff_fields(int record, recdb* other, int otherRecord);
    /// The pulldown phase at midnight, from the phase `seq` of the frame at `tc`: seconds, or a timecode text.
    int calc_midnight_pulldown(double tc, int seq, TCInf std);
    int calc_midnight_pulldown(const char* tc, int seq, TCInf std);
    /// Makes an upper-case film label prefix of exactly 8 characters. The buffer holds at least 9.
    static void fix_prefix(char* text);

    // As in the base.

    film_gauge film_std = gauge_unset;
    TCInf cam_std{Qb::frame_rate_25, 0};
    /// 1 or 0, as is `pulldown`.
    std::int32_t film_origin = 0;
    std::int32_t pulldown = 0;
    /// Phase at midnight, from 0.
    std::int32_t sequence = 0;
    /// Film frames a second; 0: not known.
    double film_rate = 0.0;
    /// What the table was made from; nothing here reads it.
    LightweightString<wchar_t> source_name;

private:
    static filmdb* make_from_template();
    int append_rows(recdb* other);
    void init();
    bool load_revision();
    bool refuse(fdb_error reason, const char* message);
    void load_header();
    void load_pulldown();
};

/// The version of the library, static.
QUILLBROOK_API const char* filmDllVersionStr();
