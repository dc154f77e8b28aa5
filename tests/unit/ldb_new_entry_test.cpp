// SPDX-License-Identifier: Apache-2.0
// Objects that are made in a directory file, from the bound object to the entry.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/new_store_object.h"
#include "hosts/ldap/object_name.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

class LdbNewEntryTest : public LdbBench {
 protected:
  Ref<NewStoreObject> Make(const std::string& object_class, const std::string& name) {
    return Ref<NewStoreObject>::Adopt(
        new NewStoreObject(*store_, ChildName("CN=Users," + std::string(kBase), object_class, name),
                           object_class, failure_));
  }
  AttributeValues Stored(const std::string& dn, const std::string& attribute) {
    Entry entry;
    const std::array<std::string, 1> attributes = {attribute};
    EXPECT_TRUE(Open()->Read(dn, attributes, entry).Ok()) << dn;
    return entry.attributes[attribute];
  }
  bool IsThere(const std::string& dn) {
    Entry entry;
    return Open()->Read(dn, {}, entry).Ok();
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
  std::shared_ptr<StoreStatus> failure_ = std::make_shared<StoreStatus>();
};

TEST_F(LdbNewEntryTest, AnObjectIsThereWithItsCommitAndNotBefore) {
  const Ref<NewStoreObject> object = Make("user", "Krämer, Neu");
  EXPECT_EQ(object->dn(), "CN=Krämer\\, Neu,CN=Users," + std::string(kBase));
  EXPECT_EQ(object->Put("sAMAccountName", Variant::String("nkraemer")), S_OK);
  EXPECT_EQ(object->Put("peloraAccount", Variant::Integer(1)), S_OK);
  EXPECT_FALSE(IsThere(object->dn()));
  EXPECT_EQ(object->SetInfo(), S_OK);
  EXPECT_EQ(Stored(object->dn(), "cn"), AttributeValues{"Krämer, Neu"});
  EXPECT_EQ(Stored(object->dn(), "name"), AttributeValues{"Krämer, Neu"});
  EXPECT_EQ(Stored(object->dn(), "peloraAccount"), AttributeValues{"1"});
  EXPECT_EQ(Stored(object->dn(), "objectClass"),
            (AttributeValues{"top", "person", "organizationalPerson", "user"}));
  // The same object goes on as the one that is there.
  Variant value;
  EXPECT_EQ(object->Get("name", value), S_OK);
  EXPECT_EQ(value, Variant::String("Krämer, Neu"));
  EXPECT_EQ(object->Put("peloraAccount", Variant::Integer(0)), S_OK);
  EXPECT_EQ(object->SetInfo(), S_OK);
  EXPECT_EQ(Stored(object->dn(), "peloraAccount"), AttributeValues{"0"});
}

TEST_F(LdbNewEntryTest, ANameInUseIsRefusedAndLeavesTheOtherAlone) {
  const Ref<NewStoreObject> object = Make("user", "administrator");
  EXPECT_EQ(object->SetInfo(), kObjectAlreadyExists);
  EXPECT_EQ(Stored("CN=Administrator,CN=Users," + std::string(kBase), "sAMAccountName"),
            AttributeValues{"administrator"});
}

TEST_F(LdbNewEntryTest, AnAccountNameInUseAnywhereIsRefused) {
  const Ref<NewStoreObject> object = Make("user", "Second Administrator");
  EXPECT_EQ(object->Put("sAMAccountName", Variant::String("ADMINISTRATOR")), S_OK);
  EXPECT_EQ(object->SetInfo(), kObjectAlreadyExists);
  EXPECT_EQ(failure_->text,
            "the account name is in use by CN=Administrator,CN=Users," + std::string(kBase));
  EXPECT_FALSE(IsThere(object->dn()));
  EXPECT_EQ(object->Put("sAMAccountName", Variant::String("admin (2)*")), S_OK);
  EXPECT_EQ(object->SetInfo(), S_OK);
  // Signs of a search mean themselves.
  const Ref<NewStoreObject> other = Make("user", "Third");
  EXPECT_EQ(other->Put("sAMAccountName", Variant::String("admin*")), S_OK);
  EXPECT_EQ(other->SetInfo(), S_OK);
}

TEST_F(LdbNewEntryTest, WhatTheDirectoryRefusesIsNotMade) {
  const Ref<NewStoreObject> object = Make("user", std::string(65, 'x'));
  EXPECT_EQ(object->SetInfo(), static_cast<HRESULT>(0x8007202FU));
  EXPECT_FALSE(IsThere(object->dn()));
  const auto orphan = Ref<NewStoreObject>::Adopt(
      new NewStoreObject(*store_, "CN=A,OU=Nowhere," + std::string(kBase), "user", failure_));
  EXPECT_EQ(orphan->SetInfo(), kNoSuchObject);
  const Ref<NewStoreObject> nameless = Make("user", "");
  EXPECT_TRUE(FAILED(nameless->SetInfo()));
}

TEST_F(LdbNewEntryTest, EveryClassIsMade) {
  for (const std::string object_class :
       {"user", "contact", "group", "organizationalUnit", "computer", "peloraAddresslist",
        "peloraDynamicDistlist"}) {
    const Ref<NewStoreObject> object = Make(object_class, "New " + object_class);
    EXPECT_EQ(object->SetInfo(), S_OK) << object_class << ": " << failure_->text;
    EXPECT_EQ(Stored(object->dn(), "objectClass").back(), object_class);
  }
}

}  // namespace
}  // namespace pelora::ldap
