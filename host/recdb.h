#pragma once
// Record tables: text records with named fields, header parameters, tags and a sort order, and a text file
// behind them.
//
//     parameters    CUTDB = Rev 22, film label_std = 35mm-4p, ...      names and values, in order
//     schema        event  track  edit_in  edit_out  ...               columns, numbered from 0
//     records       1      1      0        48        ...               rows, numbered in the present order
//     tags            x                                                one a row; a switch shows the tagged alone
//
// Every value is text; numbers are read from it and written as it. The library derives its tables from `recdb` and
// overrides nothing, so the order of the virtual operations is what both sides must share: new ones go to the end. What
// the library calls is marked nowhere else than in its own sources; a host that serves nobody else may leave the rest
// empty. What throws ends the run, as all services do.

#include "host/counted.h"
#include "host/text.h"

#include <cstdint>

class Cookie;
class IdStamp;
class NotifyMsg;
class recdb;

namespace Qb {
class Guard;
}

/// What a column holds, by a letter. Values are stored as text whatever the type.
namespace DBFieldTypes {
enum eType : std::int32_t { none = 0, text = 'a', timecode = 't' };
}

/// One column of a table. A schema is an array of these, closed by an entry without a name; columns are
/// addressed by their position in it, from 0.
/// The embedded host's tables copy it; only during the call must it be there for them.
struct DBFieldDesc {
    /// May hold blanks; empty in the entry that closes a schema.
    LightweightString<char> name;
    /// `none` in the entry that closes a schema.
    DBFieldTypes::eType type = DBFieldTypes::none;
};

/// One row. It belongs to its table and goes with it, or when it is deleted there. Field numbers are those of the
/// schema.
class dbrecord {
public:
    /// The field's text, or null when it has none (an empty one, or no such field).
    const char* get_field(unsigned short field) const;
    /// Copies at most `max_chars` bytes and closes them with a zero, so `buffer` holds `max_chars` + 1. An
    /// empty field leaves the buffer as it was. The result is the number of bytes copied.
    int in_field(int field, char* buffer, int max_chars) const;
    /// Decimal text. These return 0, or -1 when the row has no such field.
    int set_field(int field, int value);
    /// The shortest of 15, 16 or 17 digits that reads back to the same value.
    int set_field(int field, double value);
    /// Stores a copy; null counts as empty.
    /// The embedded host copies whatever `copy` says.
    int set_field(int field, const char* value, bool copy);

    /// Copies the fields of a record of the same layout; its tag stays where it is.
    dbrecord& operator=(const dbrecord& other);

    struct Impl;
    explicit dbrecord(Impl* impl) : impl_(impl) {}
    dbrecord(const dbrecord&) = delete;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

/// What tables are counted by.
class RDBBase : public virtual iObject {};

/// Those who watch a table. The library never calls these; they keep their places for the host.
class NotifierBase : public virtual iVirtual {
public:
    virtual void deregisterNotification(const IdStamp&) {}
    virtual void deregisterNotification(Qb::Ptr<Qb::Guard>&) {}
};

template <class Message> class GenericNotifier : public NotifierBase {
public:
    virtual void issueNotification(const Message&, int) {}
};

class Notifier : public GenericNotifier<NotifyMsg> {};

/// A record table. Records are numbered in the present sort order, from 0; while show-tags-only is on, only
/// the tagged ones are seen and counted. Operations that return `int` give 0, or -1 on failure, unless they
/// say otherwise. Names of columns and parameters compare without regard to case.
class recdb : public RDBBase, public Notifier {
public:
    /// An empty, valid table.
    explicit recdb(const DBFieldDesc* schema);
    /// Reads a table of at most `max_records` records; `get_valid` is 0 when that fails. The flag is the
    /// host's.
    recdb(LightweightString<wchar_t> filename, int max_records, bool flag);
    /// A copy: `with_records` 1 copies the rows that `other` shows, 0 the columns and parameters only.
    recdb(const recdb& other, int with_records);
    recdb(const recdb& other) : recdb(other, 1) {}
    recdb& operator=(const recdb& other);
    ~recdb() override;

