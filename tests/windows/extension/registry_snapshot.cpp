// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/extension/registry_snapshot.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows::test {
namespace {

constexpr const wchar_t* kSoftwareOfTheMachine = L"HKLM\\Software";
constexpr std::wstring_view kClassesOfTheMachine = L"HKLM\\Software\\Classes";

/// Goes down a part of the registry. Its buffers are as long as names and values can be here.
class Reader {
 public:
  void ReadKeys(HKEY key, const std::wstring& path) {
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr);
    for (DWORD index = 0; index < count; ++index) {
      std::array<wchar_t, 256> name{};
      auto length = static_cast<DWORD>(name.size());
      RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
      // What 32-bit programs share is there under a second name.
      const bool is_of_32_bits = path.find(L"Wow6432Node") != std::wstring::npos;
      if (is_of_32_bits && IsLink(key, name.data())) continue;
      UniqueRegistryKey below;
      if (RegOpenKeyExW(key, name.data(), 0, KEY_READ, below.Put()) != ERROR_SUCCESS) continue;
      const std::wstring below_path = path.empty() ? name.data() : path + L'\\' + name.data();
      // The classes root once more.
      if (below_path == kClassesOfTheMachine) continue;
      snapshot_[ToNarrow(below_path)] = ReadValues(below.Get());
      ReadKeys(below.Get(), below_path);
    }
  }

  [[nodiscard]] Snapshot Take() { return std::move(snapshot_); }

 private:
  static bool IsLink(HKEY parent, const wchar_t* name) {
    UniqueRegistryKey link;
    return RegOpenKeyExW(parent, name, REG_OPTION_OPEN_LINK, KEY_QUERY_VALUE, link.Put()) ==
               ERROR_SUCCESS &&
           RegQueryValueExW(link.Get(), L"SymbolicLinkValue", nullptr, nullptr, nullptr, nullptr) ==
               ERROR_SUCCESS;
  }

  SnapshotValues ReadValues(HKEY key) {
    SnapshotValues values;
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr,
                     nullptr, nullptr, nullptr);
    for (DWORD index = 0; index < count; ++index) {
      auto length = static_cast<DWORD>(name_.size());
      auto size = static_cast<DWORD>(data_.size() * sizeof(wchar_t));
      DWORD type = 0;
      const LSTATUS status = RegEnumValueW(key, index, name_.data(), &length, nullptr, &type,
                                           reinterpret_cast<BYTE*>(data_.data()), &size);
      const bool is_text = status == ERROR_SUCCESS && type == REG_SZ;
      values[ToNarrow({name_.data(), length})] =
          is_text ? ToNarrow(data_.data()) : "type " + std::to_string(type);
    }
    return values;
  }

  std::vector<wchar_t> name_ = std::vector<wchar_t>(16384);
  std::vector<wchar_t> data_ = std::vector<wchar_t>(16384);
  Snapshot snapshot_;
};

}  // namespace

Snapshot TakeSnapshot() {
  Reader reader;
  reader.ReadKeys(HKEY_CLASSES_ROOT, L"");
  reader.ReadKeys(HKEY_CURRENT_USER, L"HKCU");
  UniqueRegistryKey software;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, software.Put()) ==
      ERROR_SUCCESS) {
    reader.ReadKeys(software.Get(), kSoftwareOfTheMachine);
  }
  return reader.Take();
}

Snapshot Difference(const Snapshot& before, const Snapshot& after) {
  Snapshot difference;
  for (const auto& [path, values] : after) {
    const auto known = before.find(path);
    if (known == before.end()) {
      difference[path] = values;
      continue;
    }
    for (const auto& [name, value] : values) {
      const auto old_value = known->second.find(name);
      if (old_value == known->second.end() || old_value->second != value) {
        difference[path][name] = value;
      }
    }
  }
  return difference;
}

}  // namespace pelora::windows::test
