#pragma once
// The pieces that are gone, found by where they stood, so that the steps that take them out can number them.

#include "base/frame_math.h"
#include "changelist/steps/range_marks.h"

/// A piece that is gone; frames of the old cut.
struct DeletedPart {
    std::size_t row; ///< of the view
    int reel;
    int in;
    int length;
};

/// The step that takes a piece out.
struct PartStep {
    int step;
    int sub; ///< from 1
    int position;
};

class DeletedParts {
public:
    explicit DeletedParts(Vector<DeletedPart> parts);

    /// Numbers the parts that begin within `length` frames from `in`, the first one at `position`; `own_reel_only`
    /// leaves out those of other reels. The result is how many there are.
    int number(int reel, int in, int length, bool own_reel_only, int step, int position);

    /// Calls `set(row, part_step)` for each part that has a step; what was numbered last holds.
    template <class Set> void settle(Set set) const {
        marks_.settle(parts_.size(), [&](std::size_t place, const auto& range) {
            const PartStep& first = range.mark;
            set(parts_[place].row, PartStep{first.step, first.sub + static_cast<int>(place - range.first),
                                            frame_sum(first.position, length_between(range.first, place))});
        });
    }

private:
    /// The parts of one reel.
    struct ReelParts {
        int reel;
        std::size_t first;
        std::size_t last; ///< exclusive
    };

    std::size_t place_of(const ReelParts& reel, int in) const;
    int length_between(std::size_t first, std::size_t last) const {
        return frame_difference(ends_[last], ends_[first]);
    }

    Vector<DeletedPart> parts_; ///< by reel and position
    Vector<int> ends_;          ///< lengths of the parts ahead of each, summed up
    Vector<ReelParts> reels_;
    RangeMarks<PartStep> marks_;
};
