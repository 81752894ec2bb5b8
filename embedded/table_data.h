#pragma once
// What a record table holds, and the rows behind `dbrecord`.

#include "host/recdb.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace embedded {

/// The texts of one row. A field without text is null. Texts lie behind each other in one block as long as it
/// has room; what comes later has a block of its own, so a text stays where it is until its own field is set.
class RowFields {
public:
    explicit RowFields(std::size_t count) : count_(static_cast<std::uint32_t>(count)) {}
    ~RowFields();
    RowFields(const RowFields&) = delete;
    RowFields& operator=(const RowFields&) = delete;

    std::size_t count() const { return count_; }
    /// Null when the field has no text, or when there is no such field.
    const char* get(std::size_t field) const { return texts_ && field < count_ ? texts_[field] : nullptr; }
    /// `text` holds no zero and may be part of this row. False when there is no such field.
    bool set(std::size_t field, std::string_view text);
    void clear();
    /// Takes over all texts of another row with as many fields.
    void assign(const RowFields& other);
    /// Fills a new row from a line of a table file; false when the line doesn't fit the columns.
    bool decode(std::string_view line);

private:
    void place(std::size_t field, char* text);
    void copy_block(const RowFields& other);
    bool decode_plain(std::string_view line);
    void release(char* text);
    void make_block(std::size_t size);
    /// A copy in the block where it has room, else in a block of its own.
    char* keep(std::string_view text);

    std::unique_ptr<char*[]> texts_; ///< made when the first field gets a text
    std::unique_ptr<char[]> block_;
    std::size_t block_size_ = 0;
    std::size_t block_used_ = 0;
    std::uint32_t count_;
    bool has_blocks_of_their_own_ = false; ///< some text may have one
};

} // namespace embedded

struct dbrecord::Impl {
    Impl(std::size_t field_count, std::uint32_t made_as) : record(this), fields(field_count), serial(made_as) {}

    dbrecord record;
    embedded::RowFields fields;
    std::uint32_t serial; ///< rises in the order in which a table's rows are made
    bool tagged = false;
};

namespace embedded {

using Row = dbrecord::Impl;

struct Column {
    std::string name;
    char type = DBFieldTypes::text;
};

struct Parameter {
    std::string name;
    std::string value;
};

/// The lower-case form by which names compare; ASCII letters only.
std::string folded(std::string_view text);
bool is_type_letter(int type);

class TableData {
public:
    std::vector<Column> columns;
    std::deque<Parameter> parameters;
    /// In the present sort order.
    std::vector<std::unique_ptr<Row>> rows;
    std::vector<std::size_t> sort_fields;
    std::size_t sort_offset = 0;

    void clear();
    /// Columns, parameters and the choice of sort fields, without rows.
    void copy_layout(const TableData& other);
    /// The rows that `other` shows, with their tags.
    void copy_shown_rows(const TableData& other);

    void put_parameter(std::string_view name, std::string_view value);
    const Parameter* find_parameter(std::string_view name) const;
    /// The first column of that name, or -1.
    int find_column(std::string_view name) const;

    std::unique_ptr<Row> make_row() { return std::make_unique<Row>(columns.size(), next_serial_++); }
    void insert_rows(std::size_t position, std::size_t count);
    void remove_shown(std::size_t first, std::size_t count);
    std::size_t remove_tagged();
    /// False when no column is shared.
    bool append_joined(const TableData& other);

    /// Call after changing `rows` or tags behind this class's back.
    void forget_shown() { shown_known_ = false; }
    void show_tagged_only(bool on);
    bool shows_tagged_only() const { return tagged_only_; }
    std::size_t count_shown() const;
    /// Null past the end.
    Row* shown_row(std::size_t index) const;
    /// The place in `rows` of the row shown as `index`; the number of rows past the end.
    std::size_t position(std::size_t index) const;
    void set_tag(std::size_t index, bool on);
    std::size_t count_tagged() const;
    /// How many rows were made before that one.
    std::size_t rank_made(const Row& row) const;

    void set_query(const RowFields* fields);
    bool matches_query(const Row& row) const;
    std::size_t tag_matching(bool add);
    std::size_t tag_different(std::size_t field);

    void sort(bool ascending, bool fold_case);

private:
    const std::vector<std::size_t>& shown() const;
    /// Which column of `other` each column here takes its text from, or -1.
    std::vector<int> joined_columns(const TableData& other) const;

    std::unordered_map<std::string, std::size_t> parameter_index_; ///< by folded name
    std::vector<std::pair<std::size_t, std::string>> query_;
    std::uint32_t next_serial_ = 0;
    bool tagged_only_ = false;
    mutable bool shown_known_ = false;
    mutable std::vector<std::size_t> shown_; ///< places of tagged rows, while only those are shown
};

} // namespace embedded
