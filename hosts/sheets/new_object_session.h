// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/sheets/wizard_site.h"
#include "platform/new_object_wizard.h"

namespace pelora::sheets {

/// Whether an extension makes the object (its wizard has no page of the host's own) or adds to it.
enum class WizardRole : std::uint8_t { kPrimary, kSecondary };

/// What a wizard makes, and where.
struct NewObjectSetup {
  /// LDAP display name of the class.
  std::string class_name;
  Ref<IADs> container;
  NewObjectDisplayInfo display_info;
  /// Pages of the host's own, which stand before those of the extensions.
  std::size_t own_pages = 0;
  /// Makes the temporary object: of the class, under a name, not in the directory before its
  /// `SetInfo`. On failure `object` is empty.
  std::function<HRESULT(const std::string& name, Ref<IADs>& object)> make_object;
  /// Stages what the host's own pages say on the temporary object. May be none; not asked where a
  /// primary extension makes the object.
  std::function<HRESULT(IADs& object)> write_own;
};

/// What became of a creation.
struct CreationResult {
  HRESULT status = S_OK;
  /// A failure has been shown to the administrator by an extension.
  bool is_shown = false;
};

/// The console's side of a new-object wizard: it calls the extensions in their order, holds the
/// temporary object, and brings it into the directory by one request. Windows are the host's.
///
/// Nothing is in the directory before `Commit` has succeeded, and after a failed one nothing is
/// either: the temporary object is made anew, so that the wizard may go on with what was typed.
///
/// An extension's page keeps the extension alive. The host ends the session first, which gives up
/// its own references, and destroys the pages after it.
class NewObjectSession final : private IWizardSiteOwner {
 public:
  explicit NewObjectSession(NewObjectSetup setup) : setup_(std::move(setup)) {}
  NewObjectSession(const NewObjectSession&) = delete;
  NewObjectSession& operator=(const NewObjectSession&) = delete;
  /// Takes the temporary object from the extensions, then lets go of them.
  ~NewObjectSession();

  /// Initialises an extension and takes its pages. A primary one comes before the others. Any other
  /// answer than `S_OK` leaves the extension out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role,
                                     const AddPropSheetPage& take_page);
  /// Of the host's own and of the extensions, without the summary.
  [[nodiscard]] std::size_t PageCount() const;
  [[nodiscard]] bool HasPrimary() const;

  /// Is told when an extension wants the button enabled or disabled while page `page` (from 0, the
  /// host's own among them) shows.
  std::function<void(std::size_t page, bool valid)> on_buttons;

  /// The host's own pages have been left: makes the temporary object under `name` and hands it to
  /// the extensions, unless it has that name already.
  [[nodiscard]] HRESULT PrepareObject(const std::string& name);
  /// What the extensions say of the new object, in their order; those with nothing to say are left
  /// out.
  [[nodiscard]] std::vector<std::string> Summaries() const;
  /// Lets everyone write into the temporary object and commits it. `owner` is the window for boxes.
  ///
  /// A failure is told to the primary extension, or else to the first one, which may show it. One
  /// after the commit (of the extensions' own work on the object that is there) is told as well but
  /// is none of the creation.
  [[nodiscard]] CreationResult Commit(IDialog* owner);

 private:
  struct Extension {
    Ref<IDsAdminNewObjExt> extension;
    Ref<WizardSite> site;
    WizardRole role = WizardRole::kSecondary;
    std::size_t first_page = 0;
    std::size_t page_count = 0;
  };

  void SetButtons(std::size_t extension, std::uint32_t page_index, bool valid) override;
  void GetPageCounts(std::size_t extension, std::int32_t& total,
                     std::int32_t& start_index) override;
  [[nodiscard]] HRESULT CreateNew(const std::string& name) override;

  [[nodiscard]] HRESULT MakeObject(const std::string& name);
  [[nodiscard]] HRESULT WriteBeforeCommit(IDialog* owner);
  /// The first failure among the extensions' answers; all of them are asked.
  HRESULT WritePhase(IDialog* owner, NewObjectPhase phase);
  void HandObjectOut();
  void StartAnew(IDialog* owner);
  [[nodiscard]] CreationResult Fail(IDialog* owner, HRESULT status, NewObjectPhase phase);

  NewObjectSetup setup_;
  std::vector<Extension> extensions_;
  Ref<IADs> object_;
  std::string name_;
  /// What the last attempt to make the object ended with.
  HRESULT made_ = S_OK;
};

}  // namespace pelora::sheets
