// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/display_specifiers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "server/class_table.h"
#include "server/guid_text.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kSuffix = "-Display";

struct RoleAttribute {
  ConsoleRole role;
  const char* attribute;
};

constexpr std::array kRoleAttributes = {
    RoleAttribute{ConsoleRole::kPropertyPage, "adminPropertyPages"},
    RoleAttribute{ConsoleRole::kMultiselectPropertyPage, "adminMultiselectPropertyPages"},
    RoleAttribute{ConsoleRole::kCreationWizard, "creationWizard"},
    RoleAttribute{ConsoleRole::kCreationWizardExtension, "createWizardExt"},
};

/// A value `number,{identifier}[,...]`, or `{identifier}` alone.
struct Registration {
  unsigned int order = 0;
  Guid class_id;
};

bool ReadRegistration(std::string_view value, Registration& registration) {
  const std::size_t brace = value.find('{');
  if (brace == std::string_view::npos) return false;
  std::from_chars(value.data(), value.data() + brace, registration.order);
  const std::size_t end = value.find('}', brace);
  if (end == std::string_view::npos) return false;
  return ParseGuid(value.substr(brace, end + 1 - brace), registration.class_id);
}

/// The module's classes among the values, in the order of their numbers.
std::vector<Guid> OwnClasses(const AttributeValues& values) {
  std::vector<Registration> registrations;
  for (const std::string& value : values) {
    Registration registration;
    if (!ReadRegistration(value, registration)) continue;
    if (FindClass(registration.class_id) != nullptr) registrations.push_back(registration);
  }
  std::ranges::stable_sort(registrations, {}, &Registration::order);
  std::vector<Guid> classes;
  for (const Registration& registration : registrations) {
    if (std::ranges::find(classes, registration.class_id) == classes.end()) {
      classes.push_back(registration.class_id);
    }
  }
  return classes;
}

}  // namespace

StoreStatus DisplaySpecifiers::Read(IDirectoryStore& store, std::string_view language,
                                    DisplaySpecifiers& specifiers) {
  Entry root;
  if (StoreStatus status = store.ReadRoot(root); !status.Ok()) return status;
  const std::string configuration = FirstValue(root, "configurationNamingContext");
  DisplaySpecifiers read;
  if (!configuration.empty()) {
    SearchRequest request{
        .base = "CN=" + std::string(language) + ",CN=DisplaySpecifiers," + configuration,
        .scope = SearchScope::kOneLevel,
        .filter = "(objectClass=displaySpecifier)",
        .attributes = {"cn"}};
    for (const RoleAttribute& row : kRoleAttributes) request.attributes.emplace_back(row.attribute);
    const auto take = [&read](const Entry& entry) {
      const std::string name = FirstValue(entry, "cn");
      if (!name.ends_with(kSuffix)) return true;
      Attributes& attributes = read.registered_[name.substr(0, name.size() - kSuffix.size())];
      for (const RoleAttribute& row : kRoleAttributes) {
        if (!entry.attributes.contains(row.attribute)) continue;
        attributes[row.attribute] = OwnClasses(ValuesOf(entry, row.attribute));
      }
      return true;
    };
    StoreStatus status = store.Search(request, take);
    if (!status.Ok() && status.code != kLdapNoSuchObject) return status;
  }
  specifiers = std::move(read);
  return {};
}

std::vector<Guid> DisplaySpecifiers::ComponentsOf(std::string_view object_class,
                                                  ConsoleRole role) const {
  const auto row = std::ranges::find(kRoleAttributes, role, &RoleAttribute::role);
  const auto attributes = registered_.find(object_class);
  if (attributes != registered_.end()) {
    const auto classes = attributes->second.find(row->attribute);
    if (classes != attributes->second.end() && !classes->second.empty()) return classes->second;
  }
  return DefaultRegistrations(object_class, role);
}

}  // namespace pelora::ldap
