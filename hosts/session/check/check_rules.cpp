// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/check_rules.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/attribute_catalogue.h"
#include "hosts/session/check/rule_functions.h"

namespace pelora::session {
namespace {

constexpr std::string_view kAccount = CatalogueEntry("peloraAccount").name;
constexpr std::string_view kMail = CatalogueEntry("mail").name;
constexpr std::string_view kOthers = CatalogueEntry("otherMailbox").name;
constexpr std::string_view kAdmin = CatalogueEntry("peloraAdmin").name;
constexpr std::string_view kSharedStore = CatalogueEntry("peloraSharedStoreOnly").name;
constexpr std::string_view kResourceType = CatalogueEntry("peloraResourceType").name;
constexpr std::string_view kBase = CatalogueEntry("peloraBase").name;
constexpr std::string_view kFilter = CatalogueEntry("peloraFilter").name;
constexpr std::string_view kEnabled = CatalogueEntry("peloraEnabledFeatures").name;
constexpr std::string_view kDisabled = CatalogueEntry("peloraDisabledFeatures").name;
constexpr std::string_view kHost = CatalogueEntry("peloraHostAddress").name;
constexpr std::string_view kFilePath = CatalogueEntry("peloraFilePath").name;
constexpr std::string_view kHttpPort = CatalogueEntry("peloraHttpPort").name;
constexpr std::string_view kSslPort = CatalogueEntry("peloraSslPort").name;
constexpr std::string_view kSystemAdmin = CatalogueEntry("peloraSystemAdmin").name;

constexpr std::array kRules = {
    CheckRule{.name = "address-duplicate",
              .finds = "an address that several objects have",
              .attributes = {kMail, kOthers},
              .look = rules::AddressDuplicate},
    CheckRule{.name = "address-missing",
              .finds = "an active user with an account and no address",
              .attributes = {kAccount, kMail, kOthers, kAdmin, kSharedStore, kResourceType},
              .look = rules::AddressMissing},
    CheckRule{.name = "address-syntax",
              .finds = "an address that is no local@domain of RFC 5321",
              .attributes = {kMail, kOthers},
              .look = rules::AddressSyntax},
    CheckRule{.name = "default-in-others",
              .finds = "a default address that stands among the other addresses too",
              .is_mended = true,
              .attributes = {kMail, kOthers},
              .look = rules::DefaultInOthers},
    CheckRule{.name = "server-unknown",
              .finds = "a home server or archive server that is no computer with a Pelora server",
              .looks_up_servers = true,
              .further_attributes = rules::ServerAttributes,
              .look = rules::ServerUnknown},
    CheckRule{.name = "reference-dangling",
              .finds = "a name of an object that is not there or was deleted",
              .is_mended = true,
              .looks_up_objects = true,
              .further_attributes = rules::NameAttributes,
              .look = rules::ReferenceDangling},
    CheckRule{.name = "quota-order",
              .finds = "limits that are used and not warning <= soft <= hard",
              .further_attributes = rules::QuotaAttributes,
              .look = rules::QuotaOrder},
    CheckRule{.name = "filter-syntax",
              .finds = "a search query that is no LDAP filter, or none on a list with an account",
              .attributes = {kAccount, kFilter},
              .look = rules::FilterSyntax},
    CheckRule{.name = "base-unknown",
              .finds = "a search base that is not there",
              .looks_up_objects = true,
              .attributes = {kBase},
              .look = rules::BaseUnknown},
    CheckRule{.name = "feature-conflict",
              .finds = "a feature that is both enabled and disabled",
              .attributes = {kEnabled, kDisabled},
              .look = rules::FeatureConflict},
    CheckRule{.name = "resource-type",
              .finds = "a resource type that is none, or a resource that is no shared store",
              .attributes = {kResourceType, kSharedStore},
              .look = rules::ResourceType},
    CheckRule{.name = "server-incomplete",
              .finds = "a Pelora server without address, file path or any port",
              .attributes = {kAccount, kHost, kFilePath, kHttpPort, kSslPort},
              .look = rules::ServerIncomplete},
    CheckRule{.name = "company-admin",
              .finds = "a company whose system administrator is not there or is no user",
              .looks_up_objects = true,
              .attributes = {kAccount, kSystemAdmin},
              .look = rules::CompanyAdmin},
    CheckRule{.name = "value-range",
              .finds = "a negative number, or a flag that is not 0 or 1",
              .further_attributes = rules::NumberAttributes,
              .look = rules::ValueRange},
};

}  // namespace

std::span<const CheckRule> CheckRules() { return kRules; }

std::vector<std::string> AttributesOf(const CheckRule& rule, const CheckFields& fields) {
  std::vector<std::string> names;
  for (const std::string_view name : rule.attributes) {
    if (!name.empty()) names.emplace_back(name);
  }
  if (rule.further_attributes == nullptr) return names;
  for (std::string& name : rule.further_attributes(fields)) names.push_back(std::move(name));
  return names;
}

const CheckRule* FindCheckRule(std::string_view name) {
  const auto found = std::ranges::find(kRules, name, &CheckRule::name);
  return found == kRules.end() ? nullptr : &*found;
}

}  // namespace pelora::session
