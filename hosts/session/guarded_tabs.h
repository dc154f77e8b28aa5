// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/change_history.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/errands.h"
#include "hosts/session/field_book.h"
#include "hosts/session/field_rights.h"
#include "hosts/session/find_names.h"
#include "hosts/session/own_pages/own_field.h"
#include "hosts/session/page_fields.h"
#include "hosts/session/password/reset_password.h"
#include "hosts/session/watched_page.h"
#include "hosts/session/writing_desk.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

class SheetCommit;

/// What the tabs of a sheet work on.
struct TabSurroundings {
  ldap::IDirectoryStore& store;
  /// The ports of the host; the tabs' directory is not the one in it.
  const Platform& platform;
  /// The pages' templates.
  const resources::ResourceFile& templates;
  /// Puts something between a tab and its directory, for somebody who looks on. May be none.
  std::function<std::unique_ptr<IDirectoryService>(IDirectoryService& directory)> between{};
  /// Who has done what takes its time. Null: it is done at once.
  IErrands* errands = nullptr;
  /// Where the person is asked and told around the writing. Null: failures are shown in the
  /// platform's boxes.
  IWritingDesk* desk = nullptr;
  /// Where it is kept what was written, to be taken back. Null: nowhere.
  ChangeHistory* history = nullptr;
  /// Opens the same directory for use on another thread. May be none: then nothing is looked up
  /// beside the window.
  ldap::StoreOpener open_another{};
  /// Finds the domains around the directory's own, in which pasted names are looked for, too. May
  /// be none.
  ldap::PlaceFinder find_places{};
  /// Whether pages of our own stand behind the extension's: see `OwnPagesOf`. `templates` has
  /// theirs then.
  bool has_own_pages = false;
  /// Gives a user another password from one of these pages. May be none: then none can be given.
  GivePassword give_password{};
  /// Finds objects by pasted names for these pages. May be none.
  NameFinder find_names{};
  /// Sees to it that a control of a page cannot be used, whatever the page says, and tells why. May
  /// be none: the directory refuses what one has no right to.
  std::function<void(IDialog& dialog, ControlId control, const std::string& why)> protect{};
};

/// How the opening of a sheet's tabs went.
struct TabsOpening {
  /// Why there is no page, as a sentence; empty when there is one at least.
  std::string reason{};
  /// What is not shown all the same, and why, in a sentence; empty when nothing is missing.
  std::string missing{};
  /// The person in front of it has stopped it, and need not be told.
  bool is_stopped = false;
};

/// The tabs of one property sheet, each over a recording of its own: what a tab writes is recorded,
/// and sent, guarded, when the sheet says that all tabs have applied; of an object, what all of
/// them wrote in one request. What a tab saw when it was loaded is what its writes are bound to.
/// What a page stages of fields that nobody has touched is not sent.
///
/// The objects are read once, before the tabs open, and again when something of them was written.
///
/// What was recorded and could not be written stays pending, and goes along with the tab's next
/// apply unless it has been edited again. So a sheet that asks `Commit` after every round of
/// applies never closes by OK over an edit that is not in the directory.
class GuardedTabs {
 public:
  /// Everything in `surroundings` outlives the object, which outlives the pages.
  explicit GuardedTabs(TabSurroundings surroundings);
  ~GuardedTabs();
  GuardedTabs(const GuardedTabs&) = delete;
  GuardedTabs& operator=(const GuardedTabs&) = delete;

  /// Reads the objects of a selection and lets the component of each of its tabs add its pages:
  /// each is initialised with the selection, and one that refuses stays out. Objects that cannot be
  /// read have no page. Called once.
  [[nodiscard]] TabsOpening Open(std::span<const DirectoryObject> selection,
                                 const ldap::DisplaySpecifiers& specifiers,
                                 const AddPropSheetPage& add_page);

  /// Writes what the tabs have recorded: see `SheetCommit`. Nothing when nothing is left to be
  /// written; otherwise a page (from 0, in the order in which pages were taken) of which something
  /// is. For `SheetMachine::commit`.
  [[nodiscard]] std::optional<std::size_t> Commit();
  /// Whether the pages show something that is not in the directory, and is not to be written:
  /// somebody else's value was kept. The sheet is to be opened anew when nothing is left in it.
  [[nodiscard]] bool is_outdated() const { return is_outdated_; }

  /// The fields of a page.
  [[nodiscard]] PageFields& Fields(std::size_t page);

  /// Told whenever something on a page may have been changed, by a person or by the page; and when
  /// it has been filled or written. May be none.
  std::function<void(std::size_t page)> on_edited;

 private:
  struct Tab;
  struct Known;

  [[nodiscard]] IErrands& errands() {
    return surroundings_.errands != nullptr ? *surroundings_.errands : at_once_;
  }
  /// The objects, with what every page shows of them.
  [[nodiscard]] ldap::StoreStatus Read(std::span<const DirectoryObject> selection,
                                       std::span<const OwnPageKind* const> own_pages);
  /// Takes down what the page's fields are called, and has them watched.
  void Learn(Tab& tab, std::vector<FieldRow> fields, DialogId dialog);
  /// A tab whose bindings read these attributes.
  [[nodiscard]] Tab& MakeTab(std::vector<std::string> attributes);
  [[nodiscard]] bool AddPage(Tab& tab, std::unique_ptr<PropSheetPage> page,
                             const AddPropSheetPage& add_page);
  void AddOwnPage(const OwnPageKind& kind, const AddPropSheetPage& add_page);
  void AddFieldPage(Tab& tab, const OwnPageKind& kind, std::vector<std::string> names,
                    const AddPropSheetPage& add_page);
  void AddMembersPage(Tab& tab, const OwnPageKind& kind, std::vector<std::string> names,
                      const AddPropSheetPage& add_page);
  [[nodiscard]] HRESULT AddTab(const Guid& class_id, IDataObject& selection,
                               const AddPropSheetPage& add_page);
  [[nodiscard]] std::string NameOf(const std::string& dn) const;
  [[nodiscard]] PageWatch WatchOf(Tab& tab, std::size_t page);
  void TellEdited(std::size_t page);
  /// Gathers what the objects have in the fields of a page.
  void Gather(PageFields& fields);
  /// Protects the fields of a page that the user has no right to change, and those of our own that
  /// the directory does not know.
  void Protect(const PageFields& fields);
  [[nodiscard]] std::string WhyReadOnly(const PageFields& fields, const FieldRow& row) const;
  /// Everything is written of the tabs of which nothing is recorded any more.
  void SettleWritten(const SheetCommit& commit);

  TabSurroundings surroundings_;
  ErrandsAtOnce at_once_;
  std::vector<DirectoryObject> selection_;
  /// As they were read, in the order of the selection; the tabs share them.
  std::vector<std::shared_ptr<const ldap::Entry>> entries_;
  /// What the objects are called, by `ldap::FoldCase` of their names.
  std::map<std::string, std::string> names_;
  FieldRights rights_;
  FieldBook book_;
  bool is_outdated_ = false;
  std::vector<std::unique_ptr<Tab>> tabs_;
  /// The tab of each page.
  std::vector<Tab*> pages_;
};

}  // namespace pelora::session
