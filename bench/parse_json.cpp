// Parses a file by RapidJSON alone, as nothing else would be done with it: what reading `.otio` is compared with.

#include "embedded/services.h"

#include <rapidjson/document.h>

#include <cstdio>
#include <string>

[[gnu::noinline]] bool own_parse(const std::string& text, rapidjson::Document& document) {
    return !document.Parse(text.data(), text.size()).HasParseError();
}

int main(int count, char** words) {
    std::string text, why;
    rapidjson::Document document;
    if (count != 2 || !embedded::read_file(words[1], &text, &why) || !own_parse(text, document)) {
        std::fprintf(stderr, "parse_json FILE: %s\n", why.empty() ? "no sound JSON" : why.c_str());
        return 1;
    }
    return 0;
}
