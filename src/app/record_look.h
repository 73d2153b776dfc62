#pragma once

#include <cstddef>
#include <string_view>

namespace mirelo::app {

// What the stream class makes of a record, as far as others are touched by it.
struct RecordLook {
  std::string_view symbol;  // under which it is kept; lies in the record
  // Whether the fields end where the record does. Where they do not, the class looks for the next record at
  // another place than it stands at.
  bool fits = false;
  // Where another record begins in place of a field, whose length then is a lie: fields of both would become
  // one quote. 0 where none does.
  std::size_t next = 0;
};

// Of a whole record of at least one field's id.
RecordLook LookAt(std::string_view record);

}  // namespace mirelo::app
