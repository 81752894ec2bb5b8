#pragma once
// What must hold of every edit that a reader makes of any bytes.

#include "embedded/edit_builder.h"

#include <cstdlib>

/// Each channel has its events in order.
inline void check_order(const EditPtr& edit) {
    for (int channel = 0; channel < edit->getNumChans(); ++channel) {
        double last = 0.0;
        const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
        for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
            const double time = at.get_channel_event().edit_time;
            if (!(time >= last - 1e-6)) std::abort();
            last = time;
        }
    }
}
