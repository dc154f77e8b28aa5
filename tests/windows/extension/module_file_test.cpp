// SPDX-License-Identifier: Apache-2.0
// The module's file: what it exports, what it needs, how it is protected, what is built into it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "hosts/resources/dialog_template.h"
#include "hosts/windows/system_headers.h"
#include "tests/support/dialog_text.h"
#include "tests/support/module_dialogs.h"
#include "tests/windows/extension/pe_file.h"
#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Modules that every system has, from Windows 10 on, and Wine too.
const std::set<std::string> kSystemModules = {
    "ACTIVEDS.DLL", "ADVAPI32.DLL", "COMCTL32.DLL", "GDI32.DLL",   "KERNEL32.DLL",
    "MSVCRT.DLL",   "OLE32.DLL",    "OLEAUT32.DLL", "SHELL32.DLL", "USER32.DLL",
};

TEST(ModuleFile, ExportsTheFourFunctionsAndNothingElse) {
  const PeFile file = ReadPeFile(ExtensionPath());
  EXPECT_THAT(file.exports, ElementsAre("DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                        "DllUnregisterServer"));
  EXPECT_EQ(file.export_count, 4U);
}

TEST(ModuleFile, NeedsOnlyModulesOfTheSystem) {
  const PeFile file = ReadPeFile(ExtensionPath());
  EXPECT_FALSE(file.imports.empty());
  for (const std::string& import : file.imports) {
    EXPECT_TRUE(kSystemModules.contains(import)) << import;
  }
}

TEST(ModuleFile, IsAProtected64BitLibrary) {
  const PeFile file = ReadPeFile(ExtensionPath());
  EXPECT_EQ(file.machine, IMAGE_FILE_MACHINE_AMD64);
  EXPECT_NE(file.characteristics & IMAGE_FILE_DLL, 0);
  EXPECT_EQ(file.characteristics & IMAGE_FILE_RELOCS_STRIPPED, 0);
  EXPECT_NE(file.dll_characteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, 0);
  EXPECT_NE(file.dll_characteristics & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA, 0);
  EXPECT_NE(file.dll_characteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, 0);
}

TEST(ModuleFile, CanBeLoadedAnywhere) {
  EXPECT_GT(ReadPeFile(ExtensionPath()).relocation_blocks, 0U)
      << "without them the system has but one place for it";
}

TEST(ModuleFile, ChecksItsStack) {
  // Functions that hold arrays or hand out addresses of what is on the stack: hundreds of ours.
  EXPECT_GE(ReadPeFile(ExtensionPath()).stack_checks, 200U);
}

TEST(ModuleFile, IsStrippedAndSmall) {
  const PeFile file = ReadPeFile(ExtensionPath());
  EXPECT_EQ(file.symbol_count, 0U);
  for (const std::string& section : file.sections) {
    EXPECT_THAT(section, ::testing::Not(StartsWith(".debug")));
    // A long name is a number into a table of names, which debugging sections have.
    EXPECT_THAT(section, ::testing::Not(StartsWith("/")));
  }
  constexpr std::size_t kLargest = 3 * 512 * 1024;
  EXPECT_LE(file.size, kLargest);
  std::printf("PeloraADS.DLL: %zu bytes\n", file.size);
}

/// A version as the fixed part holds it, "1.2.3.0".
std::string NumbersOf(DWORD most, DWORD least) {
  return std::to_string(HIWORD(most)) + '.' + std::to_string(LOWORD(most)) + '.' +
         std::to_string(HIWORD(least)) + '.' + std::to_string(LOWORD(least));
}

// Types of resources, by their numbers.
const auto* const kDialogs = MAKEINTRESOURCEW(5);
const auto* const kIcons = MAKEINTRESOURCEW(14);

class ModuleResources : public ::testing::Test {
 protected:
  ModuleResources()
      : module_(LoadLibraryExW(ExtensionPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
  ~ModuleResources() override { FreeLibrary(module_); }

  [[nodiscard]] std::string_view Find(const wchar_t* type, WORD name) const {
    const HRSRC found = FindResourceW(module_, MAKEINTRESOURCEW(name), type);
    if (found == nullptr) return {};
    return {static_cast<const char*>(LockResource(LoadResource(module_, found))),
            SizeofResource(module_, found)};
  }
  /// Numbers of the resources of a type; 0 stands for those with names.
  [[nodiscard]] std::set<DialogId> Numbers(const wchar_t* type) const {
    std::set<DialogId> numbers;
    EnumResourceNamesW(module_, type, &TakeNumber, reinterpret_cast<LONG_PTR>(&numbers));
    return numbers;
  }

 private:
  static BOOL CALLBACK TakeNumber(HMODULE /*module*/, const wchar_t* /*type*/, wchar_t* name,
                                  LONG_PTR numbers) {
    const WORD number = IS_INTRESOURCE(name) ? LOWORD(reinterpret_cast<ULONG_PTR>(name)) : 0;
    reinterpret_cast<std::set<DialogId>*>(numbers)->insert(number);
    return TRUE;
  }

  HMODULE module_;
};

TEST_F(ModuleResources, HoldAVersion) {
  const std::string_view version = Find(MAKEINTRESOURCEW(16), 1);
  // The fixed part begins with its mark, whose place depends on the texts before it.
  const std::string mark("\xBD\x04\xEF\xFE", 4);
  const std::size_t begin = version.find(mark);
  ASSERT_NE(begin, std::string_view::npos);
  VS_FIXEDFILEINFO fixed = {};
  ASSERT_LE(begin + sizeof(fixed), version.size());
  std::memcpy(&fixed, version.data() + begin, sizeof(fixed));
  EXPECT_EQ(NumbersOf(fixed.dwFileVersionMS, fixed.dwFileVersionLS), PELORA_VERSION ".0");
  EXPECT_EQ(NumbersOf(fixed.dwProductVersionMS, fixed.dwProductVersionLS), PELORA_VERSION ".0");
  EXPECT_EQ(fixed.dwFileType, static_cast<DWORD>(VFT_DLL));
  for (const char* const text : {"PeloraADS.DLL", "FileVersion", PELORA_VERSION}) {
    std::string wide;
    for (const char letter : std::string_view(text)) wide += {letter, '\0'};
    EXPECT_NE(version.find(wide), std::string_view::npos) << text;
  }
}

TEST_F(ModuleResources, AskForTheControlsThatFollowTheTheme) {
  constexpr WORD kManifestOfALibrary = 2;
  EXPECT_THAT(std::string(Find(MAKEINTRESOURCEW(24), kManifestOfALibrary)),
              HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
}

TEST_F(ModuleResources, HoldTheRegistrationScripts) {
  EXPECT_THAT(std::string(Find(L"REGISTRY", 101)), HasSubstr("PeloraADS.DLL"));
}

TEST_F(ModuleResources, HoldEveryDialogOfTheTableAndNoOther) {
  std::set<DialogId> named;
  for (const pelora::testing::ModuleDialog& expected : pelora::testing::ModuleDialogs()) {
    SCOPED_TRACE(expected.id);
    named.insert(expected.id);
    const auto dialog =
        resources::ReadDialogTemplate(std::as_bytes(std::span(Find(kDialogs, expected.id))));
    EXPECT_EQ(dialog.error, "");
    ASSERT_TRUE(dialog.value);
    EXPECT_EQ('\n' + pelora::testing::ToText(*dialog.value), expected.text);
    for (const resources::DialogItem& item : dialog.value->items) {
      if (!item.title_resource) continue;
      EXPECT_FALSE(Find(kIcons, *item.title_resource).empty()) << *item.title_resource;
    }
  }
  EXPECT_EQ(Numbers(kDialogs), named);
}

}  // namespace
}  // namespace pelora::windows::test
