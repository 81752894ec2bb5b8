// Prints a long file: make_input KIND COUNT [NAME=NUMBER...] > FILE

#include "bench/long_edit.h"
#include "bench/long_files.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace {

struct Kind {
    const char* name;
    std::string (*text)(int count);
};

constexpr Kind kinds[] = {
    {"edit", bench::long_edit},
    {"opticals", bench::long_optical_edit},
    {"edl", bench::long_edit_list},
    {"fcp7xml", [](int count) { return bench::long_fcp7xml(count, false); }},
    {"fcp7xml-filters", [](int count) { return bench::long_fcp7xml(count, true); }},
    {"fcpxml", bench::long_fcpxml},
    {"aaf", bench::long_aaf},
    {"ale", bench::long_ale},
    {"flex", bench::long_flex},
    {"keylog", bench::long_keylog},
    {"delimited", bench::long_delimited},
    {"tapes-log", bench::log_of_tapes},
    {"tapes-edl", bench::list_of_tapes},
};

struct ShapeName {
    std::string_view name;
    int bench::EditShape::*number;
};

/// What may stand behind "shape COUNT".
constexpr ShapeName shape_names[] = {{"tracks=", &bench::EditShape::tracks},
                                     {"uses=", &bench::EditShape::uses},
                                     {"effect-every=", &bench::EditShape::effect_every},
                                     {"dissolve-every=", &bench::EditShape::dissolve_every}};

int usage() {
    std::cerr << "usage: make_input KIND COUNT, where KIND is";
    for (const Kind& kind : kinds)
        std::cerr << ' ' << kind.name;
    std::cerr << "\n       make_input shape COUNT [NAME=NUMBER]..., where NAME= is";
    for (const ShapeName& shape : shape_names)
        std::cerr << ' ' << shape.name;
    std::cerr << '\n';
    return 2;
}

bool take(std::string_view word, bench::EditShape& shape) {
    for (const ShapeName& known : shape_names)
        if (word.starts_with(known.name)) {
            shape.*known.number = std::atoi(word.data() + known.name.size());
            return shape.*known.number > 0;
        }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    const int count = argc >= 3 ? std::atoi(argv[2]) : 0;
    if (count < 1) return usage();
    const std::string_view wanted = argv[1];
    if (wanted == "shape") {
        bench::EditShape shape;
        shape.clips = count;
        for (int i = 3; i < argc; ++i)
            if (!take(argv[i], shape)) return usage();
        std::cout << bench::shaped_edit(shape);
        return 0;
    }
    for (const Kind& kind : kinds)
        if (wanted == kind.name && argc == 3) {
            std::cout << kind.text(count);
            return 0;
        }
    return usage();
}
