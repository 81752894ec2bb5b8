#pragma once
// What translating positions asks of the edit model.

#include "embedded/fraction.h"

class EditPtr;

namespace embedded {

/// Film frames a second of an edit; of the edit being listed when the handle is empty; 24 when there is none.
Fraction film_rate_of_edit(const EditPtr& edit);

} // namespace embedded
