// SPDX-License-Identifier: Apache-2.0
#include "tests/support/selection_data_object.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "directory/utf.h"

namespace pelora::testing {
namespace {

/// A view of a block that has exactly the block's size on the heap, so that a sanitizer sees a read
/// beyond it.
class BlockMedium final : public IStorageMedium {
 public:
  BlockMedium(const std::vector<std::byte>& block, std::shared_ptr<int> locks,
              std::shared_ptr<int> releases)
      : size_(block.size()),
        bytes_(std::make_unique<std::byte[]>(block.size())),
        locks_(std::move(locks)),
        releases_(std::move(releases)) {
    std::ranges::copy(block, bytes_.get());
  }

  std::span<const std::byte> Lock() override {
    ++*locks_;
    return {bytes_.get(), size_};
  }
  void Unlock() override { --*locks_; }
  void Release() override { ++*releases_; }

 private:
  std::size_t size_;
  std::unique_ptr<std::byte[]> bytes_;
  std::shared_ptr<int> locks_;
  std::shared_ptr<int> releases_;
};

}  // namespace

std::vector<std::byte> MakeDsObjectNames(const std::vector<std::string>& paths) {
  constexpr std::size_t kHeadSize = 20;
  constexpr std::size_t kEntrySize = 16;
  std::vector<std::byte> block(kHeadSize + kEntrySize * paths.size());
  WriteUint32(block, 16, static_cast<std::uint32_t>(paths.size()));
  for (std::size_t entry = 0; entry < paths.size(); ++entry) {
    WriteUint32(block, kHeadSize + kEntrySize * entry + 8,
                static_cast<std::uint32_t>(block.size()));
    for (const char16_t unit : ToUtf16(paths[entry]) + u'\0') {
      block.push_back(static_cast<std::byte>(unit & 0xFFU));
      block.push_back(static_cast<std::byte>(unit >> 8));
    }
  }
  return block;
}

SelectionDataObject::SelectionDataObject(const std::vector<std::string>& paths)
    : block_(MakeDsObjectNames(paths)) {}

SelectionDataObject::SelectionDataObject(std::vector<std::byte> block) : block_(std::move(block)) {}

HRESULT SelectionDataObject::GetData(const FormatEtc& format,
                                     std::unique_ptr<IStorageMedium>& medium) {
  last_format_ = format;
  medium.reset();
  if (FAILED(failure_)) return failure_;
  if (format.format != kDsObjectNamesFormat) return DV_E_FORMATETC;
  medium = std::make_unique<BlockMedium>(block_, locks_, releases_);
  return failure_;
}

}  // namespace pelora::testing
