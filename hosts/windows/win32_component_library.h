// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/component_library.h"

namespace pelora::windows {

/// The system's component library, single-threaded apartment.
class Win32ComponentLibrary final : public IComponentLibrary {
 public:
  void CoInitialize() override;
  void CoUninitialize() override;
};

}  // namespace pelora::windows
