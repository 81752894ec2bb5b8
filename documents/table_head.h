#pragma once
// What a cutlist table says that film strips don't: its head, the names of transitions, and its opticals.

#include "documents/document.h"
#include "host/labels.h"
#include "host/recdb.h"

#include <cstdint>
#include <string>
#include <vector>

namespace documents {

struct TableHead {
    std::string edit, project, date, rate, gauge, channel; ///< as the table has them
    label_t film = label_none;
    bool neg_cut = false, sound = false;
};

TableHead head_of(const recdb& table);
/// In words; without a reel and without the time at which lists are made.
TitleBlock title_of(const TableHead& head);

/// "35mm 4-perf" of "35mm-4p", "24 fps" of "24fps".
std::string gauge_words(const std::string& gauge);
std::string rate_words(const std::string& rate);

struct TableRow {
    bool is_optical = false; ///< a row of its own for what the lab makes; else an event
    int layer = 0;
    std::int64_t start = 0, end = 0; ///< of the event without its transitions, or of the effect
    std::string transition_kind, transition_mode, transition_name; ///< behind the event
    std::int64_t transition_length = 0;

    int optical = 0;
    std::int64_t optical_start = 0, optical_end = 0;
    std::string optical_name;
    bool has_effect = false; ///< else transitions alone make it an optical
    bool optical_error = false;
};

std::vector<TableRow> rows_of(const recdb& table);

} // namespace documents
