#include "tests/support/project_paths.h"

std::string project_folder() { return QUILLBROOK_SOURCE_DIR; }
