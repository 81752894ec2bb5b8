#pragma once
// Messages of the generator.

#include "host/settings.h"

/// Levels of a message.
enum message_level : int { level_progress = 0, level_fatal = 4 };

inline void say(LoggerHandle& logger, const char* text, message_level level) {
    logger.message(Qb::WStringFromAscii(text), level);
}
