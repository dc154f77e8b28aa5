// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/module_context.h"
#include "hosts/windows/module/win32_classes_registry.h"
#include "hosts/windows/module/win32_module_file.h"
#include "hosts/windows/module/win32_thread_locale.h"
#include "hosts/windows/windows_platform.h"

namespace pelora::windows {

/// Everything that lives as long as the loaded library does.
class DllModule {
 public:
  /// Throws when the system does not tell the library's path.
  explicit DllModule(HINSTANCE instance);
  DllModule(const DllModule&) = delete;
  DllModule& operator=(const DllModule&) = delete;

  [[nodiscard]] CPeloraPropModule& module() { return module_; }

  /// The class factory of a class of the class table. `CLASS_E_CLASSNOTAVAILABLE` for any other;
  /// `*factory` is null after any failure.
  [[nodiscard]] HRESULT GetClassObject(REFCLSID class_id, REFIID iid, void** factory) const;

 private:
  WindowsPlatform platform_;
  Win32ClassesRegistry registry_;
  Win32ThreadLocale locale_;
  Win32ModuleFile file_;
  CPeloraPropModule module_{{registry_, locale_, file_}};
  ModuleContext context_;
};

}  // namespace pelora::windows
