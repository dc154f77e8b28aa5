// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/default_quota.h"

#include <vector>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/company.h"
#include "hosts/session/distinguished_name.h"
#include "hosts/session/typed/quota_limits.h"
#include "hosts/session/typed/typed_number.h"

namespace pelora::session {
namespace {

/// Limits that a company gives its users.
constexpr const QuotaLimits& kDefaults = kQuotaLimits[1];
constexpr std::array<std::string_view, 3> kWords = {"warning at ", "soft limit ", "hard limit "};

std::int64_t NumberIn(const ldap::Entry& entry, std::string_view attribute) {
  return NumberOfDigits(ldap::FirstValue(entry, attribute)).value_or(0);
}

}  // namespace

std::optional<DefaultQuota> FindDefaultQuota(ldap::IDirectoryStore& store, const std::string& dn) {
  std::vector<std::string> attributes = {std::string(kDefaults.override_box)};
  for (const QuotaLimits::Limit& limit : kDefaults.limits) attributes.emplace_back(limit.attribute);
  const std::optional<ldap::Entry> company =
      FindCompany(store, std::string(ParentName(dn)), attributes);
  if (!company) return std::nullopt;
  DefaultQuota quota{.company = ldap::FirstValue(*company, "name"),
                     .is_given = NumberIn(*company, kDefaults.override_box) != 0};
  for (std::size_t limit = 0; limit < quota.limits.size(); ++limit) {
    quota.limits[limit] = NumberIn(*company, kDefaults.limits[limit].attribute);
  }
  return quota;
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
