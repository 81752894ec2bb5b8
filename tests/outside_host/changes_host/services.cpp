// The process, texts and settings.

#include "changes_host/services.h"

#include <host/edit.h>
#include <host/os.h>
#include <host/settings.h>
#include <host/text.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

class File : public stream {
public:
    void write(const void* data, unsigned int count) override {
        report_bytes().append(static_cast<const char*>(data), count);
    }
};

class Services : public operating_system, memory_service, file_service, count_service {
public:
    memory_service& memory() override { return *this; }
    file_service& files() override { return *this; }
    count_service& counts() override { return *this; }

private:
    void* allocate(std::size_t size) override { return std::malloc(size ? size : 1); }
    void free(void* block) override { std::free(block); }
    void remove(LightweightString<wchar_t>) override {}
    Qb::Ptr<stream> open(LightweightString<wchar_t>, int, int, int, int) override {
        report_bytes().clear();
        return Qb::Ptr<stream>(new File);
    }
    void add_ref(use_count& count) override { ++count.users; }
    int release_ref(use_count& count) override { return --count.users; }
};

LightweightString<wchar_t> widened(const std::string& text) { return std::wstring(text.begin(), text.end()).c_str(); }

} // namespace

std::string& report_bytes() {
    static auto& bytes = *new std::string;
    return bytes;
}

// Asked for before `main`, as the library fills its tables then.
operating_system* OS() {
    static auto* const services = new Services;
    return services;
}

void LoggerBase::Out(const char* format, ...) {
    char text[1024];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    message(widened(text), 0);
}

LightweightString<wchar_t> resourceStrW(ResId id) { return id == 10061 ? L"Black" : L"$FILE$"; }
LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt) { return resourceStrW(id); }
LightweightString<wchar_t> fromUTF8(const char* text, int) { return widened(text ? text : ""); }
LightweightString<char> toUTF8(const LightweightString<wchar_t>& text) {
    const std::wstring_view wide = text.view();
    return std::string(wide.begin(), wide.end()).c_str();
}
LightweightString<wchar_t> Qb::WStringFromAscii(const char* text) { return widened(text); }
LightweightString<wchar_t> joinPaths(const LightweightString<wchar_t>& left, const LightweightString<wchar_t>& right) {
    return left + L"/" + right;
}
const LightweightString<wchar_t>& getListsDirectory() {
    static const auto& directory = *new LightweightString<wchar_t>(L"lists");
    return directory;
}
void date_def::convert(std::int64_t) { named_[0] = '\0'; }
std::int64_t present_time() { return 0; }
void SystemWatchdog::beginLifeSupport() {}
void SystemWatchdog::endLifeSupport() {}
isset::isset(const char* members) {
    for (; *members; ++members)
        member_[static_cast<unsigned char>(*members)] = true;
}
GrowString& GrowString::append(const char* text) {
    text_ += text;
    return *this;
}

Array::~Array() {
    for (ArrayRec* record : records_)
        delete record;
}
void Array::printOn(GrowString&) const {}
void Array::insertDatum(ArrayRec* record, unsigned index) { records_.insert(records_.begin() + index, record); }
void Array::appendDatum(ArrayRec* record) { records_.push_back(record); }
void Array::replaceDatum(unsigned index, ArrayRec* record) {
    delete records_[index];
    records_[index] = record;
}
int Array::find(const ArrayRec& record) const {
    for (std::size_t i = 0; i < records_.size(); ++i)
        if (*records_[i] == record) return static_cast<int>(i) + 1;
    return 0;
}
// Reels come in their order.
void Array::add(ArrayRec* record) { appendDatum(record); }

// No edit of this host can be opened by its cookie: the head of the list goes without names.
Cookie::Cookie(const char*, bool) {}
EditPtr::~EditPtr() = default;
void EditPtr::i_open(const Cookie&, eEditOpenBehaviour) {}
void EditPtr::i_close() {}
LightweightString<wchar_t> Edit::getName() const { return {}; }
