// SPDX-License-Identifier: Apache-2.0
// What the system's registration tool leaves in the registry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/wide_text.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "tests/windows/extension/registry_snapshot.h"
#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {
namespace {

using ::testing::IsEmpty;

constexpr DWORD kDone = 0;

std::string FolderOf(const std::string& path) { return path.substr(0, path.find_last_of('\\')); }

/// What the system says of the library itself, in which it differs.
std::string LibraryFlags() {
  Ref<ITypeLib> library;
  TLIBATTR* attributes = nullptr;
  if (FAILED(LoadTypeLibEx(ExtensionPath().c_str(), REGKIND_NONE, library.Put())) ||
      FAILED(library->GetLibAttr(&attributes))) {
    return "no library";
  }
  std::string flags = std::to_string(attributes->wLibFlags);
  library->ReleaseTLibAttr(attributes);
  return flags;
}

/// The application identifier's entries and the type library's.
Snapshot ModuleEntries(const std::string& path) {
  const std::string application = GuidText(kApplicationId);
  const std::string library = "TypeLib\\" + GuidText(kTypeLibraryId);
  return {{"AppID\\" + application, {{"", "PeloraADS"}}},
          {"AppID\\PeloraADS.DLL", {{"AppID", application}}},
          {library, {}},
          {library + "\\1.0", {{"", "PeloraProp 1.0 Type Library"}}},
          {library + "\\1.0\\0", {}},
          {library + "\\1.0\\0\\win64", {{"", path}}},
          {library + "\\1.0\\FLAGS", {{"", LibraryFlags()}}},
          {library + "\\1.0\\HELPDIR", {{"", FolderOf(path)}}}};
}

void AddClassEntries(const ComponentClass& row, const std::string& path, Snapshot& entries) {
  const std::string friendly = std::string(row.name) + " Object";
  const std::string prog_id(row.prog_id);
  const std::string independent(row.version_independent_prog_id);
  const std::string class_id = GuidText(row.class_id);
  const std::string component = "CLSID\\" + class_id;
  entries[prog_id] = {{"", friendly}};
  entries[prog_id + "\\CLSID"] = {{"", class_id}};
  entries[independent] = {{"", friendly}};
  entries[independent + "\\CLSID"] = {{"", class_id}};
  entries[independent + "\\CurVer"] = {{"", prog_id}};
  entries[component] = {{"", friendly}, {"AppID", GuidText(kApplicationId)}};
  entries[component + "\\ProgID"] = {{"", prog_id}};
  entries[component + "\\VersionIndependentProgID"] = {{"", independent}};
  entries[component + "\\Programmable"] = {};
  entries[component + "\\InprocServer32"] = {{"", path}, {"ThreadingModel", "apartment"}};
  entries[component + "\\TypeLib"] = {{"", GuidText(kTypeLibraryId)}};
}

Snapshot ExpectedEntries(const std::wstring& path) {
  const std::string narrow_path = ToNarrow(path);
  Snapshot entries = ModuleEntries(narrow_path);
  for (const ComponentClass& row : ClassTable()) AddClassEntries(row, narrow_path, entries);
  return entries;
}

/// Every entry that one has and the other has not, or not so.
void ExpectSameEntries(const Snapshot& actual, const Snapshot& expected) {
  EXPECT_THAT(Difference(expected, actual), IsEmpty()) << "too much";
  EXPECT_THAT(Difference(actual, expected), IsEmpty()) << "missing";
}

/// Each test begins with a module that is not registered, and leaves it so.
class RegistrationTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(Unregister(), kDone);
    before_ = TakeSnapshot();
    ASSERT_GT(before_.size(), 1000U);
  }
  static void TearDownTestSuite() { before_.clear(); }

  void TearDown() override {
    if (!IsRegistered()) return;
    EXPECT_EQ(Unregister(), kDone);
  }

  static Snapshot before_;
};

Snapshot RegistrationTest::before_;

TEST_F(RegistrationTest, LeavesExactlyTheModulesEntries) {
  ASSERT_EQ(Register(), kDone);
  const Snapshot after = TakeSnapshot();
  ExpectSameEntries(Difference(before_, after), ExpectedEntries(ExtensionPath()));
  EXPECT_THAT(Difference(after, before_), IsEmpty());
}

