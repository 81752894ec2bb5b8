#include "formats/edit_reading.h"

#include "embedded/services.h"

namespace formats {

ReadResult read_whole(ReadBytes read, const std::string& file, const std::string& path, const ReadOptions& options) {
    std::string bytes, why;
    if (embedded::read_file(file, &bytes, &why)) return read(bytes, path, embedded::time_of_input(file), options);
    ReadResult result;
    result.error = file + ": " + why;
    return result;
}

} // namespace formats
