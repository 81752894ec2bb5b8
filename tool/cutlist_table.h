#pragma once
// What the command itself wants to know of a cutlist table.

#include "embedded/decimal_text.h"
#include "host/labels.h"
#include "host/recdb.h"
#include "tool/open_logs.h"

#include <climits>
#include <memory>
#include <optional>

namespace tool {

class CutlistTable {
public:
    /// The parameter "CUTDB" of the tables that are read and written.
    static constexpr const char* own_version = "Rev 22";

    /// Reads at most `records` records; a table of which only the head is wanted needs one.
    explicit CutlistTable(const std::string& path, int records = INT_MAX)
        : own_(std::make_unique<const recdb>(wide_path(path), records, false)), table_(*own_) {}
    /// Of a table that is open already, and outlives this.
    explicit CutlistTable(const recdb& table) : table_(table) {}

    bool is_readable() const { return table_.get_valid() != 0; }
    bool is_empty() const { return table_.get_num_records() == 0; }
    /// Empty where the table or the parameter isn't there.
    std::string parameter(const char* name) const {
        const char* value = is_readable() ? table_.get_param_val(name) : nullptr;
        return value ? value : "";
    }
    /// Events whose film has no number: their keys only tell them apart.
    unsigned events_without_key() const {
        constexpr int key_missing = 19; // by number, as two names of columns stand twice
        unsigned count = 0;
        for (unsigned i = 0; is_readable() && i < table_.get_num_records(); ++i) {
            const char* text = table_.get_record(i)->get_field(key_missing);
            if (text && *text != '0') ++count;
        }
        return count;
    }
    label_t film() const { return edlstr_to_label_type(parameter("film label_std").c_str()); }
    /// Nothing where the table doesn't say.
    std::optional<ChannelKind> kind() const { return kind_of_channel(parameter("channel")); }
    /// As the headings of a sound list count; 0 where the table doesn't say.
    int channel_number() const { return embedded::int_of_text(parameter("channel").erase(0, 1).c_str()); }
    bool is_sound() const { return kind() == sound_kind; }

private:
    const std::unique_ptr<const recdb> own_;
    const recdb& table_;
};

} // namespace tool
