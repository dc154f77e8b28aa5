// SPDX-License-Identifier: Apache-2.0
// The installer, run by the system's own.
#include "tests/windows/installer/installer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/windows/system_headers.h"
// Stands on the above.
#include <msi.h>

#include "hosts/windows/values/wide_text.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr DWORD kDone = 0;

void ExpectSameEntries(const Snapshot& actual, const Snapshot& expected) {
  EXPECT_THAT(Difference(expected, actual), IsEmpty()) << "too much";
  EXPECT_THAT(Difference(actual, expected), IsEmpty()) << "missing";
}

/// Has the system's installer take the system for another version; Wine knows it by this name.
void UseSystem(const wchar_t* version) {
  constexpr const wchar_t* kKey = L"Software\\Wine\\AppDefaults\\msiexec.exe";
  const auto size = static_cast<DWORD>((wcslen(version) + 1) * sizeof(wchar_t));
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Version", REG_SZ, version, size),
            ERROR_SUCCESS);
}

class InstallerTest : public ::testing::Test {
 protected:
  /// The system makes keys of its own when its installer first runs: they are there before.
  static void SetUpTestSuite() {
    UseSystem(L"win10");
    ASSERT_EQ(RunInstaller(L"/i", InstallerPath()), kDone);
    ASSERT_EQ(RunInstaller(L"/x", InstallerPath()), kDone);
    before_ = TakeSnapshot();
    ASSERT_GT(before_.size(), 1000U);
    ASSERT_THAT(ProgramEntries(before_), IsEmpty());
  }
  static void TearDownTestSuite() { before_.clear(); }

  /// Each test leaves the system as it was.
  void TearDown() override {
    EXPECT_FALSE(Exists(InstalledFolder()));
    ExpectSameEntries(TakeSnapshot(), before_);
  }

  /// What was entered since the tests began, apart from the system's list of products.
  static Snapshot Entered() { return WithoutInstallersOwn(Difference(before_, TakeSnapshot())); }

  /// What the system's registration tool enters for a module in that place.
  static Snapshot EnteredByRegistration() {
    CreateDirectoryW(InstalledFolder().c_str(), nullptr);
    EXPECT_NE(CopyFileW(ExtensionPath().c_str(), InstalledModule().c_str(), FALSE), FALSE);
    EXPECT_EQ(Register(InstalledModule()), kDone);
    Snapshot entered = Difference(before_, TakeSnapshot());
    ForgetWhereItWasRead(entered);
    EXPECT_EQ(Unregister(InstalledModule()), kDone);
    DeleteFileW(InstalledModule().c_str());
    RemoveDirectoryW(InstalledFolder().c_str());
    return entered;
  }

  /// Wine enters among a type library's flags that it was read from a file, which Windows does not:
  /// the number there has meaning only for what the library says itself.
  static void ForgetWhereItWasRead(Snapshot& entries) {
    const auto flags = entries.find("TypeLib\\" + GuidText(kTypeLibraryId) + "\\1.0\\FLAGS");
    ASSERT_NE(flags, entries.end());
    std::string& number = flags->second[""];
    number = std::to_string(std::stoi(number) & ~LIBFLAG_FHASDISKIMAGE);
  }

  static Snapshot before_;
};

Snapshot InstallerTest::before_;

/// The one installed product of ours, as the system names it.
std::wstring ProductCode() {
  const Snapshot programs = ProgramEntries(TakeSnapshot());
  EXPECT_THAT(programs, SizeIs(1));
  if (programs.empty()) return {};
  const std::string& key = programs.begin()->first;
  return ToWide(key.substr(key.find_last_of('\\') + 1));
}

/// What `msiexec /f` asks of the system, which this system's `msiexec` leaves out.
constexpr DWORD kAsUsual = REINSTALLMODE_FILEOLDERVERSION | REINSTALLMODE_MACHINEDATA |
                           REINSTALLMODE_USERDATA | REINSTALLMODE_SHORTCUT;

UINT Repair(DWORD mode) {
  MsiSetInternalUI(INSTALLUILEVEL_NONE, nullptr);
  return MsiReinstallProductW(ProductCode().c_str(), mode);
}

