#include "tool/standard_streams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace tool {

// The lowest free number is the one that is given. Input that can only be written and output that can only be read
// fail as closed ones do.
void hold_closed_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0) (void)::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

} // namespace tool
