#include "embedded/messages.h"

#include "host/settings.h"

#include <map>
#include <utility>

namespace {

struct MessageText {
    ResId id;
    const wchar_t* text;
};

// Callers put the name of the file in the place of $FILE$.
constexpr MessageText messages[] = {
    {10061, L"Black"},
    {10257, L"Reading cutlist $FILE$"},
    {10260, L"Writing summary of changes"},
    {10264, L"Writing list of new material"},
    {10265, L"Writing list of transitions"},
    {10266, L"Comparing cutlists"},
    {10267, L"Looking for moved shots"},
    {10268, L"Looking for re-used material"},
    {10269, L"Joining neighbouring changes"},
    {10272, L"Writing detailed list of changes"},
    {10471, L"Making reports from $FILE$"},
    {10472, L"Writing opticals list"},
    {10473, L"Looking for film that is used more than once"},
    {10474, L"An event has a key number below zero and is left out of the scan for re-use"},
    {10475, L"Writing list of rolls"},
    {10476, L"Writing pull list"},
    {10477, L"Writing opticals pull list"},
    {10478, L"Writing list of re-used material"},
    {10479, L"Writing assembly list"},
    {10480, L"Writing timecode list"},
};

std::map<std::pair<ResId, ResStrFmt>, std::wstring>& own_texts() {
    static std::map<std::pair<ResId, ResStrFmt>, std::wstring> texts;
    return texts;
}

} // namespace

void embedded::set_message(int id, bool heading, const std::wstring& text) {
    own_texts()[{id, heading ? ResStrFmt::heading : ResStrFmt::plain}] = text;
}

void embedded::clear_messages() { own_texts().clear(); }

LightweightString<wchar_t> resourceStrW(ResId id) { return resourceStrW(id, ResStrFmt::plain); }

// Headings and plain lines use the same words, where a program has none of its own.
LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format) {
    const auto own = own_texts().find({id, format});
    if (own != own_texts().end()) return own->second.c_str();
    for (const MessageText& message : messages) {
        if (message.id == id) return message.text;
    }
    return {};
}
