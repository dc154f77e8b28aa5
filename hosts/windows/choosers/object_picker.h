// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/windows/choosers/chooser_headers.h"
#include "platform/choosers.h"

namespace pelora::windows {

/// The system's object picker behind the port.
class ObjectPicker final : public pelora::IDsObjectPicker {
 public:
  /// Makes a picker of the system's; on failure `chooser` is empty.
  [[nodiscard]] static HRESULT Create(std::unique_ptr<pelora::IDsObjectPicker>& chooser);

  explicit ObjectPicker(Ref<::IDsObjectPicker> picker) : picker_(std::move(picker)) {}

  [[nodiscard]] HRESULT Initialize(const ObjectPickerInit& init) override;
  [[nodiscard]] HRESULT InvokeDialog(ChooserOwner owner, Ref<pelora::IDataObject>& chosen) override;

 private:
  Ref<::IDsObjectPicker> picker_;
};

}  // namespace pelora::windows
