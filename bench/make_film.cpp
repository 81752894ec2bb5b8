// Writes the reels of one version of a long film: make_film EVENTS REELS VERSION FOLDER, which gets r1.otio, r2.otio,
// ...

#include "bench/long_edit.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
    const int events = argc == 5 ? std::atoi(argv[1]) : 0, reels = argc == 5 ? std::atoi(argv[2]) : 0;
    const int version = argc == 5 ? std::atoi(argv[3]) : 0;
    if (events < 1 || reels < 1 || version < 1) {
        std::cerr << "usage: make_film EVENTS REELS VERSION FOLDER\n";
        return 2;
    }
    for (int reel = 1; reel <= reels; ++reel)
        std::ofstream(std::string(argv[4]) + "/r" + std::to_string(reel) + ".otio")
            << bench::long_reel(events, reel, version);
    return 0;
}
