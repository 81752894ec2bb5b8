#pragma once
// The numbers of the reels that a list speaks of, whatever they are, as indices from 0.

#include "host/text.h"

#include <algorithm>

class ReelNumbers {
public:
    void add(int number) {
        if (numbers_.empty() || numbers_.back() != number) numbers_.push_back(number);
    }
    /// To be called when all are added.
    void close() {
        std::sort(numbers_.begin(), numbers_.end());
        numbers_.erase(std::unique(numbers_.begin(), numbers_.end()), numbers_.end());
    }

    std::size_t size() const { return numbers_.size(); }
    int number(std::size_t index) const { return numbers_[index]; }
    /// Of a number that was added.
    std::size_t index(int number) const {
        return static_cast<std::size_t>(std::lower_bound(numbers_.begin(), numbers_.end(), number) - numbers_.begin());
    }

private:
    Vector<int> numbers_;
};
