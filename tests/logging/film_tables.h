#pragma once
// Film logs for the tests, with what derived classes see laid open.

#include "host/recdb.h"
#include "quillbrook/logging_tables.h"
#include "tests/support/scratch_directory.h"

#include <string>
#include <utility>
#include <vector>

constexpr Qb::FrameRate rate(int number) { return static_cast<Qb::FrameRate>(number); }

class OpenFilm : public filmdb {
public:
    using filmdb::calc_midnight_pulldown;
    using filmdb::cam_std;
    using filmdb::check_fields;
    using filmdb::film_origin;
    using filmdb::film_rate;
    using filmdb::film_std;
    using filmdb::filmdb;
    using filmdb::fix_prefix;
    using filmdb::pulldown;
    using filmdb::sequence;
    using filmdb::source_name;
    using loggingdb::chans;
    using loggingdb::drop_fix;
    using loggingdb::input_clean;
    using loggingdb::picqual;
    using loggingdb::set_error_message;
    using loggingdb::snd_std;
    using loggingdb::tc_clean;
    using loggingdb::vid_std;
};

inline std::string param(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "(none)";
}

inline LightweightString<wchar_t> wide(const std::string& text) { return fromUTF8(text.c_str(), -1); }

using Params = std::vector<std::pair<std::string, std::string>>;
using Columns = std::vector<std::string>;
using Records = std::vector<std::vector<std::string>>;

/// The bytes of a table file.
inline std::string table_bytes(const Params& params, const Columns& columns, const Records& records = {}) {
    std::string bytes = "%recdb 1\n";
    for (const auto& [name, value] : params)
        bytes += name + "=" + value + "\n";
    std::string names, types;
    for (const std::string& column : columns) {
        names += (names.empty() ? "" : "\t") + column;
        types += types.empty() ? "a" : "\ta";
    }
    bytes += "\n" + names + "\n" + types + "\n";
    for (const auto& record : records) {
        for (std::size_t field = 0; field < record.size(); ++field)
            bytes += (field == 0 ? "" : "\t") + record[field];
        bytes += "\n";
    }
    return bytes;
}

/// A bare table in memory.
class MadeTable : public recdb {
public:
    MadeTable(const Params& params, const Columns& columns, const Records& records = {})
        : recdb(schema_of(columns).data()) {
        for (const auto& [name, value] : params)
            add_param(name.c_str(), value.c_str());
        for (const auto& record : records) {
            const auto row = static_cast<unsigned>(add_records(1));
            for (unsigned field = 0; field < record.size(); ++field)
                set_field(row, field, record[field].c_str());
        }
    }

private:
    static std::vector<DBFieldDesc> schema_of(const Columns& columns) {
        std::vector<DBFieldDesc> schema;
        for (const std::string& column : columns)
            schema.push_back({column.c_str(), DBFieldTypes::text});
        schema.emplace_back();
        return schema;
    }
};
