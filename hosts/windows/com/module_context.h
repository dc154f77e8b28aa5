// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/platform.h"
#include "server/pelora_prop_module.h"

namespace pelora::windows {

/// What every object of the module is made with. All of it outlives them.
struct ModuleContext {
  /// Of the module that holds templates and type library.
  HINSTANCE instance;
  const Platform& platform;
  CPeloraPropModule& module;
};

}  // namespace pelora::windows
