// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/counted.h"
#include "platform/data_object.h"

namespace pelora::windows {

/// A data object of the system's behind the port; it holds one reference to it.
class SelectionDataObject final : public CountedPort<pelora::IDataObject> {
 public:
  explicit SelectionDataObject(Ref<::IDataObject> data_object)
      : data_object_(std::move(data_object)) {}

  [[nodiscard]] HRESULT GetData(const FormatEtc& format,
                                std::unique_ptr<IStorageMedium>& medium) override;

 private:
  ~SelectionDataObject() override = default;

  Ref<::IDataObject> data_object_;
};

}  // namespace pelora::windows
