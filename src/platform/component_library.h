// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pelora {

/// The component library of the thread. Calls are counted: each `CoInitialize` is undone by one
/// `CoUninitialize`.
class IComponentLibrary {
 public:
  virtual ~IComponentLibrary() = default;

  virtual void CoInitialize() = 0;
  virtual void CoUninitialize() = 0;
};

}  // namespace pelora
