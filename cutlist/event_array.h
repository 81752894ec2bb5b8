#pragma once
// The records of a run, in the order in which they were made.

#include "reports/cut_s.h"

#include <memory>

/// Holds at most 9,999 records and owns them.
class event_array {
public:
    static constexpr unsigned limit = 9999;

    event_array() = default;
    ~event_array() {
        for (cut_s* record : records_)
            delete record;
    }
    event_array(const event_array&) = delete;
    event_array& operator=(const event_array&) = delete;

    /// Takes the record over. One record too many is dropped, and the array is overfull from then on.
    void add(cut_s* record) {
        std::unique_ptr<cut_s> owned(record);
        overfull_ = overfull_ || records_.size() == limit;
        if (overfull_) return;
        records_.push_back(record);
        owned.release();
    }
    bool overfull() const { return overfull_; }
    const Vector<cut_s*>& records() const { return records_; }

private:
    Vector<cut_s*> records_;
    bool overfull_ = false;
};
