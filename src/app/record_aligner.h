#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace mirelo::app {

// Cuts a stream's bytes anew, so that no chunk ends inside a quote record. A socket cuts wherever its buffer
// ends, and the stream class, which takes every chunk for a message of its own, loses quotes at some of these
// places; at full speed that is most of them. Nor does a chunk go on with a record that the class would not
// read there: kinds other than S1 and L1 are read where a chunk begins with them.
//
//   aligner.Add(bytes);
//   while (const auto chunk = aligner.Next()) Deliver(*chunk);
//
// More bytes may be added while a chunk is delivered. What is no record passes as it came, and so does a
// record whose length cannot be: what to make of those is the stream class's rule.
class RecordAligner {
 public:
  // Chunks are no longer than this, but for a single longer record.
  static constexpr std::size_t kLongestChunk = 8192;

  void Add(std::span<const std::uint8_t> bytes);

  // The next chunk; nothing while the bytes left over are the beginning of a record.
  std::optional<std::vector<std::uint8_t>> Next();

 private:
  std::size_t WholeRecords() const;
  std::vector<std::uint8_t> Take(std::size_t size);
  std::vector<std::uint8_t> TakeText();

  std::vector<std::uint8_t> waiting_;
  bool in_sources_ = false;  // a list of sources has begun whose end has not come
};

}  // namespace mirelo::app
