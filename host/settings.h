#pragma once
// Settings, messages, dates, paths and the other base services of the host.

#include "host/text.h"

#include <cstdint>

/// A block of keyed settings. Every form returns -1 and leaves its target alone when the key is absent, and
/// 0 otherwise; a caller that wants a default sets it first.
class configb {
public:
    virtual ~configb() = default;
    virtual int in(const LightweightString<char>& key, int& value) const = 0;
    virtual int in(const LightweightString<char>& key, unsigned int& value) const = 0;
    virtual int in(const LightweightString<char>& key, bool& value) const = 0;
    virtual int in(const LightweightString<char>& key, LightweightString<char>& value) const = 0;
    /// Copies without a limit; the library itself takes texts through the form above.
    virtual int in(const LightweightString<char>& key, char* value) const = 0;
    virtual int in(const LightweightString<char>& key, strp_field& value) const = 0;
};

/// A host-wide setting; `fallback` when it isn't set, otherwise kept within `lowest` to `highest`.
int config_int(const char* key, int fallback, int lowest, int highest);

/// Where messages go. The library never looks at what becomes of one.
class LoggerBase {
public:
    virtual ~LoggerBase() = default;
    /// One line, with or without a line end. Levels: 0 progress and what may be read past, 2 and 5 one
    /// message each, 4 a message that ends a run.
    virtual void message(const LightweightString<wchar_t>& text, int level) = 0;
    /// A line by the rules of `printf`, of at most 1023 bytes (a longer one is cut). It goes to `message`
    /// at level 0.
    void Out(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

class LoggerHandle : public LoggerBase {};

/// The number of a message text of the host.
using ResId = int;
enum class ResStrFmt : int { plain = 0, heading = 1 };

LightweightString<wchar_t> resourceStrW(ResId id);
LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format);

/// A date as reports print it.
class date_def {
public:
    date_def() { convert(0); }
    /// Sets the date from seconds since the epoch.
    void convert(std::int64_t seconds);
    /// Local time as "21 November 2026 13:45:07", the day without a leading zero. Owned by this date.
    const char* get_named_date() const { return named_; }

private:
    char named_[40];
};

/// The present time in seconds since the epoch; the environment's SOURCE_DATE_EPOCH where it is set.
std::int64_t present_time();
/// Seconds since the epoch in the form of `date_def::get_named_date`.
LightweightString<char> timeAsString(unsigned int seconds, bool flag);

namespace iSettings {
enum eType : int { record_tables = 1 };
}

const LightweightString<wchar_t>& getListsDirectory();
/// Ends with a path separator.
const LightweightString<wchar_t>& getRDBDirectory(iSettings::eType kind);
LightweightString<wchar_t> joinPaths(const LightweightString<wchar_t>& left, const LightweightString<wchar_t>& right);
/// The path without its last extension and the point; unchanged when the name has none.
LightweightString<wchar_t> stripExtension(const LightweightString<wchar_t>& path);
bool fileExists(const LightweightString<wchar_t>& path);

/// Brackets a long run, so that the host's watchdog knows the thread is busy. Calls come in pairs.
class SystemWatchdog {
public:
    static void beginLifeSupport();
    static void endLifeSupport();
};

/// Debug output of the host.
void trace_printf(const char* format, ...);

/// The reader side of a shared lock.
class SharedMutex {
public:
    void enterAsReader();
    bool leaveAsReader();

private:
    int readers_ = 0;
};

class ArrayRec;

/// The host's container of records.
class Array {
public:
    Array() = default;
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    virtual ~Array();
    virtual void printOn(GrowString& out) const;
    /// Takes the record over and puts it at `index`.
    virtual void insertDatum(ArrayRec* record, unsigned index);
    virtual void appendDatum(ArrayRec* record);
    /// Deletes the record at `index` and takes the new one over in its place.
    virtual void replaceDatum(unsigned index, ArrayRec* record);

    /// Keeps the records that `add` brings in the order of their compare.
    void sorted(bool on) { sorted_ = on; }
    /// The place, from 1, of the first record that equals `record`; 0 if there is none.
    int find(const ArrayRec& record) const;
    /// Takes the record over and puts it in its place, behind its equals, or at the end.
    void add(ArrayRec* record);

    unsigned size() const { return static_cast<unsigned>(records_.size()); }
    ArrayRec* operator[](unsigned index) const { return records_[index]; }

private:
    Vector<ArrayRec*> records_;
    bool sorted_ = false;
};

class ArrayRec {
public:
    virtual ~ArrayRec() = default;
    /// Below, at or above 0 as this record sorts before, with or behind `other`.
    virtual int compare(const ArrayRec& other) const = 0;
    virtual bool operator==(const ArrayRec& other) const { return compare(other) == 0; }
    virtual bool operator!=(const ArrayRec& other) const { return compare(other) != 0; }
    virtual void printOn(GrowString& out) const = 0;
};
