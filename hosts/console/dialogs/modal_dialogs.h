// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/resources/resource_file.h"
#include "platform/modal_dialogs.h"

namespace pelora::console {

/// Modal dialogs of native widgets, whose lists grow with them. Their layout takes more below them.
class QtModalDialogs final : public IModalDialogs {
 public:
  /// `module` holds the templates and outlives the object.
  explicit QtModalDialogs(const resources::ResourceFile& module) : module_(module) {}

  [[nodiscard]] std::int32_t Run(DialogId dialog, IDialog* owner,
                                 IDialogController& controller) override;

 private:
  const resources::ResourceFile& module_;
};

}  // namespace pelora::console
