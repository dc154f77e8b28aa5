// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/display_specifiers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "tests/support/temporary_folder.h"

namespace pelora::ldap {
namespace {

using enum ConsoleRole;

Guid IdOf(const char* name) { return FindClass(name)->class_id; }
std::string TextOf(const char* name) { return GuidText(IdOf(name)); }

constexpr const char* kForeign = "{6DFE6488-A212-11D0-BCD5-00C04FD8D5B6}";

/// A directory of which only the display specifiers of one language are there.
class SpecifierStore final : public IDirectoryStore {
 public:
  [[nodiscard]] const Schema& schema() const override { return schema_; }
  StoreStatus ReadRoot(Entry& root) override {
    if (!status.Ok()) return status;
    root = {.dn = "", .attributes = {{"configurationNamingContext", {"CN=Configuration,DC=x"}}}};
    return {};
  }
  StoreStatus Read(const std::string& /*dn*/, std::span<const std::string> /*attributes*/,
                   Entry& /*entry*/) override {
    return {32, "no such object"};
  }
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override {
    ++searches;
    if (request.base != "CN=409,CN=DisplaySpecifiers,CN=Configuration,DC=x") {
      return {32, "no such object"};
    }
    for (const Entry& entry : entries) {
      if (!sink(entry)) break;
    }
    return search_status;
  }
  StoreStatus Modify(const std::string& /*dn*/,
                     std::span<const Modification> /*modifications*/) override {
    return {53, "unwilling"};
  }
  StoreStatus ModifyStrictly(const std::string& /*dn*/,
                             std::span<const Modification> /*modifications*/) override {
    return {53, "unwilling"};
  }
  StoreStatus Add(const Entry& /*entry*/) override { return {53, "unwilling"}; }
  StoreStatus Delete(const Entry& /*made*/) override { return {53, "unwilling"}; }

  void Register(const std::string& object_class, const char* attribute, AttributeValues values) {
    entries.push_back(
        {.dn = "CN=" + object_class + "-Display",
         .attributes = {{"cn", {object_class + "-Display"}}, {attribute, std::move(values)}}});
  }

  std::vector<Entry> entries;
  StoreStatus status;
  StoreStatus search_status;
  int searches = 0;

 private:
  Schema schema_;
};

class DisplaySpecifiersTest : public ::testing::Test {
 protected:
  std::vector<Guid> Read(std::string_view object_class, ConsoleRole role) {
    DisplaySpecifiers specifiers;
    EXPECT_TRUE(DisplaySpecifiers::Read(store_, "409", specifiers).Ok());
    return specifiers.ComponentsOf(object_class, role);
  }

