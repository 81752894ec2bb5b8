// Writes the inputs of corpus/aaf and corpus/compound that random bytes hardly come to: make_aaf_seeds corpus

#include "tests/support/aaf_samples.h"
#include "tests/support/crossing_aaf.h"

#include <fstream>
#include <iostream>

namespace {

using namespace aaf_writer;

bool write(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

/// The smallest edit: one clip from one master.
Made small() {
    Made made;
    made.mobs = {composition(1, "R", {slot(1, {24}, sequence({clip(2, 3, 10), filler(4)}))}),
                 master(2, "A", {slot(1, {24}, clip(0, 0, 100)), slot(2, {24}, timecode(0, 24, 100))})};
    return made;
}

Made two_compositions() {
    Made made = small();
    made.mobs.push_back(composition(3, "S", {slot(1, {25}, clip(1, 0, 5)), slot(2, {48000}, clip(2, 0, 5, 1, sound))}));
    return made;
}

Made in_a_loop() {
    Made made = small();
    made.mobs.push_back(composition(3, "L", {slot(1, {24}, clip(3, 0, 5))}));
    return made;
}

compound_writer::Node folders() {
    using compound_writer::Node;
    const Node inner{"inner", true, {}, {}, {{"small", false, {}, std::string(100, 's'), {}}}};
    return {"Root Entry", true, {}, {}, {inner, {"large", false, {}, std::string(5000, 'l'), {}}}};
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::cerr << "make_aaf_seeds CORPUS [EXAMPLE.aaf]\n";
        return 2;
    }
    if (argc == 3 && !write(argv[2], written(crossing::aaf()))) return 1;
    const std::string corpus = argv[1];
    Made all = aaf_samples::everything(), big = all, large = all;
    big.big_endian = true;
    large.sector_size = 4096;
    bool fine = write(corpus + "/compound/folders", compound_writer::written(folders())) &&
                write(corpus + "/compound/folders-4096", compound_writer::written(folders(), {4096, {}})) &&
                write(corpus + "/compound/edit", written(small()));
    const std::pair<const char*, const Made*> seeds[] = {{"everything", &all}, {"big-endian", &big}, {"large", &large}};
    for (const auto& [name, made] : seeds)
        fine = fine && write(corpus + "/aaf/" + name, std::string(1, '\0') + written(*made));
    fine = fine && write(corpus + "/aaf/small", std::string(1, '\1') + written(small())) &&
           write(corpus + "/aaf/two", std::string(1, '\4') + written(two_compositions())) &&
           write(corpus + "/aaf/loop", std::string(1, '\2') + written(in_a_loop()));
    return fine ? 0 : 1;
}
