// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_name.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::string_view kCommonName = "cn";
constexpr std::array kFields = {
    EditedFields::Field{.control = IDC_OBJECT_NAME,
                        .attribute = CatalogueEntry("name"),
                        .of_several = EditedFields::OfSeveral::kNothing},
    EditedFields::Field{.control = IDC_DESCRIPTION,
                        .attribute = CatalogueEntry("description"),
                        .of_several = EditedFields::OfSeveral::kNothing},
};

}  // namespace

CPropPageExtName::CPropPageExtName(CPropPage& page) : EditedFields(page, kFields) {}

HRESULT CPropPageExtName::Load(const BoundObjects& objects) {
  ShowCommonName(objects);
  return EditedFields::Load(objects);
}

void CPropPageExtName::ShowCommonName(const BoundObjects& objects) const {
  if (objects.empty()) return;
  Variant stored;
  const HRESULT status = objects.front()->Get(kCommonName, stored);
  if (status != S_OK || stored.type() != VT_BSTR) return;
  dialog().SetText(IDC_NAME_CN, stored.string());
}

}  // namespace pelora
