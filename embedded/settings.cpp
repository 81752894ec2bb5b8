#include "embedded/decimal_text.h"
#include "embedded/long_runs.h"
#include "embedded/services.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace embedded {
namespace {

using HostSettings = std::map<std::string, int, std::less<>>;

HostSettings& host_settings() {
    static HostSettings settings;
    return settings;
}

LongRuns& runs_so_far() {
    static LongRuns runs;
    return runs;
}

std::string environment_name(const char* key) { return "QUILLBROOK_" + ascii::upper_case(std::string(key)); }

} // namespace

const LongRuns& long_runs() { return runs_so_far(); }

void set_host_setting(const std::string& key, int value) { host_settings()[key] = value; }

void clear_host_settings() { host_settings().clear(); }

const std::string* settings_block::find(const LightweightString<char>& key) const {
    const auto found = values_.find(key.view());
    return found == values_.end() ? nullptr : &found->second;
}

int settings_block::in(const LightweightString<char>& key, int& value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    value = int_of_text(text->c_str());
    return 0;
}

int settings_block::in(const LightweightString<char>& key, unsigned int& value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    value = static_cast<unsigned int>(int_of_text(text->c_str()));
    return 0;
}

int settings_block::in(const LightweightString<char>& key, bool& value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    value = !text->empty() && *text != "0";
    return 0;
}

int settings_block::in(const LightweightString<char>& key, LightweightString<char>& value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    value.assign(*text);
    return 0;
}

int settings_block::in(const LightweightString<char>& key, char* value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    std::memcpy(value, text->c_str(), text->size() + 1);
    return 0;
}

int settings_block::in(const LightweightString<char>& key, strp_field& value) const {
    const std::string* text = find(key);
    if (!text) return -1;
    value.fill(LightweightString<char>(std::string_view(*text)));
    return 0;
}

} // namespace embedded

int config_int(const char* key, int fallback, int lowest, int highest) {
    const auto& settings = embedded::host_settings();
    const auto found = settings.find(std::string_view(key));
    const char* text = std::getenv(embedded::environment_name(key).c_str());
    if (found == settings.end() && (!text || !*text)) return fallback;
    const int value = found != settings.end() ? found->second : embedded::int_of_text(text);
    return std::max(lowest, std::min(value, highest));
}

void LoggerBase::Out(const char* format, ...) {
    char line[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    message(fromUTF8(length < 0 ? format : line, -1), 0);
}

void trace_printf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

void SystemWatchdog::beginLifeSupport() { ++embedded::runs_so_far().begun; }
void SystemWatchdog::endLifeSupport() { ++embedded::runs_so_far().ended; }

void SharedMutex::enterAsReader() { ++readers_; }

bool SharedMutex::leaveAsReader() {
    if (readers_ == 0) return false;
    --readers_;
    return true;
}

Array::~Array() {
    for (ArrayRec* record : records_)
        delete record;
}

void Array::printOn(GrowString& out) const {
    for (const ArrayRec* record : records_) {
        if (record) record->printOn(out);
    }
}

void Array::insertDatum(ArrayRec* record, unsigned index) {
    records_.insert(records_.begin() + static_cast<std::ptrdiff_t>(std::min(index, size())), record);
}

void Array::appendDatum(ArrayRec* record) { records_.push_back(record); }

int Array::find(const ArrayRec& record) const {
    for (unsigned index = 0; index < size(); ++index)
        if (*records_[index] == record) return static_cast<int>(index) + 1;
    return 0;
}

void Array::add(ArrayRec* record) {
    unsigned place = size();
    while (sorted_ && place > 0 && records_[place - 1]->compare(*record) > 0)
        --place;
    insertDatum(record, place);
}

void Array::replaceDatum(unsigned index, ArrayRec* record) {
    if (index >= size()) {
        appendDatum(record);
    } else if (records_[index] != record) {
        delete records_[index];
        records_[index] = record;
    }
}
