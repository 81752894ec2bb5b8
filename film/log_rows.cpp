#include "film/log_rows.h"

#include "embedded/edit_distance.h"
#include "embedded/label_kinds.h"
#include "embedded/rates.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>

namespace film {
namespace {

/// Characters of a row's reel that the lists compare, and frames by which an event may overrun its row.
constexpr std::size_t reel_compared = 15;
constexpr int slack_of_lists = 30;

std::string upper_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// Letters and digits alone, numbers without zeros before them: "A-012" and "a12" are alike.
std::string plain_reel(const std::string& reel) {
    std::string plain;
    for (const char c : upper_case(reel)) {
        const bool in_number = !plain.empty() && ascii::is_digit(plain.back());
        if (c == '0' && !in_number) continue;
        if (ascii::is_digit(c) || ascii::is_letter(c) || static_cast<unsigned char>(c) >= 0x80) plain += c;
    }
    return plain;
}

enum Column {
    column_name,
    column_reel,
    column_camera,
    column_lab,
    column_daily,
    column_sound,
    column_timecode_24,
    column_standard,
    column_film,
    column_start,
    column_end,
    column_key,
    column_ink,
    column_count
};

constexpr const char* column_names[column_count] = {
    "name",      "reel",           "cam reel",   "lab reel", "comp reel",     "snd reel",      "24p reel",
    "label_std", "film label_std", "start time", "end time", "start keycode", "start inkcode",
};

/// The columns of a table, and what its header says where a row says nothing.
class Columns {
public:
    explicit Columns(const recdb& table)
        : standard_(header(table, column_names[column_standard])), film_(header(table, column_names[column_film])) {
        for (int column = 0; column < column_count; ++column)
            fields_[column] = table.get_fieldnum(column_names[column]);
    }

    const char* text(const dbrecord& record, Column column) const {
        const int field = fields_[column];
        const char* found = field < 0 ? nullptr : record.get_field(static_cast<unsigned short>(field));
        return found ? found : "";
    }
    label_t timecode(const dbrecord& record) const {
        const char* standard = or_else(text(record, column_standard), standard_);
        return *standard ? TvStd_to_label_type(edlstr_to_tv_standard(standard)) : label_tc_24;
    }
    label_t film(const dbrecord& record) const {
        const char* kind = or_else(text(record, column_film), film_);
        return *kind ? edlstr_to_label_type(kind) : label_key_35mm_4p;
    }

private:
    static std::string header(const recdb& table, const char* name) {
        const char* value = table.get_param_val(name);
        return value ? value : "";
    }
    static const char* or_else(const char* text, const std::string& otherwise) {
        return *text ? text : otherwise.c_str();
    }

    const std::string standard_, film_; ///< of the header
    int fields_[column_count];          ///< below 0: the table has no such column
};

LabelPoint point_of(const char* text, label_t kind) {
    LabelPoint point(0, *text ? kind : label_none);
    if (point.is_valid()) point.set_sample(text);
    return point.is_useful() ? point : LabelPoint();
}

LogRow row_of(const Columns& table, const dbrecord& record) {
    LogRow row;
    row.name = table.text(record, column_name);
    row.reel = table.text(record, column_reel);
    row.camera = table.text(record, column_camera);
    row.lab = table.text(record, column_lab);
    row.daily = table.text(record, column_daily);
    row.sound = table.text(record, column_sound);
    row.timecode_24 = table.text(record, column_timecode_24);
    row.kind = table.timecode(record);
    row.own_film = table.film(record);
    const LabelPoint start = point_of(table.text(record, column_start), row.kind);
    const LabelPoint end = point_of(table.text(record, column_end), row.kind);
    if (start.is_useful() && end.is_useful()) {
        row.start = start.sample;
        row.end = end.sample;
    }
    row.key = point_of(table.text(record, column_key), row.own_film);
    row.ink = point_of(table.text(record, column_ink), label_t_to_ink_label_t(row.own_film));
    return row;
}

embedded::Fraction film_share_of(label_t timecode) {
    const embedded::TimecodeBase* base = embedded::timecode_base(timecode);
    return base ? embedded::film_share(base->count) : embedded::Fraction(1);
}

bool has_length(const LogRow& row) { return row.start < row.end; }

std::int64_t frames_between(const LabelPoint& a, const LabelPoint& b, std::int64_t frames) {
    return (std::int64_t{a.sample} - b.sample) - frames * a.cvt()->samples_per_frame();
}

bool same_count(const LabelPoint& a, const LabelPoint& b, std::int64_t frames) {
    if (a.is_useful() != b.is_useful()) return false;
    if (!a.is_useful()) return true;
    return a.type() == b.type() && std::strcmp(a.get_prefix(), b.get_prefix()) == 0 &&
           frames_between(b, a, frames) == 0;
}

} // namespace

// Behind the parameters an empty line, the names of the columns and their types.
int line_of_first_record(std::string_view bytes) {
    int line = 1;
    std::size_t begin = 0;
    while (begin < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        constexpr int lines_to_records = 3;
        if (end == begin) return line + lines_to_records;
        begin = end + 1;
        ++line;
    }
    return line;
}

bool same_film(const LogRow& a, const LogRow& b) {
    const embedded::Fraction share = film_share_of(a.kind);
    const embedded::Fraction film = embedded::Fraction(b.start - a.start) * share;
    if (a.camera != b.camera || a.lab != b.lab || a.kind != b.kind) return false;
    // With pulldown two true rows may lie a frame apart.
    for (const std::int64_t frames : {film.floor(), film.floor() + (film.den() == 1 ? 0 : 1)})
        if (same_count(a.key, b.key, frames)) return true;
    return false;
}

/// The rows of one reel.
struct LogRows::Group {
    std::string reel;
    std::vector<const LogRow*> rows;   ///< by start, then by place
    std::vector<std::size_t> furthest; ///< of the rows up to each, the one that ends last

