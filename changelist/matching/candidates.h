#pragma once
// The new events of one film roll, among which those of the old cut find their match.

#include "changelist/change_record.h"
#include "changelist/chgdb.h"
#include "changelist/matching/event_tree.h"

/// Events that a match may lie among: those of one roll and camera reel, of normal speed or not, and within these
/// all, those of one reel, or the ones with one neighbour.
struct CandidateGroup {
    enum Scope : std::uint8_t { everywhere, on_reel, behind_neighbour, ahead_of_neighbour };

    CandidateGroup(const ChangeRecord& event, bool of_varispeed);
    CandidateGroup with_reel(int number) const;
    CandidateGroup with_neighbour(Scope side, const LabelPoint& key) const;

    bool operator==(const CandidateGroup&) const = default;
    std::size_t hash() const;

    char roll[9] = {};
    char cam_reel[10] = {};
    char neighbour[9] = {};
    bool varispeed;
    Scope scope = everywhere;
    std::int32_t number = 0; ///< the reel, or the kind of the neighbour's key number
    std::int32_t sample = 0; ///< of the neighbour's key number
};

/// Forests by group.
class CandidateGroups {
public:
    /// Null when there is no such group; good until the next `make`.
    EventForest* find(const CandidateGroup& group);
    EventForest& make(const CandidateGroup& group);
    void clear();

private:
    std::size_t slot_of(const CandidateGroup& group) const;
    void spread();

    Vector<CandidateGroup> groups_;
    Vector<EventForest> forests_;
    Vector<std::uint32_t> slots_; ///< places in `groups_` by hash; the next free slot takes what collides
};

/// Rows in the order of preference, with what matching needs of them as records. Those that matched stay until all are
/// drained, marked as gone.
class Candidates {
public:
    /// Empty, with the columns and parameters of `shape`. `labels_held`: as for `merge_events`, of all that is loaded.
    Candidates(const chgdb& shape, LoggerHandle& log, bool labels_held = false);

    /// Appends a row, which has to stay where it is until all are drained. Only allowed until the first search after a
    /// drain.
    void load(const dbrecord& row);
    /// Orders what was loaded by its place in the new cut.
    void sort();
    /// Appends what is left of an event.
    void put_back(const ChangeRecord& piece);
    void remove(int index) { spans_[static_cast<std::size_t>(index)].gone = true; }
    /// The whole event, which is removed.
    ChangeRecord take(int index);
    /// What nothing matched is new: it goes to `changes` as "I".
    void drain(chgdb& changes);

    /// As far as matching needs it; good until the next call that changes the table.
    const ChangeRecord& operator[](int index) const { return events_[static_cast<std::size_t>(index)]; }
    const dbrecord& row_of(int index) const;
    /// Labels stay when they are read and written again: those of the event's row, which a piece that is put back may
    /// not, or those of all rows that both cuts came with.
    bool are_labels_held(int index) const { return labels_held_ && static_cast<unsigned>(index) < loaded_.size(); }
    bool are_labels_held() const { return labels_held_; }
    /// Of those that a search has learnt of.
    bool has_varispeed() const { return has_varispeed_; }
    /// No candidate lies on another reel.
    bool are_on_reel(int reel);

    /// The first event of a group that a query takes, ahead of `best`.
    template <class Query>
    std::uint32_t first(const CandidateGroup& group, const Query& query, std::uint32_t best = no_event) {
        learn();
        EventForest* forest = groups_.find(group);
        return forest ? forest->first(spans_, query, best) : best;
    }

private:
    void learn();
    void enter(std::uint32_t event);

    /// A row of the new cut, and where it lies there.
    struct LoadedRow {
        const dbrecord* row;
        int reel;
        int frame;
        unsigned place; ///< in the order in which they were loaded
    };

    Vector<LoadedRow> loaded_;
    chgdb pieces_; ///< those that were put back, numbered behind what was loaded
    unsigned rows_ = 0;
    ChangeRecord blank_;
    bool labels_held_;
    Vector<ChangeRecord> events_; ///< the rows that have been read
    Vector<EventSpan> spans_;
    Bounds<int> reels_{0};
    bool has_varispeed_ = false;
    CandidateGroups groups_;
};

/// The candidate that an event of normal speed is compared with, -1 for none: the same event on its own reel, then
/// on any; then film that overlaps, on its own reel, then on any, one that covers the whole event first. Black
/// matches only black between the same neighbours.
const char* find_match(int* index, const ChangeRecord& x, Candidates& candidates);

/// The same for a varispeed event: the first candidate of its speed that lies within it, -1 for none.
const char* find_varispeed_match(int* index, const ChangeRecord& x, Candidates& candidates);

/// Edit frames of a varispeed event ahead of a key number on it.
int varispeed_offset(const ChangeRecord& x, int key);

/// Appends a row.
void add_record(chgdb& table, const ChangeRecord& record);
dbrecord& add_copy(chgdb& table, const dbrecord& row);
