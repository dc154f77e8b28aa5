// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_user.h"
#include "hosts/new_object/new_object_session.h"
#include "hosts/resources/resource_file.h"

namespace pelora {

/// A new-object wizard in memory, from the first page to the last: the host's own page, which asks
/// for the name (unless a primary extension does), the extensions' pages, and the summary.
///
/// An extension's dialog is made when its page is first shown and lives as long as the wizard.
class HeadlessNewObjectWizard {
 public:
  /// `templates` outlives the wizard. Of `setup` the number of own pages is decided here: one, or
  /// none with a primary extension.
  HeadlessNewObjectWizard(const resources::ResourceFile& templates, NewObjectSetup setup,
                          WizardRole first_extension);
  HeadlessNewObjectWizard(const HeadlessNewObjectWizard&) = delete;
  HeadlessNewObjectWizard& operator=(const HeadlessNewObjectWizard&) = delete;
  /// Closes the wizard; nothing is made.
  ~HeadlessNewObjectWizard() { Close(); }

  /// Takes an extension with its pages, before the wizard is shown; the first one in the role given
  /// to the constructor. Any other answer than `S_OK` leaves it out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension);

  void Show();
  [[nodiscard]] bool IsOpen() const { return open_; }
  /// Pages of all kinds, the summary (the last one) among them.
  [[nodiscard]] std::size_t PageCount() const { return pages_.size() + OwnPages() + 1; }
  [[nodiscard]] std::size_t CurrentPage() const { return current_; }
  [[nodiscard]] bool IsSummary() const { return current_ + 1 == PageCount(); }
  /// Title of an extension's page; empty for the host's own.
  [[nodiscard]] std::string Title(std::size_t page);
  /// The dialog of an extension's page; null while it has not been shown, and for the host's own.
  [[nodiscard]] HeadlessDialog* Dialog(std::size_t page);
  /// The person in front of the current page, which is an extension's.
  [[nodiscard]] HeadlessUser User() { return HeadlessUser(*Dialog(current_)); }

  /// Types the name on the host's own page, in place of what stood there.
  void TypeName(const std::string& name);
  [[nodiscard]] bool IsNextEnabled() const { return open_ && next_enabled_ && !IsSummary(); }
  /// Each clicks a button: false when it is disabled or the page may not be left.
  bool Next();
  bool Back();
  /// On the summary only. The wizard closes when the object has been made; otherwise it stays open
  /// with everything that was typed.
  bool Finish();
  /// Closes the wizard, unless the page prevents it; nothing is made.
  bool Cancel();

  /// What the summary shows: one text per extension.
  [[nodiscard]] const std::vector<std::string>& summaries() const { return summaries_; }
  /// What became of the last Finish.
  [[nodiscard]] const std::optional<CreationResult>& result() const { return result_; }
  /// Gone once the wizard is closed.
  [[nodiscard]] NewObjectSession* session() { return session_.get(); }

 private:
  struct Page {
    std::unique_ptr<PropSheetPage> page;
    resources::DialogTemplate described;
    std::unique_ptr<HeadlessDialog> dialog;
  };

  [[nodiscard]] std::size_t OwnPages() const { return own_pages_; }
  /// Null for a page of the host's own.
  [[nodiscard]] Page* ExtensionPage(std::size_t page);
  bool TakePage(std::unique_ptr<PropSheetPage> page);
  /// Whether the current page may be left in this way.
  [[nodiscard]] bool Leave(PageNotification way);
  void Activate(std::size_t page);
  [[nodiscard]] IDialog* Owner();
  void Close();

  const resources::ResourceFile& templates_;
  WizardRole first_extension_;
  std::size_t own_pages_;
  // The pages go after the session, which holds on to their extensions.
  std::vector<Page> pages_;
  std::unique_ptr<NewObjectSession> session_;
  std::string name_;
  std::vector<std::string> summaries_;
  std::optional<CreationResult> result_;
  std::size_t current_ = 0;
  bool open_ = false;
  bool was_shown_ = false;
  bool next_enabled_ = false;
};

}  // namespace pelora
