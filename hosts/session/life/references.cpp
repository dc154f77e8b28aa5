// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/references.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/check_fields.h"
#include "hosts/session/check/rule_functions.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {
namespace {

using By = ReferringAttribute::By;

/// No tab shows the members of a group.
constexpr const char* kMember = "member";
constexpr const char* kMemberLabel = "Members";

/// So many names are asked for one by one; of more, everything that has the attribute is looked at.
constexpr std::size_t kMostAsked = 100;

std::string LabelOf(FieldCatalogue& catalogue, const std::string& attribute) {
  const Field* const field = catalogue.FindAnywhere(attribute);
  if (field == nullptr) return attribute;
  return field->place.label.empty() ? field->place.group : field->place.label;
}

/// The filter that finds whatever may refer to a target.
std::string FilterOf(const std::string& attribute, const std::vector<std::string>& values,
                     bool asks_one_by_one) {
  if (!asks_one_by_one) return "(" + attribute + "=*)";
  std::string filter = "(|";
  for (const std::string& value : values) {
    filter += "(" + attribute + "=" + EscapeFilterValue(value) + ")";
  }
  return filter + ")";
}

/// What is meant, by the keys of names.
class Meant {
 public:
  Meant(const ReferenceTargets& targets, By by)
      : is_server_(by == By::kServer), with_all_below_(targets.with_all_below) {
    for (const std::string& value : is_server_ ? targets.servers : targets.objects) {
      keys_.insert(KeyOf(value));
    }
  }

  [[nodiscard]] bool Has(const std::string& value) const {
    const std::string key = KeyOf(value);
    if (keys_.contains(key)) return true;
    if (is_server_ || !with_all_below_) return false;
    return std::ranges::any_of(
        keys_, [&key](const std::string& above) { return ldap::LiesBelow(key, above); });
  }

 private:
  [[nodiscard]] std::string KeyOf(const std::string& value) const {
    return is_server_ ? ldap::FoldCase(value) : ldap::NameKey(value);
  }

  bool is_server_;
  bool with_all_below_;
  std::unordered_set<std::string> keys_;
};

}  // namespace

std::vector<ReferringAttribute> ReferringAttributes(FieldCatalogue& catalogue,
                                                    const ldap::Schema& schema) {
  const CheckFields fields = CheckFieldsOf(catalogue);
  std::vector<ReferringAttribute> attributes;
  const auto add = [&](const std::string& name, std::string label, bool is_server) {
    const std::optional<ldap::AttributeType> type = schema.Find(name);
    if (!type) return;
    const bool is_name = type->syntax == ldap::Syntax::kDistinguishedName;
    attributes.push_back({.attribute = name,
                          .label = std::move(label),
                          .by = is_server ? By::kServer
                                : is_name ? By::kName
                                          : By::kTextOfName});
  };
  add(kMember, kMemberLabel, false);
  for (const std::string& name : rules::NameAttributes(fields)) {
    add(name, LabelOf(catalogue, name), false);
  }
  for (const std::string& name : rules::ServerAttributes(fields)) {
    add(name, LabelOf(catalogue, name), true);
  }
  return attributes;
}

ldap::StoreStatus FindReferences(ldap::IDirectoryStore& store,
                                 const std::vector<ReferringAttribute>& attributes,
                                 const ReferenceTargets& targets, const ReferenceSink& sink) {
  ldap::Entry root;
  if (ldap::StoreStatus status = store.ReadRoot(root); !status.Ok()) return status;
  const std::string base = ldap::FirstValue(root, "defaultNamingContext");
  for (const ReferringAttribute& referring : attributes) {
    const bool is_server = referring.by == By::kServer;
    const std::vector<std::string>& values = is_server ? targets.servers : targets.objects;
    if (values.empty()) continue;
    const bool asks_one_by_one =
        values.size() <= kMostAsked && (is_server || !targets.with_all_below);
    const Meant meant(targets, referring.by);
    bool goes_on = true;
    const ldap::SearchRequest request = {
        .base = base,
        .scope = ldap::SearchScope::kSubtree,
        .filter = FilterOf(referring.attribute, values, asks_one_by_one),
        .attributes = {"name", referring.attribute}};
    const ldap::StoreStatus status = store.Search(request, [&](const ldap::Entry& holder) {
      for (const std::string& value : ldap::ValuesOf(holder, referring.attribute)) {
        if (!meant.Has(value)) continue;
        goes_on = sink({.holder_dn = holder.dn,
                        .holder = ldap::FirstValue(holder, "name"),
                        .field = referring.label,
                        .target = value});
        if (!goes_on) break;
      }
      return goes_on;
    });
    if (!status.Ok()) return status;
    if (!goes_on) break;
  }
  return {};
}

}  // namespace pelora::session
