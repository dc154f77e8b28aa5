// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_name.h"

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::string_view kCommonName = "cn";
constexpr const Attribute& kName = CatalogueEntry("name");
constexpr const Attribute& kDescription = CatalogueEntry("description");

}  // namespace

CPropPageExtName::CPropPageExtName(CPropPage& page) : CPropPageExt(page) {
  page.RegisterLoad(Handler(this, &CPropPageExtName::Load));
  page.RegisterCollect(Handler(this, &CPropPageExtName::Collect));
  page.RegisterValidate([](std::string* /*message*/) { return S_OK; });
}

std::vector<Command> CPropPageExtName::Commands() {
  return {{IDC_DESCRIPTION, ControlNotification::kEditChange,
           Handler(this, &CPropPageExtName::OnDescriptionEdited)}};
}

HRESULT CPropPageExtName::Load(const BoundObjects& objects) {
  ShowCommonName(objects);
  page().LoadSingleText(objects, kName.name, IDC_OBJECT_NAME);
  page().LoadSingleText(objects, kDescription.name, IDC_DESCRIPTION);
  // Filling the field has been reported as an edit.
  description_changed_ = false;
  return S_OK;
}

HRESULT CPropPageExtName::Collect(ChangeList& changes) {
  changes.push_back(MakeChange(kDescription, dialog().Text(IDC_DESCRIPTION), description_changed_,
                               page().IsMultiSelect()));
  description_changed_ = false;
  return S_OK;
}

void CPropPageExtName::ShowCommonName(const BoundObjects& objects) const {
  if (objects.empty()) return;
  Variant stored;
  const HRESULT status = objects.front()->Get(kCommonName, stored);
  if (status != S_OK || stored.type() != VT_BSTR) return;
  dialog().SetText(IDC_NAME_CN, stored.string());
}

std::int32_t CPropPageExtName::OnDescriptionEdited() {
  description_changed_ = true;
  page().SetModified(true);
  return 0;
}

}  // namespace pelora
