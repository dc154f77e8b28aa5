// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/find/view.h"

namespace pelora::session {

// Views in a file that can be given to others: JSON,
//
//   {"format": "pelora-views", "version": 1,
//    "views": [{"name": "Sales", "base": "OU=Sales,DC=example,DC=org", "below": true,
//               "filter": "(peloraAccount=1)", "columns": ["name", "mail"]}]}
//
// in which base, below, filter, rule and columns may be missing.

/// Views, or one sentence that says why a text holds none.
struct ReadViews {
  std::vector<View> views;
  std::string error;
};

/// Reads the text of a file. It may come from anybody: more than a megabyte, 500 views, 100
/// columns, a name of more than 200 characters, a base or filter of more than 10,000, a filter that
/// is none, an unknown rule, control characters in a name, and two views of one name are refused,
/// and nothing is read then. Members that are not known are passed over.
[[nodiscard]] ReadViews ViewsOfText(std::string_view text);

/// The text of a file with these views.
[[nodiscard]] std::string TextOfViews(const std::vector<View>& views);

/// Reads a file of at most a megabyte.
[[nodiscard]] ReadViews LoadViews(const std::string& path);
/// Writes a file, whole or not at all. A sentence when it cannot be written; empty otherwise.
[[nodiscard]] std::string SaveViews(const std::string& path, const std::vector<View>& views);

}  // namespace pelora::session
