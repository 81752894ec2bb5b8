#pragma once
// Settings, messages, dates, paths and the other base services of the host.
//
// All of it is called on the thread that called the library. Nothing reports an error but by what is said below; what
// throws ends the run, as all services do.

#include "host/text.h"

#include <cstdint>

/// A block of keyed settings. Every form returns -1 and leaves its target alone when the key is absent, and
/// 0 otherwise; a caller that wants a default sets it first. The library asks for each key as
/// its tables of keys spell it. A block is the host's and is read during a call only.
/// Keys are case-sensitive in the embedded host. One text may be asked for in several forms; an entry keeps no type of
/// its own there.
class configb {
public:
    virtual ~configb() = default;
    /// A whole number. The embedded host reads it as `atoi` does: 0 where the text is none.
    virtual int in(const LightweightString<char>& key, int& value) const = 0;
    virtual int in(const LightweightString<char>& key, unsigned int& value) const = 0;
    /// In the embedded host "" and "0" are false, all else is true.
    virtual int in(const LightweightString<char>& key, bool& value) const = 0;
    /// The value as it stands, UTF-8.
    virtual int in(const LightweightString<char>& key, LightweightString<char>& value) const = 0;
    /// Copies without a limit; the library itself takes texts through the form above.
    virtual int in(const LightweightString<char>& key, char* value) const = 0;
    /// The holder keeps its own share of the text.
    virtual int in(const LightweightString<char>& key, strp_field& value) const = 0;
};

/// A host-wide setting; `fallback` when it isn't set, otherwise kept within `lowest` to `highest`. The library asks for
///
///     "allow_auto_unrender"              1 unless set; 0: rendered material is listed as it stands
///     "audio_cutlist_24P"                0 unless set; not 0: the timecode list shows 24-frame timecode
///     "audio_cutlist_by_timecode_test"   0 unless set; not 0: sound gets the timecode list alone
///
/// The library passes the limits of `int`, so nothing is cut. It asks anew in every run.
int config_int(const char* key, int fallback, int lowest, int highest);

