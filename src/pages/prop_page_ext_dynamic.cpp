// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_dynamic.h"

#include <array>

#include "directory/select_ad_object.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array kFields = {
    EditedFields::Field{IDC_SEARCH_BASE, CatalogueEntry("peloraBase")},
    EditedFields::Field{IDC_SEARCH_QUERY, CatalogueEntry("peloraFilter")},
};

}  // namespace

CPropPageExtDynamic::CPropPageExtDynamic(CPropPage& page, const Platform& platform)
    : CPropPageExt(page), platform_(platform), fields_(page, kFields) {
  page.RegisterLoad(Handler(&fields_, &EditedFields::Load));
  page.RegisterCollect(Handler(&fields_, &EditedFields::Collect));
  page.RegisterValidate(Handler(this, &CPropPageExtDynamic::Validate));
}

std::vector<Command> CPropPageExtDynamic::Commands() {
  std::vector<Command> commands = fields_.Commands();
  commands.push_back({IDC_SEARCH_BASE_SELECT, ControlNotification::kClicked,
                      Handler(this, &CPropPageExtDynamic::OnSelectBase)});
  return commands;
}

HRESULT CPropPageExtDynamic::Validate(std::string* message) const {
  if (!CADSBase::IsFieldEmpty(dialog(), IDC_SEARCH_QUERY)) return S_OK;
  if (message != nullptr) *message = "Missing Search Query";
  return E_FAIL;
}

std::int32_t CPropPageExtDynamic::OnSelectBase() {
  const SelectADObject chooser(platform_);
  std::string name;
  if (chooser.BrowseContainer(name) != S_OK) return 1;
  dialog().SetText(IDC_SEARCH_BASE, name);
  return 0;
}

}  // namespace pelora
