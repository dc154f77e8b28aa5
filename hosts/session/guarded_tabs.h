// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/page_fields.h"
#include "hosts/session/watched_page.h"
#include "hosts/session/write_failure.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// What the tabs of a sheet work on.
struct TabSurroundings {
  ldap::IDirectoryStore& store;
  /// The ports of the host; the tabs' directory is not the one in it.
  const Platform& platform;
  /// The pages' templates.
  const resources::ResourceFile& templates;
  /// Puts something between a tab and its directory, for somebody who looks on. May be none.
  std::function<std::unique_ptr<IDirectoryService>(IDirectoryService& directory)> between{};
  /// Opens the same directory for use on another thread. May be none: then nothing is looked up
  /// beside the window.
  ldap::StoreOpener open_another{};
};

/// The tabs of one property sheet, each over a recording of its own: what a tab writes is recorded,
/// and sent, guarded, when the sheet says that the tab has applied. What a tab saw when it was
/// loaded is what its writes are bound to. What a page stages of fields that nobody has touched is
/// not sent.
///
/// What was recorded and could not be written stays pending, and goes along with the tab's next
/// apply unless it has been edited again. So a sheet that asks `Commit` after every tab's apply
/// never closes by OK over an edit that is not in the directory.
class GuardedTabs {
 public:
  /// Everything in `surroundings` outlives the object, which outlives the pages.
  explicit GuardedTabs(TabSurroundings surroundings);
  ~GuardedTabs();
  GuardedTabs(const GuardedTabs&) = delete;
  GuardedTabs& operator=(const GuardedTabs&) = delete;

  /// Lets the component of each tab of a selection add its pages: each is initialised with the
  /// selection, and one that refuses stays out. Empty when there is a page at least; else a
  /// sentence that says why there is none. Called once.
  [[nodiscard]] std::string Open(std::span<const DirectoryObject> selection,
                                 const ldap::DisplaySpecifiers& specifiers,
                                 const AddPropSheetPage& add_page);

  /// Writes what the tab of a page (from 0, in the order in which pages were taken), which has just
  /// applied, has recorded, object by object. The first that cannot be written ends it and is shown
  /// in a box; objects before it are written. Whether nothing is left to be written. For
  /// `SheetMachine::commit`.
  [[nodiscard]] bool Commit(std::size_t page);

  /// The fields of a page.
  [[nodiscard]] PageFields& Fields(std::size_t page);

  /// Told whenever something on a page may have been changed, by a person or by the page; and when
  /// it has been filled or written. May be none.
  std::function<void(std::size_t page)> on_edited;

 private:
  struct Tab;

  /// Takes down what the page's fields are called, and has them watched.
  void Learn(Tab& tab, IUnknown& component, DialogId dialog) const;
  [[nodiscard]] HRESULT AddTab(const Guid& class_id, IDataObject& selection,
                               const AddPropSheetPage& add_page);
  [[nodiscard]] PageWatch WatchOf(Tab& tab, std::size_t page);
  void TellEdited(std::size_t page);

  TabSurroundings surroundings_;
  std::vector<DirectoryObject> selection_;
  std::vector<std::unique_ptr<Tab>> tabs_;
  /// The tab of each page.
  std::vector<Tab*> pages_;
};

}  // namespace pelora::session
