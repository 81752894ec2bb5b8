#include "tool/log_match.h"

#include "embedded/label_kinds.h"
#include "embedded/rates.h"
#include "embedded/source_naming.h"
#include "film/log_rows.h"
#include "formats/file_names.h"
#include "formats/logs/log_table.h"
#include "formats/text_lines.h"
#include "host/ascii_text.h"
#include "host/recdb.h"
#include "tool/open_logs.h"
#include "tool/option_table.h"
#include "tool/output_files.h"
#include "tool/reel_aliases.h"
#include "tool/tool_error.h"

#include <algorithm>
#include <climits>
#include <map>
#include <set>

namespace tool {
namespace {

using embedded::Fraction;
using embedded::SourceDescription;
using formats::lower_case;

/// As much of a reel as the library compares.
constexpr std::size_t reel_compared = 15;

/// Of "dailies/A012C003.mov" the name that a log has of the file.
std::string file_of(const SourceDescription& source) {
    constexpr std::string_view by_name = "name:";
    if (source.identity.substr(0, by_name.size()) == by_name) return source.name;
    return formats::stem_of(source.identity, "/\\");
}

std::string reel_key(const SourceDescription& source) { return source.reel(embedded::tape_reel); }
std::string clip_key(const SourceDescription& source) { return source.name; }
std::string camera_key(const SourceDescription& source) {
    const std::string& roll = source.reel(embedded::camera_reel);
    return roll.empty() ? reel_key(source) : roll;
}

struct MatchKey {
    const char* name; ///< as --match takes it
    const char* what; ///< in messages
    std::string (*of_source)(const SourceDescription& source);
    const char* columns[2]; ///< of the table: the second counts where the first is empty
};

constexpr MatchKey match_keys[] = {
    {"reel", "reel", reel_key, {"reel", ""}},
    {"tape", "reel", reel_key, {"reel", ""}},
    {"clip", "clip", clip_key, {"name", ""}},
    {"file", "file", file_of, {"name", "reel"}},
    {"camera-roll", "camera roll", camera_key, {"cam reel", ""}},
};

struct TimeColumn {
    const char* name; ///< as --log-time takes it
    const char* start;
    const char* standard;
};

constexpr TimeColumn time_columns[] = {
    {"source", "start time", "label_std"},
    {"camera", "start camcode", "cam label_std"},
    {"sound", "snd start", "snd label_std"},
};

template <class Row, std::size_t count> const Row& row_named(const Row (&rows)[count], const std::string& name) {
    for (const Row& row : rows)
        if (name == row.name) return row;
    return rows[0];
}

/// A log's rows by the texts of one key.
class RowIndex {
public:
    void add(const std::string& text, int row) {
        if (!text.empty()) rows_[lower_case(text)].push_back(row);
    }

    /// The rows of that text, else those of the longest that begins it, else those whose text it begins. `loosely` says
    /// that they aren't the text's own.
    std::vector<int> find(const std::string& text, bool& loosely) const {
        const std::string wanted = lower_case(text);
        loosely = false;
        if (const auto own = rows_.find(wanted); own != rows_.end()) return own->second;
        loosely = true;
        for (std::size_t length = wanted.size(); length-- > 1;)
            if (const auto head = rows_.find(wanted.substr(0, length)); head != rows_.end()) return head->second;
        std::vector<int> longer;
        for (auto at = rows_.lower_bound(wanted); at != rows_.end() && begins(at->first, wanted); ++at)
            longer.insert(longer.end(), at->second.begin(), at->second.end());
        std::sort(longer.begin(), longer.end());
        return longer;
    }

private:
    static bool begins(const std::string& text, const std::string& head) {
        return text.compare(0, head.size(), head) == 0;
    }

    std::map<std::string, std::vector<int>> rows_;
};

/// The table of a log, and the columns of it that matter here.
class LogTable {
public:
    explicit LogTable(const std::string& path) : table_(wide_path(path), INT_MAX, false) {
        if (!table_.get_valid()) throw JobError(path + ": isn't a logging table");
    }

