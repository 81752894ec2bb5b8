#include "base/guard.h"

#include "base/messages.h"

#include <cstdio>
#include <exception>
#include <new>

namespace {

std::atomic<bool> run_in_progress{false};

constexpr const char* busy = "Another run is in progress in this process\n";
constexpr const char* no_memory = "Out of memory\n";
constexpr const char* failed_release = "A service of the host failed\n";

const char* failure_text(const char* reason) {
    static char text[256];
    std::snprintf(text, sizeof text, "A service of the host failed: %s\n", reason);
    return text;
}

// The one place of the library that knows of exceptions.
const char* failure_of(GuardedCall call, void* body) noexcept {
    try {
        call(body);
        return nullptr;
    } catch (const std::bad_alloc&) {
        return no_memory;
    } catch (const std::exception& error) {
        return failure_text(error.what());
    } catch (...) {
        return failed_release;
    }
}

/// Holds the process's one place for a run, where it was free.
class Turn {
public:
    Turn() : mine_(!run_in_progress.exchange(true)) {}
    ~Turn() {
        if (mine_) run_in_progress = false;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    bool mine() const { return mine_; }

private:
    bool mine_;
};

} // namespace

bool survives_call(GuardedCall call, void* body) noexcept {
    try {
        call(body);
        return true;
    } catch (...) {
        return false;
    }
}

const char* run_call(GuardedCall call, void* body, LoggerHandle* logger, void (*forget)()) noexcept {
    const Turn turn;
    const unsigned failed_before = Qb::failed_releases;
    const char* failure = turn.mine() ? failure_of(call, body) : busy;
    if (!failure && Qb::failed_releases != failed_before) failure = failed_release;
    if (failure && turn.mine() && forget) survives(forget);
    if (failure && logger) survives([&] { say(*logger, failure, level_fatal); });
    return failure;
}
