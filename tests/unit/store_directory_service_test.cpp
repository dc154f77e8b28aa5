// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/store_directory_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/support/variant_text.h"
#include "tests/unit/store_scripted.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StoreDirectoryServiceTest : public ::testing::Test {
 protected:
  ScriptedStore store_;
  StoreDirectoryService service_{store_};
  Ref<IADs> object_;
};

TEST_F(StoreDirectoryServiceTest, ABindReadsTheClassesAndNothingElse) {
  ASSERT_EQ(service_.ADsGetObject("LDAP://dc1.x.test/CN=Ada,DC=x", IID_IADsUser, object_), S_OK);
  ASSERT_THAT(store_.reads, SizeIs(1));
  EXPECT_EQ(store_.reads[0].dn, "CN=Ada,DC=x");
  EXPECT_THAT(store_.reads[0].attributes, ElementsAre("objectClass"));
}

TEST_F(StoreDirectoryServiceTest, TheNameOfAPathIsUnescaped) {
  store_.entry.dn = "CN=a/b\\, c,DC=x";
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=a\\/b\\, c,DC=x", IID_IADs, object_), S_OK);
}

TEST_F(StoreDirectoryServiceTest, ABadPathIsNotLookedUp) {
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=a/b,DC=x", IID_IADs, object_), E_ADS_BAD_PATHNAME);
  EXPECT_THAT(store_.reads, IsEmpty());
}

TEST_F(StoreDirectoryServiceTest, FailuresKeepTheirCodeAndTheirWords) {
  EXPECT_TRUE(service_.last_failure().Ok());
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=Bob,DC=x", IID_IADs, object_), kNoSuchObject);
  EXPECT_EQ(service_.last_failure().text, "no such object");
  store_.failure = {kLdapBusy, "locked by process 1"};
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=Ada,DC=x", IID_IADs, object_),
            static_cast<HRESULT>(0x8007200EU));
  EXPECT_EQ(service_.last_failure().code, kLdapBusy);
  EXPECT_EQ(service_.last_failure().text, "locked by process 1");
  store_.failure = {kLdapServerDown, "gone"};
  EXPECT_EQ(
      service_.ADsOpenObject("LDAP://rootDSE", std::nullopt, std::nullopt, 1, IID_IADs, object_),
      static_cast<HRESULT>(0x8007203AU));
  EXPECT_FALSE(object_);
}

TEST_F(StoreDirectoryServiceTest, FailuresOfBoundObjectsAreItsOwnToo) {
  ASSERT_EQ(service_.ADsGetObject("LDAP://CN=Ada,DC=x", IID_IADs, object_), S_OK);
  ASSERT_EQ(object_->Put("mail", Variant::String("x")), S_OK);
  store_.failure = {kLdapConstraintViolation, "not so"};
  EXPECT_EQ(object_->SetInfo(), static_cast<HRESULT>(0x8007202FU));
  EXPECT_EQ(service_.last_failure().text, "not so");
}

TEST_F(StoreDirectoryServiceTest, WhatIsBoundTogetherIsReadAtOnceAndNothingElse) {
  store_.entry.attributes["mail"] = {"a@x"};
  const std::vector<std::string> paths = {"LDAP://CN=Ada,DC=x", "LDAP://dc1/CN=Ada,DC=x"};
  std::vector<Ref<IADs>> objects;
  ASSERT_EQ(service_.BindPaths(paths, IID_IADsUser, objects), S_OK);
  ASSERT_THAT(objects, SizeIs(2));
  ASSERT_THAT(store_.reads, SizeIs(2));
  std::vector<std::string> expected = BoundAttributes();
  expected.emplace_back("objectClass");
  EXPECT_EQ(store_.reads[0].attributes, expected);

  // Whatever happens to the directory now: nothing reads as unset that is not.
  store_.failure = {kLdapServerDown, "gone"};
  Variant value;
  for (const Ref<IADs>& object : objects) {
    EXPECT_EQ(object->Get("mail", value), S_OK);
    EXPECT_EQ(value, Variant::String("a@x"));
    EXPECT_EQ(object->Get("description", value), E_ADS_PROPERTY_NOT_FOUND);
  }
  EXPECT_THAT(store_.reads, SizeIs(2));
}

