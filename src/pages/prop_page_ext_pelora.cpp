// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_pelora.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array kFields = {
    EditedFields::Field{.control = IDC_PELORA_ACCOUNT,
                        .attribute = CatalogueEntry("peloraAccount"),
                        .forget = EditedFields::Forget::kAtLoad,
                        .third_state = EditedFields::ThirdState::kLeaves},
    EditedFields::Field{.control = IDC_PELORA_HIDDEN,
                        .attribute = CatalogueEntry("peloraHidden"),
                        .forget = EditedFields::Forget::kAtLoad,
                        .third_state = EditedFields::ThirdState::kLeaves},
};

}  // namespace

CPropPageExtPelora::CPropPageExtPelora(CPropPage& page) : EditedFields(page, kFields) {}

int CPropPageExtPelora::SkipValidation() const {
  const bool is_checked = dialog().Check(IDC_PELORA_ACCOUNT) == CheckState::kChecked;
  return is_checked ? kValidate : kSkipValidation;
}

}  // namespace pelora
