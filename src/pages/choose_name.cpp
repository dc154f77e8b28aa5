// SPDX-License-Identifier: Apache-2.0
#include "pages/choose_name.h"

#include <utility>
#include <vector>

#include "directory/select_ad_object.h"

namespace pelora {
namespace {

template <SelectADObject::Choice kChoice>
std::optional<std::string> ChooseOne(const Platform& platform, IDialog& owner) {
  const SelectADObject chooser(platform);
  std::vector<std::string> names;
  if ((chooser.*kChoice)(&owner, names, SelectionMode::kSingle) != S_OK) return std::nullopt;
  if (names.empty()) return std::nullopt;
  return std::move(names.front());
}

std::optional<std::string> BrowseForContainer(const Platform& platform, IDialog& /*owner*/) {
  std::string name;
  if (SelectADObject(platform).BrowseContainer(name) != S_OK) return std::nullopt;
  return name;
}

}  // namespace

constexpr NameChooser kUserChooser = {.choose = &ChooseOne<&SelectADObject::SelectUsers>};
constexpr NameChooser kComputerChooser = {.choose = &ChooseOne<&SelectADObject::SelectComputers>,
                                          .kind = FieldKind::kServer};
constexpr NameChooser kContainerChooser = {
    .choose = &BrowseForContainer, .nothing_chosen = 1, .marks_modified = false};

}  // namespace pelora
