#pragma once

#include <string>
#include <string_view>

#include "host/secret.h"

namespace mirelo::testing {

// A text of which the test itself holds no plain copy but those that it makes.
class HiddenText {
 public:
  // A text of that length, 20 at least, that stands nowhere else: it is made up at random.
  explicit HiddenText(std::size_t size);

  // A plain copy, wiped when it is let go of.
  host::Secret Plain() const;

  // How often its second half stands in memory that this process may write to. The first may be gone by
  // chance: that is where memory which was given back is written to first.
  int CountInMemory() const;

 private:
  std::string masked_;
};

// Whether memory can be searched: under the address sanitizer it is too large.
bool CanSearchMemory();

}  // namespace mirelo::testing
