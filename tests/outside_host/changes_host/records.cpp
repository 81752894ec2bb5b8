// Record tables that live in memory: saving one puts it under its name, reading one looks it up there.

#include "changes_host/records.h"

#include <host/edit.h>
#include <host/recdb.h>
#include <host/settings.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <strings.h>
#include <utility>

using Texts = std::vector<std::string>;

struct dbrecord::Impl {
    Texts fields;
    bool tagged = false;
    int made_as = 0; ///< the place in the order in which records were made
};

namespace {

/// A record with its row.
struct Line {
    explicit Line(dbrecord::Impl values) : impl(std::move(values)), row(&impl) {}
    dbrecord::Impl impl;
    dbrecord row;
};

struct Content {
    std::vector<std::pair<std::string, DBFieldTypes::eType>> columns;
    std::vector<std::pair<std::string, std::string>> params;
    std::vector<Texts> rows;
};

std::map<std::string, Content>& shelf() {
    static auto& tables = *new std::map<std::string, Content>;
    return tables;
}

bool same_name(const std::string& a, const char* b) { return strcasecmp(a.c_str(), b) == 0; }

bool is_number(const std::string& text) {
    const std::size_t first = text[0] == '-' ? 1 : 0;
    const bool digits = text.size() > first && text.find_first_not_of("0123456789", first) == std::string::npos;
    return digits && (text[first] != '0' || text == "0");
}

/// Empty texts, then numbers by value, then texts by bytes.
int compare(const std::string& a, const std::string& b) {
    const auto rank = [](const std::string& text) { return text.empty() ? 0 : is_number(text) ? 1 : 2; };
    if (rank(a) != rank(b)) return rank(a) < rank(b) ? -1 : 1;
    if (rank(a) != 1) return a.compare(b);
    const long long x = std::atoll(a.c_str()), y = std::atoll(b.c_str());
    return x < y ? -1 : x > y ? 1 : 0;
}

} // namespace

const char* dbrecord::get_field(unsigned short field) const {
    const Texts& fields = impl_->fields;
    return field < fields.size() && !fields[field].empty() ? fields[field].c_str() : nullptr;
}

