// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/data_object.h"

namespace pelora {

/// Locks a medium for as long as it lives, then unlocks and releases it.
class LockedMedium {
 public:
  explicit LockedMedium(IStorageMedium& medium) : medium_(medium), block_(medium.Lock()) {}
  ~LockedMedium() {
    if (IsReachable()) medium_.Unlock();
    medium_.Release();
  }
  LockedMedium(const LockedMedium&) = delete;
  LockedMedium& operator=(const LockedMedium&) = delete;

  [[nodiscard]] bool IsReachable() const { return block_.data() != nullptr; }
  [[nodiscard]] std::span<const std::byte> block() const { return block_; }

 private:
  IStorageMedium& medium_;
  std::span<const std::byte> block_;
};

}  // namespace pelora
