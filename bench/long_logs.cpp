// Logs of long films, in each format.

#include "bench/long_files.h"
#include "bench/printed.h"
#include "tests/logging/keylog_text.h"

namespace bench {
namespace {

constexpr int seconds_of_a_take = 10;

/// Where a take lies on its tape, in seconds, and on film.
struct Take {
    int number, tape, second;
    std::string key, roll;

    Take(int row, int takes_of_a_tape)
        : number(row), tape(row / takes_of_a_tape), second(row % takes_of_a_tape * seconds_of_a_take),
          key(printed("KJ %06d-%04d+00", 100000 + row / 600, row % 600 * 15)), roll(printed("A%03d", row / 100)) {}

    static std::string time(int second) {
        return printed("%02d:%02d:%02d:00", second / 3600, second / 60 % 60, second % 60);
    }
    std::string start() const { return time(second); }
    std::string end() const { return time(second + seconds_of_a_take); }
    std::string key_end() const { return printed("KJ %06d-%04d+00", 100000 + number / 600, number % 600 * 15 + 15); }
};

constexpr int takes_of_a_long_tape = 8000, takes_of_a_tape = 80;

std::string columns(const Take& take) {
    return printed("%d-%d\tT%03d\t", take.number / 10, take.number % 10, take.tape) + take.start() + '\t' + take.end() +
           '\t' + take.roll + '\t' + take.key + '\t' + take.key_end() + "\tS1\t" + take.start() +
           printed("\t%d\t%d\n", take.number / 10, take.number % 10);
}

const char* const column_names =
    "Name\tTape\tStart\tEnd\tCamroll\tKN Start\tKN End\tSoundroll\tSound TC\tScene\tTake\n";

} // namespace

std::string long_ale(int rows) {
    std::string text = std::string("Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\nColumn\n") +
                       column_names + "\nData\n";
    for (int row = 0; row < rows; ++row)
        text += columns({row, takes_of_a_long_tape});
    return text;
}

std::string long_delimited(int rows) {
    std::string text = column_names;
    for (int row = 0; row < rows; ++row)
        text += columns({row, takes_of_a_long_tape});
    return text;
}

std::string long_flex(int rows) {
    std::string text = "000 Manufacturer EXAMPLE    No. 001 Equip TELECINE   Version 01.00    FLEx 1004\n";
    for (int row = 0; row < rows; ++row) {
        const Take take(row, takes_of_a_tape);
        text += printed("100 Edit %04d to TK%03d       Field A1 PAL\n", row % 9999 + 1, take.tape) +
                printed("110 Scene %-8d Take %-7d Cam Roll %s     Sound S07\n", row / 10, row % 10, take.roll.c_str()) +
                printed("200 TKB   35 25.00 %s     000000+00 000015+10 Key KODAK KJ%06d %06d+00\n", take.roll.c_str(),
                        100000 + row / 600, row % 600 * 16) +
                printed("300 VTR-1 Assemble  TK%03d    At %s.0 For 00:00:10:00.0 Using LTC\n", take.tape,
                        take.start().c_str());
    }
    return text;
}

std::string long_keylog(int rows) {
    std::vector<std::string> lines{keylog::full_header(), keylog::standards("35", "4", "PAL", "VTROLL001")};
    for (int row = 0; row < rows; ++row) {
        const Take take(row, takes_of_a_long_tape);
        lines.push_back(keylog::line_of({{7, std::to_string(row + 1)},
                                         {keylog::camroll, take.roll},
                                         {keylog::soundroll, "S1"},
                                         {keylog::scene, std::to_string(row / 10)},
                                         {keylog::take, std::to_string(row % 10)},
                                         {keylog::vttc_in, take.start()},
                                         {keylog::vttc_out, take.end()},
                                         {keylog::keyin, printed("KJ%06d%04d+00", 100000 + row / 600, row % 600 * 16)},
                                         {keylog::descript, "A pan"},
                                         {keylog::labroll, "L1"}},
                                        320));
    }
    return keylog::file_of(lines);
}

} // namespace bench
