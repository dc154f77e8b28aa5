// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "directory/byte_block.h"
#include "hosts/windows/selection_data_object.h"
#include "platform/counted.h"

namespace pelora::windows {

/// What the system's object picker hands over, behind the port: rendered in the format
/// `kDsSelectionListFormat` and no other, as one block that holds every path. It holds one
/// reference to the system's data object, whose memory is given back before `GetData` returns.
///
/// The block is this object's: it stays until this object goes or renders anew, and releasing a
/// medium does nothing.
class GatheredSelection final : public CountedPort<pelora::IDataObject> {
 public:
  explicit GatheredSelection(Ref<::IDataObject> picked)
      : picked_(Ref<pelora::IDataObject>::Adopt(new SelectionDataObject(std::move(picked)))) {}

  /// Fails with the system's status, with `E_POINTER` when the system's memory cannot be reached,
  /// or with what `GatherSelectionList` says of it.
  [[nodiscard]] HRESULT GetData(const FormatEtc& format,
                                std::unique_ptr<IStorageMedium>& medium) override;

 private:
  ~GatheredSelection() override = default;

  Ref<pelora::IDataObject> picked_;
  HeapBlock block_;
};

}  // namespace pelora::windows
