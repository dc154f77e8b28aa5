// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_pages.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

// Fields that several pages have.
constexpr WizardField kHidden = {.control = IDC_PELORA_HIDDEN,
                                 .attribute = CatalogueEntry("peloraHidden")};
constexpr WizardField kAddress = {.control = IDC_NEW_ADDRESS,
                                  .attribute = CatalogueEntry("mail"),
                                  .label = IDC_NEW_ADDRESS_LABEL};
constexpr WizardField kSearchBase = {.control = IDC_SEARCH_BASE,
                                     .attribute = CatalogueEntry("peloraBase"),
                                     .label = IDC_SEARCH_BASE_LABEL,
                                     .choose = {IDC_SEARCH_BASE_SELECT, &kContainerChooser},
                                     .stays_disabled = true};
constexpr WizardField kSearchQuery = {.control = IDC_SEARCH_QUERY,
                                      .attribute = CatalogueEntry("peloraFilter"),
                                      .label = IDC_SEARCH_QUERY_LABEL,
                                      .missing = "Missing Search Query"};

// Fields in the order in which they are written.
constexpr std::array kContactFields = {kHidden, WizardField{.control = IDC_NEW_ADDRESS,
                                                            .attribute = CatalogueEntry("mail"),
                                                            .label = IDC_NEW_ADDRESS_LABEL,
                                                            .missing = "Missing Email Address"}};
constexpr std::array kDistlistFields = {kHidden, kAddress};
constexpr std::array kCompanyFields = {
    kHidden,
    WizardField{.control = IDC_SYSTEM_ADMIN,
                .attribute = CatalogueEntry("peloraSystemAdmin"),
                .label = IDC_SYSTEM_ADMIN_LABEL,
                .choose = {IDC_SYSTEM_ADMIN_SELECT, &kUserChooser}},
    WizardField{.control = IDC_SERVER,
                .attribute = CatalogueEntry("peloraCompanyServer"),
                .label = IDC_SERVER_LABEL,
                .choose = {IDC_SERVER_SELECT, &kComputerChooser}},
};
constexpr std::array kServerFields = {
    WizardField{.control = IDC_HOST_ADDRESS,
                .attribute = CatalogueEntry("peloraHostAddress"),
                .label = IDC_HOST_ADDRESS_LABEL,
                .missing = "Missing Server Address"},
    WizardField{.control = IDC_HTTP_PORT,
                .attribute = CatalogueEntry("peloraHttpPort"),
                .label = IDC_HTTP_PORT_LABEL,
                .default_text = "236",
                .missing = "Missing HTTP/SSL Port",
                .or_else = IDC_SSL_PORT},
    WizardField{.control = IDC_SSL_PORT,
                .attribute = CatalogueEntry("peloraSslPort"),
                .label = IDC_SSL_PORT_LABEL,
                .default_text = "237"},
    WizardField{.control = IDC_FILE_PATH,
                .attribute = CatalogueEntry("peloraFilePath"),
                .label = IDC_FILE_PATH_LABEL,
                .default_text = "/var/run/pelora",
                .missing = "Missing File Path"},
    WizardField{.control = IDC_CONTAINS_PUBLIC,
                .attribute = CatalogueEntry("peloraContainsPublic")},
};
constexpr std::array kAddresslistFields = {kHidden, kSearchBase, kSearchQuery};
constexpr std::array kDynamicDistlistFields = {kHidden, kAddress, kSearchBase, kSearchQuery};

/// The server goes before the system administrator here.
constexpr std::array<ControlId, 4> kCompanyControls = {IDC_PELORA_HIDDEN, IDC_SERVER_LABEL,
                                                       IDC_SERVER, IDC_SERVER_SELECT};

}  // namespace

constexpr WizardPageTraits kNewContactPage = {.dialog_template = IDD_WIZARD_EXT_CONTACT,
                                              .title = "New object: contact",
                                              .fields = kContactFields};
constexpr WizardPageTraits kNewDistlistPage = {.dialog_template = IDD_WIZARD_EXT_DISTLIST,
                                               .title = "New object: distlist",
                                               .fields = kDistlistFields};
constexpr WizardPageTraits kNewCompanyPage = {.dialog_template = IDD_WIZARD_EXT_COMPANY,
                                              .title = "New object: Organizational Unit",
                                              .object_interface = IID_IADsOU,
                                              .enabled_controls = kCompanyControls,
                                              .fields = kCompanyFields};
constexpr WizardPageTraits kNewServerPage = {.dialog_template = IDD_WIZARD_EXT_SERVER,
                                             .title = "New object: Computer",
                                             .fields = kServerFields};
constexpr WizardPageTraits kNewAddresslistPage = {.dialog_template = IDD_WIZARD_EXT_ADDRESSLIST,
                                                  .title = "New object: peloraAddresslist",
                                                  .fields = kAddresslistFields};
constexpr WizardPageTraits kNewDynamicDistlistPage = {
    .dialog_template = IDD_WIZARD_EXT_DYNAMIC_DISTLIST,
    .title = "New object: dynamic distlist",
    .fields = kDynamicDistlistFields};
constexpr WizardPageTraits kAddresslistNamePage = {.dialog_template = IDD_WIZARD_ADDRESSLIST,
                                                   .title = "New object: peloraAddresslist"};
constexpr WizardPageTraits kDynamicDistlistNamePage = {
    .dialog_template = IDD_WIZARD_DYNAMIC_DISTLIST, .title = "New object: dynamic distlist"};

}  // namespace pelora
