// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pages/edited_fields.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// Where and for what a list searches its members: a search base, which is chosen from the tree of
/// containers, and a query, without which the object is not valid. The base may be empty, and the
/// query's form is not checked: blanks are a query.
class CPropPageExtDynamic final : public CPropPageExt {
 public:
  CPropPageExtDynamic(CPropPage& page, const Platform& platform);

  /// Edits of both fields and the choice of a base.
  [[nodiscard]] std::vector<Command> Commands();

 private:
  HRESULT Validate(std::string* message) const;
  /// 1 when nothing was chosen.
  std::int32_t OnSelectBase();

  const Platform& platform_;
  EditedFields fields_;
};

}  // namespace pelora
