#include "formats/edit_reading.h"

#include "embedded/services.h"

#include <utility>

namespace formats {

ReadResult read_whole(const std::string& file,
                      const std::function<ReadResult(std::string bytes, std::int64_t file_time)>& read) {
    std::string bytes, why;
    if (embedded::read_file(file, &bytes, &why)) return read(std::move(bytes), embedded::time_of_input(file));
    ReadResult result;
    result.error = file + ": " + why;
    return result;
}

ReadResult read_whole(ReadBytes read, const std::string& file, const std::string& path, const ReadOptions& options) {
    return read_whole(
        file, [&](const std::string& bytes, std::int64_t file_time) { return read(bytes, path, file_time, options); });
}

} // namespace formats
