// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/default_quota.h"

#include <algorithm>
#include <vector>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/typed/quota_limits.h"
#include "hosts/session/typed/typed_number.h"

namespace pelora::session {
namespace {

constexpr std::string_view kAccount = CatalogueEntry("peloraAccount").name;
/// Limits that a company gives its users.
constexpr const QuotaLimits& kDefaults = kQuotaLimits[1];
constexpr std::array<std::string_view, 3> kWords = {"warning at ", "soft limit ", "hard limit "};

/// The name without its first part; empty for one that has one part only.
std::string ParentOf(const std::string& dn) {
  for (std::size_t place = 0; place < dn.size(); ++place) {
    if (dn[place] == '\\') {
      ++place;
    } else if (dn[place] == ',') {
      return dn.substr(place + 1);
    }
  }
  return {};
}

std::int64_t NumberIn(const ldap::Entry& entry, std::string_view attribute) {
  return NumberOfDigits(ldap::FirstValue(entry, attribute)).value_or(0);
}

}  // namespace

std::optional<DefaultQuota> FindDefaultQuota(ldap::IDirectoryStore& store, const std::string& dn) {
  std::vector<std::string> attributes = {"objectClass", "name", std::string(kAccount),
                                         std::string(kDefaults.override_box)};
  for (const QuotaLimits::Limit& limit : kDefaults.limits) attributes.emplace_back(limit.attribute);
  for (std::string above = ParentOf(dn); !above.empty(); above = ParentOf(above)) {
    ldap::Entry entry;
    if (!store.Read(above, attributes, entry).Ok()) return std::nullopt;
    const ldap::AttributeValues& classes = ldap::ValuesOf(entry, "objectClass");
    if (std::ranges::find(classes, "organizationalUnit") == classes.end()) continue;
    if (NumberIn(entry, kAccount) == 0) continue;
    DefaultQuota quota{.company = ldap::FirstValue(entry, "name"),
                       .is_given = NumberIn(entry, kDefaults.override_box) != 0};
    for (std::size_t limit = 0; limit < quota.limits.size(); ++limit) {
      quota.limits[limit] = NumberIn(entry, kDefaults.limits[limit].attribute);
    }
    return quota;
  }
  return std::nullopt;
}

std::string DefaultQuotaSentence(const DefaultQuota& quota) {
  std::string limits;
  for (std::size_t limit = 0; limit < quota.limits.size(); ++limit) {
    if (!quota.is_given || quota.limits[limit] <= 0) continue;
    limits += (limits.empty() ? "" : ", ") + std::string(kWords[limit]) +
              std::to_string(quota.limits[limit]) + " MB";
  }
  if (limits.empty()) return quota.company + " gives its users no default quota.";
  return "The default of " + quota.company + " holds: " + limits + ".";
}

}  // namespace pelora::session
