// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/new_store_object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/new_entry.h"
#include "tests/unit/store_scripted.h"

namespace pelora::ldap {
namespace {

class NewStoreObjectTest : public ::testing::Test {
 protected:
  NewStoreObjectTest()
      : object_(Ref<NewStoreObject>::Adopt(
            new NewStoreObject(store_, "CN=Ada,DC=x", "user", failure_))) {}

  std::string Read(const std::string& name) {
    Variant value;
    const HRESULT status = object_->Get(name, value);
    if (FAILED(status)) {
      EXPECT_TRUE(value.IsEmpty());
      return status == E_ADS_PROPERTY_NOT_FOUND ? "none" : "failed";
    }
    return value.type() == VT_I4 ? std::to_string(value.integer()) : value.string();
  }

  ScriptedStore store_;
  std::shared_ptr<StoreStatus> failure_ = std::make_shared<StoreStatus>();
  Ref<NewStoreObject> object_;
};

TEST_F(NewStoreObjectTest, NothingIsAskedOfTheDirectoryBeforeTheCommit) {
  EXPECT_EQ(Read("mail"), "none");
  EXPECT_EQ(object_->Put("mail", Variant::String("ada@x")), S_OK);
  EXPECT_EQ(object_->Put("PELORAACCOUNT", Variant::Integer(1)), S_OK);
  EXPECT_EQ(Read("MAIL"), "ada@x");
  EXPECT_EQ(Read("peloraAccount"), "1");
  EXPECT_EQ(Read("objectClass"), "user");
  EXPECT_TRUE(store_.reads.empty());
  EXPECT_TRUE(store_.adds.empty());
  EXPECT_FALSE(object_->is_committed());
}

TEST_F(NewStoreObjectTest, TheCommitIsOneAddWithEverythingStaged) {
  EXPECT_EQ(object_->Put("mail", Variant::String("ada@x")), S_OK);
  EXPECT_EQ(object_->Put("peloraAccount", Variant::Integer(1)), S_OK);
  EXPECT_EQ(object_->Put("otherMailbox", Variant::StringArray({"a@x", "b@x"})), S_OK);
  EXPECT_EQ(object_->Put("mail", Variant::String("ada2@x")), S_OK);
  EXPECT_EQ(object_->SetInfo(), S_OK);
  ASSERT_EQ(store_.adds.size(), 1U);
  EXPECT_EQ(store_.adds[0].dn, "CN=Ada,DC=x");
  const AttributeMap expected = {{"objectClass", {"user"}},
                                 {"mail", {"ada2@x"}},
                                 {"otherMailbox", {"a@x", "b@x"}},
                                 {"peloraAccount", {"1"}}};
  EXPECT_EQ(store_.adds[0].attributes, expected);
  EXPECT_TRUE(store_.modifies.empty());
  EXPECT_TRUE(object_->is_committed());
}

TEST_F(NewStoreObjectTest, AnObjectWithNothingStagedIsMadeAllTheSame) {
  EXPECT_EQ(object_->SetInfo(), S_OK);
  ASSERT_EQ(store_.adds.size(), 1U);
  EXPECT_EQ(store_.adds[0].attributes, (AttributeMap{{"objectClass", {"user"}}}));
}

TEST_F(NewStoreObjectTest, AFailedCommitKeepsWhatIsStagedAndMayBeTriedAgain) {
  EXPECT_EQ(object_->Put("mail", Variant::String("ada@x")), S_OK);
  store_.failure = {kLdapAlreadyExists, "there already"};
  EXPECT_EQ(object_->SetInfo(), kObjectAlreadyExists);
  EXPECT_EQ(failure_->code, kLdapAlreadyExists);
  EXPECT_EQ(failure_->text, "there already");
  EXPECT_EQ(Read("mail"), "ada@x");
  store_.failure = {};
  EXPECT_EQ(object_->SetInfo(), S_OK);
  ASSERT_EQ(store_.adds.size(), 2U);
  EXPECT_EQ(store_.adds[1].attributes, store_.adds[0].attributes);
}

TEST_F(NewStoreObjectTest, AfterTheCommitItIsTheObjectThatIsThere) {
  EXPECT_EQ(object_->SetInfo(), S_OK);
  store_.entry.attributes["mail"] = {"given@x"};
  EXPECT_EQ(Read("mail"), "given@x");
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(object_->Put("mail", Variant::String("later@x")), S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_CLEAR, "otherMailbox", {}), S_OK);
  EXPECT_EQ(object_->PutBytes("unicodePwd", "x"), E_UNEXPECTED);
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(store_.adds.size(), 1U);
  ASSERT_EQ(store_.modifies.size(), 1U);
  EXPECT_EQ(store_.modifies[0].modifications.size(), 2U);
}

TEST_F(NewStoreObjectTest, StagesAsTheControlsSay) {
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"a", "b"})),
            S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"b", "c"})),
            S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_DELETE, "otherMailbox", Variant::StringArray({"a", "x"})),
            S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_UPDATE, "mail", Variant::StringArray({"ada@x"})), S_OK);
  EXPECT_EQ(object_->Put("description", Variant::String("short")), S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_CLEAR, "description", {}), S_OK);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_DELETE, "flag", Variant::StringArray({"TRUE"})), S_OK);
  EXPECT_EQ(object_->PutEx(5, "mail", {}), E_ADS_BAD_PARAMETER);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "mail", Variant::Array({})), E_ADS_BAD_PARAMETER);
  EXPECT_EQ(object_->SetInfo(), S_OK);
  const AttributeMap expected = {
      {"objectClass", {"user"}}, {"mail", {"ada@x"}}, {"otherMailbox", {"b", "c"}}};
  EXPECT_EQ(store_.adds.at(0).attributes, expected);
}

