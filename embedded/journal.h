#pragma once
// How the files of a run get to their places together.
//
//   out/.quillbrook-XXXXXXXXXXXX/    f0 f1        the new files
//                                    k0 k1        the former ones
//                                    journal      stands from the moment on from which the run counts as done
//   out/reel.cdb  out/reel.txt       the targets
//
// While there is no journal, a crash leaves the former files. Once there is one, whoever finds it carries it out.

#include <string>
#include <vector>

namespace embedded {

struct Placing {
    enum class Kind : char {
        rename = 'r', ///< the new file takes the target's place
        pour = 'p',   ///< its bytes go into the target, which has other names or another owner
        remove = 'd',
    };

    Kind kind = Kind::rename;
    std::string folder;        ///< where the new and the former file lie; empty: beside the journal
    std::string staged;        ///< the new file's name there
    std::string kept;          ///< the former file's name there; empty where none stood
    std::string target_folder; ///< empty: the folder that the journal's folder lies in
    std::string target;        ///< the name there
};

/// What failed, and of which file.
struct FileFailure {
    std::string path;
    int error = 0;

    FileFailure() = default;
    /// Where there is no memory for the path, without it.
    FileFailure(const std::string& of, int what) noexcept;

    explicit operator bool() const { return error != 0; }
};

class Journal {
public:
    /// `folder` holds the new files of most placings and takes the journal.
    explicit Journal(std::string folder);

    std::vector<Placing> placings;

    /// Keeps the former files, so that `take_back` can bring them back. From here on no memory is asked for, as it
    /// could end between two files.
    FileFailure keep_former();
    /// From here on the placings count as done.
    FileFailure begin() const;
    /// May be called again however far it got.
    FileFailure carry_out() const;
    FileFailure take_back() const;
    FileFailure end() const;

private:
    friend bool finish_journal(const std::string& folder);

    /// A placing by full paths.
    struct Way {
        Placing::Kind kind;
        std::string staged, kept, target;
    };

    void make_ready();
    std::string text_of(char direction) const;
    FileFailure write(const std::string& text) const;
    bool read(char* direction);
    Way way_of(const Placing& placing) const;
    FileFailure sync_targets() const;
    static int place(const Way& way);
    static int bring_back(const Way& way);

    std::string folder_, path_, beside_;
    std::string forward_text_, back_text_;
    std::vector<Way> ways_;
    std::vector<std::string> target_folders_;
};

/// Finishes what the journal of a dead run's folder says, or that of the run's first folder, which a file "journal-at"
/// names. False where that failed, so that the folder has to stay.
bool finish_journal(const std::string& folder);
/// Makes the folder's files go by the journal in another folder.
FileFailure point_to_journal(const std::string& folder, const std::string& journal_folder);
bool has_journal(const std::string& folder);

} // namespace embedded
