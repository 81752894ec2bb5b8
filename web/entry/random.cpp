// Random bytes as Linux gives them, of which a browser's C library has the smaller door alone.

#include <algorithm>
#include <sys/random.h>
#include <unistd.h>

extern "C" ssize_t getrandom(void* bytes, size_t count, unsigned) {
    constexpr size_t most_at_once = 256;
    for (size_t done = 0; done < count; done += most_at_once)
        if (::getentropy(static_cast<char*>(bytes) + done, std::min(count - done, most_at_once)) != 0) return -1;
    return static_cast<ssize_t>(count);
}
