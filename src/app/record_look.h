#pragma once

#include <cstddef>
#include <cstdint>
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

// Of a record of at least one field's id. Of one that has not come whole only `next` counts: what it tells is
// true of the whole one as well.
RecordLook LookAt(std::string_view record);

// The length that a record states, of at least four bytes.
std::int32_t LengthOf(std::string_view record);

// A good record that begins inside of another, whose length then is a lie: one of a symbol, whose fields end
// where it does.
struct InnerRecord {
  std::size_t begin = 0;  // 0 where none does, as far as is known
  bool may_come = false;  // whether more bytes may tell of one that begins before this
};

// Of bytes that begin with a record: the first that begins inside before `end`.
InnerRecord FindInnerRecord(std::string_view bytes, std::size_t end);

}  // namespace mirelo::app
