// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/store_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/support/variant_text.h"
#include "tests/unit/store_scripted.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Operation = Modification::Operation;

class StoreObjectTest : public ::testing::Test {
 protected:
  [[nodiscard]] Ref<StoreObject> Make(StoreObject::Identity identity) {
    return Ref<StoreObject>::Adopt(new StoreObject(store_, std::move(identity), failure_));
  }
  [[nodiscard]] Variant Value(const char* name) {
    Variant value;
    EXPECT_EQ(object_->Get(name, value), S_OK) << name;
    return value;
  }
  [[nodiscard]] HRESULT Status(const char* name) {
    Variant value;
    const HRESULT status = object_->Get(name, value);
    EXPECT_EQ(value.IsEmpty(), FAILED(status));
    return status;
  }

  ScriptedStore store_;
  std::shared_ptr<StoreStatus> failure_ = std::make_shared<StoreStatus>();
  Ref<StoreObject> object_ =
      Make({.dn = "CN=Ada,DC=x", .is_root = false, .classes = {"top", "user"}});
};

TEST_F(StoreObjectTest, NothingIsReadBeforeItIsAskedFor) {
  ASSERT_EQ(object_->Put("mail", Variant::String("a@x")), S_OK);
  EXPECT_EQ(Value("mail"), Variant::String("a@x"));
  EXPECT_THAT(store_.reads, IsEmpty());
}

