#pragma once
// What the host's record tables do beyond `host/recdb.h`.

#include <string>
#include <vector>

/// Empties the shelf on which saved tables lie.
void forget_tables();
