// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "directory/multi_value_attribute.h"
#include "directory/select_ad_object.h"
#include "pages/dialog_page.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// A list box of directory objects' names with its two buttons: names are chosen and deleted, never
/// typed. They are written as a whole when the list changed; on a multi-selection nothing is loaded
/// and nothing written.
class NameList final : public CPropPageExt {
 public:
  struct Layout {
    ControlId list;
    ControlId add_button;
    ControlId delete_button;
    /// As `FieldRow::label`.
    ControlId label;
    const Attribute& attribute;
    /// How objects are chosen.
    SelectADObject::Choice choice;
    /// The control that the chooser is modal to; 0: the dialog.
    ControlId chooser_owner = 0;
  };

  /// Page, platform and layout outlive the list.
  NameList(CPropPage& page, const Platform& platform, const Layout& layout);

  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes) const;

  /// Clicks on the buttons and the selection of a row, without which nothing can be deleted.
  [[nodiscard]] std::vector<Command> Commands();
  /// The one row of the list.
  [[nodiscard]] std::vector<FieldRow> Rows();

 private:
  std::int32_t OnAdd();
  std::int32_t OnDelete();
  std::int32_t OnSelected();
  [[nodiscard]] std::function<void()> TakeDown();
  [[nodiscard]] IListBox& List() const;

  const Platform& platform_;
  const Layout& layout_;
  MultiValueAttribute names_;
};

}  // namespace pelora
