#pragma once
// Prints the lists of a saved cutlist.

#include "quillbrook/cutlist.h"