    recdb& table() { return table_; }
    int count() const { return static_cast<int>(table_.get_num_records()); }
    std::string text(int row, const char* column) const {
        const int field = table_.get_fieldnum(column);
        const dbrecord* record = table_.get_record(static_cast<unsigned>(row));
        const char* found = field < 0 || !record ? nullptr : record->get_field(static_cast<unsigned short>(field));
        return found ? found : "";
    }
    std::string text_or_head(int row, const char* column) const {
        const std::string own = text(row, column);
        const char* head = own.empty() ? table_.get_param_val(column) : nullptr;
        return head ? head : own;
    }

private:
    recdb table_;
};

/// A row's stretch by another of its timecodes.
struct OtherTimes {
    LabelPoint start, end;
    TCInf standard;
};

LabelPoint point_of(const std::string& text, const TCInf& standard) {
    const label_t kind = TvStd_to_label_type(standard);
    LabelPoint point(0, kind ? kind : label_tc_24);
    if (!text.empty()) point.set_sample(text.c_str());
    return text.empty() || !point.is_useful() ? LabelPoint() : point;
}

Fraction share_of(const LabelPoint& point) {
    const embedded::TimecodeBase* base = embedded::timecode_base(point.type());
    return base ? embedded::film_share(base->count) : Fraction(1);
}

/// As long on film as it is. Nothing where the row lacks one of the two.
std::optional<OtherTimes> other_times(const LogTable& log, int row, const TimeColumn& column) {
    const TCInf own = edlstr_to_tv_standard(log.text_or_head(row, "label_std").c_str());
    OtherTimes times;
    times.standard = edlstr_to_tv_standard(log.text_or_head(row, column.standard).c_str());
    if (times.standard.rate == Qb::frame_rate_unset) times.standard = own;
    times.start = point_of(log.text(row, column.start), times.standard);
    const LabelPoint start = point_of(log.text(row, "start time"), own), end = point_of(log.text(row, "end time"), own);
    if (!times.start.is_useful() || !start.is_useful() || !end.is_useful()) return std::nullopt;
    const Fraction film = Fraction(end.sample - start.sample) * share_of(start);
    times.end = times.start;
    times.end += static_cast<int>((film / share_of(times.start)).nearest());
    return times;
}

/// Reels as the library compares them.
class ReelNames {
public:
    void add(const std::string& reel) { ++names_[compared(reel)]; }
    void remove(const std::string& reel) {
        const auto name = names_.find(compared(reel));
        if (--name->second == 0) names_.erase(name);
    }
    /// Whether the library would take it for one of them, or one of them for it: where either begins the other.
    bool meets(const std::string& reel) const {
        const std::string name = compared(reel);
        const auto longer = names_.lower_bound(name);
        if (longer != names_.end() && longer->first.compare(0, name.size(), name) == 0) return true;
        for (std::size_t length = 1; length < name.size(); ++length)
            if (names_.contains(name.substr(0, length))) return true;
        return false;
    }

private:
    static std::string compared(const std::string& reel) { return lower_case(reel).substr(0, reel_compared); }

    std::map<std::string, int> names_;
};

/// The rows for one text of the key, and the reel by which they are found.
struct Group {
    std::string text; ///< as the first source has it
    std::string reel;
    std::vector<int> rows;
};

class Matcher {
public:
    Matcher(const LogMatching& matching, embedded::Warnings& warnings)
        : matching_(matching), key_(row_named(match_keys, matching.key)), time_(row_named(time_columns, matching.time)),
          log_(matching.log), warnings_(warnings) {}

    void find_groups(const std::vector<SourceDescription>& sources);
    MatchedLog write();
    /// What sources of that text of the key go by; empty where no row is theirs.
    std::map<std::string, std::string> reels() const;

private:
    RowIndex index() const;
    void add_group(const std::string& text, const RowIndex& rows);
    void name_groups();
    void copy_row(int from, const std::string& reel, recdb& to, MatchedLog& made);
    void set_times(int from, unsigned to, recdb& made);
    void set(recdb& made, unsigned row, const char* column, const std::string& text) {
        const int field = made.get_fieldnum(column);
        if (field >= 0) made.set_field(row, static_cast<unsigned>(field), text.c_str());
    }

