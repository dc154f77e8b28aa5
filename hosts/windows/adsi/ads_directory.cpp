// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/adsi/ads_directory.h"

#include "hosts/windows/adsi/ads_object.h"
#include "hosts/windows/guarded.h"
#include "hosts/windows/system_headers.h"
#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

constexpr std::string_view kProvider = "LDAP://";

/// Systems differ in what they say of a path that begins with no provider known to them. What a
/// provider says, be it another one than usual, is left as it is.
HRESULT StatusOfPath(HRESULT status, std::string_view path) {
  const bool may_have_no_provider = status == E_FAIL || status == MK_E_SYNTAX;
  return may_have_no_provider && !path.starts_with(kProvider) ? E_ADS_BAD_PATHNAME : status;
}

/// What the system bound, behind the port; its status when it bound nothing.
HRESULT Take(HRESULT status, const Ref<::IUnknown>& bound, Ref<pelora::IADs>& object) {
  if (FAILED(status)) return status;
  if (!bound) return E_UNEXPECTED;
  const HRESULT wrapped = AdsObject::Wrap(*bound, object);
  return FAILED(wrapped) ? wrapped : status;
}

std::optional<std::wstring> ToWide(const std::optional<std::string>& text) {
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
    return Take(StatusOfPath(status, path), bound, object);
  });
}

HRESULT AdsDirectory::ADsOpenObject(const std::string& path,
                                    const std::optional<std::string>& user_name,
                                    const std::optional<std::string>& password, std::uint32_t flags,
                                    const Guid& iid, Ref<pelora::IADs>& object) {
  object.Reset();
  return Guarded([&] {
    const std::optional<std::wstring> wide_name = ToWide(user_name);
    const std::optional<std::wstring> wide_password = ToWide(password);
    Ref<::IUnknown> bound;
    const HRESULT status = ::ADsOpenObject(windows::ToWide(path).c_str(), TextOrNull(wide_name),
                                           TextOrNull(wide_password), flags, ToSystem(iid),
                                           reinterpret_cast<void**>(bound.Put()));
    return Take(StatusOfPath(status, path), bound, object);
  });
}

}  // namespace pelora::windows
