#include "formats/scans/cut_file_writer.h"

#include "embedded/film_feet.h"
#include "formats/key_spelling.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

struct Field {
    std::size_t column, width;
};

constexpr Field shot_field{0, 5}, footage_field{5, 7}, length_field{14, 7}, prefix_field{24, 10}, in_field{36, 7},
    out_field{46, 7}, roll_field{57, 10};

constexpr const char* head = "The cut list in construction order:\n"
                             "Shot Footage  Length    Keycode     In Frame  Out Frame  Roll\n";
constexpr std::size_t asterisks = 62;

/// Puts a text at a column; false where the column is narrower.
bool put(std::string& line, const Field& field, const std::string& text) {
    line.resize(std::max(line.size(), field.column), ' ');
    line += text;
    return text.size() <= field.width;
}

/// Control characters would begin lines and columns of their own.
std::string plain(const std::string& text) {
    std::string made = text;
    std::replace_if(
        made.begin(), made.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return made;
}

/// A key number parted where the columns part it; the perforation follows from the frame.
struct KeyColumns {
    std::string prefix, count;
    bool whole = true; ///< the columns tell the number
};

KeyColumns columns_of(LabelPoint key) {
    constexpr std::size_t groups = 8;
    const KeySpelling columns{"", "", " ", " ", "", "", false};
    const std::string prefix = key.get_prefix(), plain = key.get_string(), text = spelled(key, columns);
    if (prefix.size() != groups || text == plain) return {prefix, plain, false};
    KeyColumns made{text.substr(0, prefix_field.width), plain.substr(groups)};
    made.count.erase(std::min(made.count.find('.'), made.count.size()));
    LabelPoint read(0, key.type());
    read.set_sample((prefix + made.count).c_str());
    made.whole = read.is_useful() && read == key;
    return made;
}

class CutFile {
public:
    explicit CutFile(const std::string& title) {
        written_.text = "Title: " + plain(title) + '\n' + std::string(asterisks, '*') + '\n' + head;
    }

    void add(const CutFileRow& row);
    Written written() { return std::move(written_); }

private:
    void tell(const CutFileRow& row, const std::string& what) {
        written_.warnings.push_back(
            {embedded::WarningKind::dropped, "piece " + std::to_string(row.shot) + ": " + what});
    }

    Written written_;
    std::int64_t footage_ = 0;
};

std::string whole_feet(const CutFileRow& row, std::int64_t frames) {
    const std::string feet = embedded::feet_text(row.first.type(), frames);
    return feet.substr(0, feet.find('.'));
}

void CutFile::add(const CutFileRow& row) {
    LabelPoint behind = row.first;
    behind += static_cast<int>(row.frames * behind.cvt()->samples_per_frame());
    const KeyColumns in = columns_of(row.first), out = columns_of(behind);
    std::string number = std::to_string(row.shot), line;
    constexpr std::size_t digits = 3;
    number.insert(0, number.size() < digits ? digits - number.size() : 0, '0');
    const std::string roll = plain(row.roll);
    bool fits = put(line, shot_field, number);
    fits = put(line, footage_field, whole_feet(row, footage_)) && fits;
    fits = put(line, length_field, whole_feet(row, row.frames)) && fits;
    fits = put(line, prefix_field, in.prefix) && fits;
    fits = put(line, in_field, in.count) && fits;
    fits = put(line, out_field, out.count) && fits;
    if (!fits || !in.whole || !out.whole) return tell(row, "left out, as the columns don't hold the numbers");
    if (!put(line, roll_field, roll)) tell(row, "the roll is longer than its column");
    footage_ += row.frames;
    written_.text += line + '\n';
}

} // namespace

Written write_cut_file(const std::string& title, const std::vector<CutFileRow>& rows) {
    CutFile file(title);
    for (const CutFileRow& row : rows) {
        if (embedded::feet_text(row.first.type(), 0).empty()) return {{}, {}, "its film isn't counted in feet"};
        if (row.first.type() != rows.front().first.type()) return {{}, {}, "its film is of several gauges"};
        file.add(row);
    }
    return file.written();
}

} // namespace formats
