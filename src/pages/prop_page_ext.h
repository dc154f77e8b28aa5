// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "pages/prop_page.h"

namespace pelora {

/// Common base of the field groups: a few controls of a page and the attributes they stand for (see
/// `FieldGroup`).
///
/// The page owns its groups, which live as long as it does, and adds them; a group that is a part
/// of another one is called by that one alone.
class CPropPageExt {
 public:
  explicit CPropPageExt(CPropPage& page) : page_(page) {}
  virtual ~CPropPageExt() = default;
  CPropPageExt(const CPropPageExt&) = delete;
  CPropPageExt& operator=(const CPropPageExt&) = delete;

 protected:
  [[nodiscard]] CPropPage& page() const { return page_; }
  /// The controls of the page's dialog (see `CADSBase::Dialog`).
  [[nodiscard]] IDialog& dialog() const { return page_.Dialog(); }

 private:
  CPropPage& page_;
};

}  // namespace pelora
