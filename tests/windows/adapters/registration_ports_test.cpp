// SPDX-License-Identifier: Apache-2.0
// What registering asks of the system: the classes root, the module's file, the thread's locale.
#include <gtest/gtest.h>

#include <string>

#include "hosts/windows/module/module_path.h"
#include "hosts/windows/module/win32_classes_registry.h"
#include "hosts/windows/module/win32_module_file.h"
#include "hosts/windows/module/win32_thread_locale.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

constexpr auto kFileNotFound = static_cast<HRESULT>(0x80070002U);
constexpr const char* kRoot = "PeloraTests.Größe 漢字";

class ClassesRegistryTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(registry_.DeleteTree(kRoot), S_OK); }

  /// The text of a value; "(none)" when there is none, or it is no text.
  static std::string ValueOf(const std::string& path, const wchar_t* name) {
    std::wstring text(100, L'\0');
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(HKEY_CLASSES_ROOT, ToWide(path).c_str(), name,
                                        RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return status == ERROR_SUCCESS ? ToNarrow(text.c_str()) : "(none)";
  }
  static bool Exists(const std::string& path) {
    HKEY key = nullptr;
    const bool exists =
        RegOpenKeyExW(HKEY_CLASSES_ROOT, ToWide(path).c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
    RegCloseKey(key);
    return exists;
  }

  const std::string root_ = kRoot;
  Win32ClassesRegistry registry_;
};

TEST_F(ClassesRegistryTest, MakesAKeyAndThoseAboveIt) {
  EXPECT_EQ(registry_.CreateKey(root_ + "\\one\\two"), S_OK);
  EXPECT_EQ(registry_.CreateKey(root_ + "\\one\\two"), S_OK);
  EXPECT_TRUE(Exists(root_ + "\\ONE\\two"));
}

TEST_F(ClassesRegistryTest, SetsTextsOfEveryScript) {
  ASSERT_EQ(registry_.CreateKey(root_), S_OK);
  EXPECT_EQ(registry_.SetValue(root_, std::nullopt, "Grüße \U0001F333"), S_OK);
  EXPECT_EQ(registry_.SetValue(root_, "named", ""), S_OK);
  EXPECT_EQ(registry_.SetValue(root_, "named", "C:\\O'Neil\\漢字"), S_OK);
  EXPECT_EQ(ValueOf(root_, nullptr), "Grüße \U0001F333");
  EXPECT_EQ(ValueOf(root_, L"named"), "C:\\O'Neil\\漢字");
}

TEST_F(ClassesRegistryTest, AValueNeedsItsKey) {
  EXPECT_EQ(registry_.SetValue(root_, std::nullopt, "x"), kFileNotFound);
  EXPECT_FALSE(Exists(root_));
}

TEST_F(ClassesRegistryTest, RemovesAValueAndNothingElse) {
  ASSERT_EQ(registry_.CreateKey(root_), S_OK);
  ASSERT_EQ(registry_.SetValue(root_, std::nullopt, "stays"), S_OK);
  ASSERT_EQ(registry_.SetValue(root_, "goes", "x"), S_OK);
  EXPECT_EQ(registry_.DeleteValue(root_, "goes"), S_OK);
  EXPECT_EQ(ValueOf(root_, L"goes"), "(none)");
  EXPECT_EQ(ValueOf(root_, nullptr), "stays");
  EXPECT_EQ(registry_.DeleteValue(root_, std::nullopt), S_OK);
  EXPECT_EQ(ValueOf(root_, nullptr), "(none)");
}

TEST_F(ClassesRegistryTest, RemovesAKeyWithEverythingBelow) {
  ASSERT_EQ(registry_.CreateKey(root_ + "\\one\\two"), S_OK);
  ASSERT_EQ(registry_.CreateKey(root_ + "\\other"), S_OK);
  EXPECT_EQ(registry_.DeleteTree(root_ + "\\one"), S_OK);
  EXPECT_FALSE(Exists(root_ + "\\one"));
  EXPECT_TRUE(Exists(root_ + "\\other"));
}

TEST_F(ClassesRegistryTest, RemovingWhatIsNotThereIsNoFailure) {
  EXPECT_EQ(registry_.DeleteTree(root_), S_OK);
  EXPECT_EQ(registry_.DeleteValue(root_, "x"), S_OK);
  ASSERT_EQ(registry_.CreateKey(root_), S_OK);
  EXPECT_EQ(registry_.DeleteValue(root_, "x"), S_OK);
}

TEST(ModuleFile, TellsItsPath) {
  EXPECT_EQ(Win32ModuleFile(nullptr, L"C:\\Größe\\PeloraADS.DLL").Path(),
            "C:\\Größe\\PeloraADS.DLL");
  EXPECT_EQ(ModulePath(GetModuleHandleW(nullptr)), ModulePath(nullptr));
  EXPECT_TRUE(ModulePath(nullptr).ends_with(L"windows_adapters_test.exe"));
}

TEST(ModuleFile, AScriptThatIsMissingIsAFailure) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  const Win32ModuleFile file(program, ModulePath(program));
  std::string text = "before";
  EXPECT_TRUE(FAILED(file.ReadScript(101, text)));
  EXPECT_EQ(text, "");
}

TEST(ModuleFile, ATypeLibraryThatIsMissingIsAFailure) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  EXPECT_TRUE(FAILED(Win32ModuleFile(program, ModulePath(program)).RegisterTypeLibrary()));
  EXPECT_TRUE(FAILED(Win32ModuleFile(program, L"C:\\nothing.dll").RegisterTypeLibrary()));
}

TEST(ModuleFile, UnregisteringATypeLibraryThatIsNotThereIsNoFailure) {
  EXPECT_EQ(Win32ModuleFile(nullptr, L"").UnregisterTypeLibrary(), S_OK);
}

TEST(ThreadLocale, IsTheThreads) {
  constexpr LocaleId kGerman = 0x407;
  Win32ThreadLocale locale;
  const LocaleId before = locale.Get();
  locale.Set(kGerman);
  EXPECT_EQ(GetThreadLocale(), kGerman);
  EXPECT_EQ(locale.Get(), kGerman);
  locale.Set(before);
  EXPECT_EQ(GetThreadLocale(), before);
}

}  // namespace
}  // namespace pelora::windows
