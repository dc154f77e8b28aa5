// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_dynamic.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array kFields = {
    EditedFields::Field{.control = IDC_SEARCH_BASE,
                        .attribute = CatalogueEntry("peloraBase"),
                        .label = IDC_SEARCH_BASE_LABEL,
                        .choose = {IDC_SEARCH_BASE_SELECT, &kContainerChooser}},
    EditedFields::Field{.control = IDC_SEARCH_QUERY,
                        .attribute = CatalogueEntry("peloraFilter"),
                        .label = IDC_SEARCH_QUERY_LABEL,
                        .missing = "Missing Search Query"},
};

}  // namespace

CPropPageExtDynamic::CPropPageExtDynamic(CPropPage& page) : EditedFields(page, kFields) {}

}  // namespace pelora
