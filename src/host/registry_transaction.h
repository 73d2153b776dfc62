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

  enum class End {
    Stored,   // all that was written
    Failed,   // nothing of it is stored
    NotBegun  // there is none, or none any more: each write stood or failed by itself
  };

  // Ends the transaction, and says what has become of its writes.
  [[nodiscard]] End Commit() {
    if (!is_under_way_) return End::NotBegun;
    if (registry_.CommitTransaction() != Registry::kSuccess) return End::Failed;
    is_under_way_ = false;
    return End::Stored;
  }

 private:
  Registry& registry_;
  bool is_under_way_;
};

}  // namespace mirelo::host
