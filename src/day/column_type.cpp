#include "day/column_type.h"

namespace mirelo::day {

host::DataType TypeOf(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Ticker:
    case ColumnKind::Date:
    case ColumnKind::Time:
      return host::DataType::Text;
    case ColumnKind::Price:
    case ColumnKind::Change:
      return host::DataType::Real;
    case ColumnKind::Count:
      return host::DataType::Integer;
    case ColumnKind::Mark:
      break;
  }
  return host::DataType::Any;
}

}  // namespace mirelo::day
