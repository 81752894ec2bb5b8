#include "quillbrook/logging_tables.h"

const char* filmDllVersionStr() { return QUILLBROOK_VERSION; }
