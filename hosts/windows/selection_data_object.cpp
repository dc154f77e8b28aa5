// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/selection_data_object.h"

#include "hosts/windows/guarded.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

/// A block of global memory. As the port says, it frees the block only when told to.
class GlobalMemoryMedium final : public IStorageMedium {
 public:
  /// The medium to fill.
  [[nodiscard]] STGMEDIUM* Put() { return &medium_; }
  [[nodiscard]] bool IsGlobalMemory() const { return medium_.tymed == TYMED_HGLOBAL; }

  std::span<const std::byte> Lock() override {
    const void* const block = GlobalLock(medium_.hGlobal);
    if (block == nullptr) return {};
    return {static_cast<const std::byte*>(block), GlobalSize(medium_.hGlobal)};
  }
  void Unlock() override { GlobalUnlock(medium_.hGlobal); }
  void Release() override { ReleaseStgMedium(&medium_); }

 private:
  STGMEDIUM medium_ = {};
};

FORMATETC ToSystem(const FormatEtc& format) {
  const UINT number = RegisterClipboardFormatW(ToWide(format.format).c_str());
  return {.cfFormat = static_cast<CLIPFORMAT>(number),
          .ptd = nullptr,
          .dwAspect = format.aspect,
          .lindex = format.index,
          .tymed = format.medium};
}

}  // namespace

HRESULT SelectionDataObject::GetData(const FormatEtc& format,
                                     std::unique_ptr<IStorageMedium>& medium) {
  medium.reset();
  return Guarded([&] {
    FORMATETC wanted = ToSystem(format);
    auto rendered = std::make_unique<GlobalMemoryMedium>();
    const HRESULT status = data_object_->GetData(&wanted, rendered->Put());
    if (FAILED(status)) return status;
    if (!rendered->IsGlobalMemory()) {
      rendered->Release();
      return DV_E_TYMED;
    }
    medium = std::move(rendered);
    return status;
  });
}

}  // namespace pelora::windows
