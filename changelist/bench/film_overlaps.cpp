#include "changelist/bench/film_overlaps.h"

#include <algorithm>

namespace {

constexpr std::size_t pairs_for_a_span = 16;
constexpr std::size_t nearest = 8;

bool begins_before(const BenchSpan& a, const BenchSpan& b) {
    if (a.film != b.film) return a.film < b.film;
    return a.first_frame < b.first_frame;
}

void sort_by_film(Vector<BenchSpan>& spans) {
    std::sort(spans.begin(), spans.end(), [](const BenchSpan& a, const BenchSpan& b) {
        return begins_before(a, b) || (!begins_before(b, a) && a.at < b.at);
    });
}

/// Walks both sides by the film's frames; a span that begins meets those of the other side that haven't ended.
class Sweep {
public:
    Sweep(const Vector<BenchSpan>& old_spans, const Vector<BenchSpan>& new_spans)
        : old_spans_(old_spans), new_spans_(new_spans) {}

    /// False when there are more pairs than `most`.
    bool find(std::size_t most, Vector<SpanPair>& pairs) {
        std::size_t i = 0, j = 0;
        while (i < old_spans_.size() || j < new_spans_.size()) {
            const bool takes_old =
                j == new_spans_.size() || (i < old_spans_.size() && !begins_before(new_spans_[j], old_spans_[i]));
            if (takes_old) {
                leave_ended(open_new_, new_spans_, old_spans_[i]);
                for (const std::size_t other : open_new_)
                    pairs.push_back({i, other});
                open_old_.push_back(i++);
            } else {
                leave_ended(open_old_, old_spans_, new_spans_[j]);
                for (const std::size_t other : open_old_)
                    pairs.push_back({other, j});
                open_new_.push_back(j++);
            }
            if (pairs.size() > most) return false;
        }
        return true;
    }

private:
    static void leave_ended(Vector<std::size_t>& open, const Vector<BenchSpan>& spans, const BenchSpan& now) {
        std::erase_if(open, [&](std::size_t index) {
            return spans[index].film != now.film || spans[index].end_frame() <= now.first_frame;
        });
    }

    const Vector<BenchSpan>& old_spans_;
    const Vector<BenchSpan>& new_spans_;
    Vector<std::size_t> open_old_; ///< begun and not ended
    Vector<std::size_t> open_new_;
};

bool overlap(const BenchSpan& a, const BenchSpan& b) {
    return a.film == b.film && a.first_frame < b.end_frame() && b.first_frame < a.end_frame();
}

Vector<SpanPair> near_overlaps(const Vector<BenchSpan>& old_spans, const Vector<BenchSpan>& new_spans) {
    Vector<SpanPair> pairs;
    for (std::size_t i = 0; i < old_spans.size(); ++i) {
        const auto behind = std::lower_bound(new_spans.begin(), new_spans.end(), old_spans[i], begins_before);
        const auto middle = static_cast<std::size_t>(behind - new_spans.begin());
        const std::size_t end = std::min(new_spans.size(), middle + nearest);
        for (std::size_t j = std::max(middle, nearest) - nearest; j < end; ++j) {
            if (overlap(old_spans[i], new_spans[j])) pairs.push_back({i, j});
        }
    }
    return pairs;
}

} // namespace

Vector<SpanPair> film_overlaps(Vector<BenchSpan>& old_spans, Vector<BenchSpan>& new_spans) {
    sort_by_film(old_spans);
    sort_by_film(new_spans);
    Vector<SpanPair> pairs;
    if (Sweep(old_spans, new_spans).find(pairs_for_a_span * (old_spans.size() + new_spans.size()), pairs)) return pairs;
    return near_overlaps(old_spans, new_spans);
}
