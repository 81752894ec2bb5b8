// quillbrook: film lists from edits.

#include "embedded/private_folder.h"
#include "embedded/visible_text.h"
#include "tool/ending_signals.h"
#include "tool/run_request.h"
#include "tool/standard_streams.h"
#include "tool/tool_error.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <malloc.h>
#include <new>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

int tell(const char* what, int status) {
    std::cerr << "quillbrook: " << what << '\n';
    return status;
}

int tell(const std::exception& error, int status) { return tell(embedded::visible(error.what()).c_str(), status); }

// What ends the process outside of `main`, or without the memory for an exception.
[[noreturn]] void end_without_memory() {
    bool no_memory = true;
    try {
        if (std::current_exception()) throw;
    } catch (const std::bad_alloc&) {
    } catch (...) {
        no_memory = false;
    }
    constexpr std::string_view line = "quillbrook: out of memory\n";
    embedded::remove_private_files();
    if (!no_memory || ::write(STDERR_FILENO, line.data(), line.size()) < 0) std::abort();
    ::_exit(tool::exit_failed);
}

/// Ahead of all other objects, some of which are texts.
struct Ending {
    Ending() { std::set_terminate(end_without_memory); }
};
[[gnu::init_priority(101)]] Ending ending;

// Lists are many small blocks, which come and go together: putting them by for later costs more than it spares.
void free_blocks_at_once() {
#ifdef __GLIBC__
    mallopt(M_MXFAST, 0);
#endif
}

} // namespace

int main(int argc, char** argv) {
    free_blocks_at_once();
    tool::hold_closed_streams();
    tool::leave_nothing_on_signals();
    try {
        const int status = tool::run_request(tool::parse_command_line(argc, argv));
        std::cout.flush();
        if (std::cout) return status;
        const std::string why = std::strerror(errno);
        return tell(("standard output couldn't be written: " + why).c_str(), tool::exit_failed);
    } catch (const tool::UsageError& error) {
        return tell(error, tool::exit_wrong_usage);
    } catch (const std::bad_alloc&) {
        return tell("out of memory", tool::exit_failed);
    } catch (const std::exception& error) {
        return tell(error, tool::exit_failed);
    } catch (...) {
        return tell("an unknown failure", tool::exit_failed);
    }
}