    /// Writes the table to its file, replaced whole or not at all. 0, or -1 when it couldn't be written.
    virtual int save_text();
    /// Stores the tags where the host keeps them.
    virtual int save_tags();
    /// Empty records ahead of the one of that number.
    /// Past the last record they go to the end.
    virtual void insert_records(unsigned at, unsigned count);
    /// As many as there are from `at` on, `count` at most.
    virtual void delete_records(unsigned at, unsigned count);
    /// The number of records removed.
    /// Shown or not.
    virtual int delete_tagged_records();
    /// Of the records that are shown.
    virtual unsigned get_num_records() const;
    /// Columns of the schema.
    virtual unsigned get_num_fields() const;
    /// Null past the last record. The row is the table's.
    virtual dbrecord* get_record(unsigned index) const;
    /// A free record with all fields empty, owned by the table, for use as a query.
    virtual dbrecord* make_dummy_record();
    /// A field's text by value; empty for a field or a record that isn't there.
    virtual LightweightString<char> getField(unsigned record, unsigned field) const;
    /// Null when there is no such column.
    virtual const char* get_fieldname(unsigned field) const;
    /// Bytes of the longest text in the column.
    virtual int get_fieldsize(unsigned field) const;
    /// `none` for a column that isn't there; so below.
    virtual DBFieldTypes::eType get_field_type(unsigned field) const;
    virtual int set_fieldtype(unsigned field, DBFieldTypes::eType type);
    virtual DBFieldTypes::eType get_fieldtype(unsigned field) const;
    /// The first column of that name, or -1.
    virtual int get_fieldnum(const LightweightString<char>& name) const;
    /// Renames a column; the fields stay.
    virtual int set_fieldname(unsigned field, const char* name);
    /// Where `save_text` writes to; nothing is done on disc.
    virtual void set_filename(LightweightString<wchar_t> filename);
    /// Empty for a table that has no file yet.
    virtual LightweightString<wchar_t> get_filename();
    /// One field alone.
    virtual void set_sortfield(int field);
    /// Most significant first, closed by -1. Read before the call returns.
    virtual void set_sortfields(int* fields);
    /// Texts compare from this byte on.
    virtual void set_sort_offset(int offset);
    /// Ascending, stable against the present order: empty texts, then numbers by value, then other texts by
    /// bytes, or by their lower-case forms when `fold_case` isn't 0. Numbers are decimal digits without a
    /// leading zero, with or without a minus sign.
    /// All records are put in order, shown or not.
    virtual void sort(int ascending, int fold_case);
    /// `value` 0 takes the tag off, any other puts it on. The record is one of those shown.
    virtual void set_tag(unsigned record, int value);
    /// On where it was off.
    virtual void invert_tag(unsigned record);
    /// Of all records, shown or not; so below.
    virtual void set_all_tags(int value);
    virtual void invert_all_tags();
    /// 1: only tagged records are seen and counted from here on; 0: all are. The order stays.
    virtual void set_show_tags_only(int on);
    /// The switch as it stands.
    virtual int get_show_tags_only();
    /// 1 or 0.
    virtual int get_tag(unsigned record);
    /// Of all records.
    virtual int get_num_tags();
    /// Its non-empty fields become the criteria; a field matches when it begins with its criterion.
    /// The criteria are copied; null or an empty record matches all. They stay until the next call.
    virtual void set_query(dbrecord* query);
    /// Tags the records that match, leaving other tags alone when `add` isn't 0. The number that matched.
    /// All records are looked at, shown or not. Upper and lower case differ.
    virtual int tag_matching_records(int add);
    /// Tags the first record of each value of the field and no others. The number tagged.
    /// Records without that field count as one value, the empty one.
    virtual int tag_all_different(int field);
    /// Sets a field of a record that is shown: "1" or "0", decimal text, or the text itself.
    virtual int set_field(unsigned record, unsigned field, bool value);
    virtual int set_field(unsigned record, unsigned field, double value);
    virtual int set_field(unsigned record, unsigned field, int value);
    virtual int set_field(unsigned record, unsigned field, const char* value);
    /// Stores the cookie's text in the field of the first record.
    virtual int set_field(unsigned field, const Cookie& value);
    /// Reads a field of a record that is shown; -1 leaves the target as it was.
    virtual int in_field(unsigned record, unsigned field, bool& value) const;
    virtual int in_field(unsigned record, unsigned field, double& value) const;
    virtual int in_field(unsigned record, unsigned field, int& value) const;
    /// `max_chars` as of a record; the result is 0 here.
    virtual int in_field(unsigned record, unsigned field, char* buffer, int max_chars) const;
    /// The index of the first new record.
    virtual int add_records(int count);
    /// Replaces the value in place when the table holds the name.
    /// Else it goes behind the others. A null name is a failure, a null value an empty text.
    virtual int add_param(const char* name, const char* value);
    /// The same as `add_param`, without a result.
    virtual void set_param_val(const char* name, const char* value);
    /// Null when the table has no such parameter.
    /// The table's own, good until a parameter is set.
    virtual const char* get_param_val(const char* name) const;
    /// The first record at or behind `from` whose field of that name has that text, or -1.
    /// An empty `value` finds a record without that field. `from` below 0 counts as 0.
    virtual int findFirst(const char* field, const char* value, int from);
    /// What `sort` would do, for a host that sorts later.
    virtual void sortPrepare(int ascending, int fold_case);
    /// 1 where the record fits the query, else 0.
    virtual int match_record(int record) const;
    /// The place of a record in the order in which records were made, or -1.
    virtual int baseIndex(int record);
    /// Not 0 when the table was made from a schema, or read without fault; a derived table may think otherwise.
    virtual int get_valid() const;

    /// The record of that index; the free record of `make_dummy_record` past the end.
    dbrecord& operator[](unsigned index);
    /// The records alone, no parameters and no columns.
    int save_text_without_header();
    /// Appends the records of another table, columns joined by name; -1 when no column is shared.
    int add_recdb(recdb* other);

protected:
    /// For a derived table that judges what was read.
    void set_valid(int valid);

private:
    struct Impl;
    Impl* impl_;
};
