// SPDX-License-Identifier: Apache-2.0
#include "features/archiver_feature_props.h"

#include <utility>

#include "directory/attribute_catalogue.h"
#include "features/archiver_dlg.h"

namespace pelora {
namespace {

constexpr const Attribute& kArchiveServers = CatalogueEntry("peloraUserArchiveServers");

}  // namespace

HRESULT ArchiverFeatureProps::Load(const BoundObjects& objects) {
  bool is_first = true;
  for (const Ref<IADs>& object : objects) {
    StringSet servers;
    const HRESULT status = ReadStringSet(*object, kArchiveServers.name, servers);
    if (FAILED(status)) return status;
    if (std::exchange(is_first, false)) {
      servers_ = std::move(servers);
    } else if (servers != servers_) {
      servers_.clear();
      ambiguous_ = true;
      break;
    }
  }
  return S_OK;
}

HRESULT ArchiverFeatureProps::Edit() {
  if (ambiguous_ && !MayReplace()) return S_OK;
  CArchiverDlg dialog(platform_, servers_);
  const std::int32_t result = dialog.Show(nullptr);
  if (result != kDialogOk) return result == kDialogCancel ? S_OK : E_FAIL;
  if (dialog.servers() == servers_) return S_OK;
  modified_ = true;
  ambiguous_ = false;
  servers_ = dialog.servers();
  return S_OK;
}

HRESULT ArchiverFeatureProps::Save(const BoundObjects& objects) {
  for (const Ref<IADs>& object : objects) {
    const HRESULT status = WriteStringSet(*object, kArchiveServers.name, servers_);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

const std::string& ArchiverFeatureProps::StatusText() {
  status_text_ = ServerText();
  return status_text_;
}

std::function<void()> ArchiverFeatureProps::TakeDown() {
  return [this, servers = servers_, ambiguous = ambiguous_, modified = modified_] {
    servers_ = servers;
    ambiguous_ = ambiguous;
    modified_ = modified;
  };
}

bool ArchiverFeatureProps::MayReplace() const {
  const Message question = {
      .text = "This will clear the settings for all selected objects. Do you wish to continue?",
      .caption = "Warning",
      .buttons = MessageButtons::kYesNo};
  return platform_.message_box.Show(nullptr, question) == kDialogYes;
}

std::string ArchiverFeatureProps::ServerText() const {
  if (ambiguous_) return "Ambiguous";
  if (servers_.empty()) return "Disabled";
  std::string text = servers_.size() == 1 ? "Enabled on server '" : "Enabled on servers '";
  bool is_first = true;
  for (const std::string& server : servers_) {
    if (!std::exchange(is_first, false)) text += "', '";
    text += server;
  }
  return text + "'";
}

}  // namespace pelora
