#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo {

// Placeholder for the contract, to be built: template <class T> class Collection, an ordered collection whose items
// may carry a text key.
//
//   Add(T item)                      appends without key
//   Add(T item, string_view key)     appends; a key that is present, without regard to case, is error 457
//   Item(int32 index)                1 to Count(); error 9 outside
//   Item(string_view key)            error 5 when absent
//   Find(string_view key)            pointer or null, no error
//   Remove(int32) / Remove(string_view)   errors as Item
//   Count(), Clear(), begin()/end() in insertion order
//
// By key O(1), append O(1), removal at the front O(1), index O(1) as long as nothing was removed from the middle.

}  // namespace mirelo
