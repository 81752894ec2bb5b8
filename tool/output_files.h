#pragma once
// What is checked of the files of a job before anything is written, and told of them afterwards.

#include "tool/job_parts.h"

namespace tool {

/// The path of a file that goes beside the report: its extension replaced.
std::string beside_report(const std::string& report, const char* extension);

/// Why a file can't be read; empty where it can.
std::string fault_of_input(const std::string& path);
/// Throws `JobError` unless the file is there and can be read.
void check_readable(const std::string& path);
/// Whether it is standard output, a pipe or a device. Nothing lies beside such an output, and nothing is replaced
/// there.
bool is_stream(const std::string& path);
/// Where the run makes what goes to `path`: there, or in the work directory for a stream, which gets its bytes by
/// `deliver` when all of them are made.
std::string made_at(const std::string& path);
/// Gives a stream what was made for it; nothing for other files. Throws `JobError`.
void deliver(const std::string& path);
/// The same for bytes; writes any other file too.
void deliver_bytes(const std::string& path, const std::string& bytes);

/// A file of that name in the work directory, which is made where it isn't there. Throws `JobError`.
std::string work_file(const char* name);
/// The path of a plain file with the bytes of an input: itself, or one in the work directory for standard input, a pipe
/// or a device.
std::string plain_copy_of(const std::string& input);

/// All files of two lists of them.
std::vector<std::string> joined(std::vector<std::string> all, const std::vector<std::string>& more);

/// Throws `JobError` where a name is empty.
void check_named_input(const std::string& path);
/// Throws `JobError` unless the report and the files beside it can be made: the report's folder is there and
/// writable, no file takes the place of another one or of `input`, and those that are there may be replaced. Holds
/// them as `hold_outputs` does.
void check_outputs(const std::string& input, const Output& output, const std::vector<std::string>& beside);

/// Throws `JobError` unless it is a folder that files can be made in.
void check_folder(const std::string& folder);

/// Throws `JobError` unless `option` names a file that takes the place neither of one of `inputs` nor of one of the
/// `others` that the run makes.
void check_output(const char* option, const std::string& path, const std::vector<std::string>& inputs,
                  const std::vector<std::string>& others);

/// Keeps other runs off all of these files until this one is done; waits for one that has them. Then throws `JobError`
/// where an output can't be made, or is there and may not be replaced. `working` files always may be; streams are left
/// alone. Whatever a command makes is held in one call, so that no two runs wait for each other.
void hold_outputs(const std::vector<std::string>& outputs, bool overwrite,
                  const std::vector<std::string>& working = {});

/// Throws `JobError` where a file that the run makes under a name of its own can't be made or would replace an input.
void check_working_file(const std::string& path, const std::vector<std::string>& inputs);

/// Throws `JobError` when a file of the run couldn't be written whole.
void check_written();
/// Throws `JobError` when a table couldn't be read.
void check_tables_read();

} // namespace tool
