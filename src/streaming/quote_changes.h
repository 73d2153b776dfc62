#pragma once

#include "core/cTickerDateTime.h"
#include "streaming/level1_record.h"

namespace mirelo {

// Compares a record with its ticker's state. What counts as a change is stored in the state; true when there
// was one.
bool TakeChanges(const Level1Record& record, cTickerDateTime& state);

}  // namespace mirelo
