#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>
#include <utility>

#include "wire/message_bounds.h"

namespace mirelo::wire {

// What the stream class makes of a record, as far as others are touched by it.
struct RecordProbe {
  std::string_view symbol;  // under which it is kept; lies in the record
  // Whether the fields end where the record does. Where they do not, the class would look for the next record
  // at another offset than the one at which it begins.
  bool fits = false;
  // Where another record begins in place of a field of this one, whose stated length then is a lie: fields of
  // both would become one quote. 0 where none does.
  std::size_t next = 0;
};

// `record` holds at least one field's id. Where it has not come whole, only `next` is meaningful: it will be
// true of the whole record as well.
RecordProbe ProbeRecord(std::string_view record);

// The length that a record states, of at least four bytes.
std::int32_t LengthOf(std::string_view record);

// A good record that begins inside of another, whose length then is a lie: one of a symbol, whose fields end
// where it does.
struct InnerRecord {
  std::size_t begin = 0;  // 0 where none does, as far as is known
  bool may_come = false;  // whether more bytes may tell of one that begins before this
};

// `bytes` begin with a record. Finds the first good one that begins inside of it, before `end`. Records of a
// server in order lie side by side; of a great many that are nested, some are passed over.
InnerRecord FindInnerRecord(std::string_view bytes, std::size_t end);

// ProbeRecord, of a record that grows at its end: goes on at the field where it stopped.
class FieldWalk {
 public:
  // `record` is that of the calls before, and what has come after it since.
  RecordProbe Probe(std::string_view record);

 private:
  std::size_t at_ = kRecordHead;  // of the next field
  std::size_t symbol_begin_ = 0;  // where the symbol stands, of so many bytes
  std::size_t symbol_size_ = 0;
};

// What tells of a lie in the length of a record that grows at its end: a peer may send single bytes, and none
// of them is to be dearer than the ones before.
class GrowingRecord {
 public:
  // As ProbeRecord, of the record as far as it has come.
  RecordProbe Probe(std::string_view record) {
    is_begun_ = true;
    return walk_.Probe(record);
  }

  // As FindInnerRecord. `bytes` are those of the calls before, and what has come after them since; `end` is
  // the same in all.
  InnerRecord FindInner(std::string_view bytes, std::size_t end);

  // Whether what has come looks as if other messages waited behind a length that lies.
  bool HoldsOthersBack(std::string_view bytes);

  // Goes on to another record.
  void Forget() {
    if (is_begun_) *this = GrowingRecord();
  }

 private:
  void ProbeUnsearched(std::string_view bytes, std::size_t end);
  void ProbeFinished(std::string_view bytes);
  bool MayCome(std::string_view bytes, std::size_t end);
  bool MayProbe(std::size_t length, std::size_t end);

  bool is_begun_ = false;
  FieldWalk walk_;
  std::size_t searched_ = 0;  // it is known of those before whether a record begins there
  std::size_t good_ = 0;      // where the first good one begins; 0 without one
  std::size_t probed_ = 0;    // so many bytes of all that begin inside
  // Those that begin inside and have not come whole: where they begin and end, and the other way round.
  std::set<std::pair<std::size_t, std::size_t>> by_begin_;
  std::set<std::pair<std::size_t, std::size_t>> by_end_;
  std::size_t walked_begin_ = 0;  // the first of those, of which it is looked whether it can be a good one
  FieldWalk inner_walk_;
  std::size_t searched_for_head_ = 0;
  bool knows_head_ = false;  // the first one; a control message's tells of a lie
  bool holds_others_back_ = false;
};

}  // namespace mirelo::wire
