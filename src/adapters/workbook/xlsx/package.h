#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "adapters/workbook/load_limits.h"
#include "automation/runtime_error.h"

namespace mirelo::workbook {

// The error for a part of a file that is not as it must be.
RuntimeError Damaged(std::string_view part, std::string_view what);

// The parts of an .xlsx file, which is a zip archive. Every failure is a Damaged error.
class Package {
 public:
  // `bytes` is the whole file and must outlive the package.
  Package(std::span<const char> bytes, const LoadLimits& limits);
  ~Package();
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  const LoadLimits& limits() const { return limits_; }

  // Part names have no leading "/" and are found without regard to case.
  bool Has(const std::string& part) const;
  // The part unpacked. It is refused when it is larger than the limits allow, whatever size the archive
  // claims.
  std::string Read(const std::string& part);

 private:
  struct Archive;
  std::unique_ptr<Archive> archive_;
  LoadLimits limits_;
  std::uint64_t bytes_read_ = 0;
};

}  // namespace mirelo::workbook