  SpecifierStore store_;
};

TEST_F(DisplaySpecifiersTest, TheNumbersGiveTheOrder) {
  store_.Register(
      "organizationalUnit", "adminPropertyPages",
      {"10," + TextOf("CPropPageUser"), "1," + std::string(kForeign),
       "9," + TextOf("CPropPageFeatures") + ",more", "2," + TextOf("CPropPageCompany")});
  // As numbers, not as texts.
  EXPECT_EQ(
      Read("organizationalUnit", kPropertyPage),
      (std::vector{IdOf("CPropPageCompany"), IdOf("CPropPageFeatures"), IdOf("CPropPageUser")}));
  EXPECT_EQ(store_.searches, 1);
}

TEST_F(DisplaySpecifiersTest, EqualNumbersKeepTheDirectorysOrder) {
  const std::vector<Guid> some = {IdOf("CPropPageUser"), IdOf("CPropPageFeatures"),
                                  IdOf("CPropPageCompany")};
  store_.Register("thing", "adminPropertyPages",
                  {"3," + GuidText(some[0]), "3," + GuidText(some[1]), "3," + GuidText(some[2])});
  store_.Register("other", "adminPropertyPages",
                  {"3," + GuidText(some[2]), "3," + GuidText(some[1]), "3," + GuidText(some[0])});
  EXPECT_EQ(Read("thing", kPropertyPage), some);
  EXPECT_EQ(Read("other", kPropertyPage), (std::vector{some[2], some[1], some[0]}));
}

TEST_F(DisplaySpecifiersTest, AClassThatIsEnteredTwiceIsShownOnceAtItsFirstPlace) {
  store_.Register("thing", "adminPropertyPages",
                  {"7," + TextOf("CPropPageUser"), "5," + TextOf("CPropPageFeatures"),
                   "4," + TextOf("CPropPageUser")});
  EXPECT_EQ(Read("thing", kPropertyPage),
            (std::vector{IdOf("CPropPageUser"), IdOf("CPropPageFeatures")}));
}

TEST_F(DisplaySpecifiersTest, EachRoleHasItsAttribute) {
  const std::string user = "7," + TextOf("CPropPageUser");
  const struct {
    const char* attribute;
    ConsoleRole role;
  } rows[] = {{"adminPropertyPages", kPropertyPage},
              {"adminMultiselectPropertyPages", kMultiselectPropertyPage},
              {"creationWizard", kCreationWizard},
              {"createWizardExt", kCreationWizardExtension}};
  for (const auto& row : rows) {
    store_.entries.clear();
    store_.Register("thing", row.attribute, {user});
    for (const auto& other : rows) {
      const auto expected =
          other.role == row.role ? std::vector{IdOf("CPropPageUser")} : std::vector<Guid>{};
      EXPECT_EQ(Read("THING", other.role), expected) << row.attribute;
    }
  }
}

TEST_F(DisplaySpecifiersTest, AValueWithoutNumberIsTakenToo) {
  store_.Register("thing", "creationWizard", {TextOf("CPropPageUser")});
  EXPECT_EQ(Read("thing", kCreationWizard), std::vector{IdOf("CPropPageUser")});
}

TEST_F(DisplaySpecifiersTest, WhatNobodyRegisteredIsOurOwn) {
  const std::vector<Guid> own = DefaultRegistrations("user", kPropertyPage);
  EXPECT_EQ(Read("user", kPropertyPage), own);
  store_.Register("user", "adminPropertyPages", {"1," + std::string(kForeign), "2,{broken", "3"});
  EXPECT_EQ(Read("user", kPropertyPage), own) << "others' tabs only";
  EXPECT_EQ(Read("printQueue", kPropertyPage), std::vector<Guid>{});
}

TEST_F(DisplaySpecifiersTest, ADirectoryWithoutSpecifiersHasOurOwn) {
  DisplaySpecifiers specifiers;
  EXPECT_TRUE(DisplaySpecifiers::Read(store_, "407", specifiers).Ok());
  EXPECT_EQ(specifiers.ComponentsOf("user", kPropertyPage),
            DefaultRegistrations("user", kPropertyPage));
}

TEST_F(DisplaySpecifiersTest, AFailureIsToldAndKeepsWhatWasRead) {
  store_.Register("thing", "adminPropertyPages", {"1," + TextOf("CPropPageUser")});
  DisplaySpecifiers specifiers;
  ASSERT_TRUE(DisplaySpecifiers::Read(store_, "409", specifiers).Ok());
  store_.entries.clear();
  store_.search_status = {52, "gone"};
  EXPECT_EQ(DisplaySpecifiers::Read(store_, "409", specifiers).text, "gone");
  store_.search_status = {};
  store_.status = {51, "busy"};
  EXPECT_EQ(DisplaySpecifiers::Read(store_, "409", specifiers).text, "busy");
  EXPECT_EQ(specifiers.ComponentsOf("thing", kPropertyPage), std::vector{IdOf("CPropPageUser")});
}

TEST_F(DisplaySpecifiersTest, TheSampleCompanyRegistersNothing) {
  const testing::TemporaryFolder folder;
  const std::string file = folder.File("company.ldb");
  ASSERT_TRUE(CreateLdbDirectory(file, SampleCompanyLdif()).Ok());
  std::unique_ptr<IDirectoryStore> store;
  ASSERT_TRUE(OpenLdbStore(file, {}, store).Ok());
  DisplaySpecifiers specifiers;
  EXPECT_TRUE(DisplaySpecifiers::Read(*store, "409", specifiers).Ok());
  EXPECT_EQ(specifiers.ComponentsOf("user", kPropertyPage),
            DefaultRegistrations("user", kPropertyPage));
}

}  // namespace
}  // namespace pelora::ldap
