// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "pages/prop_page.h"

namespace pelora {

/// Common base of the field groups: a few controls of a page and the attributes they stand for.
///
/// A group registers its handlers with its page when it is made. The page owns its groups and they
/// live as long as it does.
class CPropPageExt {
 public:
  explicit CPropPageExt(CPropPage& page) : page_(page) {}
  virtual ~CPropPageExt() = default;
  CPropPageExt(const CPropPageExt&) = delete;
  CPropPageExt& operator=(const CPropPageExt&) = delete;

 protected:
  [[nodiscard]] CPropPage& page() const { return page_; }
  /// The page's dialog; the group's handlers run only while there is one.
  [[nodiscard]] IDialog& dialog() const { return page_.Dialog(); }

 private:
  CPropPage& page_;
};

}  // namespace pelora
