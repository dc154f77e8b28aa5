// SPDX-License-Identifier: Apache-2.0
#include "server/pelora_prop_module.h"

#include <span>
#include <string>
#include <vector>

#include "resources/registration/registration.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "server/registration_script.h"
#include "server/script_registrar.h"

namespace pelora {
namespace {

/// Puts the thread into a locale for as long as it lives.
class ScopedLocale {
 public:
  ScopedLocale(IThreadLocale& thread, LocaleId locale) : thread_(thread), before_(thread.Get()) {
    thread_.Set(locale);
  }
  ~ScopedLocale() { thread_.Set(before_); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  IThreadLocale& thread_;
  LocaleId before_;
};

using ScriptAction = HRESULT (*)(const std::vector<ScriptKey>& keys, IClassesRegistry& registry);

HRESULT RunScript(const RegistrationPorts& ports, std::uint16_t resource,
                  const ScriptReplacements& replacements, ScriptAction action) {
  std::string text;
  const HRESULT read = ports.module_file.ReadScript(resource, text);
  if (FAILED(read)) return read;
  const ReadScriptResult script = ReadRegistrationScript(text, replacements);
  return script.keys ? action(*script.keys, ports.registry) : E_UNEXPECTED;
}

HRESULT RunApplicationScript(const RegistrationPorts& ports, ScriptAction action) {
  const ScriptReplacements replacements = {{"APPID", GuidText(kApplicationId)}};
  return RunScript(ports, IDR_APPLICATION, replacements, action);
}

HRESULT RunClassScript(const RegistrationPorts& ports, const ComponentClass& component,
                       ScriptAction action) {
  const ScriptReplacements replacements = {
      {"FriendlyName", std::string(component.name) + " Object"},
      {"PROGID", std::string(component.prog_id)},
      {"VERSIONINDEPENDENTPROGID", std::string(component.version_independent_prog_id)},
      {"CLSID", GuidText(component.class_id)},
      {"MODULE", ports.module_file.Path()},
      {"MODULETYPE", "InprocServer32"},
      {"APPID", GuidText(kApplicationId)},
      {"MODULEGUID", GuidText(kTypeLibraryId)},
  };
  return RunScript(ports, IDR_COMPONENT_CLASS, replacements, action);
}

HRESULT UnregisterClasses(const RegistrationPorts& ports) {
  const std::span<const ComponentClass> classes = ClassTable();
  for (auto component = classes.rbegin(); component != classes.rend(); ++component) {
    const HRESULT status = RunClassScript(ports, *component, &UnregisterScript);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

}  // namespace

CPeloraPropModule::CPeloraPropModule(const RegistrationPorts& registration)
    : registration_(registration) {}

HRESULT CPeloraPropModule::RegisterServer() const {
  const ScopedLocale locale(registration_.locale, kSystemDefaultLocale);
  const HRESULT application = RunApplicationScript(registration_, &RegisterScript);
  if (FAILED(application)) return application;
  for (const ComponentClass& component : ClassTable()) {
    const HRESULT status = RunClassScript(registration_, component, &RegisterScript);
    if (FAILED(status)) return status;
  }
  return registration_.module_file.RegisterTypeLibrary();
}

HRESULT CPeloraPropModule::UnregisterServer() const {
  const ScopedLocale locale(registration_.locale, kSystemDefaultLocale);
  HRESULT status = registration_.module_file.UnregisterTypeLibrary();
  if (SUCCEEDED(status)) status = UnregisterClasses(registration_);
  if (SUCCEEDED(status)) status = RunApplicationScript(registration_, &UnregisterScript);
  return status;
}

}  // namespace pelora
