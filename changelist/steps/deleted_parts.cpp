#include "changelist/steps/deleted_parts.h"

#include <algorithm>
#include <tuple>

DeletedParts::DeletedParts(Vector<DeletedPart> parts) : parts_(std::move(parts)), ends_(1, 0) {
    std::sort(parts_.begin(), parts_.end(), [](const DeletedPart& a, const DeletedPart& b) {
        return std::tie(a.reel, a.in, a.row) < std::tie(b.reel, b.in, b.row);
    });
    for (std::size_t place = 0; place < parts_.size(); ++place) {
        ends_.push_back(frame_sum(ends_.back(), parts_[place].length));
        if (reels_.empty() || reels_.back().reel != parts_[place].reel)
            reels_.push_back({parts_[place].reel, place, place});
        reels_.back().last = place + 1;
    }
}

// The first part of the reel that begins at or behind `in`.
std::size_t DeletedParts::place_of(const ReelParts& reel, int in) const {
    const auto parts = parts_.begin();
    const auto found = std::partition_point(parts + static_cast<std::ptrdiff_t>(reel.first),
                                            parts + static_cast<std::ptrdiff_t>(reel.last),
                                            [in](const DeletedPart& part) { return part.in < in; });
    return static_cast<std::size_t>(found - parts);
}

int DeletedParts::number(int reel, int in, int length, bool own_reel_only, int step, int position) {
    int count = 0;
    for (const ReelParts& group : reels_) {
        if (own_reel_only && group.reel != reel) continue;
        const std::size_t first = place_of(group, in);
        const std::size_t last = place_of(group, frame_sum(in, length));
        if (first >= last) continue;
        marks_.mark(first, last, {step, count + 1, position});
        count += static_cast<int>(last - first);
        position = frame_sum(position, length_between(first, last));
    }
    return count;
}
