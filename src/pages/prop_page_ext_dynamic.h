// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/edited_fields.h"

namespace pelora {

/// Where and for what a list searches its members: a search base, which is chosen from the tree of
/// containers, and a query, without which the object is not valid. The base may be empty, and the
/// query's form is not checked: blanks are a query.
class CPropPageExtDynamic final : public EditedFields {
 public:
  explicit CPropPageExtDynamic(CPropPage& page);
};

}  // namespace pelora
