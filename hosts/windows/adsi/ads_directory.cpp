// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/adsi/ads_directory.h"

#include "hosts/windows/adsi/ads_object.h"
#include "hosts/windows/guarded.h"
#include "hosts/windows/system_headers.h"
#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

/// What the system bound, behind the port; its status when it bound nothing.
HRESULT Take(HRESULT status, const Ref<::IUnknown>& bound, Ref<pelora::IADs>& object) {
  if (FAILED(status) || !bound) return status;
  const HRESULT wrapped = AdsObject::Wrap(*bound, object);
  return FAILED(wrapped) ? wrapped : status;
}

std::optional<std::wstring> WideOrNone(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  return windows::ToWide(*text);
}

const wchar_t* TextOrNull(const std::optional<std::wstring>& text) {
  return text ? text->c_str() : nullptr;
}

}  // namespace

HRESULT AdsDirectory::ADsGetObject(const std::string& path, const Guid& iid,
                                   Ref<pelora::IADs>& object) {
  object.Reset();
  return Guarded([&] {
    Ref<::IUnknown> bound;
    const HRESULT status = ::ADsGetObject(windows::ToWide(path).c_str(), ToSystem(iid),
                                          reinterpret_cast<void**>(bound.Put()));
    if (SUCCEEDED(status) && bound) {
      if (const HRESULT filled = AdsObject::FillCache(*bound); FAILED(filled)) return filled;
    }
    if (status == S_OK && !bound) return E_UNEXPECTED;
    return Take(status, bound, object);
  });
}

HRESULT AdsDirectory::ADsOpenObject(const std::string& path,
                                    const std::optional<std::string>& user_name,
                                    const std::optional<std::string>& password, std::uint32_t flags,
                                    const Guid& iid, Ref<pelora::IADs>& object) {
  object.Reset();
  return Guarded([&] {
    const std::optional<std::wstring> wide_name = WideOrNone(user_name);
    const std::optional<std::wstring> wide_password = WideOrNone(password);
    Ref<::IUnknown> bound;
    const HRESULT status = ::ADsOpenObject(windows::ToWide(path).c_str(), TextOrNull(wide_name),
                                           TextOrNull(wide_password), flags, ToSystem(iid),
                                           reinterpret_cast<void**>(bound.Put()));
    return Take(status, bound, object);
  });
}

}  // namespace pelora::windows
