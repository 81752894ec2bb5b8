#include "host/recdb.h"

#include "embedded/decimal_text.h"
#include "embedded/replacement_file.h"
#include "embedded/services.h"
#include "embedded/table_data.h"
#include "embedded/table_door.h"
#include "embedded/table_file.h"
#include "embedded/visible_text.h"
#include "host/edit.h"

#include <algorithm>
#include <cstring>
#include <memory>

using embedded::Column;
using embedded::Row;

struct recdb::Impl {
    embedded::TableData data;
    LightweightString<wchar_t> filename;
    /// The last record that `make_dummy_record` handed out; it answers for records that aren't there.
    Row* free_record = nullptr;
    int valid = 1;

    const Column* column(unsigned field) const { return field < data.columns.size() ? &data.columns[field] : nullptr; }
    const char* text(unsigned record, unsigned field) const {
        const Row* row = data.shown_row(record);
        return row ? row->fields.get(field) : nullptr;
    }
    int store(unsigned record, unsigned field, std::string_view text) {
        Row* row = data.shown_row(record);
        return row && row->fields.set(field, text) ? 0 : -1;
    }
    int save(const std::string& bytes) const {
        // A table that couldn't be read has no columns: its file stays as it is.
        const std::string path(toUTF8(filename).view());
        if (!data.columns.empty()) return embedded::write_file_whole(path, bytes, nullptr) ? 0 : -1;
        embedded::note_write_failure(path, "a table that wasn't read isn't saved");
        return -1;
    }
};

// What is half made when memory ends goes with the maker, not with the table, which isn't there yet.
recdb::recdb(const DBFieldDesc* schema) : impl_(nullptr) {
    auto made = std::make_unique<Impl>();
    for (; schema && !schema->name.empty(); ++schema) {
        const bool letter = embedded::is_type_letter(schema->type);
        made->data.columns.push_back(
            {schema->name.c_str(), static_cast<char>(letter ? schema->type : DBFieldTypes::text)});
    }
    impl_ = made.release();
}

recdb::recdb(LightweightString<wchar_t> filename, int max_records, bool) : impl_(nullptr) {
    auto made = std::make_unique<Impl>();
    made->filename = filename;
    const std::string path = toUTF8(filename).c_str();
    std::string bytes, why;
    const std::size_t limit = max_records > 0 ? static_cast<std::size_t>(max_records) : 0;
    const bool read = embedded::read_file(path, &bytes, &why) && embedded::read_table(bytes, limit, &made->data, &why);
    if (read) {
        if (!embedded::are_surely_plain(bytes)) embedded::receive_table(made->data, path);
    } else {
        embedded::note_read_failure(path, why);
    }
    made->valid = read ? 1 : 0;
    impl_ = made.release();
}

recdb::recdb(const recdb& other, int with_records) : impl_(nullptr) {
    auto made = std::make_unique<Impl>();
    made->filename = other.impl_->filename;
    made->valid = other.impl_->valid;
    made->data.copy_layout(other.impl_->data);
    if (with_records != 0) made->data.copy_shown_rows(other.impl_->data);
    impl_ = made.release();
}

recdb& recdb::operator=(const recdb& other) {
    if (this == &other) return *this;
    recdb copy(other, 1);
    std::swap(impl_, copy.impl_);
    return *this;
}

recdb::~recdb() { delete impl_; }

int recdb::save_text() { return impl_->save(embedded::table_text(impl_->data)); }

// The text form has no place for tags.
int recdb::save_tags() { return -1; }

int recdb::save_text_without_header() { return impl_->save(embedded::record_lines(impl_->data)); }

void recdb::insert_records(unsigned at, unsigned count) { impl_->data.insert_rows(impl_->data.position(at), count); }

void recdb::delete_records(unsigned at, unsigned count) { impl_->data.remove_shown(at, count); }

int recdb::delete_tagged_records() { return static_cast<int>(impl_->data.remove_tagged()); }

unsigned recdb::get_num_records() const { return static_cast<unsigned>(impl_->data.count_shown()); }

unsigned recdb::get_num_fields() const { return static_cast<unsigned>(impl_->data.columns.size()); }

dbrecord* recdb::get_record(unsigned index) const {
    Row* row = impl_->data.shown_row(index);
    return row ? &row->record : nullptr;
}

dbrecord* recdb::make_dummy_record() {
    impl_->free_record = impl_->data.make_row();
    return &impl_->free_record->record;
}

dbrecord& recdb::operator[](unsigned index) {
    if (dbrecord* record = get_record(index)) return *record;
    return impl_->free_record ? impl_->free_record->record : *make_dummy_record();
}

LightweightString<char> recdb::getField(unsigned record, unsigned field) const { return impl_->text(record, field); }

const char* recdb::get_fieldname(unsigned field) const {
    const Column* column = impl_->column(field);
    return column ? column->name.c_str() : nullptr;
}

int recdb::get_fieldsize(unsigned field) const {
    std::size_t longest = 0;
    for (const auto& row : impl_->data.rows) {
        longest = std::max(longest, row->fields.view(field).size());
    }
    return static_cast<int>(longest);
}

DBFieldTypes::eType recdb::get_field_type(unsigned field) const { return get_fieldtype(field); }

DBFieldTypes::eType recdb::get_fieldtype(unsigned field) const {
    const Column* column = impl_->column(field);
    return column ? static_cast<DBFieldTypes::eType>(column->type) : DBFieldTypes::none;
}

int recdb::set_fieldtype(unsigned field, DBFieldTypes::eType type) {
    if (!impl_->column(field) || !embedded::is_type_letter(type)) return -1;
    impl_->data.columns[field].type = static_cast<char>(type);
    return 0;
}

int recdb::get_fieldnum(const LightweightString<char>& name) const { return impl_->data.find_column(name.view()); }

