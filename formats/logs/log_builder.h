#pragma once
// From the cells of a log's rows to rows that have been read. What the readers of all kinds of logs share.

#include "formats/logs/log_row.h"
#include "formats/text_lines.h"

#include <deque>

namespace formats {

/// What a file says of all its rows.
struct LogHead {
    const embedded::RateInfo* rate = nullptr;
    bool drop = false;
    label_t film = label_none;
    std::string reel; ///< of rows that name none
};

/// Reads rows one by one into a log. Each row that is added becomes one row of the log, whatever is wrong with it:
/// what can't be read is left out and told.
class LogBuilder {
public:
    /// `log` takes the rows and warnings.
    LogBuilder(Log& log, std::string path, const LogOptions& options);

    /// Before the first row.
    void set_head(const LogHead& head);
    /// A row too many for a table refuses the log; reading can end there.
    void add(const LogCells& cells);
    /// After the last row: settles what only the file as a whole tells, whether ends are inclusive.
    void finish();

    void warn(int line, int column, const std::string& what,
              embedded::WarningKind kind = embedded::WarningKind::dropped);
    /// The file can't be used: its rows go.
    void refuse(int line, const std::string& why);
    bool refused() const { return !log_.error.empty(); }
    bool knows_rate() const { return options_.rate || head_.rate; }

private:
    /// A row, and what is wanted of it once all have been read.
    struct RowInMaking {
        LogRow row;
        int end_column = 0;          ///< of its cell; 0 without one
        std::optional<int> duration; ///< frames
    };

    void read_standards(const LogCells& cells, LogRow& row);
    const embedded::RateInfo* rate_of(const LogCells& cells);
    void read_film(const LogCells& cells, LogRow& row);
    void read_timecodes(const LogCells& cells, RowInMaking& made);
    bool read_timecode(const LogCells& cells, LogField field, label_t kind, LabelPoint& point);
    std::optional<int> read_duration(const LogCells& cells, label_t kind);
    void read_key_numbers(const LogCells& cells, LogRow& row);
    bool read_key(const LogCells& cells, LogField field, const LogRow& row, LabelPoint& point);
    void read_ink(const LogCells& cells, LogRow& row);
    void read_pulldown(const LogCells& cells, LogRow& row);
    void copy_texts(const LogCells& cells, LogRow& row);
    void receive_texts(const LogCells& cells, LogRow& row);
    void read_other_timecodes(const LogCells& cells, LogRow& row);
    bool ends_are_inclusive() const;
    bool key_ends_are_inclusive() const;
    void settle_end(RowInMaking& made, bool inclusive);
    static void settle_key_frames(LogRow& row, bool inclusive);
    void tell(const LogCells& cells, LogField field, const char* what);

    Log& log_;
    std::string path_;
    const LogOptions& options_;
    LogHead head_;
    std::deque<RowInMaking> rows_; ///< until they go to the log, one by one
};

/// A rate as "23.98", "24.00", "29.97 fps", "29.97df" or "25p"; null for none. `drop` becomes true where it says so.
const embedded::RateInfo* rate_of_text(std::string_view text, bool* drop);

/// Film frames of video frames at a standard, not rounded: 4/5 of them with pulldown.
embedded::Fraction film_frames_of(int video_frames, const TCInf& standard);

} // namespace formats
