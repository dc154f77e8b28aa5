// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_pages_view.h"
#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "hosts/sheets/wizard_machine.h"

namespace pelora {

/// A new-object wizard in memory, from the first page to the last: a wizard machine with dialogs in
/// memory, and the host's own first page, which asks for the name and nothing else.
class HeadlessNewObjectWizard {
 public:
  /// `templates` outlives the wizard. Of `setup` the number of own pages is decided here: one, or
  /// none with a primary extension.
  HeadlessNewObjectWizard(const resources::ResourceFile& templates, sheets::NewObjectSetup setup,
                          sheets::WizardRole first_extension);
  HeadlessNewObjectWizard(const HeadlessNewObjectWizard&) = delete;
  HeadlessNewObjectWizard& operator=(const HeadlessNewObjectWizard&) = delete;
  /// Closes the wizard; nothing is made.
  ~HeadlessNewObjectWizard() { Close(); }

  /// Takes an extension with its pages, before the wizard is shown; the first one in the role given
  /// to the constructor. Any other answer than `S_OK` leaves it out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension);

  void Show();
  [[nodiscard]] bool IsOpen() const { return machine_.IsOpen(); }
  /// Pages of all kinds, the summary (the last one) among them.
  [[nodiscard]] std::size_t PageCount() const { return machine_.pages().Count(); }
  [[nodiscard]] std::size_t CurrentPage() const { return machine_.pages().Current(); }
  [[nodiscard]] bool IsSummary() const { return machine_.IsSummary(); }
  /// Title of an extension's page; empty for the host's own.
  [[nodiscard]] std::string Title(std::size_t page) const { return machine_.pages().Title(page); }
  /// The dialog of an extension's page; null while it has not been shown, and for the host's own.
  [[nodiscard]] HeadlessDialog* Dialog(std::size_t page) { return view_.Dialog(page); }
  /// The person in front of the current page, which is an extension's.
  [[nodiscard]] HeadlessUser User() { return HeadlessUser(*Dialog(CurrentPage())); }

  /// Types the name on the host's own page, in place of what stood there.
  void TypeName(const std::string& name);
  [[nodiscard]] bool IsNextEnabled() const { return machine_.IsNextEnabled(); }
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
  [[nodiscard]] const std::optional<sheets::CreationResult>& result() const {
    return machine_.result();
  }

 private:
  void TakeSummaries();
  void Close();

  sheets::WizardRole first_extension_;
  // The dialogs go before the pages.
  HeadlessPagesView view_;
  sheets::WizardMachine machine_;
  std::string name_;
  std::vector<std::string> summaries_;
};

}  // namespace pelora
