// SPDX-License-Identifier: Apache-2.0
#include "directory/attribute_catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_change.h"

namespace pelora {
namespace {

constexpr bool kOne = false;
constexpr bool kSeveral = true;

/// Name, values, encoding and rule, one line each, as an administrator's handbook would list them.
const std::vector<std::string> kExpected = {
    "peloraAccount single flag when-changed",
    "peloraHidden single flag when-changed",
    "mail single string no",
    "otherMailbox multi list no",
    "peloraSendAsPrivilege multi name-list no",
    "name single string never-written",
    "description single string when-changed",
    "peloraBase single string when-changed",
    "peloraFilter single string when-changed",
    "peloraQuotaOverride single flag when-changed",
    "peloraQuotaWarn single integer when-changed",
    "peloraQuotaSoft single integer when-changed",
    "peloraQuotaHard single integer when-changed",
    "peloraUserDefaultQuotaOverride single flag when-changed",
    "peloraUserDefaultQuotaWarn single integer when-changed",
    "peloraUserDefaultQuotaSoft single integer when-changed",
    "peloraUserDefaultQuotaHard single integer when-changed",
    "peloraQuotaUserWarningRecipients multi name-list no",
    "peloraQuotaCompanyWarningRecipients multi name-list no",
    "peloraAdmin single integer when-changed",
    "peloraSharedStoreOnly single flag when-changed",
    "peloraResourceType single string always",
    "peloraResourceCapacity single integer when-changed",
    "peloraUserServer single string when-changed",
    "peloraCompanyServer single string when-changed",
    "peloraSystemAdmin single string when-changed",
    "peloraViewPrivilege multi name-list no",
    "peloraAdminPrivilege multi name-list no",
    "peloraHostAddress single string no",
    "peloraHttpPort single integer when-changed",
    "peloraSslPort single integer when-changed",
    "peloraFilePath single string when-changed",
    "peloraContainsPublic single flag no",
    "peloraEnabledFeatures multi list per-object",
    "peloraDisabledFeatures multi list per-object",
    "peloraUserArchiveServers multi name-list per-object",
    "distinguishedName single string never-written",
};

std::string ToText(Encoding encoding) {
  switch (encoding) {
    case Encoding::kFlag:
      return "flag";
    case Encoding::kInteger:
      return "integer";
    case Encoding::kString:
      return "string";
    case Encoding::kList:
      return "list";
    case Encoding::kNameList:
      return "name-list";
  }
  return "?";
}

std::string ToText(MultiSelectionRule rule) {
  switch (rule) {
    case MultiSelectionRule::kNo:
      return "no";
    case MultiSelectionRule::kWhenChanged:
      return "when-changed";
    case MultiSelectionRule::kAlways:
      return "always";
    case MultiSelectionRule::kPerObject:
      return "per-object";
    case MultiSelectionRule::kNeverWritten:
      return "never-written";
  }
  return "?";
}

TEST(AttributeCatalogue, HoldsEveryAttributeWithItsEncodingAndRule) {
  std::vector<std::string> actual;
  for (const Attribute& attribute : kAttributeCatalogue) {
    actual.push_back(std::string(attribute.name) +
                     (attribute.is_multi_valued ? " multi " : " single ") +
                     ToText(attribute.encoding) + " " + ToText(attribute.multi_selection));
  }
  EXPECT_EQ(actual, kExpected);
}

TEST(AttributeCatalogue, ChangesTakeTheirTypeFromTheEncoding) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    const AttributeChange change = MakeChange(attribute, "1", true, kOne);
    EXPECT_EQ(change.name, attribute.name);
    EXPECT_EQ(change.value, "1");
    const bool is_number =
        attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger;
    const ChangeType expected = attribute.is_multi_valued ? ChangeType::kMultiValued
                                : is_number               ? ChangeType::kInteger
                                                          : ChangeType::kString;
    EXPECT_EQ(change.type, expected) << attribute.name;
  }
  EXPECT_EQ(static_cast<int>(ChangeType::kMultiValued), 0);
  EXPECT_EQ(static_cast<int>(ChangeType::kInteger), 3);
  EXPECT_EQ(static_cast<int>(ChangeType::kString), 8);
}

TEST(AttributeCatalogue, ChangesAreSkippedAsTheRuleSays) {
  struct Row {
    std::string_view name;
    bool unchanged_one, changed_one, unchanged_several, changed_several;
  };
  // What is skipped, by whether the field was changed and how many objects are selected.
  const std::vector<Row> rows = {
      {"mail", true, false, true, true},
      {"description", true, false, true, false},
      {"peloraResourceType", false, false, false, false},
      {"peloraEnabledFeatures", true, false, true, false},
      {"name", true, true, true, true},
  };
  for (const Row& row : rows) {
    const auto attribute = std::ranges::find(kAttributeCatalogue, row.name, &Attribute::name);
    ASSERT_NE(attribute, kAttributeCatalogue.end());
    EXPECT_EQ(MakeChange(*attribute, "", false, kOne).skip, row.unchanged_one) << row.name;
    EXPECT_EQ(MakeChange(*attribute, "", true, kOne).skip, row.changed_one) << row.name;
    EXPECT_EQ(MakeChange(*attribute, "", false, kSeveral).skip, row.unchanged_several) << row.name;
    EXPECT_EQ(MakeChange(*attribute, "", true, kSeveral).skip, row.changed_several) << row.name;
  }
}

TEST(AttributeCatalogue, AListChangeCarriesItsValuesAndBelongsToOneObject) {
  const Variant values = Variant::StringArray({"a@x"});
  const AttributeChange one = MakeListChange(CatalogueEntry("otherMailbox"), values, kOne);
  EXPECT_EQ(one.name, "otherMailbox");
  EXPECT_EQ(one.type, ChangeType::kMultiValued);
  EXPECT_EQ(one.variant, values);
  EXPECT_EQ(one.value, "");
  EXPECT_FALSE(one.skip);
  EXPECT_TRUE(MakeListChange(CatalogueEntry("otherMailbox"), values, kSeveral).skip);
}

}  // namespace
}  // namespace pelora
