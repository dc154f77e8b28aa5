// SPDX-License-Identifier: Apache-2.0
#include "tests/support/chosen_objects.h"

#include <algorithm>
#include <utility>

#include "directory/utf.h"
#include "tests/support/selection_data_object.h"

namespace pelora::testing {
namespace {

/// A view of a block that counts what is done with it.
class CountedMedium final : public IStorageMedium {
 public:
  CountedMedium(std::shared_ptr<HeapBlock> block, bool hidden, std::shared_ptr<int> locks,
                std::shared_ptr<int> releases)
      : block_(std::move(block)),
        hidden_(hidden),
        locks_(std::move(locks)),
        releases_(std::move(releases)) {}

  std::span<const std::byte> Lock() override {
    if (hidden_) return {};
    ++*locks_;
    return block_->span();
  }
  void Unlock() override { --*locks_; }
  void Release() override { ++*releases_; }

 private:
  std::shared_ptr<HeapBlock> block_;
  bool hidden_;
  std::shared_ptr<int> locks_;
  std::shared_ptr<int> releases_;
};

HeapBlock Place(const std::vector<std::byte>& bytes) {
  HeapBlock block{std::make_unique<std::byte[]>(bytes.size()), bytes.size()};
  std::ranges::copy(bytes, block.bytes.get());
  return block;
}

}  // namespace

HeapBlock MakeDsSelectionList(const std::vector<std::string>& paths) {
  constexpr std::size_t kHeadSize = 8;
  constexpr std::size_t kEntrySize = 48;
  constexpr std::size_t kPathInEntry = 8;
  std::vector<std::byte> bytes(kHeadSize + kEntrySize * paths.size());
  PatchUint32(bytes, 0, static_cast<std::uint32_t>(paths.size()));
  std::vector<std::size_t> offsets;
  for (const std::string& path : paths) {
    offsets.push_back(bytes.size());
    for (const char16_t unit : ToUtf16(path) + u'\0') {
      bytes.push_back(static_cast<std::byte>(unit & 0xFFU));
      bytes.push_back(static_cast<std::byte>(unit >> 8));
    }
  }
  HeapBlock block = Place(bytes);
  for (std::size_t entry = 0; entry < offsets.size(); ++entry) {
    PatchUint64(block.span(), kHeadSize + kEntrySize * entry + kPathInEntry,
                reinterpret_cast<std::uintptr_t>(block.bytes.get()) + offsets[entry]);
  }
  return block;
}

void PatchUint64(std::span<std::byte> block, std::size_t offset, std::uint64_t number) {
  for (std::size_t at = 0; at < 8; ++at) {
    block[offset + at] = static_cast<std::byte>((number >> (8 * at)) & 0xFFU);
  }
}

ChosenObjects* ChosenObjects::AsSelectionList(const std::vector<std::string>& paths) {
  return new ChosenObjects(kDsSelectionListFormat, MakeDsSelectionList(paths));
}

ChosenObjects* ChosenObjects::AsObjectNames(const std::vector<std::string>& paths) {
  return new ChosenObjects(kDsObjectNamesFormat, Place(MakeDsObjectNames(paths)));
}

ChosenObjects::ChosenObjects(std::string format, HeapBlock block)
    : format_(std::move(format)), block_(std::make_shared<HeapBlock>(std::move(block))) {}

HRESULT ChosenObjects::QueryInterface(const Guid& iid, void** object) {
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IDataObject) return E_NOINTERFACE;
  *object = static_cast<IDataObject*>(this);
  AddRef();
  return S_OK;
}

std::uint32_t ChosenObjects::Release() {
  const std::uint32_t left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ChosenObjects::GetData(const FormatEtc& format, std::unique_ptr<IStorageMedium>& medium) {
  last_format_ = format;
  medium.reset();
  if (FAILED(failure_)) return failure_;
  if (format.format != format_) return DV_E_FORMATETC;
  medium = std::make_unique<CountedMedium>(block_, hidden_, locks_, releases_);
  return failure_;
}

}  // namespace pelora::testing