int recdb::set_fieldname(unsigned field, const char* name) {
    if (!impl_->column(field) || !name || !*name) return -1;
    impl_->data.columns[field].name = name;
    return 0;
}

void recdb::set_filename(LightweightString<wchar_t> filename) { impl_->filename = filename; }

LightweightString<wchar_t> recdb::get_filename() { return impl_->filename; }

void recdb::set_sortfield(int field) {
    int fields[] = {field, -1};
    set_sortfields(fields);
}

void recdb::set_sortfields(int* fields) {
    impl_->data.sort_fields.clear();
    for (; fields && *fields >= 0; ++fields)
        impl_->data.sort_fields.push_back(static_cast<std::size_t>(*fields));
}

void recdb::set_sort_offset(int offset) { impl_->data.sort_offset = static_cast<std::size_t>(std::max(offset, 0)); }

void recdb::sort(int ascending, int fold_case) { impl_->data.sort(ascending != 0, fold_case != 0); }

// `sort` makes its keys itself, from the fields as they are by then.
void recdb::sortPrepare(int, int) {}

void recdb::set_tag(unsigned record, int value) { impl_->data.set_tag(record, value != 0); }

void recdb::invert_tag(unsigned record) { set_tag(record, get_tag(record) == 0); }

void recdb::set_all_tags(int value) {
    for (const auto& row : impl_->data.rows)
        row->tagged = value != 0;
    impl_->data.forget_shown();
}

void recdb::invert_all_tags() {
    for (const auto& row : impl_->data.rows)
        row->tagged = !row->tagged;
    impl_->data.forget_shown();
}

void recdb::set_show_tags_only(int on) { impl_->data.show_tagged_only(on != 0); }

int recdb::get_show_tags_only() { return impl_->data.shows_tagged_only() ? 1 : 0; }

int recdb::get_tag(unsigned record) {
    const Row* row = impl_->data.shown_row(record);
    return row && row->tagged ? 1 : 0;
}

int recdb::get_num_tags() { return static_cast<int>(impl_->data.count_tagged()); }

void recdb::set_query(dbrecord* query) { impl_->data.set_query(query ? &query->impl()->fields : nullptr); }

int recdb::tag_matching_records(int add) { return static_cast<int>(impl_->data.tag_matching(add != 0)); }

int recdb::tag_all_different(int field) {
    return static_cast<int>(impl_->data.tag_different(static_cast<std::size_t>(field)));
}

int recdb::match_record(int record) const {
    const Row* row = impl_->data.shown_row(static_cast<unsigned>(record));
    return row && impl_->data.matches_query(*row) ? 1 : 0;
}

int recdb::baseIndex(int record) {
    const Row* row = impl_->data.shown_row(static_cast<unsigned>(record));
    return row ? static_cast<int>(impl_->data.rank_made(*row)) : -1;
}

int recdb::set_field(unsigned record, unsigned field, bool value) { return set_field(record, field, value ? 1 : 0); }

int recdb::set_field(unsigned record, unsigned field, double value) {
    return impl_->store(record, field, embedded::text_of_double(value));
}

int recdb::set_field(unsigned record, unsigned field, int value) {
    return impl_->store(record, field, std::to_string(value));
}

int recdb::set_field(unsigned record, unsigned field, const char* value) {
    return impl_->store(record, field, std::string_view(value ? value : ""));
}

int recdb::set_field(unsigned field, const Cookie& value) { return set_field(0, field, value.asString(false).c_str()); }

int recdb::in_field(unsigned record, unsigned field, bool& value) const {
    const char* text = impl_->text(record, field);
    if (!text) return -1;
    value = std::strcmp(text, "0") != 0;
    return 0;
}

int recdb::in_field(unsigned record, unsigned field, double& value) const {
    const char* text = impl_->text(record, field);
    if (!text) return -1;
    value = embedded::double_of_text(text);
    return 0;
}

int recdb::in_field(unsigned record, unsigned field, int& value) const {
    const char* text = impl_->text(record, field);
    if (!text) return -1;
    value = embedded::int_of_text(text);
    return 0;
}

int recdb::in_field(unsigned record, unsigned field, char* buffer, int max_chars) const {
    if (!impl_->text(record, field)) return -1;
    get_record(record)->in_field(static_cast<int>(field), buffer, max_chars);
    return 0;
}

int recdb::add_records(int count) {
    const std::size_t first = impl_->data.rows.size();
    impl_->data.insert_rows(first, static_cast<std::size_t>(std::max(count, 0)));
    return static_cast<int>(first);
}

int recdb::add_recdb(recdb* other) { return other && impl_->data.append_joined(other->impl_->data) ? 0 : -1; }

int recdb::add_param(const char* name, const char* value) {
    if (!name) return -1;
    impl_->data.put_parameter(name, value ? value : "");
    return 0;
}

void recdb::set_param_val(const char* name, const char* value) { add_param(name, value); }

const char* recdb::get_param_val(const char* name) const {
    const auto* found = name ? impl_->data.find_parameter(name) : nullptr;
    return found ? found->value.c_str() : nullptr;
}

int recdb::findFirst(const char* field, const char* value, int from) {
    const int column = field ? impl_->data.find_column(field) : -1;
    const std::string_view wanted(value ? value : "");
    const unsigned count = column < 0 ? 0 : get_num_records();
    for (unsigned record = static_cast<unsigned>(std::max(from, 0)); record < count; ++record) {
        const char* text = impl_->text(record, static_cast<unsigned>(column));
        if (std::string_view(text ? text : "") == wanted) return static_cast<int>(record);
    }
    return -1;
}

int recdb::get_valid() const { return impl_->valid; }

void recdb::set_valid(int valid) { impl_->valid = valid; }
