#pragma once

#include "host/registry.h"

namespace mirelo::host {

// Several writes to a registry as one: until Commit has succeeded nothing of them is stored for good, and
// nothing is when this ends without it.
class RegistryTransaction {
 public:
  // Where none can be begun, writes are stored one by one as ever.
  explicit RegistryTransaction(Registry& registry)
      : registry_(registry), is_under_way_(registry.BeginTransaction() == Registry::kSuccess) {}
  ~RegistryTransaction() {
    if (is_under_way_) registry_.RollBackTransaction();
  }
  RegistryTransaction(const RegistryTransaction&) = delete;
  RegistryTransaction& operator=(const RegistryTransaction&) = delete;

  bool IsUnderWay() const { return is_under_way_; }

  // Whether what was written is stored.
  bool Commit() {
    if (!is_under_way_ || registry_.CommitTransaction() != Registry::kSuccess) return false;
    is_under_way_ = false;
    return true;
  }

 private:
  Registry& registry_;
  bool is_under_way_;
};

}  // namespace mirelo::host
