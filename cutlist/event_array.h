#pragma once
// The records of a run, in the order in which they were made.

#include "reports/cut_s.h"

#include <memory>
#include <utility>

/// Holds at most 9,999 records.
class event_array {
public:
    static constexpr unsigned limit = 9999;

    /// One record too many is dropped, and the array is overfull from then on.
    void add(std::unique_ptr<cut_s> record) {
        overfull_ = overfull_ || records_.size() == limit;
        if (!overfull_) records_.push_back(std::move(record));
    }
    bool overfull() const { return overfull_; }
    const Vector<std::unique_ptr<cut_s>>& records() const { return records_; }

private:
    Vector<std::unique_ptr<cut_s>> records_;
    bool overfull_ = false;
};
