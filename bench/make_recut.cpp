// Writes the cutlists of a long cut and of its recut: make_recut EVENTS OLD.cdb NEW.cdb [reused]

#include "bench/long_cut.h"

#include <cstdlib>
#include <string_view>

int main(int argc, char** argv) {
    const bool reused = argc == 5 && std::string_view(argv[4]) == "reused";
    if (argc != 4 && !reused) return 2;
    const int events = std::atoi(argv[1]);
    const made_cut::Cut cut = reused ? bench::reused_cut(events) : bench::long_cut(events, 40);
    const bool written = made_cut::write_cut(argv[2], cut) && made_cut::write_cut(argv[3], bench::recut_of(cut));
    return written ? 0 : 1;
}
