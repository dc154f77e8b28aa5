// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/ui/console_test.h"
#include "tests/ui/open_wizard.h"

namespace pelora::test {

/// The sample company, of which every addition is taken down.
class RecordedCompany : public OpenCompany {
 public:
  /// Whether the directory poses as one whose connection is sealed.
  explicit RecordedCompany(bool is_sealed = false);

  [[nodiscard]] std::unique_ptr<session::DirectorySession> OpenFile();
  /// The session whose additions are recorded, and its store.
  [[nodiscard]] session::DirectorySession& recorded() { return *recorded_; }
  [[nodiscard]] RecordingStore& store() { return *store_; }

 protected:
  std::vector<ldap::Entry> adds_;
  std::unique_ptr<session::DirectorySession> recorded_;
  RecordingStore* store_ = nullptr;
};

/// Objects made in the console's wizards, and the one wizard that is open.
class NewObjectTest : public ::testing::Test, protected RecordedCompany {
 protected:
  using Lines = std::vector<std::string>;

  using RecordedCompany::RecordedCompany;

  OpenWizard& Open(const char* kind, const char* container = kSales);
  /// Opens the wizard of a kind, with its first page filled in as far as Next needs it.
  void OpenNamed(const session::NewObjectKind& kind);
  [[nodiscard]] OpenWizard& wizard() { return *wizard_; }

  /// What the directory file holds of an object, without what follows from its name alone.
  [[nodiscard]] Lines Stored(const std::string& dn);
  [[nodiscard]] bool IsThere(const std::string& dn);
  [[nodiscard]] static std::string Below(const std::string& rdn) { return rdn + "," + kSales; }

  /// Keeps a picture of the window as it stands.
  void Picture(const std::string& name);

  std::optional<OpenWizard> wizard_;
};

}  // namespace pelora::test
