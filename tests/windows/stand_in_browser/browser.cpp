// SPDX-License-Identifier: Apache-2.0
// Stands in the place of the system's directory user-interface library. Module-definition files
// beside this one say how its browser is exported.
#include <algorithm>

#include "tests/windows/support/browser_plan.h"

using pelora::windows::test::BrowserPlan;

namespace {

BrowserPlan plan;

int Run(DSBROWSEINFOW* info, char found_by) {
  ++plan.runs;
  plan.found_by = found_by;
  plan.received = *info;
  wchar_t* const end = info->pszPath + info->cchPath;
  plan.room_was_empty = std::all_of(info->pszPath, end, [](wchar_t unit) { return unit == 0; });
  const std::size_t room = plan.fills_the_room ? info->cchPath : info->cchPath - 1;
  const std::size_t length = std::min(wcslen(plan.path), room);
  std::copy_n(plan.path, length, info->pszPath);
  return plan.answer;
}

}  // namespace

extern "C" {

int WINAPI StandInByName(DSBROWSEINFOW* info) { return Run(info, 'n'); }
int WINAPI StandInByNumber(DSBROWSEINFOW* info) { return Run(info, '#'); }
BrowserPlan* WINAPI StandInBrowserPlan() { return &plan; }
}
