#include "host/ascii_text.h"
#include "logging/log_shot_list.h"

LogShot* find_shot(LogShotList& list, LabelPoint start, LabelPoint end, char* reel) {
    if (reel) ascii::make_upper(reel);
    return list.index.find(start.sample, end.sample, reel ? reel : "");
}
