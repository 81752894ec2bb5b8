// Prints a long edit: make_edit EVENTS [opticals] > FILE.

#include "bench/long_edit.h"

#include <cstdlib>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
    const bool opticals = argc == 3 && std::string(argv[2]) == "opticals";
    const int events = argc == 2 || opticals ? std::atoi(argv[1]) : 0;
    if (events < 1 || events > 9999) {
        std::cerr << "usage: make_edit EVENTS (1 to 9999) [opticals]\n";
        return 2;
    }
    std::cout << (opticals ? bench::long_optical_edit(events) : bench::long_edit(events));
    return 0;
}
