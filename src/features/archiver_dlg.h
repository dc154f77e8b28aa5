// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "directory/string_set.h"
#include "pages/modal_dialog.h"

namespace pelora {

/// The dialog in which a list of archive servers is edited: names are typed or searched for, added
/// and taken out again. A name is any text of at most 63 characters; whether there is such a server
/// is not asked.
class CArchiverDlg final : public CModalDialog {
 public:
  /// `servers` is what the list holds at first.
  CArchiverDlg(const Platform& platform, StringSet servers);

  /// The servers given, until the dialog was closed with OK; then those in the list, each once.
  [[nodiscard]] const StringSet& servers() const { return servers_; }

 private:
  std::int32_t InitDialog() override;
  std::int32_t OnNameEdited();
  std::int32_t OnSearch();
  std::int32_t OnAdd();
  std::int32_t OnServerSelected();
  std::int32_t OnRemove();
  std::int32_t OnOk();
  std::int32_t OnCancel();

  [[nodiscard]] IListBox& ServerList() const;

  StringSet servers_;
};

}  // namespace pelora