TEST_F(StoreObjectTest, WhatTheExtensionKnowsIsReadByOneRequest) {
  store_.entry.attributes["mail"] = {"a@x"};
  store_.entry.attributes["peloraAccount"] = {"1"};
  EXPECT_EQ(Value("mail"), Variant::String("a@x"));
  EXPECT_EQ(Value("peloraAccount"), Variant::Integer(1));
  EXPECT_EQ(Status("otherMailbox"), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(Status("otherMailbox"), E_ADS_PROPERTY_NOT_FOUND);
  ASSERT_THAT(store_.reads, SizeIs(1));
  EXPECT_EQ(store_.reads[0].dn, "CN=Ada,DC=x");
  EXPECT_EQ(store_.reads[0].attributes, BoundAttributes());
}

TEST_F(StoreObjectTest, WhatIsAskedForIsWhatTheCatalogueKnows) {
  EXPECT_THAT(BoundAttributes(), ::testing::SizeIs(kAttributeCatalogue.size() + 1));
  EXPECT_TRUE(IsBoundAttribute("cn")) << "a tab shows it as the object's name";
  for (const Attribute& attribute : kAttributeCatalogue) {
    EXPECT_TRUE(IsBoundAttribute(attribute.name)) << attribute.name;
  }
  EXPECT_TRUE(IsBoundAttribute("PELORAACCOUNT"));
  // What nobody here has any business with.
  for (const char* const name : {"thumbnailPhoto", "jpegPhoto", "unicodePwd", "ms-Mcs-AdmPwd",
                                 "msLAPS-Password", "userCertificate", "member", "*", ""}) {
    EXPECT_FALSE(IsBoundAttribute(name)) << name;
  }
}

TEST_F(StoreObjectTest, AnAttributeThatTheExtensionDoesNotKnowIsReadAloneAndOnce) {
  store_.entry.attributes["flag"] = {"TRUE"};
  store_.types.Add("photo", {});
  EXPECT_EQ(ToText(Value("flag")), ToText(Value("flag")));
  EXPECT_EQ(Status("photo"), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(Status("photo"), E_ADS_PROPERTY_NOT_FOUND);
  ASSERT_THAT(store_.reads, SizeIs(2));
  EXPECT_THAT(store_.reads[0].attributes, ElementsAre("flag"));
  EXPECT_THAT(store_.reads[1].attributes, ElementsAre("photo"));
}

TEST_F(StoreObjectTest, AnAttributeThatTheSchemaLacksSaysWhatToDo) {
  EXPECT_EQ(object_->Put("peloraHidden", Variant::Integer(1)), E_ADS_CANT_CONVERT_DATATYPE);
  const std::string text =
      "the directory's schema does not know the attribute 'peloraHidden': extend it with "
      "\"pelora-deploy schema\"";
  EXPECT_EQ(failure_->text, text);
  EXPECT_EQ(failure_->code, kLdapUndefinedType);
  // A server that is behind the schema it gave.
  *failure_ = {};
  store_.entry.attributes["peloraHidden"] = {"1"};
  EXPECT_EQ(Status("peloraHidden"), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(failure_->text, text);
  // Nobody's to deploy.
  EXPECT_EQ(object_->Put("photo", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(failure_->text, "the directory's schema does not know the attribute 'photo'");
}

TEST_F(StoreObjectTest, AReadingThatFailedIsTriedAgain) {
  store_.entry.attributes["mail"] = {"a@x"};
  store_.failure = {kLdapBusy, "locked"};
  EXPECT_EQ(Status("mail"), HresultOfLdap(kLdapBusy));
  EXPECT_EQ(failure_->text, "locked");
  store_.failure = {};
  EXPECT_EQ(Value("mail"), Variant::String("a@x"));
  EXPECT_THAT(store_.reads, SizeIs(2));
}

TEST_F(StoreObjectTest, AnAttributeWithoutAKnownTypeCannotBeConverted) {
  store_.entry.attributes["novelty"] = {"x"};
  EXPECT_EQ(Status("novelty"), E_ADS_CANT_CONVERT_DATATYPE);
}

TEST_F(StoreObjectTest, AStoredIntegerThatIsNoneCannotBeConverted) {
  store_.entry.attributes["peloraAccount"] = {"4294967296"};
  EXPECT_EQ(Status("peloraAccount"), E_ADS_CANT_CONVERT_DATATYPE);
}

TEST_F(StoreObjectTest, EverythingStagedGoesOutInOneRequestInTheOrderOfStaging) {
  ASSERT_EQ(object_->Put("peloraAccount", Variant::Integer(1)), S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_CLEAR, "description", Variant()), S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"a", "b"})),
            S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_DELETE, "flag", Variant::StringArray({"TRUE"})), S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_UPDATE, "mail", Variant::StringArray({"m"})), S_OK);
  ASSERT_EQ(object_->Put("PELORAACCOUNT", Variant::Integer(0)), S_OK);
  ASSERT_EQ(object_->SetInfo(), S_OK);

  ASSERT_THAT(store_.modifies, SizeIs(1));
  EXPECT_EQ(store_.modifies[0].dn, "CN=Ada,DC=x");
  const std::vector<Modification>& sent = store_.modifies[0].modifications;
  ASSERT_THAT(sent, SizeIs(5));
  const Modification expected[] = {{Operation::kReplace, "PELORAACCOUNT", {"0"}},
                                   {Operation::kReplace, "description", {}},
                                   {Operation::kAdd, "otherMailbox", {"a", "b"}},
                                   {Operation::kDelete, "flag", {"TRUE"}},
                                   {Operation::kReplace, "mail", {"m"}}};
  for (std::size_t at = 0; at < sent.size(); ++at) {
    EXPECT_EQ(sent[at].operation, expected[at].operation) << at;
    EXPECT_EQ(sent[at].attribute, expected[at].attribute);
    EXPECT_EQ(sent[at].values, expected[at].values);
  }
}

TEST_F(StoreObjectTest, AnEmptyArrayIsAReplacementWithoutValues) {
  ASSERT_EQ(object_->Put("otherMailbox", Variant::Array({})), S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_UPDATE, "description", Variant::Array({})), S_OK);
  ASSERT_EQ(object_->SetInfo(), S_OK);
  for (const Modification& sent : store_.modifies.at(0).modifications) {
    EXPECT_EQ(sent.operation, Operation::kReplace);
    EXPECT_THAT(sent.values, IsEmpty());
  }
}