TEST_F(StoreDirectoryServiceTest, WhatIsBoundTogetherIsWrittenLikeAnyOther) {
  store_.entry.attributes["mail"] = {"a@x"};
  std::vector<Ref<IADs>> objects;
  const std::vector<std::string> paths = {"LDAP://CN=Ada,DC=x"};
  ASSERT_EQ(service_.BindPaths(paths, IID_IADs, objects), S_OK);
  Variant value;
  ASSERT_EQ(objects[0]->Put("mail", Variant::String("b@x")), S_OK);
  EXPECT_EQ(objects[0]->Get("mail", value), S_OK);
  EXPECT_EQ(value, Variant::String("b@x"));
  ASSERT_EQ(objects[0]->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"c@x"})),
            S_OK);
  ASSERT_EQ(objects[0]->SetInfo(), S_OK);
  EXPECT_THAT(store_.modifies, SizeIs(1));
  // What was appended to is asked for again, and nothing else.
  store_.entry.attributes["otherMailbox"] = {"c@x"};
  EXPECT_EQ(objects[0]->Get("otherMailbox", value), S_OK);
  EXPECT_EQ(value, Variant::String("c@x"));
  EXPECT_THAT(store_.reads, SizeIs(2));
}

TEST_F(StoreDirectoryServiceTest, TheRootMayStandAmongThePaths) {
  const std::vector<std::string> paths = {"LDAP://CN=Ada,DC=x", "LDAP://rootDSE",
                                          "LDAP://CN=Ada,DC=x"};
  std::vector<Ref<IADs>> objects;
  ASSERT_EQ(service_.BindPaths(paths, IID_IADs, objects), S_OK);
  ASSERT_THAT(objects, SizeIs(3));
  Variant value;
  EXPECT_EQ(objects[1]->Get("defaultNamingContext", value), S_OK);
  EXPECT_EQ(value, Variant::String("DC=x"));
  EXPECT_EQ(service_.BindPaths(paths, IID_IADsUser, objects), E_NOINTERFACE);
  EXPECT_THAT(objects, IsEmpty());
}

TEST_F(StoreDirectoryServiceTest, OfManyPathsTheFirstThatFailsDecides) {
  const auto bind = [&](const std::vector<std::string>& paths) {
    std::vector<Ref<IADs>> objects = {object_};
    const HRESULT status = service_.BindPaths(paths, IID_IADsUser, objects);
    EXPECT_THAT(objects, IsEmpty());
    return status;
  };
  const std::string ada = "LDAP://CN=Ada,DC=x";
  const std::string bob = "LDAP://CN=Bob,DC=x";
  EXPECT_EQ(bind({ada, bob, "nonsense"}), kNoSuchObject);
  EXPECT_EQ(bind({ada, "nonsense", bob}), E_ADS_BAD_PATHNAME);
  EXPECT_EQ(bind({ada, "LDAP://rootDSE", "nonsense"}), E_NOINTERFACE);
  EXPECT_EQ(bind({"nonsense", bob}), E_ADS_BAD_PATHNAME);
  EXPECT_EQ(bind({bob, "LDAP://rootDSE"}), kNoSuchObject);
  // Nothing is asked for once something has failed.
  store_.reads.clear();
  EXPECT_EQ(bind({bob, ada, ada}), kNoSuchObject);
  EXPECT_THAT(store_.reads, SizeIs(1));
  store_.failure = {kLdapServerDown, "gone"};
  EXPECT_EQ(bind({ada, "nonsense"}), static_cast<HRESULT>(0x8007203AU));
  EXPECT_EQ(service_.last_failure().text, "gone");
}

TEST_F(StoreDirectoryServiceTest, AnInterfaceThatIsNotOfferedReleasesTheObject) {
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=Ada,DC=x", IID_IADsOU, object_), E_NOINTERFACE);
  EXPECT_FALSE(object_);
  EXPECT_EQ(service_.ADsGetObject("LDAP://rootDSE", IID_IADsContainer, object_), E_NOINTERFACE);
  EXPECT_FALSE(object_);
}

TEST_F(StoreDirectoryServiceTest, AnotherUserIsRefused) {
  EXPECT_EQ(
      service_.ADsOpenObject("LDAP://CN=Ada,DC=x", "admin", std::nullopt, 1, IID_IADs, object_),
      E_ADS_BAD_PARAMETER);
  EXPECT_EQ(
      service_.ADsOpenObject("LDAP://CN=Ada,DC=x", std::nullopt, "secret", 1, IID_IADs, object_),
      E_ADS_BAD_PARAMETER);
  EXPECT_FALSE(object_);
  EXPECT_THAT(store_.reads, IsEmpty());
  EXPECT_EQ(service_.ADsOpenObject("LDAP://CN=Ada,DC=x", std::nullopt, std::nullopt,
                                   ADS_SECURE_AUTHENTICATION, IID_IADs, object_),
            S_OK);
  EXPECT_TRUE(object_);
}

}  // namespace
}  // namespace pelora::ldap
