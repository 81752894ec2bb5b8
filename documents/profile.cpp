#include "documents/profile.h"

#include "documents/list_kinds.h"

#include <algorithm>

namespace documents {
namespace {

struct ColumnWords {
    const char* list;
    const char* columns;
};

struct KnownProfile {
    const char* name;
    const char* lists;
    std::vector<ColumnWords> columns;
};

constexpr const char* bench_columns = "event,start,length,film_length,roll,shot,key";
constexpr const char* pull_columns = "event,shot,film_length,key,start";
constexpr const char* order_columns = "scan,roll,key,tape,frames,handles,events,shot";
constexpr const char* roll_pull_columns = "event,roll,shot,film_length,key,start";

const std::vector<KnownProfile>& known_profiles() {
    static const std::vector<KnownProfile> known = {
        {"",
         "assembly,pull-roll,opticals,reuse,rolls,scenes,doubts,changes,bench,change-pull,discard,transitions,"
         "reels,order,order-longer,order-discard,order-rolls,order-unknown",
         {{"assembly", bench_columns},
          {"pull-roll", pull_columns},
          {"order", order_columns},
          {"opticals", "layer,roll,shot,film_length,key,place,transition"}}},
        {"assistant",
         "assembly,pull-scene,scenes,rolls,reuse,doubts,changes,change-pull,discard,reels,order,order-longer,"
         "order-discard,order-rolls,order-unknown",
         {{"order", order_columns},
          {"assembly", "event,start,length,roll,shot,key,tape"},
          {"pull-scene", "roll,shot,film_length,key,tape,start"}}},
        {"cutter",
         "assembly,pull-roll,reuse,doubts,bench,change-pull,discard,reels,order,order-longer,order-discard",
         {{"order", "scan,roll,key,frames,events,shot"}, {"assembly", bench_columns}, {"pull-roll", pull_columns}}},
        {"lab",
         "rolls,pull-key,opticals,reuse,change-pull,order,order-longer,order-rolls",
         {{"order", "scan,roll,key,frames,handles,shot"},
          {"pull-key", roll_pull_columns},
          {"opticals", "layer,roll,shot,film_length,key,place,transition"}}},
        {"optical",
         "opticals,doubts,transitions",
         {{"opticals", "layer,roll,shot,film_length,key,place,transition,speed"}}},
        {"scan",
         "rolls,pull-roll,pull-tape,change-pull,order,order-longer,order-rolls",
         {{"order", "scan,roll,key,tape,frames,frame_in,file"},
          {"pull-roll", "shot,film_length,key,tape,length"},
          {"pull-tape", "roll,shot,film_length,key,tape"}}},
        {"sound",
         "assembly,pull-tape,doubts,changes",
         {{"assembly", "event,start,length,shot,tape"}, {"pull-tape", "event,shot,film_length,tape,start"}}},
        {"all",
         "assembly,pull-roll,pull-key,pull-scene,pull-tape,opticals,reuse,rolls,scenes,doubts,changes,bench,"
         "change-pull,discard,transitions,reels,order,order-longer,order-discard,order-rolls,order-unknown",
         {}},
    };
    return known;
}

Profile made(const KnownProfile& known) {
    Profile profile;
    profile.lists = words_of(known.lists);
    for (const ColumnWords& words : known.columns)
        profile.columns[words.list] = words_of(words.columns);
    return profile;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Why a line can't be taken; empty where it was.
std::string take_line(Profile& profile, std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return "has no \"=\"";
    const std::string key(trimmed(line.substr(0, equals)));
    const std::string value(trimmed(line.substr(equals + 1)));
    const std::vector<std::string> words = words_of(value);
    if (words.empty()) return key + " is empty";
    if (key == "lists") {
        for (const std::string& word : words)
            if (!is_list_id(word)) return "there is no list \"" + word + '"';
        profile.lists = words;
    } else if (key.compare(0, 8, "columns ") == 0) {
        const std::string list(trimmed(std::string_view(key).substr(8)));
        if (!is_list_id(list)) return "there is no list \"" + list + '"';
        profile.columns[list] = words;
    } else if (key == "units" && (value == "feet" || value == "frames")) {
        profile.frames = value == "frames";
    } else if (key == "paper" && (value == "a4" || value == "letter")) {
        profile.paper = value == "letter" ? Paper::letter : Paper::a4;
    } else if (key == "units" || key == "paper") {
        return key + " isn't \"" + value + '"';
    } else {
        return "there is no \"" + key + '"';
    }
    return "";
}

} // namespace

const std::vector<std::string>& profile_names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const KnownProfile& known : known_profiles())
            if (*known.name != 0) all.emplace_back(known.name);
        return all;
    }();
    return names;
}

const Profile* profile_named(std::string_view name) {
    static const std::vector<Profile> all = [] {
        std::vector<Profile> profiles;
        for (const KnownProfile& known : known_profiles())
            profiles.push_back(made(known));
        return profiles;
    }();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (known_profiles()[i].name == name) return &all[i];
    return nullptr;
}

std::vector<std::string> words_of(std::string_view text) {
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t comma = std::min(text.find(',', begin), text.size());
        const std::string_view word = trimmed(text.substr(begin, comma - begin));
        if (!word.empty()) words.emplace_back(word);
        begin = comma + 1;
    }
    return words;
}

std::optional<Profile> read_profile(std::string_view text, std::string* fault) {
    Profile profile;
    profile.columns = profile_named("")->columns;
    int number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view line = trimmed(text.substr(begin, end - begin));
        begin = end + 1;
        ++number;
        if (line.empty() || line.front() == '#') continue;
        const std::string why = take_line(profile, line);
        if (why.empty()) continue;
        if (fault) *fault = "line " + std::to_string(number) + ": " + why;
        return std::nullopt;
    }
    if (profile.lists.empty()) profile.lists = profile_named("")->lists;
    return profile;
}

void apply_profile(const Profile& profile, Document& document) {
    if (profile.paper) document.paper = *profile.paper;
    for (List& list : document.lists) {
        const auto columns = profile.columns.find(list.id);
        if (columns != profile.columns.end()) show_columns(list, columns->second);
    }
}

} // namespace documents
