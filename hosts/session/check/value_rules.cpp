// SPDX-License-Identifier: Apache-2.0
// What can be wrong with an object's own numbers, texts and lists.
#include <algorithm>
#include <limits>
#include <optional>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/session/check/rule_functions.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/typed/quota_limits.h"

namespace pelora::session::rules {
namespace {

constexpr std::string_view kResourceType = CatalogueEntry("peloraResourceType").name;
constexpr std::string_view kSharedStore = CatalogueEntry("peloraSharedStoreOnly").name;
constexpr std::string_view kFilter = CatalogueEntry("peloraFilter").name;
constexpr std::string_view kHttpPort = CatalogueEntry("peloraHttpPort").name;
constexpr std::string_view kSslPort = CatalogueEntry("peloraSslPort").name;

bool IsNumber(const Attribute& attribute) {
  return attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger;
}

/// Why a number cannot be what is meant; empty when it can.
std::string_view WhyOutOfRange(const Attribute& attribute, const std::string& value) {
  const std::optional<std::int64_t> number = ldap::ParseLargeInteger(value);
  if (attribute.encoding == Encoding::kFlag) {
    return number == 0 || number == 1 ? "" : "is no flag: 0 or 1";
  }
  if (!number) return "is no number";
  if (*number < 0) return "is negative";
  return *number > std::numeric_limits<std::int32_t>::max() ? "is more than 2147483647" : "";
}

}  // namespace

std::vector<std::string> QuotaAttributes(const CheckFields& /*fields*/) {
  std::vector<std::string> names;
  for (const QuotaLimits& quota : kQuotaLimits) {
    names.emplace_back(quota.override_box);
    for (const QuotaLimits::Limit& limit : quota.limits) names.emplace_back(limit.attribute);
  }
  return names;
}

std::vector<std::string> NumberAttributes(const CheckFields& /*fields*/) {
  std::vector<std::string> names;
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (IsNumber(attribute)) names.emplace_back(attribute.name);
  }
  return names;
}

void QuotaOrder(const CheckedObject& object, CheckNotes& notes) {
  for (const QuotaLimits& quota : kQuotaLimits) {
    if (object.Number(quota.override_box) == 0) continue;
    std::string told;
    std::int64_t highest = 0;
    bool is_in_order = true;
    for (const QuotaLimits::Limit& limit : quota.limits) {
      const std::int64_t number = object.Number(limit.attribute);
      // No limit; a negative one is wrong in a way of its own.
      if (number <= 0) continue;
      is_in_order = is_in_order && number >= highest;
      highest = std::max(highest, number);
      told += (told.empty() ? "" : ", ") + std::string(limit.word) + " " + std::to_string(number);
    }
    if (!is_in_order) notes.Found("limits that are not in order: " + told);
  }
}

void FilterSyntax(const CheckedObject& object, CheckNotes& notes) {
  const FieldRow* const field = object.fields().Find(object.class_name(), kFilter);
  const std::string query = object.Text(kFilter);
  if (query.empty()) {
    if (field != nullptr && object.HasAccount()) notes.Found("a list without a search query");
  } else if (!IsSearchQuery(query)) {
    notes.Found(std::string(kFilter) + ": " + query + " is no LDAP filter");
  }
}

void FeatureConflict(const CheckedObject& object, CheckNotes& notes) {
  const ldap::AttributeValues& disabled = object.Values("peloraDisabledFeatures");
  for (const std::string& feature : object.Values("peloraEnabledFeatures")) {
    // As the servers compare them: with case.
    if (std::ranges::find(disabled, feature) == disabled.end()) continue;
    notes.Found(feature + " is both enabled and disabled");
  }
}

void ResourceType(const CheckedObject& object, CheckNotes& notes) {
  const std::string type = object.Text(kResourceType);
  if (type.empty() || object.fields().FindChoice(object.class_name(), kResourceType) == nullptr) {
    return;
  }
  // A type is what makes the page call an account something else, without anything else being set.
  const std::string without = object.ChoiceOf(kResourceType, {});
  const std::string with = object.ChoiceOf(kResourceType, {{std::string(kResourceType), {type}}});
  if (with == without) {
    notes.Found(std::string(kResourceType).append(": ").append(type) + " is no resource type");
  } else if (object.Number(kSharedStore) == 0) {
    notes.Found(with + " that is no shared store");
  }
}

void ServerIncomplete(const CheckedObject& object, CheckNotes& notes) {
  // Computers are told from other objects by the field that only they have.
  if (object.fields().Find(object.class_name(), "peloraHostAddress") == nullptr) return;
  if (!object.HasAccount()) return;
  std::string missing;
  const auto add = [&missing](std::string_view what) {
    missing += missing.empty() ? "" : ", ";
    missing += what;
  };
  if (object.Text("peloraHostAddress").empty()) add("address");
  if (object.Number(kHttpPort) == 0 && object.Number(kSslPort) == 0) add("port");
  if (object.Text("peloraFilePath").empty()) add("file path");
  if (!missing.empty()) notes.Found("a Pelora server without " + missing);
}

void ValueRange(const CheckedObject& object, CheckNotes& notes) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (!IsNumber(attribute)) continue;
    for (const std::string& value : object.Values(attribute.name)) {
      const std::string_view why = WhyOutOfRange(attribute, value);
      if (why.empty()) continue;
      notes.Found(std::string(attribute.name) + ": " + value + " " + std::string(why));
    }
  }
}

}  // namespace pelora::session::rules
