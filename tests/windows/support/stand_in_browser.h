// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/values/unique_resource.h"
#include "tests/windows/support/browser_plan.h"

namespace pelora::windows::test {

/// How the stand-in's browser can be found.
enum class BrowserExports {
  /// By name; no function has the browser's number.
  kByName,
  kByNumberOnly,
  /// One function has the name, another the number.
  kByBoth,
  kNotAtAll,
};

/// Puts a library of the test's own in the place of the system's directory user-interface library
/// while it lives; afterwards there is none at all. Only for Wine, where the system's folder is one
/// of the test run's own: the constructor throws elsewhere.
class StandInBrowser {
 public:
  explicit StandInBrowser(BrowserExports exports);
  ~StandInBrowser();
  StandInBrowser(const StandInBrowser&) = delete;
  StandInBrowser& operator=(const StandInBrowser&) = delete;

  [[nodiscard]] BrowserPlan& plan() { return *plan_; }
  /// Gives back the test's own hold on the library; `plan` is gone then.
  void LetGo() { library_.Reset(); }

  /// Where the library is put, and where it is built.
  [[nodiscard]] static std::wstring InstalledPath();
  [[nodiscard]] static std::wstring BuiltPath(BrowserExports exports);
  /// Whether a library of that name is loaded.
  [[nodiscard]] static bool IsLoaded();

 private:
  UniqueLibrary library_;
  BrowserPlan* plan_;
};

}  // namespace pelora::windows::test
