// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_server.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array<ControlId, 9> kEnabledControls = {
    IDC_HOST_ADDRESS_LABEL, IDC_HOST_ADDRESS,   IDC_HTTP_PORT_LABEL,
    IDC_HTTP_PORT,          IDC_SSL_PORT_LABEL, IDC_SSL_PORT,
    IDC_FILE_PATH_LABEL,    IDC_FILE_PATH,      IDC_CONTAINS_PUBLIC};

constexpr const Attribute& kAddress = CatalogueEntry("peloraHostAddress");
constexpr const Attribute& kHttpPort = CatalogueEntry("peloraHttpPort");
constexpr const Attribute& kSslPort = CatalogueEntry("peloraSslPort");
constexpr const Attribute& kFilePath = CatalogueEntry("peloraFilePath");
constexpr const Attribute& kContainsPublic = CatalogueEntry("peloraContainsPublic");

}  // namespace

CWizardExtServer::CWizardExtServer(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_SERVER,
                             .title = "New object: Computer",
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterLoad(Handler(this, &CWizardExtServer::Load));
  RegisterCollect(Handler(this, &CWizardExtServer::Collect));
  RegisterValidate(Handler(this, &CWizardExtServer::Validate));
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtServer::OnCreateClicked)},
      {IDC_HOST_ADDRESS, kEditChange, Handler(this, &CWizardExtServer::Revalidate)},
      {IDC_HTTP_PORT, kEditChange, Handler(this, &CWizardExtServer::Revalidate)},
      {IDC_SSL_PORT, kEditChange, Handler(this, &CWizardExtServer::Revalidate)},
      {IDC_FILE_PATH, kEditChange, Handler(this, &CWizardExtServer::Revalidate)},
  });
}

HRESULT CWizardExtServer::Load(const BoundObjects& /*objects*/) {
  Dialog().SetText(IDC_HTTP_PORT, "236");
  Dialog().SetText(IDC_SSL_PORT, "237");
  Dialog().SetText(IDC_FILE_PATH, "/var/run/pelora");
  return S_OK;
}

HRESULT CWizardExtServer::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kAddress, Dialog().Text(IDC_HOST_ADDRESS)));
  changes.push_back(MakeNewObjectChange(kHttpPort, Dialog().Text(IDC_HTTP_PORT)));
  changes.push_back(MakeNewObjectChange(kSslPort, Dialog().Text(IDC_SSL_PORT)));
  changes.push_back(MakeNewObjectChange(kFilePath, Dialog().Text(IDC_FILE_PATH)));
  changes.push_back(MakeNewObjectChange(kContainsPublic, FlagOf(IDC_CONTAINS_PUBLIC)));
  return S_OK;
}

HRESULT CWizardExtServer::Validate(std::string* message) {
  HRESULT status = RequireText(IDC_HOST_ADDRESS, "Missing Server Address", message);
  // One port alone is enough.
  if (SUCCEEDED(status) && IsFieldEmpty(Dialog(), IDC_HTTP_PORT)) {
    status = RequireText(IDC_SSL_PORT, "Missing HTTP/SSL Port", message);
  }
  if (SUCCEEDED(status)) status = RequireText(IDC_FILE_PATH, "Missing File Path", message);
  return status;
}

}  // namespace pelora