    /// Between two boundaries the same rows hold every frame.
    struct Piece {
        std::int64_t from;
        const LogRow* row;
        const LogRow* other;
    };
    std::vector<Piece> pieces;

    void finish();
    RowAt at(std::int64_t frame) const;
    const LogRow* nearest(std::int64_t frame, int slack) const;
    const LogRow* holding(std::int64_t low, std::int64_t high, std::int64_t slack) const;

private:
    void find_furthest();
    void cut_up();
};

void LogRows::Group::finish() {
    std::stable_sort(rows.begin(), rows.end(), [](const LogRow* a, const LogRow* b) { return a->start < b->start; });
    find_furthest();
    cut_up();
}

void LogRows::Group::find_furthest() {
    for (std::size_t i = 0; i < rows.size(); ++i)
        furthest.push_back(i > 0 && rows[furthest[i - 1]]->end >= rows[i]->end ? furthest[i - 1] : i);
}

void LogRows::Group::cut_up() {
    struct Edge {
        std::int64_t at;
        bool begins;
        const LogRow* row;
    };
    std::vector<Edge> edges;
    for (const LogRow* row : rows) {
        edges.push_back({row->start, true, row});
        edges.push_back({row->end, false, row});
    }
    std::stable_sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.at < b.at; });
    const auto by_place = [](const LogRow* a, const LogRow* b) { return a->row < b->row; };
    std::set<const LogRow*, decltype(by_place)> open(by_place);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (edges[i].begins)
            open.insert(edges[i].row);
        else
            open.erase(edges[i].row);
        if (i + 1 < edges.size() && edges[i + 1].at == edges[i].at) continue;
        const LogRow* first = open.empty() ? nullptr : *open.begin();
        const auto other =
            std::find_if(open.begin(), open.end(), [first](const LogRow* row) { return !same_film(*first, *row); });
        pieces.push_back({edges[i].at, first, other == open.end() ? nullptr : *other});
    }
}

RowAt LogRows::Group::at(std::int64_t frame) const {
    const auto next = std::upper_bound(pieces.begin(), pieces.end(), frame,
                                       [](std::int64_t at, const Piece& piece) { return at < piece.from; });
    RowAt found;
    found.from = next == pieces.begin() ? INT64_MIN : (next - 1)->from;
    found.to = next == pieces.end() ? INT64_MAX : next->from;
    if (next == pieces.begin()) return found;
    found.row = (next - 1)->row;
    found.other = (next - 1)->other;
    return found;
}

const LogRow* LogRows::Group::nearest(std::int64_t frame, int slack) const {
    const auto behind = std::upper_bound(rows.begin(), rows.end(), frame,
                                         [](std::int64_t at, const LogRow* row) { return at < row->start; });
    const LogRow* after = behind == rows.end() || (*behind)->start - frame > slack ? nullptr : *behind;
    const LogRow* before = nullptr;
    if (behind != rows.begin()) {
        const LogRow* last = rows[furthest[static_cast<std::size_t>(behind - rows.begin()) - 1]];
        if (frame - last->end < slack) before = last;
    }
    if (!before || !after) return before ? before : after;
    return frame - before->end < after->start - frame ? before : after;
}

// The first of the table that begins at or before `low` and ends at or behind `high`, each by up to `slack`.
const LogRow* LogRows::Group::holding(std::int64_t low, std::int64_t high, std::int64_t slack) const {
    const auto end = std::upper_bound(rows.begin(), rows.end(), low + slack,
                                      [](std::int64_t at, const LogRow* row) { return at < row->start; });
    const LogRow* found = nullptr;
    for (auto i = static_cast<std::size_t>(end - rows.begin()); i-- > 0;) {
        if (rows[furthest[i]]->end + slack < high) break;
        const LogRow* row = rows[i];
        const bool fits = row->end + slack >= high && (!found || row->row < found->row);
        if (fits) found = row;
    }
    return found;
}

