#include "embedded/table_data.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_set>

namespace embedded {

std::string folded(std::string_view text) { return ascii::lower_case(std::string(text)); }

bool is_type_letter(int type) { return ascii::is_letter(static_cast<char>(type)) && type == static_cast<char>(type); }

Row* RowPool::make(std::size_t field_count, std::uint32_t serial) {
    Row* row = spare_;
    if (row) {
        spare_ = row->next_spare;
        row->fields.clear();
        row->tagged = false;
    } else {
        row = new (memory_.take(sizeof(Row))) Row(memory_, field_count);
    }
    row->serial = serial;
    return row;
}

void RowPool::give_back(Row* row) noexcept {
    row->next_spare = spare_;
    spare_ = row;
}

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
    const auto first = static_cast<std::ptrdiff_t>(rows.size());
    for (; count > 0; --count)
        rows.push_back(make_row());
    std::rotate(rows.begin() + static_cast<std::ptrdiff_t>(at), rows.begin() + first, rows.end());
    forget_shown();
}

char* TableData::keep_lines(std::string_view lines) {
    char* const kept = pool_->memory().take(lines.size() + RowFields::behind_line);
    std::memset(std::copy(lines.begin(), lines.end(), kept), 0, RowFields::behind_line);
    return kept;
}

void TableData::remove_shown(std::size_t first, std::size_t count) {
    const std::size_t shown_count = count_shown();
    first = std::min(first, shown_count);
    const std::size_t last = first + std::min(count, shown_count - first);
    for (std::size_t index = first; index < last; ++index) {
        Row*& row = rows[position(index)];
        give_back(std::exchange(row, nullptr));
    }
    std::erase(rows, nullptr);
    forget_shown();
}

std::size_t TableData::remove_tagged() {
    const std::size_t removed = std::erase_if(rows, [this](Row* row) {
        if (row->tagged) give_back(row);
        return row->tagged;
    });
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
        rows.push_back(make_row());
        for (std::size_t field = 0; field < joined.size(); ++field) {
            if (joined[field] < 0) continue;
            rows.back()->fields.set(field, other.rows[i]->fields.view(static_cast<std::size_t>(joined[field])));
        }
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
    return place < rows.size() ? rows[place] : nullptr;
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
        if (const std::string_view text = fields->view(field); !text.empty()) query_.emplace_back(field, text);
    }
}

bool TableData::matches_query(const Row& row) const {
    return std::all_of(query_.begin(), query_.end(), [&](const auto& criterion) {
        return row.fields.view(criterion.first).starts_with(criterion.second);
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
        row->tagged = seen.insert(row->fields.view(field)).second;
    }
    forget_shown();
    return seen.size();
}

} // namespace embedded
