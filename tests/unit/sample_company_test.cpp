// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/sample_company.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/store_directory_service.h"
#include "tests/support/variant_text.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class SampleCompanyTest : public LdbBench {
 protected:
  std::vector<Entry> Find(const std::string& filter) {
    std::vector<Entry> found;
    const StoreStatus status = store_->Search(
        {.base = kBase, .scope = SearchScope::kSubtree, .filter = filter, .attributes = {}},
        [&](Entry entry) {
          found.push_back(std::move(entry));
          return true;
        });
    EXPECT_TRUE(status.Ok()) << status.text;
    return found;
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
};

TEST_F(SampleCompanyTest, HasObjectsOfEveryKind) {
  EXPECT_THAT(Find("(&(objectClass=user)(!(objectClass=computer)))").size(), Ge(40U));
  EXPECT_THAT(Find("(objectClass=contact)").size(), Ge(3U));
  EXPECT_THAT(Find("(objectClass=group)").size(), Ge(5U));
  EXPECT_THAT(Find("(objectClass=computer)").size(), Ge(5U));
  EXPECT_THAT(Find("(objectClass=organizationalUnit)").size(), Ge(10U));
  EXPECT_THAT(Find("(&(objectClass=organizationalUnit)(peloraCompanyServer=*))").size(), Ge(2U));
  EXPECT_THAT(Find("(objectClass=peloraAddresslist)").size(), Ge(2U));
  EXPECT_THAT(Find("(objectClass=peloraDynamicDistlist)").size(), Ge(2U));
  EXPECT_THAT(Find("(&(objectClass=computer)(peloraContainsPublic=1))").size(), Ge(1U));
}

TEST_F(SampleCompanyTest, UsesEveryAttributeOfTheCatalogueWithItsEncoding) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    const std::string name(attribute.name);
    if (name == "distinguishedName") continue;
    EXPECT_THAT(Find("(" + name + "=*)"), Not(IsEmpty())) << name;
    const std::optional<AttributeType> type = store_->schema().Find(name);
    ASSERT_TRUE(type) << name;
    const bool is_number =
        attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger;
    EXPECT_EQ(type->syntax == Syntax::kInteger, is_number) << name;
    EXPECT_FALSE(attribute.is_multi_valued && type->is_single_valued) << name;
  }
}

TEST_F(SampleCompanyTest, HasEveryAccountTypeThatTheUserTabShows) {
  EXPECT_THAT(Find("(peloraResourceType=room)"), Not(IsEmpty()));
  EXPECT_THAT(Find("(peloraResourceType=equipment)"), Not(IsEmpty()));
  EXPECT_THAT(Find("(&(peloraSharedStoreOnly=1)(!(peloraResourceType=*)))"), Not(IsEmpty()));
  for (const char* const level : {"1", "2", "3"}) {
    EXPECT_THAT(Find(std::string("(peloraAdmin=") + level + ")"), Not(IsEmpty())) << level;
  }
  EXPECT_THAT(Find("(peloraHidden=1)"), Not(IsEmpty()));
  EXPECT_THAT(Find("(&(objectClass=user)(peloraAccount=0))"), Not(IsEmpty()));
  EXPECT_THAT(Find("(&(sAMAccountName=*)(objectClass=user)(!(peloraAccount=*)))"), Not(IsEmpty()));
}

TEST_F(SampleCompanyTest, HasNamesThatAreHardToHandle) {
  std::string names;
  for (const Entry& entry : Find("(objectClass=*)")) names += entry.dn + "\n";
  EXPECT_THAT(
      names, AllOf(HasSubstr("CN=Meyer\\, Anna,"), HasSubstr("A/B,OU=Labor I/O,"),
                   HasSubstr("Önder"), HasSubstr("Ελένη"), HasSubstr("Щербак"), HasSubstr("林田")));
}

TEST_F(SampleCompanyTest, NamesThatArePointedAtAreThere) {
  std::set<std::string> known;
  for (const Entry& entry : Find("(objectClass=*)")) known.insert(entry.dn);
  for (const Entry& entry : Find("(objectClass=*)")) {
    for (const auto& [name, values] : entry.attributes) {
      if (store_->schema().Find(name)->syntax != Syntax::kDistinguishedName) continue;
      for (const std::string& value : values) {
        const bool is_deleted = value.find("\\0ADEL:") != std::string::npos;
        EXPECT_TRUE(is_deleted || known.contains(value))
            << entry.dn << ": " << name << " " << value;
      }
    }
  }
}

TEST_F(SampleCompanyTest, ServersThatArePointedAtAreThere) {
  for (const char* const name :
       {"peloraUserServer", "peloraCompanyServer", "peloraUserArchiveServers"}) {
    for (Entry& entry : Find(std::string("(") + name + "=*)")) {
      for (const std::string& server : entry.attributes[name]) {
        EXPECT_EQ(Find("(&(objectClass=computer)(peloraAccount=1)(cn=" + server + "))").size(), 1U)
            << entry.dn << ": " << server;
      }
    }
  }
}

TEST_F(SampleCompanyTest, SearchesOfItsListsAreFilters) {
  for (Entry& list : Find("(peloraFilter=*)")) {
    const StoreStatus status = store_->Search({.base = list.attributes["peloraBase"].at(0),
                                               .scope = SearchScope::kSubtree,
                                               .filter = list.attributes["peloraFilter"].at(0),
                                               .attributes = {}},
                                              [](const Entry&) { return true; });
    EXPECT_TRUE(status.Ok()) << list.dn << ": " << status.text;
  }
}

TEST_F(SampleCompanyTest, EveryObjectCanBeBoundAndHasItsNames) {
  StoreDirectoryService service(*store_);
  for (const Entry& entry : Find("(|(objectClass=user)(objectClass=group)(objectClass=contact))")) {
    Ref<IADs> object;
    ASSERT_EQ(service.ADsGetObject(AdsPathOf(entry.dn), IID_IADs, object), S_OK) << entry.dn;
    Variant name;
    Variant cn;
    Variant dn;
    EXPECT_EQ(object->Get("name", name), S_OK);
    EXPECT_EQ(object->Get("cn", cn), S_OK);
    EXPECT_EQ(object->Get("distinguishedName", dn), S_OK);
    EXPECT_EQ(name, cn);
    EXPECT_EQ(dn, Variant::String(entry.dn));
    EXPECT_EQ(entry.attributes.at("objectClass").front(), "top");
  }
}

TEST_F(SampleCompanyTest, AccountNamesAndAddressesAreUnique) {
  for (const char* const name : {"sAMAccountName", "userPrincipalName", "mail"}) {
    std::set<std::string> seen;
    for (Entry& entry : Find(std::string("(") + name + "=*)")) {
      EXPECT_TRUE(seen.insert(entry.attributes[name].at(0)).second)
          << name << " " << entry.attributes[name].at(0);
    }
  }
}

TEST_F(SampleCompanyTest, OneReferenceLeadsToADeletedObject) {
  std::size_t deleted = 0;
  for (Entry& entry : Find("(peloraSendAsPrivilege=*)")) {
    for (const std::string& value : entry.attributes["peloraSendAsPrivilege"]) {
      if (value.find("\\0ADEL:") != std::string::npos) ++deleted;
    }
  }
  EXPECT_EQ(deleted, 1U);
}

}  // namespace
}  // namespace pelora::ldap
