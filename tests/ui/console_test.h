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
#include "tests/support/sample_file.h"
#include "tests/support/sample_objects.h"

namespace pelora::test {

using namespace sample;

/// Lines of an entry, in order of the alphabet, values in UTF-8.
using EntryLines = std::vector<std::string>;

/// The whole entry of a name, read by ldbsearch in a process of its own.
[[nodiscard]] EntryLines SearchEntry(const std::string& file, const std::string& dn);
/// Runs ldbmodify on a change in LDIF.
void ModifyEntry(const std::string& file, const std::string& ldif);

/// What select-all and copy take of a part of a window.
[[nodiscard]] std::string Copied(QWidget& part);

/// What a change did to an entry: "+ line" and "- line".
[[nodiscard]] std::vector<std::string> Difference(const EntryLines& before,
                                                  const EntryLines& after);

/// The sample company in a file of the test's own, opened, and the module's resources.
class OpenCompany {
 public:
  OpenCompany();

  [[nodiscard]] const std::string& file() const { return file_.path(); }
  [[nodiscard]] const resources::ResourceFile& module() const { return *module_.value; }
  [[nodiscard]] session::DirectorySession& session() { return *session_; }
  /// Gives the session away: to a window, say.
  [[nodiscard]] std::unique_ptr<session::DirectorySession> TakeSession();
  [[nodiscard]] std::vector<session::DirectoryObject> Objects(
      const std::vector<std::string>& names);

  [[nodiscard]] const pelora::testing::TemporaryFolder& folder() const { return file_.folder(); }
  [[nodiscard]] contract::ModalScripts& modal_scripts() { return modal_scripts_; }

 private:
  pelora::testing::SampleFile file_;
  resources::ReadResult<resources::ResourceFile> module_;
  std::unique_ptr<session::DirectorySession> session_;
  contract::ModalScripts modal_scripts_;
};

class ConsoleTest : public ::testing::Test, protected OpenCompany {};

}  // namespace pelora::test
