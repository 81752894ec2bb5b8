// Prints a long edit: make_edit EVENTS > FILE.

#include "bench/long_edit.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    const int events = argc == 2 ? std::atoi(argv[1]) : 0;
    if (events < 1 || events > 9999) {
        std::cerr << "usage: make_edit EVENTS (1 to 9999)\n";
        return 2;
    }
    std::cout << bench::long_edit(events);
    return 0;
}
