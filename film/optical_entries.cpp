#include "film/optical_entries.h"

#include "film/list_lines.h"

#include <algorithm>

namespace film {
namespace {

/// The column that parts both rolls.
constexpr int middle = 40;

constexpr std::string_view optical_text = "OPTICAL#";
constexpr std::string_view error_texts[] = {
    "     The description of this optical is in error",
    "     - possibly because it overlaps with another optical",
    "     - there appear to be no components",
    "     - Please manually review its details here and in the assembly list",
};

bool begins(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool consists_of(std::string_view text, const char* characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

/// One of the points of a shot, by the words ahead of it.
struct PointForm {
    std::string_view words;
    DrawnPoint DrawnShot::*point;
};

constexpr PointForm point_forms[] = {
    {"begin:", &DrawnShot::begin},         {"end:", &DrawnShot::end},
    {"start IN:", &DrawnShot::start_in},   {"full  IN:", &DrawnShot::full_in},
    {"start OUT:", &DrawnShot::start_out}, {"full  OUT:", &DrawnShot::full_out},
};

/// The drawing of one layer, column by column.
class LayerReader {
public:
    LayerReader(ListLines& lines, DrawnLayer& layer) : lines_(lines), layer_(layer) {}

    void read_line(const PrintedLine& line) {
        for (const int side : {0, 1}) {
            const std::string_view text = side ? cell(line.text, middle, -1) : cell(line.text, 0, middle);
            if (!read_cell(line, side, text)) return lines_.unreadable(line);
        }
    }

    bool read_transition(const PrintedLine& line) {
        const std::size_t start = line.text.rfind("*  FX start ");
        const auto begin = start == std::string_view::npos
                               ? std::nullopt
                               : between(line.text.substr(start), "FX start ", "   FX end ");
        const auto end = between(line.text.substr(std::min(start, line.text.size())), "FX end ", "   FX len ");
        const std::size_t length = line.text.rfind(' ') + 1;
        if (!begin || !end) return false;
        const std::string_view name = line.text.substr(4, start - 4);
        layer_.transitions.push_back(
            {line.place, name, trimmed(*begin), trimmed(*end), lines_.number(line.text.substr(length), line.place)});
        return true;
    }

private:
    bool read_cell(const PrintedLine& line, int side, std::string_view text) {
        if (text.empty() || text == ":" || text == "V") return true;
        if (begins(text, "-----SPACER ")) return read_spacer(line, side, text);
        if (begins(text, "SHOT: ")) return read_shot(line, side, text.substr(6));
        DrawnShot* const shot = last_on(side);
        if (!shot) return false;
        if (begins(text, "length: ")) return read_length(line, text.substr(8), *shot);
        if (begins(text, "** clip FX: ") || begins(text, "** Clip FX: ")) return true;
        return read_point(line, text, *shot);
    }

    bool read_spacer(const PrintedLine& line, int side, std::string_view text) {
        const auto frames = between(text, "-----SPACER ", " FRAMES-----");
        if (!frames) return false;
        layer_.rolls[side].push_back({line.place, lines_.number(*frames, line.place), -1});
        return true;
    }

    bool read_shot(const PrintedLine& line, int side, std::string_view text) {
        const std::size_t roll = text.rfind(" roll:");
        if (roll == std::string_view::npos) return false;
        DrawnShot shot;
        shot.place = line.place;
        shot.side = side;
        shot.name = trimmed(text.substr(0, roll));
        shot.roll = trimmed(text.substr(roll + 6));
        layer_.rolls[side].push_back({line.place, 0, static_cast<int>(layer_.shots.size())});
        layer_.shots.push_back(shot);
        return true;
    }

    DrawnShot* last_on(int side) {
        const auto found = std::find_if(layer_.shots.rbegin(), layer_.shots.rend(),
                                        [side](const DrawnShot& shot) { return shot.side == side; });
        return found == layer_.shots.rend() ? nullptr : &*found;
    }

    bool read_length(const PrintedLine& line, std::string_view text, DrawnShot& shot) {
        const std::size_t mark = text.find("  **SPEED ");
        shot.length = lines_.number(text.substr(0, mark), line.place);
        if (mark == std::string_view::npos) return true;
        const auto percent = between(text, "**SPEED ", "%**");
        if (percent) shot.speed = *percent;
        return percent.has_value();
    }

    bool read_point(const PrintedLine& line, std::string_view text, DrawnShot& shot) {
        for (const PointForm& form : point_forms) {
            if (!begins(text, form.words)) continue;
            const std::string_view rest = trimmed(text.substr(form.words.size()));
            const std::size_t gap = rest.find(' ');
            if (shot.*form.point || rest.empty()) return false;
            shot.*form.point = {line.place, rest.substr(0, gap),
                                gap == std::string_view::npos ? std::string_view() : trimmed(rest.substr(gap))};
            return true;
        }
        return false;
    }

    ListLines& lines_;
    DrawnLayer& layer_;
};

class OpticalReader {
public:
    OpticalReader(const ListPages& pages, std::vector<ReadFault>& faults) : lines_(pages, faults) {}

    OpticalEntries read() {
        list_.none = lines_.take("The reel contains no opticals");
        while (!lines_.at_end()) {
            const PrintedLine& line = lines_.next();
            if (begins(line.text, optical_text)) {
                read_head(line);
            } else if (list_.opticals.empty()) {
                lines_.unreadable(line);
            } else {
                read_drawing(line, list_.opticals.back());
            }
        }
        return std::move(list_);
    }

private:
    void read_head(const PrintedLine& line) {
        OpticalEntry optical;
        optical.place = line.place;
        const std::size_t number = optical_text.size();
        const std::size_t behind = std::min(line.text.find(' '), line.text.size());
        optical.number = lines_.number(line.text.substr(number, behind - number), line.place);
        const std::size_t event = line.text.rfind("Assembly event ");
        if (event != std::string_view::npos) optical.event = lines_.number(line.text.substr(event + 15), line.place);
        const std::size_t first = line.text.find('<'), last = line.text.rfind('>');
        if (first < last && last != std::string_view::npos)
            optical.name = line.text.substr(first + 1, last - first - 1);
        read_range(lines_.next(), optical);
        while (lines_.starts_with("           <"))
            read_effect(optical);
        if (!consists_of(lines_.peek().text, "_")) lines_.unreadable(lines_.peek());
        lines_.next();
        list_.opticals.push_back(std::move(optical));
    }

    void read_range(const PrintedLine& line, OpticalEntry& optical) {
        const bool feet = line.text.find("begin footage: ") != std::string_view::npos;
        const auto begin = between(line.text, feet ? "begin footage: " : "begin frame: ", "   end f");
        const auto end = between(line.text, feet ? "end footage: " : "end frame: ", "   frame length: ");
        const auto length = between(line.text, "frame length: ", "");
        if (!begin || !end || !length) return lines_.unreadable(line);
        optical.begin = trimmed(*begin);
        optical.end = trimmed(*end);
        optical.length = lines_.number(*length, line.place);
    }

    void read_effect(OpticalEntry& optical) {
        const PrintedLine& name = lines_.next();
        const PrintedLine& line = lines_.next();
        const auto start = between(line.text, "FX start: ", "        FX end: ");
        const auto end = between(line.text, "FX end: ", "      FX length: ");
        const auto length = between(line.text, "FX length: ", "");
        if (!start || !end || !length) return lines_.unreadable(line);
        const std::string_view text = trimmed(name.text);
        optical.effects.push_back({name.place, text.substr(1, text.size() - 2), trimmed(*start), trimmed(*end),
                                   lines_.number(*length, line.place)});
    }

    void read_drawing(const PrintedLine& line, OpticalEntry& optical) {
        const std::string_view text = trimmed(line.text);
        if (std::find(std::begin(error_texts), std::end(error_texts), line.text) != std::end(error_texts)) {
            optical.in_error = true;
        } else if (begins(text, "-- Layer ")) {
            read_layer(line, optical);
        } else if (consists_of(text, "- ") || consists_of(text, "~")) {
            return;
        } else if (text.find("-ROLL  ") != std::string_view::npos) {
            if (optical.layers.empty() || optical.layers.back().number == 0) optical.layers.emplace_back();
            optical.layers.back().place = line.place;
            optical.layers.back().head = text;
        } else if (optical.layers.empty()) {
            lines_.unreadable(line);
        } else {
            read_layer_line(line, optical.layers.back());
        }
    }

    void read_layer(const PrintedLine& line, OpticalEntry& optical) {
        const auto number = between(line.text, "-- Layer  ", "  of  ");
        if (!number) return lines_.unreadable(line);
        DrawnLayer layer;
        layer.number = lines_.number(*number, line.place);
        layer.place = line.place;
        optical.layers.push_back(std::move(layer));
    }

    void read_layer_line(const PrintedLine& line, DrawnLayer& layer) {
        LayerReader reader(lines_, layer);
        if (begins(line.text, "   *")) {
            if (!reader.read_transition(line)) lines_.unreadable(line);
        } else {
            reader.read_line(line);
        }
    }

    ListLines lines_;
    OpticalEntries list_;
};

} // namespace

OpticalEntries read_opticals(const ListPages& pages, std::vector<ReadFault>& faults) {
    return OpticalReader(pages, faults).read();
}

} // namespace film
