// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/choosers/chooser_headers.h"

namespace pelora::windows::test {

/// What the stand-in's browser is to answer, and what it was given. It lies in the stand-in's
/// memory.
struct BrowserPlan {
  /// Answer and chosen path; of a longer one as much is given as there is room for.
  int answer = IDCANCEL;
  wchar_t path[600] = {};
  /// Fills the room to its last character instead of ending the path in it.
  bool fills_the_room = false;

  int runs = 0;
  /// How the browser was found: by its name ('n') or by its number ('#').
  char found_by = ' ';
  /// The record of the last run, and whether its room for the path was empty.
  DSBROWSEINFOW received = {};
  bool room_was_empty = false;
};

/// What the stand-in exports as `StandInBrowserPlan`.
using GetBrowserPlan = BrowserPlan*(WINAPI*)();

}  // namespace pelora::windows::test