TEST_F(NewStoreObjectTest, AnEmptyListIsNotStaged) {
  EXPECT_EQ(object_->Put("otherMailbox", Variant::StringArray({"a"})), S_OK);
  EXPECT_EQ(object_->Put("OtherMailbox", Variant::Array({})), S_OK);
  EXPECT_EQ(Read("otherMailbox"), "none");
}

TEST_F(NewStoreObjectTest, RefusesWhatTheSchemaDoesNotKnow) {
  EXPECT_EQ(object_->Put("unheardOf", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(object_->Put("peloraAccount", Variant::String("many")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "unheardOf", Variant::StringArray({"x"})),
            E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(Read("peloraAccount"), "none");
}

TEST_F(NewStoreObjectTest, BytesAreSentAsTheyAre) {
  const std::string bytes("\"\0p\0", 4);
  EXPECT_EQ(object_->PutBytes("unicodePwd", bytes), S_OK);
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(store_.adds.at(0).attributes.at("unicodePwd"), AttributeValues{bytes});
}

TEST_F(NewStoreObjectTest, OffersTheInterfacesOfItsClass) {
  void* found = nullptr;
  EXPECT_EQ(object_->QueryInterface(IID_IADsUser, &found), S_OK);
  EXPECT_EQ(found, static_cast<IADs*>(object_.Get()));
  EXPECT_EQ(object_->Release(), 1U);
  EXPECT_EQ(object_->QueryInterface(IID_IADsOU, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(object_->QueryInterface(IID_IADs, nullptr), E_POINTER);
  const auto unit = Ref<NewStoreObject>::Adopt(
      new NewStoreObject(store_, "OU=S,DC=x", "organizationalUnit", failure_));
  EXPECT_EQ(unit->QueryInterface(IID_IADsOU, &found), S_OK);
  EXPECT_EQ(unit->Release(), 1U);
  // It can be bound as any object is.
  EXPECT_EQ(unit->QueryInterface(IID_IADs, &found), S_OK);
  EXPECT_EQ(unit->Release(), 1U);
}

TEST(CompleteClassesTest, PutsTheBasesInFront) {
  const auto complete = [](AttributeValues classes) {
    Entry entry{.dn = "", .attributes = {{"objectClass", std::move(classes)}}};
    CompleteClasses(entry);
    return entry.attributes["objectClass"];
  };
  EXPECT_EQ(complete({"user"}), (AttributeValues{"top", "person", "organizationalPerson", "user"}));
  EXPECT_EQ(complete({"computer"}),
            (AttributeValues{"top", "person", "organizationalPerson", "user", "computer"}));
  EXPECT_EQ(complete({"contact"}),
            (AttributeValues{"top", "person", "organizationalPerson", "contact"}));
  EXPECT_EQ(complete({"group"}), (AttributeValues{"top", "group"}));
  EXPECT_EQ(complete({"organizationalUnit"}), (AttributeValues{"top", "organizationalUnit"}));
  EXPECT_EQ(complete({"peloraAddresslist"}), (AttributeValues{"top", "peloraAddresslist"}));
  EXPECT_EQ(complete({"top", "person", "organizationalPerson", "user"}),
            (AttributeValues{"top", "person", "organizationalPerson", "user"}));
  EXPECT_EQ(complete({"Contact", "top"}),
            (AttributeValues{"top", "person", "organizationalPerson", "Contact"}));
  EXPECT_EQ(complete({}), AttributeValues{});
}

}  // namespace
}  // namespace pelora::ldap
