// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/field_catalogue.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/session/new_object_kind.h"
#include "server/component_server.h"

namespace pelora::session {
namespace {

/// By `FieldKind`.
constexpr std::array<std::string_view, 9> kKindTexts = {"flag", "number", "text", "name",  "server",
                                                        "text", "list",   "list", "choice"};

/// The page that a component adds.
struct Page {
  DialogId dialog = 0;
  std::string title;
};

Page PageOf(IShellExtInit& component) {
  Page found;
  const Ref<IShellPropSheetExt> pages = Query<IShellPropSheetExt>(component);
  if (!pages) return found;
  // A page that is not taken is not shown.
  (void)pages->AddPages([&found](std::unique_ptr<PropSheetPage> page) {
    found = {.dialog = page->Template(), .title = page->Title()};
    return true;
  });
  return found;
}

auto OrderOf(const Field& field) {
  return std::tuple(field.place.group_position, field.place.position);
}

}  // namespace

std::string_view Field::KindText() const {
  return kKindTexts.at(static_cast<std::size_t>(row.kind));
}

FieldCatalogue::FieldCatalogue(const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                               const resources::ResourceFile& module, ComponentMaker make)
    : specifiers_(specifiers), platform_(platform), module_(module), make_(std::move(make)) {}

FieldCatalogue::FieldCatalogue(const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                               const resources::ResourceFile& module)
    : FieldCatalogue(specifiers, platform, module, &CreateComponent) {}

const std::vector<Field>& FieldCatalogue::FieldsOf(std::string_view class_name) {
  const auto known = classes_.find(class_name);
  if (known != classes_.end()) return known->second;
  return classes_.emplace(class_name, ReadFields(class_name)).first->second;
}

std::vector<Field> FieldCatalogue::ReadFields(std::string_view class_name) {
  std::vector<Field> fields;
  for (const Guid& tab : specifiers_.ComponentsOf(class_name, ConsoleRole::kPropertyPage)) {
    AppendTab(tab, fields);
  }
  return fields;
}

void FieldCatalogue::AppendTab(const Guid& component, std::vector<Field>& fields) {
  Ref<IShellExtInit> made;
  const HRESULT status =
      make_(component, platform_, IID_IShellExtInit, reinterpret_cast<void**>(made.Put()));
  if (FAILED(status)) return;
  const Ref<IFieldRows> rows = Query<IFieldRows>(*made);
  if (!rows) return;
  const Page page = PageOf(*made);
  const auto dialog = module_.Dialog(page.dialog);
  if (!dialog.value) return;
  const auto first = static_cast<std::ptrdiff_t>(fields.size());
  for (FieldRow& row : rows->Fields()) {
    Field field{.row = std::move(row), .component = component, .tab = page.title, .place = {}};
    // A group of fields may stand on a page that has only some of its controls.
    if (FindPlace(*dialog.value, field.row, field.place)) fields.push_back(std::move(field));
  }
  std::ranges::stable_sort(fields.begin() + first, fields.end(), {}, &OrderOf);
  components_.push_back(std::move(made));
}

const Field* FieldCatalogue::Find(std::string_view class_name, std::string_view field) {
  const std::vector<Field>& fields = FieldsOf(class_name);
  const auto found = std::ranges::find_if(fields, [field](const Field& candidate) {
    return EqualsWithoutCase(candidate.row.name, field);
  });
  return found == fields.end() ? nullptr : &*found;
}

const Field* FieldCatalogue::FindAnywhere(std::string_view field) {
  for (const NewObjectKind& kind : NewObjectKinds()) {
    if (const Field* found = Find(kind.class_name, field); found != nullptr) return found;
  }
  return nullptr;
}

std::vector<const Field*> FieldCatalogue::FieldsOfAll(const std::vector<std::string>& classes) {
  std::vector<const Field*> all;
  for (const std::string& class_name : classes) {
    for (const Field& field : FieldsOf(class_name)) {
      const auto is_same = [&field](const Field* known) {
        return EqualsWithoutCase(known->row.name, field.row.name);
      };
      if (std::ranges::none_of(all, is_same)) all.push_back(&field);
    }
  }
  return all;
}

}  // namespace pelora::session