LogRows::LogRows(const recdb& table, int first_line, const std::vector<int>* places) {
    const Columns columns(table);
    rows_.reserve(table.get_num_records());
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        LogRow row = row_of(columns, *table.get_record(i));
        row.row = static_cast<int>(i);
        row.line = first_line + (places ? places->at(i) : row.row);
        if (has_length(row)) rows_.push_back(std::move(row));
    }
    for (const LogRow& row : rows_) {
        std::unique_ptr<Group>& group = groups_[upper_case(row.reel)];
        if (!group) group = std::make_unique<Group>();
        group->rows.push_back(&row);
    }
    for (auto& [reel, group] : groups_) {
        group->reel = reel;
        group->finish();
    }
}

LogRows::~LogRows() = default;

// The reel's own first, then those that begin it, the longest first, then rows without a reel.
const std::vector<const LogRows::Group*>& LogRows::groups_of(const std::string& reel) const {
    const auto [entry, fresh] = found_.try_emplace(reel);
    if (!fresh) return entry->second;
    const std::string name = upper_case(reel);
    const auto own = groups_.find(name);
    if (own != groups_.end()) entry->second.push_back(own->second.get());
    for (std::size_t length = std::min(name.size(), reel_compared) + 1; length-- > 0;) {
        const std::string head = name.substr(0, length);
        // Of a reel that is longer than what is compared only the beginning counts.
        for (auto at = groups_.lower_bound(head); at != groups_.end() && at->first.compare(0, length, head) == 0;
             ++at) {
            if (at->first != name && (at->first.size() == length || length == reel_compared))
                entry->second.push_back(at->second.get());
            if (length < reel_compared) break;
        }
    }
    return entry->second;
}

RowAt LogRows::at(const std::string& reel, std::int64_t frame) const {
    RowAt answer{nullptr, ReelMatch::none, nullptr, INT64_MIN, INT64_MAX};
    const std::string name = upper_case(reel);
    for (const Group* group : groups_of(reel)) {
        const RowAt found = group->at(frame);
        answer.from = std::max(answer.from, found.from);
        answer.to = std::min(answer.to, found.to);
        if (!found.row) continue;
        answer.row = found.row;
        answer.other = found.other;
        answer.match = group->reel == name   ? ReelMatch::exact
                       : group->reel.empty() ? ReelMatch::any
                                             : ReelMatch::prefix;
        return answer;
    }
    return answer;
}

embedded::Fraction inside_frame(const embedded::Fraction& share) {
    return share == embedded::Fraction(1) ? embedded::Fraction(0) : embedded::Fraction(3, 5);
}

const LogRow* LogRows::nearest(const std::string& reel, std::int64_t frame, int slack) const {
    for (const Group* group : groups_of(reel))
        if (const LogRow* row = group->nearest(frame, slack)) return row;
    return nullptr;
}

const LogRow* LogRows::holding(const std::string& reel, std::int64_t first, std::int64_t last) const {
    for (const Group* group : groups_of(reel))
        if (const LogRow* row = group->holding(first, last + 1, 0)) return row;
    return nullptr;
}

const LogRow* LogRows::listed(const std::string& reel, std::int64_t first, std::int64_t last) const {
    const LogRow* found = nullptr;
    for (const Group* group : groups_of(reel)) {
        const LogRow* row = group->holding(std::min(first, last), std::max(first, last), slack_of_lists);
        if (row && (!found || row->row < found->row)) found = row;
    }
    return found;
}

// The nearest first.
const std::vector<const LogRows::Group*>& LogRows::groups_like(const std::string& reel) const {
    constexpr std::size_t letters_for_one_error = 4;
    const auto [entry, fresh] = like_.try_emplace(reel);
    const std::string plain = plain_reel(reel);
    if (!fresh || plain.empty()) return entry->second;
    const std::size_t most = std::max<std::size_t>(1, plain.size() / letters_for_one_error);
    std::multimap<std::size_t, const Group*> near;
    for (const auto& [name, group] : groups_) {
        const std::string other = plain_reel(name);
        const std::size_t longer = std::max(plain.size(), other.size());
        if (other.empty() || longer - std::min(plain.size(), other.size()) > most) continue;
        const std::size_t distance = embedded::edit_distance(plain, other);
        if (distance <= most && distance < longer) near.emplace(distance, group.get());
    }
    for (const auto& [distance, group] : near)
        entry->second.push_back(group);
    return entry->second;
}

const LogRow* LogRows::similar(const std::string& reel, std::int64_t first, std::int64_t last) const {
    for (const Group* group : groups_like(reel))
        if (const LogRow* row = group->holding(std::min(first, last), std::max(first, last), slack_of_lists))
            return row;
    return nullptr;
}

const LogRow* LogRows::row(int place) const {
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), place,
                                     [](const LogRow& row, int wanted) { return row.row < wanted; });
    return at != rows_.end() && at->row == place ? &*at : nullptr;
}

const LogRow* LogRows::first_of(const std::string& reel) const {
    const auto found = groups_.find(upper_case(reel));
    return found == groups_.end() ? nullptr : found->second->rows.front();
}

} // namespace film
