#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo::testing {

// A zip archive whose parts are stored as they are.
class StoredArchive {
 public:
  void Add(std::string_view name, std::string_view bytes);
  // The archive of what was added.
  std::string Bytes() const;

 private:
  std::string parts_;      // each behind its header
  std::string directory_;  // of them
  std::uint16_t count_ = 0;
};

}  // namespace mirelo::testing
