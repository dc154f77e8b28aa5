// SPDX-License-Identifier: Apache-2.0
#include "features/archiver_dlg.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "directory/select_ad_object.h"
#include "directory/utf.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::size_t kLongestName = 63;

}  // namespace

CArchiverDlg::CArchiverDlg(const Platform& platform, StringSet servers)
    : CModalDialog(platform, IDD_ARCHIVE_SERVERS), servers_(std::move(servers)) {
  using enum ControlNotification;
  Route({
      {IDC_ARCHIVER_NAME, kEditChange, Handler(this, &CArchiverDlg::OnNameEdited)},
      {IDC_ARCHIVER_SEARCH, kClicked, Handler(this, &CArchiverDlg::OnSearch)},
      {IDC_ARCHIVER_ADD, kClicked, Handler(this, &CArchiverDlg::OnAdd)},
      {IDC_ARCHIVER_LIST, kSelectionChange, Handler(this, &CArchiverDlg::OnServerSelected)},
      {IDC_ARCHIVER_REMOVE, kClicked, Handler(this, &CArchiverDlg::OnRemove)},
      {kDialogOk, kClicked, Handler(this, &CArchiverDlg::OnOk)},
      {kDialogCancel, kClicked, Handler(this, &CArchiverDlg::OnCancel)},
  });
}

std::int32_t CArchiverDlg::InitDialog() {
  for (const std::string& server : servers_) ServerList().Add(server);
  return 0;
}

std::int32_t CArchiverDlg::OnNameEdited() {
  Dialog().SetEnabled(IDC_ARCHIVER_ADD, !Dialog().Text(IDC_ARCHIVER_NAME).empty());
  return 0;
}

std::int32_t CArchiverDlg::OnSearch() {
  const SelectADObject chooser(platform());
  std::vector<std::string> names;
  const HRESULT status = chooser.SelectComputers(dialog(), names, SelectionMode::kSingle);
  if (status == S_OK && !names.empty()) Dialog().SetText(IDC_ARCHIVER_NAME, names.front());
  return 0;
}

std::int32_t CArchiverDlg::OnAdd() {
  const std::string name = FirstCharacters(Dialog().Text(IDC_ARCHIVER_NAME), kLongestName);
  if (!name.empty()) ServerList().Add(name);
  Dialog().SetText(IDC_ARCHIVER_NAME, "");
  return 0;
}

std::int32_t CArchiverDlg::OnServerSelected() {
  Dialog().SetEnabled(IDC_ARCHIVER_REMOVE, ServerList().Selection().has_value());
  return 0;
}

std::int32_t CArchiverDlg::OnRemove() {
  const std::optional<RowIndex> row = ServerList().Selection();
  if (!row) return 0;
  const std::string name = ServerList().Text(*row);
  ServerList().Remove(*row);
  Dialog().SetText(IDC_ARCHIVER_NAME, name);
  Dialog().SetEnabled(IDC_ARCHIVER_REMOVE, false);
  return 0;
}

std::int32_t CArchiverDlg::OnOk() {
  servers_.clear();
  for (RowIndex row = 0; row < ServerList().Count(); ++row) servers_.insert(ServerList().Text(row));
  Dialog().End(kDialogOk);
  return 0;
}

std::int32_t CArchiverDlg::OnCancel() {
  Dialog().End(kDialogCancel);
  return 0;
}

IListBox& CArchiverDlg::ServerList() const { return Dialog().ListBox(IDC_ARCHIVER_LIST); }

}  // namespace pelora
