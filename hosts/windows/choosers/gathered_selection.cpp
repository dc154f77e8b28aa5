// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/gathered_selection.h"

#include "directory/locked_medium.h"
#include "hosts/windows/choosers/selection_list_block.h"
#include "hosts/windows/guarded.h"

namespace pelora::windows {
namespace {

/// A view of memory that somebody else frees.
class ViewMedium final : public IStorageMedium {
 public:
  explicit ViewMedium(std::span<const std::byte> block) : block_(block) {}

  [[nodiscard]] std::span<const std::byte> Lock() override { return block_; }
  void Unlock() override {}
  void Release() override {}

 private:
  std::span<const std::byte> block_;
};

}  // namespace

HRESULT GatheredSelection::GetData(const FormatEtc& format,
                                   std::unique_ptr<IStorageMedium>& medium) {
  medium.reset();
  if (format.format != kDsSelectionListFormat) return DV_E_FORMATETC;
  return Guarded([&] {
    std::unique_ptr<IStorageMedium> rendered;
    HRESULT status = picked_->GetData(format, rendered);
    if (FAILED(status)) return status;
    const LockedMedium locked(*rendered);
    if (!locked.IsReachable()) return E_POINTER;
    status = GatherSelectionList(locked.block(), block_);
    if (SUCCEEDED(status)) medium = std::make_unique<ViewMedium>(block_.span());
    return status;
  });
}

}  // namespace pelora::windows
