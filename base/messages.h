#pragma once
// What the library tells the host's logger.

#include "base/resource_texts.h"
#include "host/settings.h"

/// Levels of a message, as hosts know them.
enum message_level : int {
    level_progress = 0,  ///< progress, and what may be read past
    level_left_out = 2,  ///< something was left out of a list
    level_fatal = 4,     ///< the run ends
    level_comparing = 5, ///< the long part of a changelist begins
};

inline void say(LoggerBase& logger, const char* text, message_level level) {
    logger.message(Qb::WStringFromAscii(text), level);
}

/// A text of the host's.
inline void say(LoggerBase& logger, resource_text text, message_level level = level_progress) {
    logger.message(resourceStrW(text), level);
}
