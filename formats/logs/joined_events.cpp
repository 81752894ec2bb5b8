#include "formats/logs/joined_events.h"

#include "formats/logs/log_builder.h"
#include "formats/text_lines.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

namespace formats {
namespace {

using embedded::Fraction;
using embedded::WarningKind;

bool holds_times(const LogRow& shot, const LogRow& event) {
    return shot.start.is_useful() && shot.end.is_useful() && event.start.is_useful() && event.end.is_useful() &&
           shot.start.type() == event.start.type() && shot.start.sample <= event.start.sample &&
           event.end.sample <= shot.end.sample;
}

/// The key number of an event's first frame by a shot: prefix and perforations. No prefix without a key number.
using EventKey = std::tuple<std::string, Fraction>;

EventKey key_by(const LogRow& shot, const LogRow& event) {
    if (!shot.key_start.is_useful()) return {};
    const Fraction frames = film_frames_of(event.start.sample - shot.start.sample, shot.standard);
    const Fraction in_frame(shot.key_start.cvt()->samples_per_frame());
    return {shot.key_start.get_prefix(), Fraction(shot.key_start.sample) + frames * in_frame};
}

/// Places of shots by a text of theirs, without regard to case.
using Index = std::map<std::string, std::vector<std::size_t>, std::less<>>;

class Joiner {
public:
    Joiner(std::vector<LogRow>& rows, embedded::Warnings& warnings) : rows_(rows), warnings_(warnings) {}

    void join() {
        take_events_out();
        for (std::size_t i = 0; i < rows_.size(); ++i)
            for (const LogField field : {LogField::reel, LogField::name})
                if (!rows_[i][field].empty()) places_[field][lower_case(rows_[i][field])].push_back(i);
        for (LogRow& event : events_)
            take(event);
        put_rows_without_reel_last();
    }

private:
    void take_events_out() {
        const auto first_event =
            std::stable_partition(rows_.begin(), rows_.end(), [](const LogRow& row) { return !row.event; });
        events_.assign(std::make_move_iterator(first_event), std::make_move_iterator(rows_.end()));
        rows_.erase(first_event, rows_.end());
        shots_ = rows_.size();
    }

    // They match events of any reel, and the first row that matches counts. The first row's kind of film is the
    // table's, and an event knows none.
    void put_rows_without_reel_last() {
        if (rows_.empty()) return;
        const label_t film = rows_.front().film;
        std::stable_partition(rows_.begin(), rows_.end(),
                              [](const LogRow& row) { return !row[LogField::reel].empty(); });
        if (!rows_.front().film) rows_.front().film = film;
    }

    void tell(const LogRow& event, const std::string& what, WarningKind kind = WarningKind::doubt) {
        warnings_.emplace_back(kind, event.file + ":" + std::to_string(event.line) + ": " + what);
    }

    void take(LogRow& event) {
        const std::vector<std::size_t> holders = holders_of(event);
        const bool one_key = std::all_of(holders.begin(), holders.end(), [&](std::size_t other) {
            return key_by(rows_[other], event) == key_by(rows_[holders.front()], event);
        });
        if (!holders.empty() && one_key) return give(holders.front(), event);
        if (!seen_.insert({event[LogField::reel], event[LogField::start], event[LogField::end]}).second) return;
        if (shots_ > 0)
            tell(event, one_key ? "no shot of the logs holds this event; it has no key number"
                                : "shots of the logs with different key numbers hold this event; it has none");
        rows_.push_back(std::move(event));
    }

    std::vector<std::size_t> holders_of(const LogRow& event) const {
        for (const LogField field : {LogField::reel, LogField::name}) {
            std::vector<std::size_t> holders = holders_by(field, event);
            if (!holders.empty()) return holders;
        }
        return {};
    }

    /// Those with key numbers, if there are any.
    std::vector<std::size_t> holders_by(LogField field, const LogRow& event) const {
        const auto index = places_.find(field);
        if (index == places_.end()) return {};
        const auto places = index->second.find(lower_case(event[field]));
        if (event[field].empty() || places == index->second.end()) return {};
        std::vector<std::size_t> holders;
        for (const std::size_t place : places->second)
            if (holds_times(rows_[place], event)) holders.push_back(place);
        const auto without_key = [&](std::size_t place) { return !rows_[place].key_start.is_useful(); };
        if (!std::all_of(holders.begin(), holders.end(), without_key)) std::erase_if(holders, without_key);
        return holders;
    }

    void give(std::size_t place, const LogRow& event) {
        std::map<std::string, std::size_t>& by_reel = given_[place];
        const std::string& reel = event[LogField::reel];
        if (by_reel.contains(reel)) return;
        const bool is_first = by_reel.empty();
        by_reel[reel] = is_first ? place : rows_.size();
        if (!is_first) rows_.push_back(rows_[place]);
        fill(rows_[by_reel[reel]], event);
    }

    void fill(LogRow& shot, const LogRow& event) {
        const std::string& reel = event[LogField::reel];
        if (!reel.empty() && !shot[LogField::reel].empty() && shot[LogField::reel] != reel)
            tell(event, "reel " + reel + " is " + shot[LogField::reel] + " in " + shot.file + "; taken as " + reel,
                 WarningKind::note);
        if (!reel.empty()) shot[LogField::reel] = reel;
        for (std::size_t field = 0; field < log_fields; ++field)
            if (shot.texts[field].empty()) shot.texts[field] = event.texts[field];
    }

    std::vector<LogRow>& rows_;
    embedded::Warnings& warnings_;
    std::vector<LogRow> events_;
    std::size_t shots_ = 0;
    std::map<LogField, Index> places_;
    std::map<std::size_t, std::map<std::string, std::size_t>> given_; ///< of each shot, its row for each reel
    std::set<std::tuple<std::string, std::string, std::string>> seen_;
};

} // namespace

void join_events(std::vector<LogRow>& rows, embedded::Warnings& warnings) {
    if (std::any_of(rows.begin(), rows.end(), [](const LogRow& row) { return row.event; }))
        Joiner(rows, warnings).join();
}

} // namespace formats
