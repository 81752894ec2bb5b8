#pragma once
// All files of a run, put in place together or not at all.
//
//   embedded::Transaction run;
//   embedded::write_file_whole("out/steps.json", bytes, &why);   // and whatever the library writes, removes, reads
//   if (!run.commit(&why)) ...                                    // until here nothing of it is seen
//
// While a transaction lives, the file service, tables and `write_file_whole` write to a private folder beside each
// output; what they read and remove is what the run wrote. Whatever ends the run before `commit` has begun to put
// files in place leaves the former files, and whatever ends it later leaves the new ones, at the latest once the next
// run has looked into the folder.

#include "embedded/journal.h"
#include "embedded/output_lock.h"
#include "embedded/private_folder.h"

#include <map>
#include <memory>
#include <string>

namespace embedded {

/// One at a time in a process. Files of the work directory are no outputs and stay out of it.
class Transaction {
public:
    /// Begins a run; `why` of an operation tells when another one is under way.
    Transaction();
    /// Takes back what wasn't committed.
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// The run that is under way, or null.
    static Transaction* current();

    /// Keeps other runs off an output until this one is done. False with the reason when another run has it, or when
    /// it can't be made.
    bool hold(const std::string& path, std::string* why);
    /// Where an output is written for now; empty with the reason when it can't be made.
    std::string stage(const std::string& path, std::string* why);
    /// Where a file is found that is to be read: its own path where the run didn't write it, empty where the run
    /// removed it.
    std::string seen(const std::string& path);
    /// Removes a file when the run is done.
    void remove(const std::string& path);

    /// Syncs all files and puts them in place. False with the reason, and with the former files in place.
    bool commit(std::string* why);

private:
    struct Folder;
    struct File;

    Folder* folder_at(const std::string& path, std::string* why);
    void visit(const std::string& folder);
    File* file_at(const std::string& path, std::string* why);
    FileFailure prepare(File& file, Journal& journal);
    FileFailure pour_into_devices();
    FileFailure place_all();
    FileFailure place_by_journal(Journal& journal);
    FileFailure carry_out(Journal& journal);
    void leave_to_next_run();

    bool is_current_ = false;
    bool is_left_ = false;                                   ///< the private folders stay for the next run
    std::map<std::string, std::unique_ptr<Folder>> folders_; ///< by the folder of the outputs
    std::map<std::string, std::unique_ptr<File>> files_;     ///< by target
    std::map<std::string, bool> visited_;
    std::string first_folder_; ///< takes the journal
};

} // namespace embedded
