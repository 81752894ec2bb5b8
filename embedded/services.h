#pragma once
// How a program sets up the embedded host: its services, host-wide settings, directories and time.

#include "host/os.h"
#include "host/settings.h"

#include <cstdint>
#include <map>
#include <string>

namespace embedded {

/// Puts other services in place of the standard ones; null brings those back. The caller keeps ownership.
/// Blocks must be given back to the service that made them, so memory and counts are best replaced before
/// any work.
void use_operating_system(operating_system* services);
/// The standard services: malloc, files that are written beside their name and renamed when they are closed
/// whole, plain counts.
operating_system& standard_operating_system();

/// True once a file couldn't be written whole since the last call; `name` and `why`, where given, take its path and
/// the reason.
bool take_write_failure(std::string* name, std::string* why = nullptr);

/// Host-wide settings by name. A setting made here wins over the environment, where "some_key" is
/// QUILLBROOK_SOME_KEY.
void set_host_setting(const std::string& key, int value);
void clear_host_settings();

/// Where working files and de-rendered copies lie; made when first needed. By default a directory of the
/// process below TMPDIR, removed with what it holds at the end of the process.
void set_work_directory(const std::string& path);
const std::string& work_directory();
/// Why a directory of the process couldn't be made, as in "/tmp: No space left on device"; empty where it could.
std::string fault_of_work_directory();
/// Removes the own directories of dead processes below TMPDIR.
void sweep_work_directories();
/// True of the work directory, links resolved, once it has been made.
bool is_work_directory(const std::string& path);
void set_lists_directory(const std::string& path);
void set_record_table_directory(const std::string& path);

/// True once a record table couldn't be read since the last call; `name` and `why` take its path and the reason.
bool take_read_failure(std::string* name, std::string* why);

// embedded/transaction.h puts all files of a run in place together. Without one each file is put in place by itself:

/// Writes a file whole or not at all: beside its name, then renamed. On failure false, with the reason.
bool write_file_whole(const std::string& path, const std::string& bytes, std::string* why);
/// Reads a file; false with the reason when it can't be read. What can be read once only, such as a pipe, is kept, and
/// gives the same bytes each time.
bool read_file(const std::string& path, std::string* bytes, std::string* why);

/// What is wrong with a record table, as in "cut off behind row 148 of 168"; empty where nothing is. The host-wide
/// setting "read_broken_tables" makes tables readable that don't fit their seal, but fitting it makes none.
std::string fault_of_table(const std::string& path);

/// When a file was changed, in seconds since the epoch; the present time where it is no plain file.
std::int64_t time_of_input(const std::string& path);

/// A block of settings held as text. Numbers are read the way `atoi` does; truth values are "0" and "" for
/// false, anything else true.
class settings_block : public configb {
public:
    void set(const std::string& key, const std::string& value) { values_[key] = value; }
    bool has(const std::string& key) const { return values_.count(key) != 0; }

    int in(const LightweightString<char>& key, int& value) const override;
    int in(const LightweightString<char>& key, unsigned int& value) const override;
    int in(const LightweightString<char>& key, bool& value) const override;
    int in(const LightweightString<char>& key, LightweightString<char>& value) const override;
    int in(const LightweightString<char>& key, char* value) const override;
    int in(const LightweightString<char>& key, strp_field& value) const override;

private:
    const std::string* find(const LightweightString<char>& key) const;

    std::map<std::string, std::string, std::less<>> values_;
};

} // namespace embedded
