// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/selection_list_block.h"

#include <cstring>
#include <utility>

#include "directory/utf.h"
#include "hosts/console/qt_text.h"
#include "hosts/ldap/ads_path.h"

namespace pelora::console {
namespace {

/// The block's head and one entry, as 64-bit programs lay them out.
struct Head {
  std::uint32_t item_count = 0;
  std::uint32_t fetched_attribute_count = 0;
};
struct Item {
  const char16_t* name = nullptr;
  const char16_t* path = nullptr;
  const char16_t* object_class = nullptr;
  const char16_t* principal_name = nullptr;
  const void* fetched_attributes = nullptr;
  std::uint32_t scope_type = 0;
};
static_assert(sizeof(Head) == 8 && sizeof(Item) == 48, "the layout of the platform");

constexpr std::uint32_t kJoinedDomain = 2;

/// The texts of all entries, one behind the other, each ended by 0.
class TextPool {
 public:
  /// Gives the place of the text, counted in characters from the start of the pool.
  std::size_t Add(std::string_view text) {
    const std::size_t place = pool_.size();
    pool_ += ToUtf16(text);
    pool_ += u'\0';
    return place;
  }
  [[nodiscard]] const std::u16string& text() const { return pool_; }

 private:
  std::u16string pool_;
};

struct Places {
  std::size_t name;
  std::size_t path;
  std::size_t object_class;
  std::size_t principal_name;
};

}  // namespace

HeapBlock SelectionListOf(std::span<const DirectoryObject> objects) {
  TextPool pool;
  std::vector<Places> places;
  places.reserve(objects.size());
  for (const DirectoryObject& object : objects) {
    places.push_back({.name = pool.Add(ToUtf8(object.name)),
                      .path = pool.Add(ldap::AdsPathOf(object.dn)),
                      .object_class = pool.Add(object.kind.class_name),
                      .principal_name = pool.Add("")});
  }
  const std::size_t pool_start = sizeof(Head) + sizeof(Item) * objects.size();
  const std::size_t pool_size = pool.text().size() * sizeof(char16_t);
  HeapBlock block{std::make_unique<std::byte[]>(pool_start + pool_size), pool_start + pool_size};
  std::byte* const bytes = block.bytes.get();
  std::memcpy(bytes + pool_start, pool.text().data(), pool_size);

  const Head head{.item_count = static_cast<std::uint32_t>(objects.size())};
  std::memcpy(bytes, &head, sizeof head);
  const auto* const texts = reinterpret_cast<const char16_t*>(bytes + pool_start);
  for (std::size_t entry = 0; entry < places.size(); ++entry) {
    const Item item{.name = texts + places[entry].name,
                    .path = texts + places[entry].path,
                    .object_class = texts + places[entry].object_class,
                    .principal_name = texts + places[entry].principal_name,
                    .scope_type = kJoinedDomain};
    std::memcpy(bytes + sizeof(Head) + sizeof(Item) * entry, &item, sizeof item);
  }
  return block;
}

Ref<IDataObject> MakeChosenDataObject(std::vector<DirectoryObject> objects) {
  return MakeBlockDataObject(kDsSelectionListFormat,
                             [objects = std::move(objects)] { return SelectionListOf(objects); });
}

}  // namespace pelora::console
