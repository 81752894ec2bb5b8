// Writes the first inputs of corpus/dpx and corpus/exr: make_scan_seeds corpus

#include "tests/support/scan_writer.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

using namespace scan_writer;

bool write(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

Dpx full() {
    Dpx header;
    header.offset = "56";
    header.format = "35mm,4perf";
    header.slate = "12A-3";
    header.position = 17;
    header.timecode = 0x01020312;
    return header;
}

bool write_dpx(const std::string& folder) {
    Dpx little = full(), letters = full(), unset = full();
    little.big_end_first = false;
    letters.maker = "K";
    letters.stock = "J";
    unset.maker = unset.stock = unset.offset = unset.prefix = unset.count = "";
    Dpx early = full();
    early.image = 1664;
    return write(folder + "big_end_first", bytes_of(full())) && write(folder + "little_end_first", bytes_of(little)) &&
           write(folder + "letters", bytes_of(letters)) && write(folder + "unset", bytes_of(unset)) &&
           write(folder + "early_picture", bytes_of(early)) &&
           write(folder + "cut_off", bytes_of(full()).substr(0, 1700)) && write(folder + "mark_alone", "XPDS");
}

bool write_exr(const std::string& folder) {
    const std::vector<ExrAttribute> all{frames_per_second(24000, 1001), key_code({2, 74, 291010, 5867, 56, 4, 64}),
                                        preview(64), reel_name("A012"), time_code(0xC1828352)};
    return write(folder + "all", exr_bytes(all)) && write(folder + "none", exr_bytes({})) &&
           write(folder + "cut_off", exr_bytes(all).substr(0, 70)) &&
           write(folder + "faulty",
                 exr_bytes({key_code({-1, 200, 0, 0, 500, 0, 0}), time_code(0x0000000F), frames_per_second(0, 0)})) &&
           write(folder + "long_value", exr_bytes({preview(5000)}).substr(0, 60));
}

} // namespace

int main(int argc, char** argv) {
    const std::string corpus = argc > 1 ? argv[1] : "";
    std::filesystem::create_directories(corpus + "/dpx");
    std::filesystem::create_directories(corpus + "/exr");
    if (write_dpx(corpus + "/dpx/") && write_exr(corpus + "/exr/")) return 0;
    std::cerr << "make_scan_seeds: " << corpus << " couldn't be written\n";
    return 1;
}
