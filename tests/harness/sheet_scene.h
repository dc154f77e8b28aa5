// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_property_sheet.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/session/guarded_tabs.h"
#include "tests/harness/field_editor.h"
#include "tests/support/fault_directory.h"

namespace pelora::testing {

/// Objects of a class, in whatever store, under guarded tabs in a sheet in memory, as the console
/// has them, with somebody in front of it who edits every field of every tab.
class SheetScene {
 public:
  /// `store` outlives the scene. The objects need not be there before `Fill`.
  SheetScene(ldap::IDirectoryStore& store, std::string object_class, std::vector<std::string> names,
             EditedValues wanted);
  SheetScene(const SheetScene&) = delete;
  SheetScene& operator=(const SheetScene&) = delete;
  ~SheetScene() { Close(); }

  /// The entries of the objects, with a value for each field, and of the one that choosers give.
  [[nodiscard]] std::vector<ldap::Entry> FirstEntries() const;

  /// Where sheets that are opened from now on are written; outlives the scene. Without one,
  /// failures are boxes.
  void SitAt(session::IWritingDesk& desk) { desk_ = &desk; }
  /// Who has done what takes its time in those sheets, and where it is kept what they wrote; both
  /// outlive the scene.
  void RunErrandsBy(session::IErrands& errands) { errands_ = &errands; }
  void KeepIn(session::ChangeHistory& history) { history_ = &history; }
  /// Which calls of their tabs to the directory fail; while nobody has asked, none does.
  [[nodiscard]] FaultPlan& Faults() {
    if (!faults_) faults_ = std::make_shared<FaultPlan>();
    return *faults_;
  }

  /// Opens a sheet; what is not shown, and why, or empty. As many tabs are in it as let themselves
  /// be opened.
  std::string Open();
  [[nodiscard]] bool IsOpen() const { return sheet_ && sheet_->IsOpen(); }
  [[nodiscard]] std::size_t PageCount() const { return sheet_ ? sheet_->PageCount() : 0; }
  /// Shows every page, one after another.
  void ShowAll();
  /// Edits every field of every page, or of one; how many could be.
  std::size_t Edit();
  std::size_t EditPage(std::size_t page);
  bool Ok() { return sheet_->Ok(); }
  bool Cancel() { return sheet_->Cancel(); }
  void Close();

  /// How many tabs the class has.
  [[nodiscard]] std::size_t tabs() const { return rows_.size(); }
  [[nodiscard]] HeadlessPropertySheet& sheet() { return *sheet_; }
  [[nodiscard]] session::GuardedTabs& guarded() { return *tabs_; }
  [[nodiscard]] HeadlessModalDialogs& dialogs() { return dialogs_; }
  [[nodiscard]] FakeChoosers& choosers() { return choosers_; }
  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
  [[nodiscard]] std::vector<std::string> TakeBoxes();
  [[nodiscard]] bool IsLibraryLeft() const {
    return library_.initialized() != library_.uninitialized();
  }

 private:
  /// What stands between a tab and its directory.
  [[nodiscard]] std::function<std::unique_ptr<IDirectoryService>(IDirectoryService&)> Between();

  struct TabRows {
    DialogId dialog = 0;
    std::vector<FieldRow> rows;
  };

  ldap::IDirectoryStore& store_;
  std::string object_class_;
  std::vector<std::string> names_;
  EditedValues wanted_;
  const resources::ResourceFile& templates_;
  ldap::StoreDirectoryService directory_;
  HeadlessMessageBox messages_;
  HeadlessModalDialogs dialogs_;
  FakeChoosers choosers_;
  HeadlessTextService text_;
  HeadlessComponentLibrary library_;
  Platform platform_;
  FieldEditor editor_;
  std::vector<TabRows> rows_;
  session::IWritingDesk* desk_ = nullptr;
  session::IErrands* errands_ = nullptr;
  session::ChangeHistory* history_ = nullptr;
  std::shared_ptr<FaultPlan> faults_;
  // The tabs outlive the sheet's pages.
  std::unique_ptr<session::GuardedTabs> tabs_;
  std::optional<HeadlessPropertySheet> sheet_;
};

}  // namespace pelora::testing
