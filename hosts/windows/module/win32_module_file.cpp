// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/module/win32_module_file.h"

#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/values/wide_text.h"
#include "platform/unknown.h"
#include "server/module_identity.h"

namespace pelora::windows {
namespace {

constexpr LCID kNeutralLocale = 0;

HRESULT LastError() {
  const DWORD error = GetLastError();
  return error == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(error);
}

bool IsTypeLibraryRegistered() {
  UniqueBstr path;
  return SUCCEEDED(QueryPathOfRegTypeLib(ToSystem(kTypeLibraryId), kTypeLibraryMajorVersion,
                                         kTypeLibraryMinorVersion, kNeutralLocale, path.Put()));
}

}  // namespace

std::string Win32ModuleFile::Path() const { return ToNarrow(path_); }

HRESULT Win32ModuleFile::ReadScript(std::uint16_t resource, std::string& text) const {
  text.clear();
  const HRSRC found = FindResourceW(instance_, MAKEINTRESOURCEW(resource), L"REGISTRY");
  if (found == nullptr) return LastError();
  const HGLOBAL loaded = LoadResource(instance_, found);
  if (loaded == nullptr) return LastError();
  text.assign(static_cast<const char*>(LockResource(loaded)), SizeofResource(instance_, found));
  return S_OK;
}

HRESULT Win32ModuleFile::RegisterTypeLibrary() const {
  Ref<ITypeLib> library;
  const HRESULT status = LoadTypeLibEx(path_.c_str(), REGKIND_NONE, library.Put());
  if (FAILED(status)) return status;
  // The system does not write into these texts, though its types say that it may.
  std::wstring file = path_;
  std::wstring folder = path_.substr(0, path_.find_last_of(L'\\'));
  return RegisterTypeLib(library.Get(), file.data(), folder.data());
}

HRESULT Win32ModuleFile::UnregisterTypeLibrary() const {
  if (!IsTypeLibraryRegistered()) return S_OK;
  return UnRegisterTypeLib(ToSystem(kTypeLibraryId), kTypeLibraryMajorVersion,
                           kTypeLibraryMinorVersion, kNeutralLocale, SYS_WIN64);
}

}  // namespace pelora::windows