TEST_F(StoreObjectTest, WithNothingStagedNothingIsSent) {
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(object_->Put("unknown", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(object_->Put("peloraAccount", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(object_->PutEx(9, "mail", Variant::StringArray({"x"})), E_ADS_BAD_PARAMETER);
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_THAT(store_.modifies, IsEmpty());
  EXPECT_THAT(store_.reads, IsEmpty());
}

TEST_F(StoreObjectTest, AppendAndDeleteNeedAnArrayWithValues) {
  for (const std::int32_t control : {ADS_PROPERTY_APPEND, ADS_PROPERTY_DELETE}) {
    for (const Variant& value : {Variant(), Variant::String("x"), Variant::Array({})}) {
      EXPECT_EQ(object_->PutEx(control, "otherMailbox", value), E_ADS_BAD_PARAMETER)
          << control << ": " << ToText(value);
    }
  }
}

TEST_F(StoreObjectTest, AValueThatDoesNotFitLeavesWhatWasStaged) {
  ASSERT_EQ(object_->Put("peloraAccount", Variant::Integer(7)), S_OK);
  EXPECT_EQ(object_->Put("peloraAccount", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(Value("peloraAccount"), Variant::Integer(7));
}

TEST_F(StoreObjectTest, AFailedCommitIsSentAgainWhole) {
  ASSERT_EQ(object_->Put("peloraAccount", Variant::Integer(1)), S_OK);
  ASSERT_EQ(object_->Put("mail", Variant::String("a")), S_OK);
  store_.failure = {kLdapBusy, "locked by somebody"};
  EXPECT_EQ(object_->SetInfo(), HresultOfLdap(kLdapBusy));
  EXPECT_EQ(failure_->code, kLdapBusy);
  EXPECT_EQ(failure_->text, "locked by somebody");
  store_.failure = {};
  EXPECT_EQ(object_->SetInfo(), S_OK);
  ASSERT_THAT(store_.modifies, SizeIs(2));
  EXPECT_THAT(store_.modifies[1].modifications, SizeIs(2));
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_THAT(store_.modifies, SizeIs(2));
}

TEST_F(StoreObjectTest, WhatWasReplacedStaysCachedAsItWasSent) {
  store_.entry.attributes["mail"] = {"old"};
  ASSERT_EQ(object_->Put("mail", Variant::String("new")), S_OK);
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_CLEAR, "description", Variant()), S_OK);
  ASSERT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(Value("mail"), Variant::String("new"));
  EXPECT_EQ(Status("description"), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_THAT(store_.reads, IsEmpty());

  // The filling that another name asks for leaves them alone.
  store_.entry.attributes["description"] = {"from elsewhere"};
  EXPECT_EQ(Status("otherMailbox"), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(Value("mail"), Variant::String("new"));
  EXPECT_EQ(Status("description"), E_ADS_PROPERTY_NOT_FOUND);
}

TEST_F(StoreObjectTest, WhatWasAppendedToIsReadAloneAndOnce) {
  store_.entry.attributes["mail"] = {"m"};
  store_.entry.attributes["otherMailbox"] = {"a"};
  EXPECT_EQ(Value("otherMailbox"), Variant::String("a"));
  ASSERT_EQ(object_->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"b"})), S_OK);
  ASSERT_EQ(object_->SetInfo(), S_OK);
  store_.entry.attributes["otherMailbox"] = {"a", "b"};
  store_.entry.attributes["mail"] = {"changed elsewhere"};
  EXPECT_EQ(Value("otherMailbox"), Variant::StringArray({"a", "b"}));
  EXPECT_EQ(Value("otherMailbox"), Variant::StringArray({"a", "b"}));
  EXPECT_EQ(Value("mail"), Variant::String("m"));
  ASSERT_THAT(store_.reads, SizeIs(2));
  EXPECT_THAT(store_.reads[1].attributes, ElementsAre("otherMailbox"));
}

TEST_F(StoreObjectTest, TheRootIsReadAndNeverWritten) {
  object_ = Make({.dn = "", .is_root = true, .classes = {}});
  EXPECT_EQ(Value("defaultNamingContext"), Variant::String("DC=x"));
  EXPECT_EQ(Status("mail"), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(store_.root_reads, 1);
  ASSERT_EQ(object_->Put("mail", Variant::String("x")), S_OK);
  EXPECT_EQ(object_->SetInfo(), HresultOfLdap(kLdapUnwillingToPerform));
  EXPECT_THAT(store_.modifies, IsEmpty());
}

struct InterfaceRow {
  const char* object_class;
  bool user;
  bool unit;
  bool container;
};

TEST_F(StoreObjectTest, TheClassDecidesOnTheInterfaces) {
  constexpr InterfaceRow kRows[] = {
      {"user", true, false, false},
      {"USER", true, false, false},
      {"contact", false, false, false},
      {"group", false, false, false},
      {"organizationalUnit", false, true, true},
      {"container", false, false, true},
      {"domainDNS", false, false, true},
      {"builtinDomain", false, false, true},
      {"peloraAddresslist", false, false, false},
      {"userish", false, false, false},
  };
  for (const InterfaceRow& row : kRows) {
    object_ = Make({.dn = "CN=x", .is_root = false, .classes = {"top", row.object_class}});
    const std::pair<Guid, bool> expected[] = {{IID_IUnknown, true},
                                              {IID_IADs, true},
                                              {IID_IADsUser, row.user},
                                              {IID_IADsOU, row.unit},
                                              {IID_IADsContainer, row.container},
                                              {IID_IDataObject, false}};
    for (const auto& [iid, offered] : expected) {
      void* found = this;
      EXPECT_EQ(object_->QueryInterface(iid, &found), offered ? S_OK : E_NOINTERFACE)
          << row.object_class;
      EXPECT_EQ(found, offered ? static_cast<IADs*>(object_.Get()) : nullptr);
      if (offered) object_->Release();
    }
  }
  EXPECT_EQ(object_->QueryInterface(IID_IADs, nullptr), E_POINTER);
}

TEST_F(StoreObjectTest, ReferencesAreCounted) {
  EXPECT_EQ(object_->AddRef(), 2U);
  void* found = nullptr;
  ASSERT_EQ(object_->QueryInterface(IID_IADs, &found), S_OK);
  EXPECT_EQ(object_->AddRef(), 4U);
  EXPECT_EQ(object_->Release(), 3U);
  EXPECT_EQ(object_->Release(), 2U);
  EXPECT_EQ(object_->Release(), 1U);
}

/// Notes what it is told, one line each.
class NotingWitness final : public IReadingWitness {
 public:
  std::vector<std::string> lines;
  int released = 0;
  void OnReleased() noexcept override { ++released; }
  void OnTold(const std::string& dn, std::string_view attribute,
              const AttributeValues& values) override {
    std::string line = dn + " " + std::string(attribute) + ":";
    for (const std::string& value : values) line += " " + value;
    lines.push_back(line);
  }
};

TEST_F(StoreObjectTest, AWitnessIsToldWhatTheDirectorySaysAndNotWhatWasStaged) {
  NotingWitness witness;
  store_.entry.attributes["otherMailbox"] = {"a@x", "b@x"};
  object_ = Ref<StoreObject>::Adopt(new StoreObject(
      store_, {.dn = "CN=Ada,DC=x", .is_root = false, .classes = {"user"}}, failure_,
      std::make_shared<BindingOptions>(BindingOptions{.witness = &witness})));
  static_cast<void>(Value("otherMailbox"));
  EXPECT_EQ(Status("mail"), E_ADS_PROPERTY_NOT_FOUND);
  ASSERT_EQ(object_->Put("mail", Variant::String("m@x")), S_OK);
  EXPECT_EQ(Value("mail"), Variant::String("m@x"));
  EXPECT_THAT(witness.lines, ElementsAre("CN=Ada,DC=x otherMailbox: a@x b@x", "CN=Ada,DC=x mail:"));
  EXPECT_EQ(witness.released, 0);
  object_.Reset();
  EXPECT_EQ(witness.released, 1);
}

TEST_F(StoreObjectTest, WhatAWitnessIsToldOfAFailedReadingIsNothing) {
  NotingWitness witness;
  object_ = Ref<StoreObject>::Adopt(new StoreObject(
      store_, {.dn = "CN=Ada,DC=x", .is_root = false, .classes = {"user"}}, failure_,
      std::make_shared<BindingOptions>(BindingOptions{.witness = &witness})));
  store_.failure = {kLdapBusy, "locked"};
  EXPECT_EQ(Status("mail"), HresultOfLdap(kLdapBusy));
  EXPECT_THAT(witness.lines, IsEmpty());
  object_.Reset();
}

}  // namespace
}  // namespace pelora::ldap