/// Where messages go. The library never looks at what becomes of one.
/// The caller's; the library holds it by reference and only while the call lasts.
class LoggerBase {
public:
    virtual ~LoggerBase() = default;
    /// One line, with or without a line end, in the user's language where it comes from `resourceStrW` and else in
    /// English. Levels:
    ///
    ///     0   progress, and warnings and errors that may be read past: nearly all
    ///     2   an event with a key number below zero that the scan for re-use leaves out
    ///     4   a message that ends the run, told once
    ///     5   the long part of a changelist begins
    virtual void message(const LightweightString<wchar_t>& text, int level) = 0;
    /// A line by the rules of `printf`, of at most 1023 bytes (a longer one is cut). It goes to `message`
    /// at level 0.
    void Out(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

/// What the entries of the library take: a program derives its own from this one.
class LoggerHandle : public LoggerBase {};

/// The number of a message text of the host.
/// The library's own list of them is in `base/resource_texts.h`.
using ResId = int;
/// The form of a message text. The library asks for `heading` for the name of black alone.
enum class ResStrFmt : int { plain = 0, heading = 1 };

/// The text of a message in the user's language; empty for a number without one. Where it holds "$FILE$", the library
/// puts the name of a file there.
/// The second gives it in a form of its own.
LightweightString<wchar_t> resourceStrW(ResId id);
LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format);

/// A date as reports print it.
/// A plain value that takes no memory: the text lies in the date itself.
class date_def {
public:
    /// The beginning of the epoch.
    date_def() { convert(0); }
    /// Sets the date from seconds since the epoch; 0 is a date like others.
    /// Below 0 is before the epoch. Local time goes by the process's time zone at the time of the call.
    void convert(std::int64_t seconds);
    /// Local time as "21 November 2026 13:45:07", the day without a leading zero. Owned by this date.
    const char* get_named_date() const { return named_; }

private:
    /// Zero-terminated.
    char named_[40];
};

/// The present time in seconds since the epoch; the environment's SOURCE_DATE_EPOCH where it is set.
/// A report asks it for its heading, so a fixed SOURCE_DATE_EPOCH makes reports that are the same byte for byte. A
/// value there that is no whole number is passed over.
std::int64_t present_time();
/// Seconds since the epoch in the form of `date_def::get_named_date`.
/// `flag` is the host's; the library passes false, for the date of the edit in a cutlist's header.
LightweightString<char> timeAsString(unsigned int seconds, bool flag);

namespace iSettings {
/// Which directory of tables is meant; the library asks for that of the templates of logs alone.
enum eType : int { record_tables = 1 };
} // namespace iSettings

/// Where the working files of a changelist go; must be writable. With or without a separator at its end, as `joinPaths`
/// takes both.
/// The text is the host's, and good until the next call.
const LightweightString<wchar_t>& getListsDirectory();
/// Ends with a path separator.
/// File names go straight behind it.
const LightweightString<wchar_t>& getRDBDirectory(iSettings::eType kind);
/// A path from a directory and a name, with one separator between.
/// An empty side leaves the other alone. Nothing is asked of the disc.
LightweightString<wchar_t> joinPaths(const LightweightString<wchar_t>& left, const LightweightString<wchar_t>& right);
/// The path without its last extension and the point; unchanged when the name has none.
/// A point in a directory's name, or at the start of the file's own, begins no extension.
LightweightString<wchar_t> stripExtension(const LightweightString<wchar_t>& path);
/// True where a file stands there; a directory is none.
/// It says nothing of whether the file can be read.
bool fileExists(const LightweightString<wchar_t>& path);

/// Brackets a long run, so that the host's watchdog knows the thread is busy. Calls come in pairs: a changelist begins
/// once and ends once on each way out.
class SystemWatchdog {
public:
    /// Tells the host that this thread works and doesn't hang.
    static void beginLifeSupport();
    /// The run is over, whether it succeeded or not. What the host throws here is dropped.
    static void endLifeSupport();
};

/// Debug output of the host, by the rules of `printf`. The library calls it only while a switch of its generator is on,
/// which no option turns on.
/// The embedded host writes it to standard error.
void trace_printf(const char* format, ...);

/// The reader side of a shared lock. The library holds it while it reads one stored value of an edit, never longer and
/// never twice.
/// Whoever changes the stored values holds the writer side, which is the host's alone.
class SharedMutex {
public:
    /// Waits where the host's lock makes it; then pairs with one `leaveAsReader`.
    void enterAsReader();
    /// The result is the host's; the library doesn't look at it.
    /// In the embedded host false where no reader was in.
    bool leaveAsReader();

private:
    /// Threads that read at the moment.
    int readers_ = 0;
};

class ArrayRec;

/// The host's container of records, which it owns: it deletes them when it goes. Indexes count from 0.
/// A changelist keeps the cutlist files of each side in one, ordered by reel. It belongs to one thread at a time and
/// can't be copied.
class Array {
public:
    Array() = default;
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    virtual ~Array();
    /// For the host's eyes: all records, one behind the other.
    virtual void printOn(GrowString& out) const;
    /// Takes the record over and puts it at `index`.
    /// An index past the end counts as the end.
    virtual void insertDatum(ArrayRec* record, unsigned index);
    /// Takes the record over and puts it at the end, whatever the order.
    virtual void appendDatum(ArrayRec* record);
    /// Deletes the record at `index` and takes the new one over in its place.
    /// Past the end it appends. The record that lies there already may be given: it stays.
    virtual void replaceDatum(unsigned index, ArrayRec* record);

    /// Keeps the records that `add` brings in the order of their compare.
    /// Off at first. Records that are in already stay where they are.
    void sorted(bool on) { sorted_ = on; }
    /// The place, from 1, of the first record that equals `record`; 0 if there is none.
    /// Looks from the front, record by record; the order plays no part.
    int find(const ArrayRec& record) const;
    /// Takes the record over and puts it in its place, behind its equals, or at the end.
    void add(ArrayRec* record);

    unsigned size() const { return static_cast<unsigned>(records_.size()); }
    /// The record stays the container's; `index` must be below `size`.
    ArrayRec* operator[](unsigned index) const { return records_[index]; }

private:
    /// Owned; deleted with the container.
    Vector<ArrayRec*> records_;
    /// Set: `add` looks for the place.
    bool sorted_ = false;
};

/// A record of an `Array`. A derived one says how it compares and how it prints.
class ArrayRec {
public:
    virtual ~ArrayRec() = default;
    /// Below, at or above 0 as this record sorts before, with or behind `other`.
    /// `other` is of the same derived class: one container holds records of one class.
    virtual int compare(const ArrayRec& other) const = 0;
    /// Both operators go through `compare`.
    virtual bool operator==(const ArrayRec& other) const { return compare(other) == 0; }
    virtual bool operator!=(const ArrayRec& other) const { return compare(other) != 0; }
    virtual void printOn(GrowString& out) const = 0;
};
