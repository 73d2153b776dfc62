#pragma once

#include "core/cTickerDateTime.h"
#include "streaming/level1_record.h"

namespace mirelo {

// Compares a record with its ticker's state. What counts as a change is stored in the state; true when there
// was one. With `count_zeros` a value of 0 or below counts where the record carries it; else it never does,
// for it may stand for what the record lacks.
bool TakeChanges(const Level1Record& record, cTickerDateTime& state, bool count_zeros);

// Whether it carries any field that is compared, whatever its value. Of a ticker's first record zeros are
// news, too: nobody knows what its client has shown before.
bool CarriesCompared(const Level1Record& record);

}  // namespace mirelo
