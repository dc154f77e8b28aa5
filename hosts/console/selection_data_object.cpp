// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/selection_data_object.h"

#include <cstring>
#include <memory>
#include <utility>

#include "directory/utf.h"
#include "hosts/ldap/ads_path.h"

namespace pelora::console {
namespace {

constexpr std::size_t kNamespaceSize = 16;
constexpr std::size_t kEntrySize = 16;
constexpr std::size_t kFirstEntry = kNamespaceSize + sizeof(std::uint32_t);
constexpr std::uint32_t kIsContainer = 1;

void AppendUint32(std::vector<std::byte>& block, std::size_t number) {
  for (int shift = 0; shift < 32; shift += 8) {
    block.push_back(static_cast<std::byte>((number >> shift) & 0xFF));
  }
}

/// A string's bytes with the ending 0.
std::vector<std::byte> WideBytes(std::string_view text) {
  std::vector<std::byte> bytes;
  const std::u16string wide = ToUtf16(text) + u'\0';
  bytes.reserve(2 * wide.size());
  for (const char16_t unit : wide) {
    bytes.push_back(static_cast<std::byte>(unit & 0xFF));
    bytes.push_back(static_cast<std::byte>(unit >> 8));
  }
  return bytes;
}

/// A copy of the block that whoever asked for it releases.
class BlockMedium final : public IStorageMedium {
 public:
  explicit BlockMedium(const std::vector<std::byte>& block)
      : size_(block.size()), memory_(new std::byte[block.size()]) {
    std::memcpy(memory_.get(), block.data(), size_);
  }
  // As the platform has it: the memory lives until somebody releases it.
  ~BlockMedium() override { (void)memory_.release(); }

  [[nodiscard]] std::span<const std::byte> Lock() override { return {memory_.get(), size_}; }
  void Unlock() override {}
  void Release() override {
    memory_.reset();
    size_ = 0;
  }

 private:
  std::size_t size_;
  // Allocated apart, so that the block is aligned for any type.
  std::unique_ptr<std::byte[]> memory_;
};

class SelectionDataObject final : public IDataObject {
 public:
  explicit SelectionDataObject(std::vector<std::byte> block) : block_(std::move(block)) {}

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IDataObject && iid != IID_IUnknown) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IDataObject*>(this);
    return S_OK;
  }
  std::uint32_t AddRef() override { return ++references_; }
  std::uint32_t Release() override {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

  [[nodiscard]] HRESULT GetData(const FormatEtc& format,
                                std::unique_ptr<IStorageMedium>& medium) override {
    medium.reset();
    const bool is_known =
        format.format == kDsObjectNamesFormat && (format.medium & FormatEtc::kGlobalMemory) != 0;
    if (!is_known) return DV_E_FORMATETC;
    medium = std::make_unique<BlockMedium>(block_);
    return S_OK;
  }

 private:
  ~SelectionDataObject() = default;

  std::vector<std::byte> block_;
  std::uint32_t references_ = 1;
};

}  // namespace

std::vector<std::byte> DsObjectNamesOf(std::span<const SelectedObject> objects) {
  std::vector<std::byte> block(kNamespaceSize);
  std::vector<std::byte> strings;
  const std::size_t first_string = kFirstEntry + kEntrySize * objects.size();
  const auto append_string = [&](std::string_view text) {
    const std::vector<std::byte> bytes = WideBytes(text);
    AppendUint32(block, first_string + strings.size());
    strings.insert(strings.end(), bytes.begin(), bytes.end());
  };
  AppendUint32(block, objects.size());
  for (const SelectedObject& object : objects) {
    constexpr std::uint32_t kProviderFlags = 0;
    AppendUint32(block, object.is_container ? kIsContainer : 0);
    AppendUint32(block, kProviderFlags);
    append_string(object.path);
    append_string(object.object_class);
  }
  block.insert(block.end(), strings.begin(), strings.end());
  return block;
}

Ref<IDataObject> MakeSelectionDataObject(std::span<const DirectoryObject> selection) {
  std::vector<SelectedObject> objects;
  objects.reserve(selection.size());
  for (const DirectoryObject& object : selection) {
    objects.push_back({.path = ldap::AdsPathOf(object.dn),
                       .object_class = object.kind.class_name,
                       .is_container = object.kind.is_container});
  }
  return Ref<IDataObject>::Adopt(new SelectionDataObject(DsObjectNamesOf(objects)));
}

}  // namespace pelora::console
