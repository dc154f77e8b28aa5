// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "platform/component_library.h"

namespace pelora::console {

/// Components are made in process and need no library; what remains is the count, by which a test
/// can tell that every component gave back what it took.
class CountingComponentLibrary final : public IComponentLibrary {
 public:
  LibraryThread CoInitialize() override {
    ++users_;
    return 0;
  }
  void CoUninitialize(LibraryThread /*thread*/) override { --users_; }

  [[nodiscard]] std::ptrdiff_t users() const { return users_; }

 private:
  std::ptrdiff_t users_ = 0;
};

}  // namespace pelora::console
