#pragma once
// What a record table holds, and the rows behind `dbrecord`.

#include "embedded/row_memory.h"
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

/// The texts of one row, in the memory of its table. A text stays where it is until its own field is set. An empty one
/// counts as none. Each is shorter than 2 GiB.
class RowFields {
public:
    RowFields(RowMemory& memory, std::size_t count);
    RowFields(const RowFields&) = delete;
    RowFields& operator=(const RowFields&) = delete;

    std::size_t count() const { return count_; }
    /// Null when the field has no text, or when there is no such field.
    const char* get(std::size_t field) const { return has(field) ? texts_[field].at : nullptr; }
    /// Empty in the same cases.
    std::string_view view(std::size_t field) const {
        return has(field) ? std::string_view(texts_[field].at, texts_[field].size) : std::string_view();
    }
    /// `text` holds no zero and may be part of this row. False when there is no such field.
    bool set(std::size_t field, std::string_view text);
    void clear();
    /// Takes over all texts of another row with as many fields.
    void assign(const RowFields& other);
    /// Fills a new row from a line of a table file, whose bytes become its texts: they lie in the table's memory, and
    /// may be written and read for `behind_line` bytes behind them. A plain one holds neither an escape nor a zero.
    /// False when the line doesn't fit the columns.
    bool decode(char* line, std::size_t size, bool plain);
    static constexpr std::size_t behind_line = 8;

private:
    struct Text {
        char* at;
        std::uint32_t size;
        std::uint32_t room; ///< for the closing zero, too; 0 where there is no memory yet
    };

    bool has(std::size_t field) const { return field < count_ && texts_[field].size > 0; }
    void make_room(Text& kept, std::size_t size);
    void keep(Text& kept, std::string_view text);
    bool decode_plain(char* line, char* end);
    bool decode_escaped(const char* line, const char* end, char* out);

    RowMemory* memory_;
    Text* texts_;
    std::uint32_t count_;
};

} // namespace embedded

struct dbrecord::Impl {
    Impl(embedded::RowMemory& memory, std::size_t field_count) : record(this), fields(memory, field_count) {}

    dbrecord record;
    embedded::RowFields fields;
    std::uint32_t serial = 0; ///< rises in the order in which a table's rows are made
    bool tagged = false;
    Impl* next_spare = nullptr;
};

namespace embedded {

using Row = dbrecord::Impl;

/// Makes the rows of a table, of those that it gave up as long as there are any.
class RowPool {
public:
    RowMemory& memory() { return memory_; }
    Row* make(std::size_t field_count, std::uint32_t serial);
    void give_back(Row* row) noexcept;

private:
    RowMemory memory_;
    Row* spare_ = nullptr;
};

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
    std::vector<Row*> rows;
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

    /// Not among `rows` yet, but the table's. All have the columns that the first was made with.
    Row* make_row() { return pool_->make(columns.size(), next_serial_++); }
    /// Of a row that isn't among `rows`.
    void give_back(Row* row) noexcept { pool_->give_back(row); }
    /// A copy that lasts as long as the table, for `RowFields::decode`.
    char* keep_lines(std::string_view lines);
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

    std::unique_ptr<RowPool> pool_ = std::make_unique<RowPool>();
    std::unordered_map<std::string, std::size_t> parameter_index_; ///< by folded name
    std::vector<std::pair<std::size_t, std::string>> query_;
    std::uint32_t next_serial_ = 0;
    bool tagged_only_ = false;
    mutable bool shown_known_ = false;
    mutable std::vector<std::size_t> shown_; ///< places of tagged rows, while only those are shown
};

} // namespace embedded
