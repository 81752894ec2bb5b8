// Event lists and places in them.

#include "embedded/edit_data.h"

using embedded::CelEvent;
using embedded::CelEvents;

namespace embedded {

namespace {

const std::shared_ptr<const CelEvents>& no_events() {
    static const auto* const none = new std::shared_ptr<const CelEvents>(std::make_shared<const CelEvents>());
    return *none;
}

void give_events(Cel& cel, std::shared_ptr<const CelEvents> events) {
    cel.num_events = static_cast<std::int32_t>(events->size() * 2);
    cel.impl()->events = std::move(events);
}

//     | A . . . |--X--| . . . B |    before
//     | A . . . . . | . . . . B |    after: both run to the cut again
std::shared_ptr<const CelEvents> without_transitions(const CelEvents& events) {
    auto whole = std::make_shared<CelEvents>();
    for (const CelEvent& event : events) {
        if (event.transition || event.only_beside_transition) continue;
        whole->push_back(event);
        whole->back().in = event.whole_in;
        whole->back().out = event.whole_out;
    }
    return whole;
}

const CelEvent& event_at(const ce_handle& handle) {
    return (*handle.cel->impl()->events)[static_cast<std::size_t>(handle.index / 2)];
}

} // namespace

Qb::Ptr<Cel> make_cel(std::shared_ptr<const CelEvents> events, double resolution) {
    Qb::Ptr<Cel> cel(new Cel(0, resolution));
    give_events(*cel, std::move(events));
    return cel;
}

} // namespace embedded

Cel::Cel(int, double frame_length) : resolution(frame_length), impl_(new Impl{embedded::no_events()}) {}

Cel::~Cel() { delete impl_; }

Qb::Ptr<Cel> Cel::simplify(int, bool, bool) const { return embedded::make_cel(impl_->events, resolution); }

int Cel::crossfade_removal_whole(Cel* result) {
    if (!result) return -1;
    embedded::give_events(*result, embedded::without_transitions(*impl_->events));
    return 0;
}

ce_handle Cel::get_start_ceh() { return {this, 0}; }

// A list of this host is one layer already.
Qb::Ptr<Cel> flatten(Qb::Ptr<Cel> cel, unsigned, int) { return cel; }

int ce_handle::valid() const { return cel && index >= 0 && index < cel->num_events ? 1 : 0; }

bool ce_handle::is_in_point() const { return valid() && index % 2 == 0; }

bool ce_handle::is_out_point() const { return valid() && index % 2 == 1; }

void ce_handle::increment(ce_info) {
    if (valid()) ++index;
}

ChannelEvent ce_handle::get_channel_event() const {
    if (!valid()) return {};
    const CelEvent& event = embedded::event_at(*this);
    return is_in_point() ? event.in : event.out;
}

IdStamp ce_handle::getEffectGraph() const { return valid() ? embedded::event_at(*this).graph : IdStamp(); }
