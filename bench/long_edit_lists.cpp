// Edit lists (.edl), and a log for one of them.

#include "bench/long_files.h"
#include "bench/printed.h"

#include <numeric>

namespace bench {
namespace {

constexpr int hour = 24 * 3600;

std::string line(int event, int take, const char* type, int source, int record, int length) {
    return printed("%06d  A%03d     V     %s ", event, take % 97, type) + timecode(source) + ' ' +
           timecode(source + length) + ' ' + timecode(record) + ' ' + timecode(record + length) + '\n';
}

constexpr int row_step = 2400, rows_of_a_tape = 30;

std::string tape_of(int row) { return printed("T%d", 100 + row / rows_of_a_tape); }
int start_of(int row) { return hour + row % rows_of_a_tape * row_step; }

} // namespace

std::string long_edit_list(int events) {
    constexpr int length = 48;
    std::string text = "TITLE: LONG\nFCM: NON-DROP FRAME\n";
    for (int event = 1; event <= events; ++event) {
        const int record = hour + event * length, take = event % takes_of(events);
        const bool dissolve = event % 10 == 0;
        if (dissolve) text += line(event, take, "C    ", event * 100, record, 0);
        text += line(event, take, dissolve ? "D 012" : "C    ", hour + event * 100 % 20000, record, length);
        text += printed("* FROM CLIP NAME:  take %d\n", take);
        if (event % 25 == 0) text += printed("* KEYCODE: KJ 12 3456-%d+05\n", 1000 + event % 9000);
    }
    return text;
}

// Each row is used as often as the others, and no film twice: steps that shared a factor with the rows would come to
// some of them alone.
std::string list_of_tapes(int events) {
    constexpr int length = 24;
    std::string text = "TITLE: LONG\n";
    const int rows = events / 4;
    int step = 7;
    while (std::gcd(step, rows) != 1)
        step += 2;
    for (int event = 0; event < events; ++event) {
        const int row = event * step % rows, source = start_of(row) + 40 + event / rows * 400,
                  record = hour + event * length;
        text += printed("%d  ", event + 1) + tape_of(row) + "  V C " + timecode(source) + ' ' +
                timecode(source + length) + ' ' + timecode(record) + ' ' + timecode(record + length) + '\n';
    }
    return text;
}

std::string log_of_tapes(int rows) {
    constexpr int row_length = 2000;
    std::string text = "Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\n"
                       "Column\nTape\tStart\tEnd\tCamroll\tKN Start\n\nData\n";
    for (int row = 0; row < rows; ++row)
        text += tape_of(row) + '\t' + timecode(start_of(row)) + '\t' + timecode(start_of(row) + row_length) +
                printed("\tA%d\tKJ%06d0100+00\n", row, 100000 + row);
    return text;
}

} // namespace bench