int dbrecord::in_field(int field, char* buffer, int max_chars) const {
    const char* text = get_field(static_cast<unsigned short>(field));
    if (!text) return 0;
    const std::size_t length = std::min(std::strlen(text), static_cast<std::size_t>(max_chars));
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

int dbrecord::set_field(int field, const char* value, bool) {
    if (field < 0 || static_cast<std::size_t>(field) >= impl_->fields.size()) return -1;
    impl_->fields[static_cast<std::size_t>(field)] = value ? value : "";
    return 0;
}

int dbrecord::set_field(int field, int value) { return set_field(field, std::to_string(value).c_str(), true); }

int dbrecord::set_field(int field, double value) {
    char text[40];
    *std::to_chars(text, text + sizeof text - 1, value).ptr = '\0';
    return set_field(field, text, true);
}

dbrecord& dbrecord::operator=(const dbrecord& other) {
    impl_->fields = other.impl_->fields;
    return *this;
}

struct recdb::Impl {
    Content head; ///< columns and parameters
    std::vector<std::unique_ptr<Line>> lines;
    std::unique_ptr<Line> query_line;
    Texts query;
    std::vector<int> order;
    std::string name;
    int valid = 1;
    int tags_only = 0;
    int made = 0;

    std::vector<Line*> shown() const {
        std::vector<Line*> list;
        for (const auto& line : lines)
            if (!tags_only || line->impl.tagged) list.push_back(line.get());
        return list;
    }
    Line* at(unsigned index) const {
        const std::vector<Line*> list = shown();
        return index < list.size() ? list[index] : nullptr;
    }
    void add(Texts fields) {
        fields.resize(head.columns.size());
        lines.push_back(std::make_unique<Line>(dbrecord::Impl{std::move(fields), false, made++}));
    }
    template <class Wanted> int remove(Wanted wanted) { return static_cast<int>(std::erase_if(lines, wanted)); }
    bool matches(const Line& line) const {
        for (std::size_t field = 0; field < query.size(); ++field)
            if (line.impl.fields[field].compare(0, query[field].size(), query[field]) != 0) return false;
        return true;
    }
    Content content() const {
        Content all = head;
        for (const auto& line : lines)
            all.rows.push_back(line->impl.fields);
        return all;
    }
};

recdb::recdb(const DBFieldDesc* schema) : impl_(new Impl) {
    for (; !schema->name.empty(); ++schema)
        impl_->head.columns.emplace_back(schema->name.c_str(), schema->type);
}

recdb::recdb(LightweightString<wchar_t> filename, int, bool) : impl_(new Impl) {
    impl_->name = toUTF8(filename).c_str();
    const auto found = shelf().find(impl_->name);
    impl_->valid = found != shelf().end();
    if (!impl_->valid) return;
    impl_->head = found->second;
    for (Texts& row : std::exchange(impl_->head.rows, {}))
        impl_->add(std::move(row));
}

recdb::recdb(const recdb& other, int with_records) : iObject(), RDBBase(), Notifier(), impl_(new Impl) {
    impl_->head = other.impl_->head;
    impl_->valid = other.impl_->valid;
    if (!with_records) return;
    for (const Line* line : other.impl_->shown())
        impl_->add(line->impl.fields);
}

recdb& recdb::operator=(const recdb& other) {
    recdb copy(other, 1);
    std::swap(impl_, copy.impl_);
    return *this;
}

recdb::~recdb() { delete impl_; }

int recdb::save_text() {
    shelf()[impl_->name] = impl_->content();
    return 0;
}
int recdb::save_tags() { return -1; }
int recdb::save_text_without_header() { return -1; }

void recdb::insert_records(unsigned, unsigned count) { add_records(static_cast<int>(count)); }
void recdb::delete_records(unsigned at, unsigned count) {
    const std::vector<Line*> list = impl_->shown();
    impl_->remove([&](const std::unique_ptr<Line>& line) {
        const auto place = std::find(list.begin(), list.end(), line.get()) - list.begin();
        return place >= at && place < static_cast<long>(at) + static_cast<long>(count);
    });
}
int recdb::delete_tagged_records() {
    return impl_->remove([](const std::unique_ptr<Line>& line) { return line->impl.tagged; });
}
int recdb::add_records(int count) {
    const auto first = static_cast<int>(get_num_records());
    for (int i = 0; i < count; ++i)
        impl_->add({});
    return first;
}
int recdb::add_recdb(recdb*) { return -1; }

unsigned recdb::get_num_records() const { return static_cast<unsigned>(impl_->shown().size()); }
unsigned recdb::get_num_fields() const { return static_cast<unsigned>(impl_->head.columns.size()); }
dbrecord* recdb::get_record(unsigned index) const {
    Line* line = impl_->at(index);
    return line ? &line->row : nullptr;
}
dbrecord* recdb::make_dummy_record() {
    impl_->query_line = std::make_unique<Line>(dbrecord::Impl{Texts(impl_->head.columns.size()), false, -1});
    return &impl_->query_line->row;
}
dbrecord& recdb::operator[](unsigned index) {
    dbrecord* row = get_record(index);
    return row ? *row : *make_dummy_record();
}
LightweightString<char> recdb::getField(unsigned record, unsigned field) const {
    const dbrecord* row = get_record(record);
    return row ? row->get_field(static_cast<unsigned short>(field)) : nullptr;
}

const char* recdb::get_fieldname(unsigned field) const {
    return field < get_num_fields() ? impl_->head.columns[field].first.c_str() : nullptr;
}
int recdb::get_fieldsize(unsigned) const { return 0; }
DBFieldTypes::eType recdb::get_field_type(unsigned field) const {
    return field < get_num_fields() ? impl_->head.columns[field].second : DBFieldTypes::none;
}
DBFieldTypes::eType recdb::get_fieldtype(unsigned field) const { return get_field_type(field); }
int recdb::set_fieldtype(unsigned, DBFieldTypes::eType) { return -1; }
int recdb::set_fieldname(unsigned, const char*) { return -1; }
int recdb::get_fieldnum(const LightweightString<char>& name) const {
    for (std::size_t i = 0; i < impl_->head.columns.size(); ++i)
        if (same_name(impl_->head.columns[i].first, name.c_str())) return static_cast<int>(i);
    return -1;
}

void recdb::set_filename(LightweightString<wchar_t> filename) { impl_->name = toUTF8(filename).c_str(); }
LightweightString<wchar_t> recdb::get_filename() { return fromUTF8(impl_->name.c_str(), -1); }

void recdb::set_sortfield(int field) { impl_->order = {field}; }
void recdb::set_sortfields(int* fields) {
    impl_->order.clear();
    for (; *fields != -1; ++fields)
        impl_->order.push_back(*fields);
}
void recdb::set_sort_offset(int) {}
void recdb::sort(int, int) {
    const auto before = [this](const std::unique_ptr<Line>& a, const std::unique_ptr<Line>& b) {
        for (const int field : impl_->order) {
            const auto column = static_cast<std::size_t>(field);
            const int order = compare(a->impl.fields[column], b->impl.fields[column]);
            if (order != 0) return order < 0;
        }
        return false;
    };
    std::stable_sort(impl_->lines.begin(), impl_->lines.end(), before);
}
void recdb::sortPrepare(int, int) {}
int recdb::baseIndex(int record) {
    const Line* line = impl_->at(static_cast<unsigned>(record));
    return line ? line->impl.made_as : -1;
}

void recdb::set_tag(unsigned record, int value) {
    if (Line* line = impl_->at(record)) line->impl.tagged = value != 0;
}
void recdb::invert_tag(unsigned record) {
    if (Line* line = impl_->at(record)) line->impl.tagged = !line->impl.tagged;
}
void recdb::set_all_tags(int value) {
    for (const auto& line : impl_->lines)
        line->impl.tagged = value != 0;
}
void recdb::invert_all_tags() {
    for (const auto& line : impl_->lines)
        line->impl.tagged = !line->impl.tagged;
}
void recdb::set_show_tags_only(int on) { impl_->tags_only = on; }
int recdb::get_show_tags_only() { return impl_->tags_only; }
int recdb::get_tag(unsigned record) {
    const Line* line = impl_->at(record);
    return line && line->impl.tagged;
}
int recdb::get_num_tags() {
    return static_cast<int>(
        std::count_if(impl_->lines.begin(), impl_->lines.end(), [](const auto& line) { return line->impl.tagged; }));
}
void recdb::set_query(dbrecord* query) { impl_->query = query->impl()->fields; }
int recdb::tag_matching_records(int add) {
    int found = 0;
    for (const auto& line : impl_->lines) {
        const bool matches = impl_->matches(*line);
        found += matches;
        line->impl.tagged = matches || (add && line->impl.tagged);
    }
    return found;
}
int recdb::match_record(int record) const {
    const Line* line = impl_->at(static_cast<unsigned>(record));
    return line && impl_->matches(*line);
}
int recdb::tag_all_different(int) { return -1; }

int recdb::set_field(unsigned record, unsigned field, const char* value) {
    dbrecord* row = get_record(record);
    return row ? row->set_field(static_cast<int>(field), value, true) : -1;
}
int recdb::set_field(unsigned record, unsigned field, bool value) {
    return set_field(record, field, value ? "1" : "0");
}
int recdb::set_field(unsigned record, unsigned field, int value) {
    return set_field(record, field, std::to_string(value).c_str());
}
int recdb::set_field(unsigned record, unsigned field, double value) {
    dbrecord* row = get_record(record);
    return row ? row->set_field(static_cast<int>(field), value) : -1;
}
int recdb::set_field(unsigned, const Cookie&) { return -1; }
int recdb::in_field(unsigned, unsigned, bool&) const { return -1; }
int recdb::in_field(unsigned, unsigned, double&) const { return -1; }
int recdb::in_field(unsigned, unsigned, int&) const { return -1; }
int recdb::in_field(unsigned record, unsigned field, char* buffer, int max_chars) const {
    const dbrecord* row = get_record(record);
    return row ? row->in_field(static_cast<int>(field), buffer, max_chars) : -1;
}
int recdb::findFirst(const char*, const char*, int) { return -1; }

int recdb::add_param(const char* name, const char* value) {
    set_param_val(name, value);
    return 0;
}
void recdb::set_param_val(const char* name, const char* value) {
    for (auto& [known, old] : impl_->head.params) {
        if (!same_name(known, name)) continue;
        old = value;
        return;
    }
    impl_->head.params.emplace_back(name, value);
}
const char* recdb::get_param_val(const char* name) const {
    for (const auto& [known, value] : impl_->head.params)
        if (same_name(known, name)) return value.c_str();
    return nullptr;
}
int recdb::get_valid() const { return impl_->valid; }
void recdb::set_valid(int valid) { impl_->valid = valid; }

void forget_tables() { shelf().clear(); }
