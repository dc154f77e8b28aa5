// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/platform.h"

namespace pelora {

/// A tab that is the same as others but for its dialog template.
template <class Page, DialogId kTemplate>
class CPropPageOfTemplate final : public Page {
 public:
  explicit CPropPageOfTemplate(const Platform& platform) : Page(platform, kTemplate) {}

 private:
  ~CPropPageOfTemplate() override = default;
};

}  // namespace pelora
