#include "embedded/table_data.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <unordered_set>

namespace embedded {

std::string folded(std::string_view text) { return ascii::lower_case(std::string(text)); }

bool is_type_letter(int type) { return ascii::is_letter(static_cast<char>(type)) && type == static_cast<char>(type); }

void TableData::clear() { *this = TableData(); }

void TableData::copy_layout(const TableData& other) {
    columns = other.columns;
    parameters = other.parameters;
    parameter_index_ = other.parameter_index_;
    sort_fields = other.sort_fields;
    sort_offset = other.sort_offset;
}

void TableData::copy_shown_rows(const TableData& other) {
    const std::size_t count = other.count_shown();
    rows.reserve(rows.size() + count);
    for (std::size_t index = 0; index < count; ++index) {
        const Row& from = *other.shown_row(index);
        rows.push_back(make_row());
        rows.back()->record = from.record;
        rows.back()->tagged = from.tagged;
    }
    forget_shown();
}

void TableData::put_parameter(std::string_view name, std::string_view value) {
    std::string key = folded(name);
    if (const auto found = parameter_index_.find(key); found != parameter_index_.end()) {
        parameters[found->second].value = std::string(value);
        return;
    }
    // The index never names a parameter that isn't there, even when memory ends in between.
    parameters.push_back({std::string(name), std::string(value)});
    const std::size_t place = parameters.size() - 1;
    try {
        parameter_index_.emplace(std::move(key), place);
    } catch (...) {
        parameters.pop_back();
        throw;
    }
}

const Parameter* TableData::find_parameter(std::string_view name) const {
    const auto found = parameter_index_.find(folded(name));
    return found == parameter_index_.end() ? nullptr : &parameters[found->second];
}

int TableData::find_column(std::string_view name) const {
    const std::string wanted = folded(name);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.size() == wanted.size() && folded(columns[i].name) == wanted) return static_cast<int>(i);
    }
    return -1;
}

void TableData::insert_rows(std::size_t at, std::size_t count) {
    std::vector<std::unique_ptr<Row>> fresh(count);
    for (auto& row : fresh)
        row = make_row();
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(at), std::make_move_iterator(fresh.begin()),
                std::make_move_iterator(fresh.end()));
    forget_shown();
}

void TableData::remove_shown(std::size_t first, std::size_t count) {
    const std::size_t shown_count = count_shown();
    first = std::min(first, shown_count);
    const std::size_t last = first + std::min(count, shown_count - first);
    for (std::size_t index = first; index < last; ++index)
        rows[position(index)].reset();
    std::erase(rows, nullptr);
    forget_shown();
}

std::size_t TableData::remove_tagged() {
    const std::size_t removed = std::erase_if(rows, [](const auto& row) { return row->tagged; });
    forget_shown();
    return removed;
}

// Columns of one name join in order, the first to the first.
std::vector<int> TableData::joined_columns(const TableData& other) const {
    std::unordered_map<std::string, std::deque<int>> sources;
    for (std::size_t i = 0; i < other.columns.size(); ++i) {
        sources[folded(other.columns[i].name)].push_back(static_cast<int>(i));
    }
    std::vector<int> joined;
    for (const Column& column : columns) {
        std::deque<int>& waiting = sources[folded(column.name)];
        joined.push_back(waiting.empty() ? -1 : waiting.front());
        if (!waiting.empty()) waiting.pop_front();
    }
    return joined;
}

bool TableData::append_joined(const TableData& other) {
    const std::vector<int> joined = joined_columns(other);
    if (std::all_of(joined.begin(), joined.end(), [](int source) { return source < 0; })) return false;
    const std::size_t count = other.rows.size();
    for (std::size_t i = 0; i < count; ++i) {
        auto row = make_row();
        for (std::size_t field = 0; field < joined.size(); ++field) {
            const char* text =
                joined[field] < 0 ? nullptr : other.rows[i]->fields.get(static_cast<std::size_t>(joined[field]));
            if (text) row->fields.set(field, text);
        }
        rows.push_back(std::move(row));
    }
    forget_shown();
    return true;
}

void TableData::show_tagged_only(bool on) {
    tagged_only_ = on;
    forget_shown();
}

const std::vector<std::size_t>& TableData::shown() const {
    if (!shown_known_) {
        shown_.clear();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i]->tagged) shown_.push_back(i);
        }
        shown_known_ = true;
    }
    return shown_;
}

std::size_t TableData::count_shown() const { return tagged_only_ ? shown().size() : rows.size(); }

std::size_t TableData::position(std::size_t index) const {
    if (index >= count_shown()) return rows.size();
    return tagged_only_ ? shown()[index] : index;
}

Row* TableData::shown_row(std::size_t index) const {
    const std::size_t place = position(index);
    return place < rows.size() ? rows[place].get() : nullptr;
}

void TableData::set_tag(std::size_t index, bool on) {
    Row* row = shown_row(index);
    if (!row || row->tagged == on) return;
    row->tagged = on;
    if (tagged_only_) {
        // A row that is shown was tagged until now: it alone leaves the list.
        shown_.erase(shown_.begin() + static_cast<std::ptrdiff_t>(index));
    } else {
        forget_shown();
    }
}

std::size_t TableData::count_tagged() const {
    return static_cast<std::size_t>(
        std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row->tagged; }));
}

std::size_t TableData::rank_made(const Row& row) const {
    return static_cast<std::size_t>(
        std::count_if(rows.begin(), rows.end(), [&](const auto& other) { return other->serial < row.serial; }));
}

void TableData::set_query(const RowFields* fields) {
    query_.clear();
    for (std::size_t field = 0; fields && field < fields->count(); ++field) {
        if (const char* text = fields->get(field)) query_.emplace_back(field, text);
    }
}

bool TableData::matches_query(const Row& row) const {
    return std::all_of(query_.begin(), query_.end(), [&](const auto& criterion) {
        const char* text = row.fields.get(criterion.first);
        return text && std::string_view(text).substr(0, criterion.second.size()) == criterion.second;
    });
}

std::size_t TableData::tag_matching(bool add) {
    std::size_t matched = 0;
    for (const auto& row : rows) {
        const bool matches = matches_query(*row);
        row->tagged = matches || (add && row->tagged);
        matched += matches ? 1 : 0;
    }
    forget_shown();
    return matched;
}

std::size_t TableData::tag_different(std::size_t field) {
    std::unordered_set<std::string_view> seen;
    for (const auto& row : rows) {
        const char* text = row->fields.get(field);
        row->tagged = seen.insert(text ? text : "").second;
    }
    forget_shown();
    return seen.size();
}

} // namespace embedded
