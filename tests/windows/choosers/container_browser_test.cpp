// SPDX-License-Identifier: Apache-2.0
// The container browser of the system's directory user-interface library: how it is found, every
// field that it is given, and what becomes of every answer.
#include "hosts/windows/choosers/container_browser.h"

#include <gmock/gmock.h>

#include "hosts/windows/values/wide_text.h"
#include "tests/windows/choosers/chooser_test.h"
#include "tests/windows/support/stand_in_browser.h"

namespace pelora::windows::test {
namespace {

constexpr std::size_t kRoom = 260;

/// A copy of the stand-in in a folder (with its last stroke), under the library's name. None is in
/// the system's folder.
class LibraryCopy {
 public:
  explicit LibraryCopy(const std::wstring& folder) : path_(folder + L"dsuiext.dll") {
    { const StandInBrowser gone(BrowserExports::kByName); }
    const std::wstring built = StandInBrowser::BuiltPath(BrowserExports::kByName);
    EXPECT_NE(CopyFileW(built.c_str(), path_.c_str(), FALSE), FALSE);
  }
  ~LibraryCopy() { EXPECT_NE(DeleteFileW(path_.c_str()), FALSE); }
  LibraryCopy(const LibraryCopy&) = delete;
  LibraryCopy& operator=(const LibraryCopy&) = delete;

 private:
  std::wstring path_;
};

std::wstring ProgramsFolder() {
  const std::wstring built = StandInBrowser::BuiltPath(BrowserExports::kByName);
  return built.substr(0, built.find_last_of(L'\\') + 1);
}

class ContainerBrowserTest : public ChooserTest {
 protected:
  HRESULT Browse() { return chooser().BrowseContainer(name_); }
  static void Plan(StandInBrowser& browser, int answer, std::string_view path) {
    const std::wstring wide = ToWide(path);
    std::copy_n(wide.c_str(), wide.size() + 1, browser.plan().path);
    browser.plan().answer = answer;
  }