    const LogMatching& matching_;
    const MatchKey& key_;
    const TimeColumn& time_;
    LogTable log_;
    embedded::Warnings& warnings_;
    std::map<std::string, Group> groups_; ///< by text in lower case
    std::set<std::string> other_reels_;   ///< of sources that have no rows, in lower case
};

RowIndex Matcher::index() const {
    RowIndex rows;
    for (int row = 0; row < log_.count(); ++row)
        for (const char* column : key_.columns) {
            const std::string text = *column ? log_.text(row, column) : "";
            rows.add(text, row);
            if (!text.empty()) break;
        }
    return rows;
}

void Matcher::add_group(const std::string& text, const RowIndex& rows) {
    const auto [entry, fresh] = groups_.try_emplace(lower_case(text));
    if (!fresh) return;
    Group& group = entry->second;
    group.text = text;
    bool loosely = false;
    group.rows = rows.find(text, loosely);
    const std::string what = std::string(key_.what) + " \"" + text + "\"";
    if (group.rows.empty())
        warnings_.push_back({embedded::WarningKind::doubt, matching_.log + ": no row has " + what});
    else if (loosely)
        warnings_.push_back({embedded::WarningKind::doubt, matching_.log + ": no row has " + what + "; rows of \"" +
                                                               log_.text(group.rows.front(), key_.columns[0]) +
                                                               "\" are taken, which begins alike"});
}

void Matcher::find_groups(const std::vector<SourceDescription>& sources) {
    const RowIndex rows = index();
    for (const SourceDescription& source : sources)
        if (const std::string text = key_.of_source(source); !text.empty()) add_group(text, rows);
    for (const SourceDescription& source : sources) {
        const auto group = groups_.find(lower_case(key_.of_source(source)));
        const bool found = group != groups_.end() && !group->second.rows.empty();
        if (!found) other_reels_.insert(lower_case(reel_key(source)));
    }
    std::erase_if(groups_, [](const auto& group) { return group.second.rows.empty(); });
    name_groups();
}

/// "A1" as "A1(7)": as much of it as the library still tells from others with such a number.
std::string numbered(const std::string& text, int number) {
    const std::string end = '(' + std::to_string(number) + ')';
    return text.substr(0, reel_compared - end.size()) + end;
}

// The text itself where no other begins alike; else with a number, which may be all that tells long ones apart.
void Matcher::name_groups() {
    ReelNames names;
    for (const std::string& reel : other_reels_)
        names.add(reel);
    for (auto& [text, group] : groups_)
        names.add(group.reel = group.text);
    int number = 0;
    for (auto& [text, group] : groups_) {
        names.remove(group.reel);
        while (names.meets(group.reel))
            group.reel = numbered(group.text, ++number);
        names.add(group.reel);
    }
}

// The row's phase at midnight is that of its source timecode; no list looks at it.
void Matcher::set_times(int from, unsigned to, recdb& made) {
    constexpr int counting_of_pulldown = 30;
    const std::optional<OtherTimes> times = other_times(log_, from, time_);
    LabelPoint start = times->start, end = times->end;
    set(made, to, "start time", start.get_string());
    set(made, to, "end time", end.get_string());
    set(made, to, "label_std", tv_standard_to_edlstr(times->standard));
    set(made, to, "sequence", "");
    const embedded::TimecodeBase* base = embedded::timecode_base(start.type());
    if (!base || base->count != counting_of_pulldown) set(made, to, "pulldown", "N");
}

void Matcher::copy_row(int from, const std::string& reel, recdb& to, MatchedLog& made) {
    const auto row = static_cast<unsigned>(made.places.size());
    to.add_records(1);
    const dbrecord* record = log_.table().get_record(static_cast<unsigned>(from));
    for (unsigned field = 0; field < to.get_num_fields(); ++field)
        if (const char* text = record->get_field(static_cast<unsigned short>(field))) to.set_field(row, field, text);
    set(to, row, "reel", reel);
    made.places.push_back(from);
}

// The first row stays first, under a reel that no source has where it is nobody's: its kind of film counts for all.
MatchedLog Matcher::write() {
    MatchedLog made;
    made.path = work_file("matched.RDB");
    recdb table(log_.table(), 0);
    if (log_.count() > 0) copy_row(0, "~~~", table, made);
    for (const auto& [text, group] : groups_)
        for (const int row : group.rows) {
            if (time_.start != std::string_view("start time") && !other_times(log_, row, time_)) continue;
            if (made.places.size() == formats::most_table_rows)
                throw JobError(matching_.log + ": its rows belong to more sources than a table holds rows");
            copy_row(row, group.reel, table, made);
            if (time_.start != std::string_view("start time"))
                set_times(row, static_cast<unsigned>(made.places.size()) - 1, table);
        }
    table.set_filename(wide_path(made.path));
    if (table.save_text() != 0) throw JobError(made.path + ": couldn't be written");
    check_written();
    return made;
}

std::map<std::string, std::string> Matcher::reels() const {
    std::map<std::string, std::string> reels;
    for (const auto& [text, group] : groups_)
        reels.emplace(text, group.reel);
    return reels;
}

ReelAliases aliases_of(const LogMatching& matching) {
    return matching.aliases.empty() ? ReelAliases() : read_aliases(matching.aliases);
}

void apply_aliases(const ReelAliases& aliases, SourceDescription& source) {
    const auto reel = source.reels.find(embedded::tape_reel);
    if (reel == source.reels.end()) return;
    if (const auto alias = aliases.find(lower_case(reel->second)); alias != aliases.end()) reel->second = alias->second;
}

std::map<std::string, MatchedLog>& matched_logs() {
    static std::map<std::string, MatchedLog> logs;
    return logs;
}

} // namespace

std::vector<std::string> match_names() { return names_in(match_keys, &MatchKey::name); }
std::vector<std::string> log_time_names() { return names_in(time_columns, &TimeColumn::name); }

void name_by_aliases(const LogMatching& matching) {
    embedded::set_source_naming(
        [aliases = aliases_of(matching)](SourceDescription& source) { apply_aliases(aliases, source); });
}

void match_log(const LogMatching& matching, const std::vector<SourceDescription>& sources,
               embedded::Warnings& warnings) {
    Matcher matcher(matching, warnings);
    matcher.find_groups(sources);
    matched_logs()[matching.log] = matcher.write();
    const MatchKey& key = row_named(match_keys, matching.key);
    embedded::set_source_naming(
        [aliases = aliases_of(matching), reels = matcher.reels(), &key](SourceDescription& source) {
            apply_aliases(aliases, source);
            const auto reel = reels.find(lower_case(key.of_source(source)));
            if (reel != reels.end()) source.reels[embedded::tape_reel] = reel->second;
        });
}

const MatchedLog* matched_log(const std::string& log) {
    const auto found = matched_logs().find(log);
    return found == matched_logs().end() ? nullptr : &found->second;
}

} // namespace tool
