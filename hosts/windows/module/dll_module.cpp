// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/module/dll_module.h"

#include <stdexcept>

#include "hosts/windows/com/property_page_shell.h"
#include "hosts/windows/com/wizard_shell.h"
#include "hosts/windows/module/module_path.h"
#include "hosts/windows/values/system_guid.h"
#include "server/class_table.h"

namespace pelora::windows {
namespace {

std::wstring PathOf(HINSTANCE instance) {
  std::wstring path = ModulePath(instance);
  if (path.empty()) throw std::runtime_error("the module has no path");
  return path;
}

}  // namespace

DllModule::DllModule(HINSTANCE instance)
    : platform_(instance),
      file_(instance, PathOf(instance)),
      context_{instance, platform_.platform(), module_} {}

HRESULT DllModule::GetClassObject(REFCLSID class_id, REFIID iid, void** factory) const {
  if (factory == nullptr) return E_POINTER;
  *factory = nullptr;
  const ComponentClass* const found = FindClass(FromSystem(class_id));
  if (found == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
  if (found->kind == ComponentKind::kWizardPage) {
    return WizardShell::CreateClassFactory(context_, *found, iid, factory);
  }
  return PropertyPageShell::CreateClassFactory(context_, *found, iid, factory);
}

}  // namespace pelora::windows