  std::string name_ = "from before";
};

TEST_F(ContainerBrowserTest, GivesTheBrowserEveryField) {
  StandInBrowser browser(BrowserExports::kByName);
  EXPECT_EQ(Browse(), E_FAIL);
  EXPECT_EQ(browser.plan().runs, 1);
  const DSBROWSEINFOW& received = browser.plan().received;
  EXPECT_EQ(received.cbStruct, 112U);
  EXPECT_EQ(received.hwndOwner, nullptr);
  EXPECT_EQ(received.pszCaption, nullptr);
  EXPECT_EQ(received.pszTitle, nullptr);
  EXPECT_EQ(received.pszRoot, nullptr);
  EXPECT_NE(received.pszPath, nullptr);
  EXPECT_TRUE(browser.plan().room_was_empty);
  EXPECT_EQ(received.cchPath, 260U);
  EXPECT_EQ(received.dwFlags, 0x90000U);
  EXPECT_EQ(received.pfnCallback, nullptr);
  EXPECT_EQ(received.lParam, 0);
  EXPECT_EQ(received.dwReturnFormat, 0U);
  EXPECT_EQ(received.pUserName, nullptr);
  EXPECT_EQ(received.pPassword, nullptr);
  EXPECT_EQ(received.pszObjectClass, nullptr);
  EXPECT_EQ(received.cchObjectClass, 0U);
}

TEST_F(ContainerBrowserTest, GivesTheNameOfTheChosenContainer) {
  StandInBrowser browser(BrowserExports::kByName);
  Plan(browser, IDOK, "LDAP://dc1/OU=Größe 月🌙,DC=x");
  EXPECT_EQ(Browse(), S_OK);
  EXPECT_EQ(name_, "OU=Größe 月🌙,DC=x");
  Plan(browser, IDOK, "LDAP://OU=One,DC=x");
  EXPECT_EQ(Browse(), S_OK);
  EXPECT_EQ(name_, "OU=One,DC=x");
}

TEST_F(ContainerBrowserTest, AnyAnswerButOkFails) {
  StandInBrowser browser(BrowserExports::kByName);
  for (const int answer : {IDCANCEL, 0, -1, IDYES}) {
    Plan(browser, answer, "LDAP://dc1/OU=One,DC=x");
    EXPECT_EQ(Browse(), static_cast<HRESULT>(0x80004005)) << answer;
    EXPECT_EQ(name_, "from before");
  }
  std::string path = "from before";
  EXPECT_EQ(BrowseForContainer({.flags = 0, .path_capacity = kRoom}, path), IDYES);
  EXPECT_EQ(path, "");
}

TEST_F(ContainerBrowserTest, APathThatLeavesJustRoomForItsEndIsGivenWhole) {
  StandInBrowser browser(BrowserExports::kByName);
  const std::string name = "OU=" + std::string(kRoom - 1 - 7 - 3, 'x');
  Plan(browser, IDOK, "LDAP://" + name);
  EXPECT_EQ(Browse(), S_OK);
  EXPECT_EQ(name_, name);
}

TEST_F(ContainerBrowserTest, APathThatFillsTheRoomIsReadNoFurther) {
  StandInBrowser browser(BrowserExports::kByName);
  browser.plan().fills_the_room = true;
  Plan(browser, IDOK, "LDAP://OU=" + std::string(400, 'x'));
  EXPECT_EQ(Browse(), S_OK);
  EXPECT_EQ(name_, "OU=" + std::string(kRoom - 7 - 3, 'x'));
}

TEST_F(ContainerBrowserTest, TheRoomIsAsLargeAsAskedFor) {
  StandInBrowser browser(BrowserExports::kByName);
  Plan(browser, IDOK, "LDAP://OU=One");
  std::string path;
  EXPECT_EQ(BrowseForContainer({.flags = 0x123, .path_capacity = 12}, path), IDOK);
  EXPECT_EQ(path, "LDAP://OU=O");
  EXPECT_EQ(browser.plan().received.cchPath, 12U);
  EXPECT_EQ(browser.plan().received.dwFlags, 0x123U);
}

TEST_F(ContainerBrowserTest, TheBrowsersNumberComesBeforeItsName) {
  StandInBrowser browser(BrowserExports::kByBoth);
  EXPECT_EQ(Browse(), E_FAIL);
  EXPECT_EQ(browser.plan().found_by, '#');
}

TEST_F(ContainerBrowserTest, ABrowserWithoutNumberIsFoundByItsName) {
  StandInBrowser browser(BrowserExports::kByName);
  EXPECT_EQ(Browse(), E_FAIL);
  EXPECT_EQ(browser.plan().found_by, 'n');
}

TEST_F(ContainerBrowserTest, ABrowserWithoutNameIsFoundByItsNumber) {
  StandInBrowser browser(BrowserExports::kByNumberOnly);
  Plan(browser, IDOK, "LDAP://OU=One");
  EXPECT_EQ(Browse(), S_OK);
  EXPECT_EQ(name_, "OU=One");
  EXPECT_EQ(browser.plan().found_by, '#');
  EXPECT_EQ(browser.plan().received.cbStruct, 112U);
}

TEST_F(ContainerBrowserTest, ALibraryWithoutBrowserFails) {
  StandInBrowser browser(BrowserExports::kNotAtAll);
  EXPECT_EQ(Browse(), E_FAIL);
  EXPECT_EQ(browser.plan().runs, 0);
  EXPECT_EQ(name_, "from before");
  std::string path = "from before";
  EXPECT_EQ(BrowseForContainer({.flags = 0, .path_capacity = kRoom}, path), -1);
  EXPECT_EQ(path, "");
}

TEST_F(ContainerBrowserTest, AMissingLibraryFails) {
  { const StandInBrowser gone(BrowserExports::kByName); }
  ASSERT_FALSE(StandInBrowser::IsLoaded());
  EXPECT_EQ(Browse(), E_FAIL);
  EXPECT_EQ(name_, "from before");
  std::string path = "from before";
  EXPECT_EQ(BrowseForContainer({.flags = 0, .path_capacity = kRoom}, path), -1);
  EXPECT_EQ(path, "");
}

TEST_F(ContainerBrowserTest, ALibraryBesideTheProgramIsUsedAsAnImportWouldBe) {
  const LibraryCopy beside(ProgramsFolder());
  std::string path;
  EXPECT_EQ(BrowseForContainer({.flags = 0, .path_capacity = kRoom}, path), IDCANCEL)
      << "it is the stand-in that answers";
  EXPECT_FALSE(StandInBrowser::IsLoaded());
}

TEST_F(ContainerBrowserTest, ALibraryInTheWorkingFolderIsNotUsed) {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetTempPathW(MAX_PATH, folder.data()));
  const LibraryCopy planted(folder);
  std::wstring before(MAX_PATH, L'\0');
  before.resize(GetCurrentDirectoryW(MAX_PATH, before.data()));
  ASSERT_NE(SetCurrentDirectoryW(folder.c_str()), FALSE);
  {
    const UniqueLibrary found(LoadLibraryW(L"dsuiext.dll"));
    EXPECT_TRUE(static_cast<bool>(found)) << "it is there for whoever looks everywhere";
  }
  std::string path;
  EXPECT_EQ(BrowseForContainer({.flags = 0, .path_capacity = kRoom}, path), -1);
  EXPECT_NE(SetCurrentDirectoryW(before.c_str()), FALSE);
}

TEST_F(ContainerBrowserTest, TheLibraryIsGivenBack) {
  for (const BrowserExports exports : {BrowserExports::kByName, BrowserExports::kNotAtAll}) {
    StandInBrowser browser(exports);
    EXPECT_EQ(Browse(), E_FAIL);
    ASSERT_TRUE(StandInBrowser::IsLoaded());
    browser.LetGo();
    EXPECT_FALSE(StandInBrowser::IsLoaded());
  }
}

}  // namespace
}  // namespace pelora::windows::test
