// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/wanted_value.h"

#include <algorithm>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/case_fold.h"
#include "tests/harness/random_editor.h"

namespace pelora::testing {
namespace {

bool IsFlag(std::string_view attribute) {
  const auto* const found = std::ranges::find(kAttributeCatalogue, attribute, &Attribute::name);
  return found != kAttributeCatalogue.end() && found->encoding == Encoding::kFlag;
}

ldap::AttributeValues ValuesOf(const WantedValue& wanted, const ldap::AttributeMap& attributes) {
  ldap::AttributeValues values;
  for (const std::string& name : wanted.attributes) {
    const auto found = attributes.find(name);
    if (found == attributes.end()) continue;
    values.insert(values.end(), found->second.begin(), found->second.end());
  }
  return values;
}

}  // namespace

std::set<std::string> Folded(const std::vector<std::string>& values) {
  std::set<std::string> folded;
  for (const std::string& value : values) folded.insert(ldap::FoldCase(value));
  return folded;
}

std::optional<WantedValue> WantedIn(HeadlessDialog& page, const FieldRow& row,
                                    std::span<const FieldRow> rows) {
  if (row.is_read_only || !row.entry.empty() || !page.IsEnabled(row.control)) return std::nullopt;
  WantedValue wanted{.kind = row.kind, .attributes = {std::string(row.attributes.front())}};
  if (wanted.IsList()) {
    // One control for a list and its default entry.
    for (const FieldRow& other : rows) {
      if (other.name == row.name || other.control != row.control) continue;
      wanted.attributes.emplace_back(other.attributes.front());
    }
    wanted.values = Folded(RowsOf(page.ListBox(row.control)));
    return wanted;
  }
  switch (row.kind) {
    case FieldKind::kFlag:
      if (!IsFlag(row.attributes.front())) return std::nullopt;
      if (page.Check(row.control) == CheckState::kIndeterminate) return std::nullopt;
      wanted.text = page.Check(row.control) == CheckState::kChecked ? "1" : "0";
      return wanted;
    case FieldKind::kName:
    case FieldKind::kNumber:
    case FieldKind::kText:
      wanted.text = page.Text(row.control);
      if (wanted.text.empty() || wanted.text == "0") return std::nullopt;
      return wanted;
    default:
      return std::nullopt;
  }
}

bool IsStored(const WantedValue& wanted, const ldap::AttributeMap& attributes) {
  const ldap::AttributeValues values = ValuesOf(wanted, attributes);
  if (wanted.IsList()) return Folded(values) == wanted.values;
  const bool is_it = values == ldap::AttributeValues{wanted.text};
  // A box that is clear may have no value at all.
  return is_it || (wanted.kind == FieldKind::kFlag && wanted.text == "0" && values.empty());
}

}  // namespace pelora::testing
