// SPDX-License-Identifier: Apache-2.0
#include "server/script_registrar.h"

#include <string>

namespace pelora {
namespace {

std::string PathOf(const std::string& parent, const ScriptKey& key) {
  return parent.empty() ? key.name : parent + '\\' + key.name;
}

HRESULT RegisterKeys(const std::vector<ScriptKey>& keys, const std::string& parent,
                     IClassesRegistry& registry);

HRESULT RegisterKey(const ScriptKey& key, const std::string& path, IClassesRegistry& registry) {
  HRESULT status = S_OK;
  if (key.force_remove) status = registry.DeleteTree(path);
  if (SUCCEEDED(status)) status = registry.CreateKey(path);
  for (const ScriptValue& value : key.values) {
    if (FAILED(status)) return status;
    status = registry.SetValue(path, value.name, value.text);
  }
  return FAILED(status) ? status : RegisterKeys(key.keys, path, registry);
}

HRESULT RegisterKeys(const std::vector<ScriptKey>& keys, const std::string& parent,
                     IClassesRegistry& registry) {
  for (const ScriptKey& key : keys) {
    const HRESULT status = RegisterKey(key, PathOf(parent, key), registry);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

HRESULT UnregisterKeys(const std::vector<ScriptKey>& keys, const std::string& parent,
                       IClassesRegistry& registry);

HRESULT UnregisterKey(const ScriptKey& key, const std::string& path, IClassesRegistry& registry) {
  if (!key.no_remove) return registry.DeleteTree(path);
  HRESULT status = UnregisterKeys(key.keys, path, registry);
  for (const ScriptValue& value : key.values) {
    if (SUCCEEDED(status)) status = registry.DeleteValue(path, value.name);
  }
  return status;
}

HRESULT UnregisterKeys(const std::vector<ScriptKey>& keys, const std::string& parent,
                       IClassesRegistry& registry) {
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    const HRESULT status = UnregisterKey(*key, PathOf(parent, *key), registry);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

}  // namespace

HRESULT RegisterScript(const std::vector<ScriptKey>& keys, IClassesRegistry& registry) {
  return RegisterKeys(keys, {}, registry);
}

HRESULT UnregisterScript(const std::vector<ScriptKey>& keys, IClassesRegistry& registry) {
  return UnregisterKeys(keys, {}, registry);
}

}  // namespace pelora
