// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/windows/provider/ldap_namespace.h"
#include "tests/windows/support/blank_page.h"
#include "tests/windows/support/extension_module.h"
#include "tests/windows/support/page_collector.h"
#include "tests/windows/support/selection.h"
#include "tests/windows/support/sheet_window.h"

namespace pelora::windows::test {

/// A console as the extension meets it: a directory behind the system's functions, a selection, and
/// a property sheet that shows the pages of the classes it activates by identifier.
///
///     console.directory().AddObject(kAda, {...});
///     console.Select({kAda});
///     ASSERT_EQ(console.AddTab(ClassId("CPropPageUser")), S_OK);
///     ASSERT_TRUE(console.Show());
class Console {
 public:
  Console() = default;
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  [[nodiscard]] pelora::testing::FakeDirectory& directory() { return directory_; }
  [[nodiscard]] pelora::testing::FaultPlan& plan() { return faulty_.plan(); }
  /// One binding by the system's function may be two calls: makes both answer `status`. `nth`
  /// counts bindings from the next one on.
  void FailBinding(std::size_t nth, HRESULT status);

  /// From now on a directory that is bound cannot be asked any more, and says so with `status`;
  /// `S_OK`: it can again.
  void FailReading(HRESULT status) { provider_.AnswerReading(status); }

  /// Selects objects, in order.
  void Select(const std::vector<std::string>& paths);
  [[nodiscard]] Selection& selection() { return *selection_; }

  /// Activates a class, initialises it with the selection, lets it add its pages to the sheet to
  /// come, and releases it, as consoles do. Stops at the first answer that is not `S_OK` and gives
  /// that; the pages are then not shown.
  [[nodiscard]] HRESULT AddTab(REFCLSID class_id);
  /// The same with a component that is activated already and may outlive its pages.
  [[nodiscard]] HRESULT AddTab(::IShellExtInit& init);
  /// Adds a page of nobody's.
  void AddBlankPage() { pages_.push_back(blank_page_.Make()); }
  /// Shows the pages added since, in a sheet of their own. False when there are none.
  [[nodiscard]] bool Show();
  /// A sheet with the tab of one class of the class table.
  [[nodiscard]] bool Open(std::string_view class_name);
  /// Closes the sheet by its Cancel button.
  void Close() { sheet_.reset(); }

  [[nodiscard]] SheetWindow& sheet() { return *sheet_; }
  [[nodiscard]] WindowPlayer User() const { return sheet_->User(); }

  /// The directory's calls since the last time, in order, each in a line as the directory in memory
  /// writes it; paths of the selection by their number in it: `Put <1> peloraHidden 1`.
  [[nodiscard]] std::vector<std::string> TakeCalls();
  /// Of these calls, those that change something: `Put`, `PutEx`, `SetInfo`.
  [[nodiscard]] std::vector<std::string> TakeWrites();

 private:
  [[nodiscard]] std::vector<std::string> Numbered(std::vector<std::string> lines) const;

  pelora::testing::FakeDirectory directory_;
  pelora::testing::FaultDirectory faulty_{directory_};
  LdapNamespace provider_{faulty_};
  BlankPage blank_page_;
  std::vector<std::string> paths_;
  std::optional<Selection> selection_;
  std::vector<HPROPSHEETPAGE> pages_;
  std::optional<SheetWindow> sheet_;
};

}  // namespace pelora::windows::test
