// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/server/fake_registration.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include "resources/registration/registration.h"

namespace pelora::testing {

void FakeRegistration::Fail(std::size_t nth, HRESULT status) {
  failing_operation_ = operations_ + nth;
  failure_ = status;
}

HRESULT FakeRegistration::Do(std::string operation) const {
  writing_locales_.push_back(locale_);
  log_.push_back(std::move(operation));
  return ++operations_ == failing_operation_ ? failure_ : S_OK;
}

HRESULT FakeRegistration::CreateKey(const std::string& path) {
  const HRESULT status = Do("create " + path);
  if (FAILED(status)) return status;
  for (std::size_t end = path.find('\\'); end != std::string::npos;
       end = path.find('\\', end + 1)) {
    keys_[path.substr(0, end)];
  }
  keys_[path];
  return S_OK;
}

HRESULT FakeRegistration::SetValue(const std::string& path, const std::optional<std::string>& name,
                                   const std::string& value) {
  const HRESULT status = Do("set " + path + " " + name.value_or("(default)"));
  if (FAILED(status)) return status;
  const auto key = keys_.find(path);
  if (key == keys_.end()) return E_UNEXPECTED;
  key->second[name.value_or("")] = value;
  return S_OK;
}

HRESULT FakeRegistration::DeleteValue(const std::string& path,
                                      const std::optional<std::string>& name) {
  const HRESULT status = Do("delete value " + path + " " + name.value_or("(default)"));
  if (FAILED(status)) return status;
  if (const auto key = keys_.find(path); key != keys_.end()) key->second.erase(name.value_or(""));
  return S_OK;
}

HRESULT FakeRegistration::DeleteTree(const std::string& path) {
  const HRESULT status = Do("delete " + path);
  if (FAILED(status)) return status;
  keys_.erase(path);
  // What lies below stands together: after the path and before the path with a greater separator.
  keys_.erase(keys_.lower_bound(path + '\\'),
              keys_.lower_bound(path + static_cast<char>('\\' + 1)));
  return S_OK;
}

HRESULT FakeRegistration::ReadScript(std::uint16_t resource, std::string& text) const {
  const HRESULT status = Do("read script " + std::to_string(resource));
  if (FAILED(status)) return status;
  const char* const root = std::getenv("PELORA_SOURCE_DIR");
  if (root == nullptr) return E_UNEXPECTED;
  const std::string name = resource == IDR_APPLICATION ? "application" : "component_class";
  std::ifstream file(std::string(root) + "/src/resources/registration/" + name + ".rgs");
  std::ostringstream content;
  content << file.rdbuf();
  text = content.str();
  return S_OK;
}

HRESULT FakeRegistration::RegisterTypeLibrary() const {
  const HRESULT status = Do("register type library");
  if (SUCCEEDED(status)) has_type_library_ = true;
  return status;
}

HRESULT FakeRegistration::UnregisterTypeLibrary() const {
  const HRESULT status = Do("unregister type library");
  if (SUCCEEDED(status)) has_type_library_ = false;
  return status;
}

}  // namespace pelora::testing
