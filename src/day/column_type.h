#pragma once

#include "host/data_table.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::day {

// What the values of such a column are in tables that other programs read.
host::DataType TypeOf(ColumnKind kind);

}  // namespace mirelo::day
