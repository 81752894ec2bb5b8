// Writes the cutlists of a long cut and of its recut: make_recut EVENTS OLD.cdb NEW.cdb

#include "bench/long_cut.h"

#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const made_cut::Cut cut = bench::long_cut(std::atoi(argv[1]), 40);
    const bool written = made_cut::write_cut(argv[2], cut) && made_cut::write_cut(argv[3], bench::recut_of(cut));
    return written ? 0 : 1;
}
