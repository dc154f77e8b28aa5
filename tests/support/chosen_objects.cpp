// SPDX-License-Identifier: Apache-2.0
#include "tests/support/chosen_objects.h"

#include <algorithm>
#include <utility>

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
  HeapBlock block(bytes.size());
  std::ranges::copy(bytes, block.bytes.get());
  return block;
}

}  // namespace

HeapBlock MakeDsSelectionList(const std::vector<std::string>& paths) {
  constexpr std::size_t kHeadSize = 8;
  constexpr std::size_t kEntrySize = 48;
  constexpr std::size_t kPathInEntry = 8;
  std::size_t string = kHeadSize + kEntrySize * paths.size();
  std::size_t size = string;
  for (const std::string& path : paths) size += WideStringSize(path);
  HeapBlock block(size);
  WriteUint32(block.span(), 0, static_cast<std::uint32_t>(paths.size()));
  std::size_t entry = kHeadSize;
  for (const std::string& path : paths) {
    WriteUint64(block.span(), entry + kPathInEntry,
                reinterpret_cast<std::uintptr_t>(block.bytes.get()) + string);
    string = WriteWideString(block.span(), string, path);
    entry += kEntrySize;
  }
  return block;
}

ChosenObjects* ChosenObjects::AsSelectionList(const std::vector<std::string>& paths) {
  return new ChosenObjects(kDsSelectionListFormat, MakeDsSelectionList(paths));
}

ChosenObjects* ChosenObjects::AsObjectNames(const std::vector<std::string>& paths) {
  return new ChosenObjects(kDsObjectNamesFormat, Place(MakeDsObjectNames(paths)));
}

ChosenObjects::ChosenObjects(std::string format, HeapBlock block)
    : CountedPort(0),
      format_(std::move(format)),
      block_(std::make_shared<HeapBlock>(std::move(block))) {}

HRESULT ChosenObjects::GetData(const FormatEtc& format, std::unique_ptr<IStorageMedium>& medium) {
  last_format_ = format;
  medium.reset();
  if (FAILED(failure_)) return failure_;
  if (format.format != format_) return DV_E_FORMATETC;
  medium = std::make_unique<CountedMedium>(block_, hidden_, locks_, releases_);
  return failure_;
}

}  // namespace pelora::testing
