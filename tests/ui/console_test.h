// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/resources/resource_file.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/directory_session.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {

/// Names of objects of the sample company.
inline constexpr const char* kCompany = "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
inline constexpr const char* kSales =
    "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Has an account, two addresses and two delegates.
inline constexpr const char* kBirgit =
    "CN=Birgit Krämer,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Has an account; a comma in its name.
inline constexpr const char* kAnna =
    "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Has the account attribute with 0; a slash in the name of its container.
inline constexpr const char* kRolf =
    "CN=Rolf Uhlig,OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Has no account attribute, and is hidden in neither way.
inline constexpr const char* kUrsula =
    "CN=Ursula Fischer,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
inline constexpr const char* kGroup =
    "CN=Vertrieb Alle,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Of a class that has no settings.
inline constexpr const char* kPlotter =
    "CN=Plotter Halle A,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

/// Lines of an entry, in order of the alphabet, values in UTF-8.
using EntryLines = std::vector<std::string>;

/// The whole entry of a name, read by ldbsearch in a process of its own.
[[nodiscard]] EntryLines SearchEntry(const std::string& file, const std::string& dn);
/// Runs ldbmodify on a change in LDIF.
void ModifyEntry(const std::string& file, const std::string& ldif);

/// What a change did to an entry: "+ line" and "- line".
[[nodiscard]] std::vector<std::string> Difference(const EntryLines& before,
                                                  const EntryLines& after);

/// The sample company in a file of the test's own, opened, and the module's resources.
class ConsoleTest : public ::testing::Test {
 protected:
  ConsoleTest();

  [[nodiscard]] const std::string& file() const { return file_; }
  [[nodiscard]] const resources::ResourceFile& module() const { return *module_.value; }
  [[nodiscard]] session::DirectorySession& session() { return *session_; }
  /// Gives the session away: to a window, say.
  [[nodiscard]] std::unique_ptr<session::DirectorySession> TakeSession();
  [[nodiscard]] std::vector<session::DirectoryObject> Objects(
      const std::vector<std::string>& names);

  [[nodiscard]] const pelora::testing::TemporaryFolder& folder() const { return folder_; }
  [[nodiscard]] contract::ModalScripts& modal_scripts() { return modal_scripts_; }

 private:
  pelora::testing::TemporaryFolder folder_;
  std::string file_;
  resources::ReadResult<resources::ResourceFile> module_;
  std::unique_ptr<session::DirectorySession> session_;
  contract::ModalScripts modal_scripts_;
};

}  // namespace pelora::test
