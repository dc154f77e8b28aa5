// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_server.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// These belong to one server.
constexpr std::array<ControlId, 3> kMultiSelectHideList = {IDC_HOST_ADDRESS_LABEL, IDC_HOST_ADDRESS,
                                                           IDC_CONTAINS_PUBLIC};

constexpr std::array kFields = {
    EditedFields::Field{.control = IDC_PELORA_ACCOUNT,
                        .attribute = CatalogueEntry("peloraAccount")},
    EditedFields::Field{.control = IDC_HOST_ADDRESS,
                        .attribute = CatalogueEntry("peloraHostAddress"),
                        .label = IDC_HOST_ADDRESS_LABEL,
                        .write = EditedFields::Write::kAlways,
                        .missing = "Missing Server Address"},
    EditedFields::Field{.control = IDC_HTTP_PORT,
                        .attribute = CatalogueEntry("peloraHttpPort"),
                        .label = IDC_HTTP_PORT_LABEL,
                        .missing = "Missing HTTP/SSL Port",
                        .or_else = IDC_SSL_PORT},
    EditedFields::Field{.control = IDC_SSL_PORT,
                        .attribute = CatalogueEntry("peloraSslPort"),
                        .label = IDC_SSL_PORT_LABEL},
    EditedFields::Field{.control = IDC_FILE_PATH,
                        .attribute = CatalogueEntry("peloraFilePath"),
                        .label = IDC_FILE_PATH_LABEL,
                        .missing = "Missing File Path"},
    EditedFields::Field{.control = IDC_CONTAINS_PUBLIC,
                        .attribute = CatalogueEntry("peloraContainsPublic"),
                        .write = EditedFields::Write::kAlways},
};

}  // namespace

CPropPageServer::CPropPageServer(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, kMultiSelectHideList, IDD_PROPPAGE_SERVER, "Pelora"),
      fields_(*this, kFields) {
  Add(fields_);
}

}  // namespace pelora
