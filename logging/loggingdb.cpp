#include "base/guard.h"
#include "quillbrook/logging_tables.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

loggingdb::loggingdb(const LightweightString<wchar_t>& name, int max_records) : recdb(name, max_records, false) {}

loggingdb::loggingdb(DBFieldDesc* fields) : recdb(fields) {}

// A copy is a new object: the count of users isn't copied with it.
loggingdb::loggingdb(const loggingdb& other)
    : iObject(), recdb(other, 1), revision(other.revision), vid_std(other.vid_std), snd_std(other.snd_std),
      picqual(other.picqual), chans(other.chans), error(other.error) {
    std::memcpy(error_message, other.error_message, sizeof error_message);
}

loggingdb& loggingdb::operator=(const loggingdb& other) {
    if (this == &other) return *this;
    const bool copied = survives([&] { recdb::operator=(other); });
    revision = other.revision;
    vid_std = other.vid_std;
    snd_std = other.snd_std;
    picqual = other.picqual;
    chans = other.chans;
    error = other.error;
    std::memcpy(error_message, other.error_message, sizeof error_message);
    if (!copied) fail();
    return *this;
}

loggingdb::~loggingdb() = default;

void loggingdb::init() {
    survives([&] { set_valid(0); });
    error = fdb_ok;
    error_message[0] = '\0';
    vid_std = snd_std = TCInf{Qb::frame_rate_25, 0};
    add_std("label_std", vid_std);
    add_std("snd label_std", snd_std);
    picqual = 0;
    chans = ChannelMask(0);
}

void loggingdb::set_title(char* text) { set_param("Title", text); }

void loggingdb::set_vid_std(TCInf std) {
    vid_std = std;
    add_std("label_std", std);
}

void loggingdb::set_snd_std(TCInf std) {
    snd_std = std;
    if (std.rate != Qb::frame_rate_unset) add_std("snd label_std", std);
}

void loggingdb::set_picqual(int value) {
    picqual = value;
    if (value > 0) add_int_param("pic qual", value);
}

void loggingdb::set_chans(const ChannelMask& mask) { chans = mask; }

fdb_error loggingdb::get_error() { return error; }

const char* loggingdb::get_error_message() { return error_message; }

int loggingdb::get_revision() { return revision; }

void loggingdb::add_int_param(const char* key, int value) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    set_param(key, text);
}

void loggingdb::add_std(const char* key, TCInf std) { set_param(key, tv_standard_to_edlstr(std)); }

void loggingdb::set_param(const char* key, const char* value) {
    if (!survives([&] { add_param(key, value); })) fail();
}

// Without a message of the host's making: there may be no memory for one.
void loggingdb::fail() {
    survives([&] { set_valid(0); });
    error = fdb_load_failed;
    set_error_message("A service of the host failed");
}

void loggingdb::set_error_message(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(error_message, sizeof error_message, format, arguments);
    va_end(arguments);
}
