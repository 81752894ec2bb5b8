#include "tool/ending_signals.h"

#include "embedded/private_folder.h"

#include <csignal>

namespace tool {
namespace {

// The signal is raised anew, with its usual end, when the handler returns.
void clean_up_and_end(int signal) {
    embedded::remove_private_files();
    std::raise(signal);
}

void end_cleanly_on(int signal) {
    struct sigaction former = {};
    if (::sigaction(signal, nullptr, &former) != 0 || former.sa_handler == SIG_IGN) return;
    struct sigaction action = {};
    action.sa_handler = clean_up_and_end;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void leave_nothing_on_signals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        end_cleanly_on(signal);
    ::signal(SIGXFSZ, SIG_IGN); // the write fails then, and says why
}

} // namespace tool
