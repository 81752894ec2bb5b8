// Reads any bytes as a Keylog file. What comes of it is a whole table or none, and it can be merged and copied.

#include "quillbrook/keylog.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

/// Closes the file that a failed import leaves open.
class Import : public ftldb {
public:
    using ftldb::ftldb;
    ~Import() override {
        if (file && !get_valid()) std::fclose(file);
    }
};

/// The input as a file, gone with it.
class InputFile {
public:
    InputFile(const std::uint8_t* data, std::size_t size) {
        const int descriptor = ::mkstemp(name_.data());
        if (descriptor < 0 || ::write(descriptor, data, size) != static_cast<::ssize_t>(size)) std::abort();
        ::close(descriptor);
    }
    ~InputFile() { ::unlink(name_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    LightweightString<wchar_t> name() const { return fromUTF8(name_.c_str(), -1); }

private:
    std::string name_ = "/tmp/keylog-XXXXXX";
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 65536) return 0;
    const InputFile input(data, size);
    SilentLogger logger;
    Import table(input.name(), logger, LightweightString<wchar_t>());
    if (table.get_error() != fdb_ok) std::abort();
    if (!table.get_valid() && table.get_num_records() != 0) std::abort();
    filmdb day;
    if (day.add_any_recdb(&table) != 0) std::abort();
    ftldb copy(table);
    copy.set_reelid("A1");
    if (copy.get_num_records() != day.get_num_records()) std::abort();
    return 0;
}