TEST_F(RegistrationTest, ItsUndoingLeavesNothing) {
  ASSERT_EQ(Register(), kDone);
  ASSERT_EQ(Unregister(), kDone);
  ExpectSameEntries(TakeSnapshot(), before_);
}

TEST_F(RegistrationTest, BothMayBeRepeated) {
  ASSERT_EQ(Register(), kDone);
  const Snapshot once = TakeSnapshot();
  ASSERT_EQ(Register(), kDone);
  ExpectSameEntries(TakeSnapshot(), once);
  ASSERT_EQ(Unregister(), kDone);
  ASSERT_EQ(Unregister(), kDone);
  ExpectSameEntries(TakeSnapshot(), before_);
}

TEST_F(RegistrationTest, AProgramIdentifierNamesTheClassRegisteredLast) {
  ASSERT_EQ(Register(), kDone);
  struct Row {
    const wchar_t* prog_id;
    const char* name;
  };
  for (const Row& row : {Row{L"PeloraProp.PropPage.1", "CWizardExtUser"},
                         Row{L"PeloraProp.PropPage", "CWizardExtUser"},
                         Row{L"PeloraProp.PropPageDistlist", "CPropPageDynamicDistlistGeneral"},
                         Row{L"PeloraProp.PropPageContact", "CPropPageContact"}}) {
    CLSID class_id = {};
    EXPECT_EQ(CLSIDFromProgID(row.prog_id, &class_id), S_OK) << row.name;
    EXPECT_EQ(FromSystem(class_id), FindClass(row.name)->class_id) << row.name;
  }
}

TEST_F(RegistrationTest, WorksFromAPathWithQuotesBlanksAndLettersOfOtherScripts) {
  const std::wstring folder = L"C:\\O'Neil {x} %PATH% Größe 漢字";
  const std::wstring path = folder + L"\\PeloraADS.DLL";
  CreateDirectoryW(folder.c_str(), nullptr);
  ASSERT_NE(CopyFileW(ExtensionPath().c_str(), path.c_str(), FALSE), FALSE);
  EXPECT_EQ(Register(path), kDone);
  ExpectSameEntries(Difference(before_, TakeSnapshot()), ExpectedEntries(path));
  EXPECT_EQ(Unregister(path), kDone);
  ExpectSameEntries(TakeSnapshot(), before_);
  DeleteFileW(path.c_str());
  RemoveDirectoryW(folder.c_str());
}

TEST_F(RegistrationTest, TheThreadsLocaleIsAsBefore) {
  const HMODULE module = LoadLibraryW(ExtensionPath().c_str());
  ASSERT_NE(module, nullptr);
  constexpr LCID kGerman = 0x407;
  const LCID before = GetThreadLocale();
  SetThreadLocale(kGerman);
  for (const char* const name : {"DllRegisterServer", "DllUnregisterServer"}) {
    const auto function = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, name)));
    ASSERT_NE(function, nullptr) << name;
    EXPECT_EQ(function(), S_OK) << name;
    EXPECT_EQ(GetThreadLocale(), kGerman) << name;
  }
  SetThreadLocale(before);
  FreeLibrary(module);
  ExpectSameEntries(TakeSnapshot(), before_);
}

TEST(TypeLibrary, NamesEveryClassByItsIdentifier) {
  Ref<ITypeLib> library;
  ASSERT_EQ(LoadTypeLibEx(ExtensionPath().c_str(), REGKIND_NONE, library.Put()), S_OK);
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(FromSystem(attributes->guid), kTypeLibraryId);
  EXPECT_EQ(attributes->wMajorVerNum, kTypeLibraryMajorVersion);
  EXPECT_EQ(attributes->wMinorVerNum, kTypeLibraryMinorVersion);
  library->ReleaseTLibAttr(attributes);
  ASSERT_EQ(library->GetTypeInfoCount(), ClassTable().size());
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    Ref<ITypeInfo> info;
    ASSERT_EQ(library->GetTypeInfo(index, info.Put()), S_OK);
    TYPEATTR* type = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&type), S_OK);
    UniqueBstr name;
    EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(type->typekind, TKIND_COCLASS);
    EXPECT_EQ(TextOf(name.Get()), ClassTable()[index].name);
    EXPECT_EQ(FromSystem(type->guid), ClassTable()[index].class_id);
    info->ReleaseTypeAttr(type);
  }
}

}  // namespace
}  // namespace pelora::windows::test
