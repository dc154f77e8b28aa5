// SPDX-License-Identifier: Apache-2.0
#include "hosts/selection/block_data_object.h"

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/counted.h"

namespace pelora {
namespace {

/// A view of a block, which stays when the view goes.
class BlockMedium final : public IStorageMedium {
 public:
  explicit BlockMedium(std::shared_ptr<HeapBlock> block) : block_(std::move(block)) {}

  [[nodiscard]] std::span<const std::byte> Lock() override { return block_->span(); }
  void Unlock() override {}
  void Release() override { *block_ = {}; }

 private:
  std::shared_ptr<HeapBlock> block_;
};

class BlockDataObject final : public CountedPort<IDataObject> {
 public:
  BlockDataObject(std::string format, std::function<HeapBlock()> render)
      : format_(std::move(format)), render_(std::move(render)) {}

  [[nodiscard]] HRESULT GetData(const FormatEtc& format,
                                std::unique_ptr<IStorageMedium>& medium) override {
    medium.reset();
    const bool is_known =
        format.format == format_ && (format.medium & FormatEtc::kGlobalMemory) != 0;
    if (!is_known) return DV_E_FORMATETC;
    rendered_.push_back(std::make_shared<HeapBlock>(render_()));
    medium = std::make_unique<BlockMedium>(rendered_.back());
    return S_OK;
  }

 private:
  ~BlockDataObject() override = default;

  std::string format_;
  std::function<HeapBlock()> render_;
  std::vector<std::shared_ptr<HeapBlock>> rendered_;
};

}  // namespace

Ref<IDataObject> MakeBlockDataObject(std::string format, std::function<HeapBlock()> render) {
  return Ref<IDataObject>::Adopt(new BlockDataObject(std::move(format), std::move(render)));
}

}  // namespace pelora
