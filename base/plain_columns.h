#pragma once
// Columns of a table that hold members of a record as they stand: one line of a table at compile time for each.
//
//     constexpr PlainColumn<cut_s> columns[] = {plain_column<&cut_s::event>(cf_event), ...};

#include "base/number_text.h"
#include "host/recdb.h"

#include <cstddef>
#include <cstdint>

namespace plain_columns {

// A number that the row lacks leaves its member as it was, as does a text.
inline void read(std::int32_t& member, const dbrecord& row, int field) {
    if (const char* text = row.get_field(static_cast<unsigned short>(field))) member = decimal_number(text);
}
inline void read(double& member, const dbrecord& row, int field) {
    if (const char* text = row.get_field(static_cast<unsigned short>(field))) member = floating_number(text);
}
template <std::size_t N> void read(char (&member)[N], const dbrecord& row, int field) {
    row.in_field(field, member, static_cast<int>(N - 1));
}

inline int write(std::int32_t member, dbrecord& row, int field) { return row.set_field(field, member); }
inline int write(double member, dbrecord& row, int field) { return row.set_field(field, member); }
inline int write(const char* member, dbrecord& row, int field) { return row.set_field(field, member, true); }

template <class Member> struct owner_of;
template <class Record, class Type> struct owner_of<Type Record::*> { using type = Record; };

} // namespace plain_columns

/// A column whose text is a member's, unaltered.
template <class Record> struct PlainColumn {
    int field;
    void (*read)(Record&, const dbrecord&, int field);
    /// 0, or -1 when the row has no such field.
    int (*write)(const Record&, dbrecord&, int field);
};

template <auto Member> constexpr auto plain_column(int field) {
    using Record = typename plain_columns::owner_of<decltype(Member)>::type;
    return PlainColumn<Record>{
        field,
        [](Record& record, const dbrecord& row, int number) { plain_columns::read(record.*Member, row, number); },
        [](const Record& record, dbrecord& row, int number) {
            return plain_columns::write(record.*Member, row, number);
        }};
}
