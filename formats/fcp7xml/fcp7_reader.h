#pragma once
// Reads FCP 7 XML ("xmeml") as edits.

#include "formats/edit_reading.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace formats {

ReadResult read_fcp7xml(const std::string& path, const ReadOptions& options = {});
ReadResult read_fcp7xml_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                              const ReadOptions& options = {});

} // namespace formats
