#include "embedded/decimal_text.h"
#include "embedded/table_data.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

// A negative number of a field is no field.
std::size_t field_index(int field) { return field < 0 ? SIZE_MAX : static_cast<std::size_t>(field); }

int store(dbrecord::Impl& row, int field, std::string_view text) {
    return row.fields.set(field_index(field), text) ? 0 : -1;
}

} // namespace

const char* dbrecord::get_field(unsigned short field) const { return impl_->fields.get(field); }

int dbrecord::in_field(int field, char* buffer, int max_chars) const {
    const std::string_view text = impl_->fields.view(field_index(field));
    if (text.empty() || max_chars < 0) return 0;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(max_chars));
    std::memmove(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

int dbrecord::set_field(int field, int value) {
    char text[12];
    const char* end = std::to_chars(text, text + sizeof text, value).ptr;
    return store(*impl_, field, std::string_view(text, static_cast<std::size_t>(end - text)));
}

int dbrecord::set_field(int field, double value) { return store(*impl_, field, embedded::text_of_double(value)); }

int dbrecord::set_field(int field, const char* value, bool) {
    return store(*impl_, field, std::string_view(value ? value : ""));
}

dbrecord& dbrecord::operator=(const dbrecord& other) {
    impl_->fields.assign(other.impl_->fields);
    return *this;
}
