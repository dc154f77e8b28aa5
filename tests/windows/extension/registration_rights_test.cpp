// SPDX-License-Identifier: Apache-2.0
// Registering where the system refuses it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/windows/system_headers.h"
// Stands on the above.
#include <sddl.h>

#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/values/wide_text.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "tests/windows/extension/registry_snapshot.h"
#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {
namespace {

using ::testing::IsEmpty;

constexpr const wchar_t* kReadOnly = L"D:(A;;KR;;;WD)";
constexpr const wchar_t* kOpen = L"D:(A;;KA;;;WD)";

/// A key below the classes root that nobody may write to, as long as it lives.
class ProtectedKey {
 public:
  explicit ProtectedKey(std::wstring path) : path_(std::move(path)) {
    EXPECT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, key_.Put(), nullptr),
              ERROR_SUCCESS);
    Protect(kReadOnly);
  }
  ProtectedKey(const ProtectedKey&) = delete;
  ProtectedKey& operator=(const ProtectedKey&) = delete;
  ~ProtectedKey() {
    Protect(kOpen);
    key_.Reset();
    RegDeleteTreeW(HKEY_CLASSES_ROOT, path_.c_str());
  }

  [[nodiscard]] bool MayBeWritten() const {
    UniqueRegistryKey key;
    return RegOpenKeyExW(HKEY_CLASSES_ROOT, path_.c_str(), 0, KEY_WRITE, key.Put()) ==
           ERROR_SUCCESS;
  }

 private:
  void Protect(const wchar_t* rights) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1,
                                                                   &descriptor, nullptr),
              FALSE);
    EXPECT_EQ(RegSetKeySecurity(key_.Get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    LocalFree(descriptor);
  }

  std::wstring path_;
  UniqueRegistryKey key_;
};

HRESULT Call(HMODULE module, const char* name) {
  const auto function = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(GetProcAddress(module, name)));
  return function == nullptr ? E_UNEXPECTED : function();
}

TEST(RegistrationRights, AKeyThatMayNotBeWrittenEndsItAndIsTold) {
  ASSERT_EQ(Unregister(), 0U);
  const HMODULE module = LoadLibraryW(ExtensionPath().c_str());
  ASSERT_NE(module, nullptr);
  // One that is not the system's, in which the texts are written.
  const LCID own = GetThreadLocale();
  const LCID locale = MAKELCID(MAKELANGID(LANG_GREEK, SUBLANG_DEFAULT), SORT_DEFAULT);
  ASSERT_NE(locale, GetSystemDefaultLCID());
  ASSERT_NE(SetThreadLocale(locale), FALSE);
  {
    const ProtectedKey application(L"AppID\\" + ToWide(GuidText(kApplicationId)));
    ASSERT_FALSE(application.MayBeWritten());
    const Snapshot before = TakeSnapshot();
    EXPECT_EQ(Call(module, "DllRegisterServer"), E_ACCESSDENIED);
    EXPECT_EQ(GetThreadLocale(), locale);
    EXPECT_THAT(Difference(before, TakeSnapshot()), IsEmpty()) << "it is the first that is entered";
  }
  EXPECT_EQ(Call(module, "DllRegisterServer"), S_OK) << "as soon as it may";
  EXPECT_EQ(Call(module, "DllUnregisterServer"), S_OK);
  EXPECT_EQ(GetThreadLocale(), locale);
  SetThreadLocale(own);
  FreeLibrary(module);
}

}  // namespace
}  // namespace pelora::windows::test