/// The picture that the system shows beside it.
std::string ProductIcon() {
  for (const auto& [path, values] : TakeSnapshot()) {
    const auto name = values.find("ProductName");
    const auto icon = values.find("ProductIcon");
    if (name != values.end() && name->second == "Pelora administration" && icon != values.end()) {
      return icon->second;
    }
  }
  return "none";
}

void ExpectToBeNamedInTheListOfPrograms() {
  const Snapshot programs = ProgramEntries(TakeSnapshot());
  ASSERT_THAT(programs, SizeIs(1));
  SnapshotValues entry = programs.begin()->second;
  EXPECT_EQ(entry["DisplayVersion"], PELORA_VERSION);
  EXPECT_EQ(entry["Publisher"], "Pelora");
  EXPECT_THAT(entry["URLInfoAbout"], HasSubstr("https://"));
  EXPECT_THAT(entry["HelpLink"], HasSubstr("https://"));
  EXPECT_EQ(entry.count("NoModify"), 1U);
  EXPECT_TRUE(Exists(ToWide(ProductIcon()))) << ProductIcon();
}

TEST_F(InstallerTest, EntersExactlyWhatRegistrationEntersAndItsNameInTheListOfPrograms) {
  const Snapshot registered = EnteredByRegistration();
  ASSERT_GT(registered.size(), 5 * ClassTable().size());
  ASSERT_EQ(RunInstaller(L"/i", InstallerPath()), kDone);
  ExpectSameEntries(Entered(), registered);
  EXPECT_TRUE(Exists(InstalledModule()));
  EXPECT_TRUE(Exists(InstalledFolder() + L"\\LICENSE.txt"));
  {
    ::IUnknown* component = nullptr;
    ASSERT_EQ(CoCreateInstance(ClassId("CPropPageUser"), nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(::IUnknown), reinterpret_cast<void**>(&component)),
              S_OK);
    component->Release();
    UnloadUnused();
  }
  ExpectToBeNamedInTheListOfPrograms();
  EXPECT_EQ(RunInstaller(L"/x", InstallerPath()), kDone);
}

TEST_F(InstallerTest, RefusesASystemThatIsTooOld) {
  UseSystem(L"win7");
  EXPECT_EQ(RunInstaller(L"/i", InstallerPath()), ERROR_INSTALL_FAILURE);
  UseSystem(L"win10");
}

TEST_F(InstallerTest, RepairPutsBackWhatIsGone) {
  ASSERT_EQ(RunInstaller(L"/i", InstallerPath()), kDone);
  const Snapshot installed = Entered();
  const std::wstring key = L"CLSID\\" + ToWide(GuidText(FindClass("CPropPageUser")->class_id));
  ASSERT_EQ(RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str()), ERROR_SUCCESS);
  ASSERT_NE(DeleteFileW(InstalledModule().c_str()), FALSE);
  EXPECT_EQ(Repair(kAsUsual), kDone);
  EXPECT_TRUE(Exists(InstalledModule()));
  ExpectSameEntries(Entered(), installed);
  EXPECT_EQ(RunInstaller(L"/x", InstallerPath()), kDone);
}

TEST_F(InstallerTest, ANewerVersionTakesThePlaceOfAnOlderOneAndNeverTheOtherWayRound) {
  ASSERT_EQ(RunInstaller(L"/i", InstallerPath()), kDone);
  const Snapshot installed = Entered();
  ASSERT_EQ(RunInstaller(L"/i", NewerInstallerPath()), kDone);
  ExpectSameEntries(Entered(), installed);
  EXPECT_TRUE(Exists(InstalledModule()));
  const Snapshot programs = ProgramEntries(TakeSnapshot());
  ASSERT_THAT(programs, SizeIs(1)) << "the older one is gone";
  EXPECT_EQ(programs.begin()->second.at("DisplayVersion"), "99.0.0");

  EXPECT_EQ(RunInstaller(L"/i", InstallerPath()), ERROR_INSTALL_FAILURE);
  ExpectSameEntries(Entered(), installed);
  EXPECT_EQ(ProgramEntries(TakeSnapshot()).begin()->second.at("DisplayVersion"), "99.0.0");
  EXPECT_EQ(RunInstaller(L"/x", NewerInstallerPath()), kDone);
}

}  // namespace
}  // namespace pelora::windows::test
