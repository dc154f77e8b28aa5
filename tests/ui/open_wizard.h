// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPushButton>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/new_object/make_new_object_wizard.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/ldap/forwarding_store.h"
#include "hosts/session/directory_session.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/support/fake_choosers.h"

namespace pelora::test {

/// Passes requests on to a store and takes down the entries that are added. It may pose as sealed;
/// what only a server keeps (passwords) is not passed on then. The next addition can be made to
/// fail.
class RecordingStore final : public ldap::ForwardingStore {
 public:
  RecordingStore(std::unique_ptr<ldap::IDirectoryStore> store, std::vector<ldap::Entry>& adds,
                 bool poses_as_sealed = false)
      : ForwardingStore(*store),
        store_(std::move(store)),
        adds_(adds),
        poses_as_sealed_(poses_as_sealed) {}

  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    ADD_FAILURE() << "modified " << dn;
    return ForwardingStore::Modify(dn, modifications);
  }
  void FailNextAdd(ldap::StoreStatus status) { next_failure_ = std::move(status); }
  ldap::StoreStatus Add(const ldap::Entry& entry) override {
    adds_.push_back(entry);
    if (next_failure_) return *std::exchange(next_failure_, std::nullopt);
    if (!poses_as_sealed_) return ForwardingStore::Add(entry);
    ldap::Entry kept = entry;
    kept.attributes.erase("unicodePwd");
    kept.attributes.erase("pwdLastSet");
    return ForwardingStore::Add(kept);
  }
  [[nodiscard]] bool IsSealed() const override {
    return poses_as_sealed_ || ForwardingStore::IsSealed();
  }

 private:
  std::unique_ptr<ldap::IDirectoryStore> store_;
  std::vector<ldap::Entry>& adds_;
  bool poses_as_sealed_;
  std::optional<ldap::StoreStatus> next_failure_;
};

/// The wizard of a kind of objects on the screen, over a directory, with the person in front of it.
class OpenWizard {
 public:
  /// `kind` is the LDAP display name of a class.
  OpenWizard(session::DirectorySession& session, const resources::ResourceFile& module,
             const char* kind, const session::DirectoryObject& container);

  [[nodiscard]] console::QtNewObjectWizard& wizard() const { return *result_.wizard; }
  [[nodiscard]] contract::QtPlayer& user() { return *player_; }
  [[nodiscard]] pelora::testing::FakeChoosers& choosers() { return choosers_; }
  [[nodiscard]] std::ptrdiff_t components() const { return platform_.component_library().users(); }
  [[nodiscard]] bool IsOpen() const { return wizard().isVisible(); }
  /// The dialog of the current page.
  [[nodiscard]] console::QtDialog& dialog() const {
    return *wizard().Dialog(wizard().CurrentPage());
  }

  /// Writes into a field of the console's own page, in place of what stood there.
  void Write(const char* field, const std::string& text);
  [[nodiscard]] std::string Field(const char* field) const;
  void ClickOwn(const char* button);
  [[nodiscard]] std::string Hint() const;
  [[nodiscard]] std::string Summary() const;
  /// What the line below the pages says, and what it offers.
  [[nodiscard]] std::string Said() const;
  [[nodiscard]] std::string Offered() const;
  void TakeOffer() const { wizard().foot().note().act(); }
  /// Until the directory has answered what it was asked beside the window.
  void AwaitAnswers() const;
  /// Names of the objects whose settings were asked for.
  [[nodiscard]] const std::vector<std::string>& asked_for() const { return asked_for_; }

  void Back() { Click(wizard().back()); }
  void Next() { Click(wizard().next()); }
  void Finish() { Click(wizard().finish()); }
  void Destroy() { result_.wizard.reset(); }

 private:
  static void Click(QPushButton& button);

  console::QtMessageBox message_box_;
  pelora::testing::FakeChoosers choosers_;
  console::ConsolePlatform platform_;
  console::WizardResult result_;
  std::unique_ptr<contract::QtPlayer> player_;
  std::vector<std::string> asked_for_;
};

}  // namespace pelora::test
