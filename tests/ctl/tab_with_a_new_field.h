// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "pages/edited_fields.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"

namespace pelora::ctl {

inline constexpr ControlId kNotOnThePage = 9999;
inline constexpr std::array kMotto = {
    EditedFields::Field{.control = IDC_FILE_PATH, .attribute = CatalogueEntry("description")},
    EditedFields::Field{.control = kNotOnThePage, .attribute = CatalogueEntry("peloraFilter")},
};

/// A tab with a field that users have on no tab of the extension, and with one whose control is not
/// on its page.
class TabWithANewField final : public CSnapInPropertyPage {
 public:
  explicit TabWithANewField(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_SERVER, "Motto"),
        fields_(*this, kMotto) {
    Add(fields_);
  }

 private:
  ~TabWithANewField() override = default;

  EditedFields fields_;
};

/// Makes it whatever tab is asked for.
inline HRESULT MakeTabWithANewField(const Guid& /*class_id*/, const Platform& platform,
                                    const Guid& iid, void** object) {
  const auto tab = Ref<CSnapInPropertyPage>::Adopt(new TabWithANewField(platform));
  return static_cast<IShellExtInit&>(*tab).QueryInterface(iid, object);
}

}  // namespace pelora::ctl
