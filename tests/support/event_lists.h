#pragma once
// Event lists that the builder never makes, as another host may have them.

#include "embedded/edit_data.h"

#include <functional>
#include <memory>

/// Changes the events of one channel of a finished edit, transitions among them.
inline void change_events(const EditPtr& edit, int channel, const std::function<void(embedded::CelEvents&)>& change) {
    embedded::Channel& changed = edit->impl()->sequence->channels.at(static_cast<std::size_t>(channel));
    embedded::CelEvents events = *changed.cel->impl()->events;
    change(events);
    changed.cel = embedded::make_cel(std::make_shared<const embedded::CelEvents>(events), changed.cel->resolution);
}
