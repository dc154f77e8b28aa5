// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/component_library.h"

namespace pelora {

/// There is no component library here; the calls are counted, so that who calls can be held to
/// calling in pairs.
class HeadlessComponentLibrary final : public IComponentLibrary {
 public:
  LibraryThread CoInitialize() override {
    ++initialized_;
    return 0;
  }
  void CoUninitialize(LibraryThread /*thread*/) override { ++uninitialized_; }

  [[nodiscard]] int initialized() const { return initialized_; }
  [[nodiscard]] int uninitialized() const { return uninitialized_; }

 private:
  int initialized_ = 0;
  int uninitialized_ = 0;
};

}  // namespace pelora
