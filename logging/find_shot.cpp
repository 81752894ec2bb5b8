#include "logging/log_shot_list.h"

#include <cctype>

LogShot* find_shot(LogShotList& list, LabelPoint start, LabelPoint end, char* reel) {
    for (char* c = reel; c && *c; ++c)
        *c = static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
    return list.index.find(start.sample, end.sample, reel ? reel : "");
}
