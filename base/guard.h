#pragma once
// The library's border: what a host's service throws ends here, and runs don't meet.
//
// Everything inside is written so that an exception passes through it: what a run owns is owned by objects, and what
// it leaves at module level is put back by them. Only the exported entries stand behind this guard.

#include "host/settings.h"

#include <memory>

using GuardedCall = void (*)(void* body);

/// Calls it; false when something that it called threw.
bool survives_call(GuardedCall call, void* body) noexcept;
/// The same for a run, of which there is one in the process at a time. Null when it came to its end, otherwise why it
/// didn't, which `logger` is told where there is one; the text stays good until the next run. What a run leaves at
/// module level is put back by `forget`, where there is one.
const char* run_call(GuardedCall call, void* body, LoggerHandle* logger, void (*forget)()) noexcept;

template <class Body> bool survives(Body body) noexcept {
    return survives_call([](void* it) { (*static_cast<Body*>(it))(); }, std::addressof(body));
}
template <class Body>
const char* run_alone(Body body, LoggerHandle* logger = nullptr, void (*forget)() = nullptr) noexcept {
    return run_call([](void* it) { (*static_cast<Body*>(it))(); }, std::addressof(body), logger, forget);
}
