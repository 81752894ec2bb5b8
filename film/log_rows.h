#pragma once
// The rows of a logging table, by reel and time.

#include "embedded/fraction.h"
#include "host/labels.h"
#include "host/recdb.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace film {

/// A usable row. Times count frames of `kind`.
struct LogRow {
    int row = 0;  ///< of the table, from 0
    int line = 0; ///< of its file, from 1
    std::string name, reel, camera, lab, daily, sound, timecode_24;
    label_t kind = label_none;
    std::int64_t start = 0, end = 0;
    LabelPoint key, ink;           ///< not useful where the row has none
    label_t own_film = label_none; ///< the film kind that the row itself names
};

/// How a row came to be one of an event's.
enum class ReelMatch : unsigned char { exact, prefix, any, none };

/// The row in which a frame lies.
struct RowAt {
    const LogRow* row = nullptr; ///< null where no row holds the frame
    ReelMatch match = ReelMatch::none;
    const LogRow* other = nullptr; ///< a second row of equal right that names other film
    /// The answer is the same for frames from `from` to below `to`.
    std::int64_t from = 0, to = 0;
};

/// How far into a frame of tape the lists look up its film, in frames of tape: with pulldown behind its middle, so that
/// what it shows doesn't fall back a frame. `share` is the frames of film for one of tape.
embedded::Fraction inside_frame(const embedded::Fraction& share);

class LogRows {
public:
    /// Reads a logging table; rows without a length or a time are left out. `first_line` is that of its first record
    /// in its file. Of a table that was put together of another's rows `places` says where each stood.
    explicit LogRows(const recdb& table, int first_line = 1, const std::vector<int>* places = nullptr);
    ~LogRows();
    LogRows(const LogRows&) = delete;
    LogRows& operator=(const LogRows&) = delete;

    const std::vector<LogRow>& rows() const { return rows_; }
    /// The row of that place in the table; null where it couldn't be used.
    const LogRow* row(int place) const;
    /// A row that holds those frames and whose reel is written nearly alike, as by another hand; null where there is
    /// none.
    const LogRow* similar(const std::string& reel, std::int64_t first, std::int64_t last) const;
    /// The first row of that reel, in whatever case; null where none names it.
    const LogRow* first_of(const std::string& reel) const;
    /// The row that a frame of a reel lies in: of several the first of the table, of its reel's own rows before those
    /// whose reel begins it, and those before rows without a reel.
    RowAt at(const std::string& reel, std::int64_t frame) const;
    /// The row that holds all frames from `first` to `last`, both inclusive, by the same order; null where none does.
    const LogRow* holding(const std::string& reel, std::int64_t first, std::int64_t last) const;
    /// The nearest row of the reel, its own before others, that ends or begins within so many frames of the frame; null
    /// where there is none.
    const LogRow* nearest(const std::string& reel, std::int64_t frame, int slack) const;
    /// The row that the lists take for a stretch: the first of the table that begins or ends at most 30 frames inside
    /// it, and whose reel begins the event's.
    const LogRow* listed(const std::string& reel, std::int64_t first, std::int64_t last) const;

private:
    struct Group;
    const std::vector<const Group*>& groups_of(const std::string& reel) const;
    const std::vector<const Group*>& groups_like(const std::string& reel) const;

    std::vector<LogRow> rows_;
    std::map<std::string, std::unique_ptr<Group>> groups_; ///< by reel in upper case
    mutable std::map<std::string, std::vector<const Group*>> found_, like_;
};

/// Where the records begin in the bytes of a table's file: a line, from 1.
int line_of_first_record(std::string_view bytes);

/// Two rows name the same film for the same frame.
bool same_film(const LogRow& a, const LogRow& b);

} // namespace film
