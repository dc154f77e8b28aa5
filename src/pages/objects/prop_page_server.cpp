// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_server.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

using enum EditedFields::Write;

/// These belong to one server.
constexpr std::array<ControlId, 3> kMultiSelectHideList = {IDC_HOST_ADDRESS_LABEL, IDC_HOST_ADDRESS,
                                                           IDC_CONTAINS_PUBLIC};

constexpr std::array<EditedFields::Field, 6> kFields = {{
    {IDC_PELORA_ACCOUNT, CatalogueEntry("peloraAccount"), kWhenChanged},
    {IDC_HOST_ADDRESS, CatalogueEntry("peloraHostAddress"), kAlways},
    {IDC_HTTP_PORT, CatalogueEntry("peloraHttpPort"), kWhenChanged},
    {IDC_SSL_PORT, CatalogueEntry("peloraSslPort"), kWhenChanged},
    {IDC_FILE_PATH, CatalogueEntry("peloraFilePath"), kWhenChanged},
    {IDC_CONTAINS_PUBLIC, CatalogueEntry("peloraContainsPublic"), kAlways},
}};

/// Fields of which one at least is to be filled, and what is said when none is.
struct Need {
  std::array<ControlId, 2> one_of;
  std::string_view message;
};

constexpr std::array<Need, 3> kNeeds = {{
    {{IDC_HOST_ADDRESS, IDC_HOST_ADDRESS}, "Missing Server Address"},
    {{IDC_HTTP_PORT, IDC_SSL_PORT}, "Missing HTTP/SSL Port"},
    {{IDC_FILE_PATH, IDC_FILE_PATH}, "Missing File Path"},
}};

}  // namespace

CPropPageServer::CPropPageServer(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, kMultiSelectHideList, IDD_PROPPAGE_SERVER, "Pelora"),
      fields_(*this, kFields) {
  RegisterLoad(Handler(&fields_, &EditedFields::Load));
  RegisterCollect(Handler(&fields_, &EditedFields::Collect));
  RegisterValidate(Handler(this, &CPropPageServer::Validate));
  Route(fields_.Commands());
}

HRESULT CPropPageServer::Validate(std::string* message) const {
  for (const Need& need : kNeeds) {
    const auto is_empty = [this](ControlId edit) { return IsFieldEmpty(Dialog(), edit); };
    if (!std::ranges::all_of(need.one_of, is_empty)) continue;
    if (message != nullptr) *message = need.message;
    return E_FAIL;
  }
  return S_OK;
}

}  // namespace pelora
