#pragma once
// What all readers of edits take and give.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "host/edit.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

struct ReadOptions {
    const embedded::RateInfo* rate = nullptr; ///< wins over the file's own; null leaves that
    bool all_effects = false;                 ///< every effect is the lab's
    bool reverse_from_first =
        false;              ///< an edit list's source in of a reverse shot is the frame shown first, not the lowest
    bool unrender = false;  ///< rendered clips as what they were rendered from
    std::string sequence;   ///< of a file that holds several, the name of the one; empty takes the only one
    bool list_only = false; ///< only `ReadResult::sequences` are wanted, no edit
};

/// A sequence, project, composition or timeline that a file holds and that can be read as an edit.
struct Sequence {
    std::string name;
    std::string place;                        ///< where it stands in the file, as "line 12"; may be empty
    const embedded::RateInfo* rate = nullptr; ///< null where the file doesn't say
};

/// `edit` is empty and `error` set when the file can't be read. Messages name the file, the line and byte or the
/// object, and what is wrong.
struct ReadResult {
    EditPtr edit;
    embedded::Warnings warnings;
    std::string error;
    std::vector<Sequence> sequences; ///< with `ReadOptions::list_only`: all that the file holds
    bool rate_missing = false;       ///< the error is that nothing tells the rate and the options don't either
    bool sequence_missing = false;   ///< the error is that the file holds several and none, or none of them, was named
    bool sequence_chosen = false;    ///< the file holds that which the options name
};

/// A reader of bytes; messages call them by the path, and the time is that of the file.
using ReadBytes = ReadResult (*)(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                                 const ReadOptions& options);

/// Reads a whole file and gives its bytes and its time to `read`; otherwise the result says why it can't be read.
ReadResult read_whole(const std::string& file,
                      const std::function<ReadResult(std::string bytes, std::int64_t file_time)>& read);
/// Reads a whole file and gives it to `read` as what lies at `path`: the file itself, or the folder that holds it.
ReadResult read_whole(ReadBytes read, const std::string& file, const std::string& path, const ReadOptions& options);

} // namespace formats
