// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/windows/extension/extension_module.h"
#include "tests/windows/provider/ldap_namespace.h"
#include "tests/windows/support/selection.h"
#include "tests/windows/support/sheet_window.h"

namespace pelora::windows::test {

/// Pages that a component handed over, not in a sheet yet. Those that are not taken are destroyed.
class PageCollector {
 public:
  PageCollector() = default;
  ~PageCollector();
  PageCollector(const PageCollector&) = delete;
  PageCollector& operator=(const PageCollector&) = delete;

  /// Refuses the pages from now on.
  void Refuse() { refuses_ = true; }
  /// For `AddPages`.
  [[nodiscard]] LPFNADDPROPSHEETPAGE function() const { return &Add; }
  [[nodiscard]] LPARAM parameter() const { return reinterpret_cast<LPARAM>(this); }

  /// Pages offered so far.
  [[nodiscard]] std::size_t offered() const { return offered_; }
  [[nodiscard]] const std::vector<HPROPSHEETPAGE>& pages() const { return pages_; }
  /// Gives the pages away.
  [[nodiscard]] std::vector<HPROPSHEETPAGE> Take();

 private:
  static BOOL CALLBACK Add(HPROPSHEETPAGE page, LPARAM collector);

  bool refuses_ = false;
  std::size_t offered_ = 0;
  std::vector<HPROPSHEETPAGE> pages_;
};

/// A console as the extension meets it: a directory behind the system's functions, a selection, and
/// a property sheet that shows the pages of the classes it activates by identifier.
class Console {
 public:
  Console() = default;
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  [[nodiscard]] pelora::testing::FakeDirectory& directory() { return directory_; }
  [[nodiscard]] pelora::testing::FaultPlan& plan() { return faulty_.plan(); }
  /// One binding by the system's function may be two calls: makes both answer `status`. `nth`
  /// counts bindings from the next one on.
  void FailBinding(std::size_t nth, HRESULT status);

  /// Selects objects, in order.
  void Select(const std::vector<std::string>& paths) { selection_.emplace(paths); }
  [[nodiscard]] Selection& selection() { return *selection_; }

  /// Activates a class, initialises it with the selection, lets it add its pages and releases it,
  /// as consoles do; then shows the sheet. False when any step is refused.
  [[nodiscard]] bool Open(std::string_view class_name);
  /// Closes the sheet by its Cancel button.
  void Close() { sheet_.reset(); }

  [[nodiscard]] SheetWindow& sheet() { return *sheet_; }
  [[nodiscard]] WindowPlayer User() const { return sheet_->User(); }

 private:
  pelora::testing::FakeDirectory directory_;
  pelora::testing::FaultDirectory faulty_{directory_};
  LdapNamespace provider_{faulty_};
  std::optional<Selection> selection_;
  std::optional<SheetWindow> sheet_;
};

}  // namespace pelora::windows::test
