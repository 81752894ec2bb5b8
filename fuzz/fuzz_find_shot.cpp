// Makes a list of shots of the input and asks it for stretches: it must answer what a walk over the shots does.

#include "host/recdb.h"
#include "logging/log_shot_list.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool empty() const { return size_ == 0; }
    unsigned byte() {
        if (size_ == 0) return 0;
        --size_;
        return *data_++;
    }
    int sample() {
        const unsigned high = byte();
        return static_cast<int>(high << 8 | byte());
    }
    /// Short, of few letters, so that one often begins with another.
    std::string reel() {
        unsigned bits = byte();
        std::string text;
        for (unsigned length = bits & 3; length > 0; --length, bits >>= 1)
            text += (bits & 8) != 0 ? 'b' : 'A';
        return text;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

LabelPoint at(int sample) { return {sample, label_tc_24}; }

void add_rows(recdb& table, Input& input) {
    for (unsigned count = input.byte(); count > 0; --count) {
        const auto row = static_cast<unsigned>(table.add_records(1));
        LabelPoint start = at(input.sample());
        LabelPoint end = at(start.sample + static_cast<int>(input.byte()));
        table.set_field(row, 0U, input.reel().c_str());
        table.set_field(row, 1U, start.get_string());
        table.set_field(row, 2U, end.get_string());
    }
}

const LogShot* walk(const LogShotList& list, int start, int end, const char* reel) {
    for (const auto& shot : list.shots) {
        const int low = shot->start.sample - shot_match_slack, high = shot->end.sample + shot_match_slack;
        const bool holds = low <= start && start <= high && low <= end && end <= high;
        if (holds && std::strncmp(reel, shot->reel, std::strlen(shot->reel)) == 0) return shot.get();
    }
    return nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const DBFieldDesc schema[] = {{"reel", DBFieldTypes::text},          {"start time", DBFieldTypes::text},
                                  {"end time", DBFieldTypes::text},      {"name", DBFieldTypes::text},
                                  {"start keycode", DBFieldTypes::text}, {"", DBFieldTypes::none}};
    recdb table(schema);
    table.add_param("FILMDB", "Rev 16");
    Input input(data, size);
    add_rows(table, input);
    SilentLogger logger;
    LogShotList list(table, -1, logger, 3);
    while (!input.empty()) {
        const int start = input.sample();
        const int end = start + static_cast<int>(input.byte()) - 64;
        std::string reel = input.reel();
        const LogShot* found = find_shot(list, at(start), at(end), reel.data());
        if (found != walk(list, start, end, reel.c_str())) std::abort();
    }
    return 0;
}
