#include "core/cTickerDateTimes.h"

#include "core/record_items.h"

namespace mirelo {

template class RecordCollection<cTickerDateTime>;

cTickerDateTimes::cTickerDateTimes() : RecordCollection({"cTickerDateTimes", "Mirelo."}) {}

}  // namespace mirelo
