#pragma once
// What a file is and what is in it, for people and for programs that let them choose.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "formats/edit_reading.h"
#include "formats/file_kind.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

struct TrackDescription {
    std::string channel; ///< "V1", "A2"
    bool fx = false, listed = true;
    int events = 0;          ///< without black
    std::int64_t frames = 0; ///< of the edit, to the end of its last event
};

/// What of it doesn't belong to the file's kind is empty.
struct FileDescription {
    std::string path;
    formats::FileKind kind = formats::FileKind::empty;
    std::string use;   ///< what it can be used as: "edit", "log" or "cut"; empty where nothing takes it
    std::string fault; ///< why it can't be read, or not yet
    std::string needs; ///< "rate" or "sequence", where the fault is that nobody said which
    std::string name, project, timecode;
    std::string rate; ///< "24fps"; several with commas
    std::vector<TrackDescription> tracks;
    std::vector<formats::Sequence> sequences;
    std::vector<std::string> rolls; ///< camera rolls, else the names of tapes, in order
    int rows = 0, with_key = 0;     ///< of a log: its shots, and those that have a key number
    embedded::Warnings warnings;
};

struct DescriptionInput {
    const embedded::RateInfo* rate = nullptr;
    std::string sequence;
};

/// Never throws for what is wrong with the file.
FileDescription describe_file(const std::string& path, const DescriptionInput& input);

/// "an edit list, 65 events on V1, 60 on A1, 25fps".
std::string told_description(const FileDescription& file);

/// All of them as a JSON document.
std::string description_document(const std::vector<FileDescription>& files);

} // namespace tool
