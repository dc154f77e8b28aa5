// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/own_pages.h"

#include <algorithm>

#include "directory/ascii_case.h"

namespace pelora::session {

resources::ReadResult<resources::ResourceFile> WithOwnPages(const resources::ResourceFile& module) {
  resources::ReadResult<resources::ResourceFile> own =
      resources::ResourceFile::Read(OwnPageResourceBytes());
  if (!own.value) return own;
  resources::ResourceFile all = module;
  all.Append(*own.value);
  return {std::move(all), {}};
}

std::vector<const OwnPageKind*> OwnPagesOf(std::span<const DirectoryObject> selection) {
  std::vector<const OwnPageKind*> pages;
  if (selection.empty()) return pages;
  for (const OwnPageKind& page : OwnPageKinds()) {
    const auto has_page = [&page](const DirectoryObject& object) {
      return std::ranges::any_of(page.classes, [&object](std::string_view name) {
        return EqualsWithoutCase(name, object.kind.class_name);
      });
    };
    if (std::ranges::all_of(selection, has_page)) pages.push_back(&page);
  }
  return pages;
}

}  // namespace pelora::session
