// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/provider/ldap_namespace.h"

#include <optional>
#include <stdexcept>
#include <string>

#include "directory/utf.h"
#include "tests/windows/provider/provider_object.h"

namespace pelora::windows::test {
namespace {

/// The system's provider of "LDAP:".
constexpr CLSID kLdapNamespace = {
    0x228D9A82, 0xC302, 0x11CF, {0x9A, 0xA4, 0x00, 0xAA, 0x00, 0x4A, 0x56, 0x91}};

std::optional<std::string> TextOf(BSTR text) {
  if (text == nullptr) return std::nullopt;
  return ToUtf8({reinterpret_cast<const char16_t*>(text), SysStringLen(text)});
}

/// An object that offers nothing and calls that a success.
class Nothing final : public ::IDispatch {
 public:
  explicit Nothing(HRESULT status) : status_(status) {}

  STDMETHODIMP QueryInterface(REFIID /*iid*/, void** object) override {
    *object = nullptr;
    return status_;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

 private:
  ~Nothing() = default;

  HRESULT status_;
  ULONG references_ = 1;
};

/// Namespace object and its class factory in one: there is only ever one of them.
class Namespace final : public ::IADsOpenDSObject, public ::IClassFactory {
 public:
  Namespace(IDirectoryService& directory, std::shared_ptr<const HRESULT> reading,
            std::shared_ptr<const std::optional<HRESULT>> nothing)
      : directory_(directory), reading_(std::move(reading)), nothing_(std::move(nothing)) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (IsEqualIID(iid, ::IID_IClassFactory)) {
      *object = static_cast<::IClassFactory*>(this);
    } else if (IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IADsOpenDSObject)) {
      *object = static_cast<::IADsOpenDSObject*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(::IUnknown* outer, REFIID iid, void** object) override {
    return outer == nullptr ? QueryInterface(iid, object) : CLASS_E_NOAGGREGATION;
  }
  STDMETHODIMP LockServer(BOOL /*lock*/) override { return S_OK; }

  STDMETHODIMP OpenDSObject(BSTR path, BSTR user_name, BSTR password, long flags,
                            ::IDispatch** object) override {
    *object = nullptr;
    if (*nothing_) {
      *object = new Nothing(**nothing_);
      return S_OK;
    }
    Ref<pelora::IADs> bound;
    const HRESULT status =
        directory_.ADsOpenObject(TextOf(path).value_or(""), TextOf(user_name), TextOf(password),
                                 static_cast<std::uint32_t>(flags), pelora::IID_IADs, bound);
    if (FAILED(status)) return status;
    auto* const made = new ProviderObject(std::move(bound), reading_);
    *object = static_cast<::IADsUser*>(made);
    return status;
  }

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

 private:
  ~Namespace() = default;

  IDirectoryService& directory_;
  std::shared_ptr<const HRESULT> reading_;
  std::shared_ptr<const std::optional<HRESULT>> nothing_;
  ULONG references_ = 1;
};

}  // namespace

LdapNamespace::LdapNamespace(IDirectoryService& directory) {
  auto made = Ref<Namespace>::Adopt(new Namespace(directory, reading_, nothing_));
  const HRESULT status =
      CoRegisterClassObject(kLdapNamespace, static_cast<::IClassFactory*>(made.Get()),
                            CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_);
  if (FAILED(status)) throw std::runtime_error("the provider cannot be registered");
}

LdapNamespace::~LdapNamespace() { CoRevokeClassObject(registration_); }

}  // namespace pelora::windows::test
