// SPDX-License-Identifier: Apache-2.0
// Memory and references on the way from the port to the system's directory interfaces; what the
// calls mean is the contract's business.
#include "hosts/windows/adsi/ads_object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/windows/adsi/ads_directory.h"
#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/windows/provider/ldap_namespace.h"
#include "tests/windows/support/malloc_counter.h"

namespace pelora::windows {
namespace {

using pelora::testing::FakeDirectory;
using pelora::testing::FaultDirectory;
using pelora::testing::FaultPoint;
using test::LdapNamespace;
using test::MallocCounter;

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";

class AdsObjectTest : public ::testing::Test {
 protected:
  AdsObjectTest() {
    fake_.AddObject(kPath, {{"mail", Variant::String("ada@example.test")},
                            {"otherMailbox", Variant::StringArray({"a", "b", "c"})}});
  }

  Ref<pelora::IADs> Bind() {
    Ref<pelora::IADs> object;
    EXPECT_EQ(directory_.ADsGetObject(kPath, pelora::IID_IADsUser, object), S_OK);
    return object;
  }

  FakeDirectory fake_;
  FaultDirectory faulty_{fake_};
  LdapNamespace provider_{faulty_};
  AdsDirectory directory_;
};

TEST_F(AdsObjectTest, ARoundOfEverythingGivesAllMemoryBack) {
  // The first round leaves behind what the system keeps for good.
  long after_first = 0;
  const MallocCounter memory;
  for (int round = 0; round < 20; ++round) {
    const Ref<pelora::IADs> object = Bind();
    ASSERT_TRUE(object);
    Variant value;
    EXPECT_EQ(object->Get("mail", value), S_OK);
    EXPECT_EQ(object->Get("otherMailbox", value), S_OK);
    EXPECT_EQ(object->Put("otherMailbox", value), S_OK);
    EXPECT_EQ(object->Put("mail", Variant::String("new@example.test")), S_OK);
    EXPECT_EQ(object->PutEx(ADS_PROPERTY_CLEAR, "description", Variant::String("ignored")), S_OK);
    EXPECT_EQ(object->SetInfo(), S_OK);
    if (round == 0) after_first = memory.live();
  }
  EXPECT_EQ(fake_.live_objects(), 0U);
  EXPECT_LE(memory.live(), after_first);
  EXPECT_EQ(memory.freed_twice(), 0);
}

TEST_F(AdsObjectTest, FailuresGiveAllMemoryBackToo) {
  long after_first = 0;
  const MallocCounter memory;
  for (int round = 0; round < 20; ++round) {
    const Ref<pelora::IADs> object = Bind();
    ASSERT_TRUE(object);
    for (const FaultPoint point :
         {FaultPoint::kGet, FaultPoint::kPut, FaultPoint::kPutEx, FaultPoint::kSetInfo}) {
      faulty_.plan().Fail(point, 1, E_ACCESSDENIED);
    }
    Variant value;
    const Variant list = Variant::StringArray({"x", "y"});
    EXPECT_EQ(object->Get("mail", value), E_ACCESSDENIED);
    EXPECT_EQ(object->Put("otherMailbox", list), E_ACCESSDENIED);
    EXPECT_EQ(object->PutEx(ADS_PROPERTY_UPDATE, "otherMailbox", list), E_ACCESSDENIED);
    EXPECT_EQ(object->SetInfo(), E_ACCESSDENIED);
    EXPECT_EQ(object->Put("mail", Variant::OtherType(VT_DATE)), E_ADS_CANT_CONVERT_DATATYPE);
    if (round == 0) after_first = memory.live();
  }
  EXPECT_EQ(fake_.live_objects(), 0U);
  EXPECT_LE(memory.live(), after_first);
  EXPECT_EQ(memory.freed_twice(), 0);
}

TEST_F(AdsObjectTest, AnObjectThatLacksTheInterfaceIsReleased) {
  Ref<pelora::IADs> object;
  EXPECT_EQ(directory_.ADsGetObject(kPath, pelora::IID_IADsOU, object), E_NOINTERFACE);
  EXPECT_FALSE(object);
  EXPECT_EQ(fake_.live_objects(), 0U);
}

TEST_F(AdsObjectTest, BindsWithTheUsersOwnCredentials) {
  Ref<pelora::IADs> object;
  EXPECT_EQ(directory_.ADsOpenObject(kPath, std::nullopt, std::nullopt, ADS_SECURE_AUTHENTICATION,
                                     pelora::IID_IADs, object),
            S_OK);
  EXPECT_EQ(fake_.Log(), std::vector<std::string>{"ADsOpenObject " + std::string(kPath) + " 1"});
}

TEST_F(AdsObjectTest, AnOpeningThatSucceedsWithoutAnObjectIsToldAsItIs) {
  for (const HRESULT status : {S_OK, S_FALSE, S_ADS_ERRORSOCCURRED}) {
    provider_.OpenNothing(status);
    Ref<pelora::IADs> object;
    EXPECT_EQ(directory_.ADsOpenObject("LDAP://rootDSE", std::nullopt, std::nullopt,
                                       ADS_SECURE_AUTHENTICATION, pelora::IID_IADs, object),
              status);
    EXPECT_FALSE(object);
    EXPECT_EQ(directory_.ADsGetObject(kPath, pelora::IID_IADs, object),
              status == S_OK ? E_UNEXPECTED : status);
    EXPECT_FALSE(object);
  }
}

TEST_F(AdsObjectTest, AFailureIsTheSystemsOwnHoweverThePathIsWritten) {
  constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);
  Ref<pelora::IADs> object;
  for (const char* const path : {"LDAP://CN=Ada,DC=fake", "ldap://CN=Ada,DC=fake"}) {
    for (const HRESULT status : {kServerDown, E_FAIL, MK_E_SYNTAX, E_ADS_BAD_PATHNAME}) {
      faulty_.plan().Fail(FaultPoint::kOpenObject, 1, status);
      EXPECT_EQ(directory_.ADsOpenObject(path, std::nullopt, std::nullopt,
                                         ADS_SECURE_AUTHENTICATION, pelora::IID_IADs, object),
                status)
          << path;
      EXPECT_FALSE(object);
    }
  }
}

TEST_F(AdsObjectTest, APathThatNoProviderKnowsGivesWhatTheSystemSays) {
  const wchar_t* const path = L"nobody://CN=Ada,DC=fake";
  Ref<::IUnknown> bound;
  const HRESULT said = ::ADsGetObject(path, ::IID_IUnknown, reinterpret_cast<void**>(bound.Put()));
  EXPECT_TRUE(FAILED(said));
  Ref<pelora::IADs> object;
  EXPECT_EQ(directory_.ADsGetObject("nobody://CN=Ada,DC=fake", pelora::IID_IADs, object), said);
  EXPECT_FALSE(object);
}

TEST_F(AdsObjectTest, ASystemObjectCanBeWrappedAndIsHeldOnce) {
  Ref<pelora::IADs> object = Bind();
  Ref<pelora::IADs> same = object;
  object.Reset();
  EXPECT_EQ(fake_.live_objects(), 1U);
  same.Reset();
  EXPECT_EQ(fake_.live_objects(), 0U);
}

}  // namespace
}  // namespace pelora::windows
