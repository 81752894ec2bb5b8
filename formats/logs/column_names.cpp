#include "formats/logs/column_names.h"

#include "formats/logs/film_values.h"
#include "formats/text_lines.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace formats {
namespace {

struct ColumnName {
    std::string_view name; ///< in lower case, without blanks and marks
    LogField field;
};

// Of several names of one field the first counts.
constexpr ColumnName column_names[] = {
    {"name", LogField::name},
    {"clipname", LogField::name},
    {"clip", LogField::name},
    {"shotname", LogField::name},
    {"edlclipname", LogField::name},
    {"tape", LogField::reel},
    {"tapename", LogField::reel},
    {"tapeid", LogField::reel},
    {"videoreel", LogField::reel},
    {"vtroll", LogField::reel},
    {"reel", LogField::reel},
    {"reelname", LogField::reel},
    {"sourcetape", LogField::reel},
    {"start", LogField::start},
    {"starttime", LogField::start},
    {"starttc", LogField::start},
    {"starttimecode", LogField::start},
    {"vttcin", LogField::start},
    {"tcin", LogField::start},
    {"timecodein", LogField::start},
    {"in", LogField::start},
    {"sourcein", LogField::start},
    {"end", LogField::end},
    {"endtime", LogField::end},
    {"endtc", LogField::end},
    {"endtimecode", LogField::end},
    {"vttcout", LogField::end},
    {"tcout", LogField::end},
    {"timecodeout", LogField::end},
    {"out", LogField::end},
    {"sourceout", LogField::end},
    {"duration", LogField::duration},
    {"durframes", LogField::frames},
    {"durfr", LogField::frames},
    {"frames", LogField::frames},
    {"fps", LogField::rate},
    {"framerate", LogField::rate},
    {"labelstd", LogField::rate},
    {"sourcefps", LogField::rate},
    {"camroll", LogField::cam_reel},
    {"camreel", LogField::cam_reel},
    {"cameraroll", LogField::cam_reel},
    {"camerareel", LogField::cam_reel},
    {"roll/card", LogField::cam_reel},
    {"labroll", LogField::lab_reel},
    {"labreel", LogField::lab_reel},
    {"dailyroll", LogField::comp_reel},
    {"dailiesroll", LogField::comp_reel},
    {"dlyroll", LogField::comp_reel},
    {"compreel", LogField::comp_reel},
    {"soundroll", LogField::snd_reel},
    {"sndreel", LogField::snd_reel},
    {"soundreel", LogField::snd_reel},
    {"soundtc", LogField::snd_start},
    {"sndstart", LogField::snd_start},
    {"nagrain", LogField::snd_start},
    {"knstart", LogField::key_start},
    {"startkeycode", LogField::key_start},
    {"keyin", LogField::key_start},
    {"keystart", LogField::key_start},
    {"keynumber", LogField::key_start},
    {"key", LogField::key_start},
    {"keycode", LogField::key_start},
    {"keycodein", LogField::key_start},
    {"keycodestart", LogField::key_start},
    {"keykode", LogField::key_start},
    {"keykodestart", LogField::key_start},
    {"knend", LogField::key_end},
    {"keyout", LogField::key_end},
    {"keyend", LogField::key_end},
    {"keycodeout", LogField::key_end},
    {"keycodeend", LogField::key_end},
    {"endkeycode", LogField::key_end},
    {"kndur", LogField::key_length},
    {"footage", LogField::key_length},
    {"knfilm", LogField::film},
    {"filmlabelstd", LogField::film},
    {"filmformat", LogField::film},
    {"gauge", LogField::film},
    {"perf", LogField::perforation},
    {"perfin", LogField::perforation},
    {"startperf", LogField::perforation},
    {"inknumber", LogField::ink_start},
    {"startinkcode", LogField::ink_start},
    {"inkstart", LogField::ink_start},
    {"inkin", LogField::ink_start},
    {"ink", LogField::ink_start},
    {"pullin", LogField::pulldown},
    {"cadence", LogField::cadence},
    {"tc24", LogField::start_24p},
    {"start24pcode", LogField::start_24p},
    {"24preel", LogField::reel_24p},
    {"startcamcode", LogField::cam_code},
    {"cameratc", LogField::cam_code},
    {"camtc24", LogField::cam_code},
    {"filmtc", LogField::cam_code},
    {"shootdate", LogField::cam_date},
    {"camdate", LogField::cam_date},
    {"scene", LogField::scene},
    {"slate", LogField::scene},
    {"take", LogField::take},
    {"shot", LogField::take},
    {"dop", LogField::who},
    {"who", LogField::who},
    {"descript", LogField::description},
    {"description", LogField::description},
    {"comments", LogField::notes},
    {"comment", LogField::notes},
    {"notes", LogField::notes},
    {"tag", LogField::tag},
    {"v", LogField::track},
    {"recordin", LogField::record_in},
};

// In these a text such as "none" is a value.
constexpr LogField free_texts[] = {LogField::name,    LogField::scene,       LogField::take,  LogField::pulldown,
                                   LogField::cadence, LogField::description, LogField::notes, LogField::who};

constexpr std::size_t names_known = std::size(column_names);

std::string folded(std::string_view name) {
    std::string result = lower_case(without_blanks_around(name));
    std::erase_if(result, [](char c) { return c == ' ' || c == '_' || c == '-' || c == '.'; });
    return result;
}

bool may_say_nothing(LogField field) {
    return std::find(std::begin(free_texts), std::end(free_texts), field) == std::end(free_texts);
}

/// The place in the list of names; `names_known` for a name that isn't read.
std::size_t rank_of(const std::string& name) {
    static const std::unordered_map<std::string_view, std::size_t>& ranks = *[] {
        auto* made = new std::unordered_map<std::string_view, std::size_t>;
        for (std::size_t i = 0; i < names_known; ++i)
            made->emplace(column_names[i].name, i);
        return made;
    }();
    const auto found = ranks.find(name);
    return found == ranks.end() ? names_known : found->second;
}

} // namespace

LogColumns::LogColumns(const std::vector<std::string_view>& names) {
    std::set<std::string> seen;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = folded(names[i]);
        const std::size_t rank = rank_of(name);
        if (rank == names_known) continue;
        if (!seen.insert(name).second) doubled_.emplace_back(without_blanks_around(names[i]));
        columns_.push_back({i, column_names[rank].field, rank});
    }
    std::stable_sort(columns_.begin(), columns_.end(),
                     [](const Column& a, const Column& b) { return a.rank < b.rank; });
}

bool LogColumns::has(LogField field) const {
    return std::any_of(columns_.begin(), columns_.end(), [&](const Column& column) { return column.field == field; });
}

void LogColumns::fill(const std::vector<LogCell>& cells, LogCells& row) const {
    for (const Column& column : columns_) {
        if (column.index >= cells.size() || !row[column.field].text.empty()) continue;
        LogCell cell = cells[column.index];
        const std::size_t before = cell.text.size();
        const std::string_view trimmed = without_blanks_around(cell.text);
        if (before != trimmed.size() && !trimmed.empty())
            cell.column += static_cast<int>(trimmed.data() - cell.text.data());
        cell.text = may_say_nothing(column.field) && says_nothing(trimmed) ? std::string_view() : trimmed;
        row[column.field] = cell;
    }
}

} // namespace formats
