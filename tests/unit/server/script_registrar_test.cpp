// SPDX-License-Identifier: Apache-2.0
#include "server/script_registrar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/server/fake_registration.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using testing::FakeRegistration;
using ::testing::IsEmpty;
using ::testing::Pair;
using testing::RegistryValues;

std::vector<ScriptKey> Script() {
  return ReadRegistrationScript(R"(
      HKCR
      {
          Prog = s 'Name'
          {
              CLSID = s 'id'
          }
          NoRemove CLSID
          {
              ForceRemove id
              {
                  val AppID = s 'app'
              }
              val Shared = s 'ours'
          }
      })",
                                {})
      .keys.value();
}

TEST(ScriptRegistrar, WritesEveryKeyAndValue) {
  FakeRegistration registry;
  EXPECT_EQ(RegisterScript(Script(), registry), S_OK);
  EXPECT_THAT(registry.keys(), ElementsAre(Pair("CLSID", RegistryValues{{"Shared", "ours"}}),
                                           Pair("CLSID\\id", RegistryValues{{"AppID", "app"}}),
                                           Pair("Prog", RegistryValues{{"", "Name"}}),
                                           Pair("Prog\\CLSID", RegistryValues{{"", "id"}})));
}

TEST(ScriptRegistrar, EmptiesOnlyKeysThatAreMarkedForIt) {
  FakeRegistration registry;
  registry.keys()["CLSID\\id\\Old"] = {};
  registry.keys()["Prog\\Old"] = {};
  EXPECT_EQ(RegisterScript(Script(), registry), S_OK);
  EXPECT_FALSE(registry.keys().contains("CLSID\\id\\Old"));
  EXPECT_TRUE(registry.keys().contains("Prog\\Old"));
}

TEST(ScriptRegistrar, UndoingLeavesWhatOthersPutIntoASharedKey) {
  FakeRegistration registry;
  registry.keys()["CLSID\\other"] = {{"", "another class"}};
  registry.keys()["CLSID"] = {{"Theirs", "1"}};
  registry.keys()["Prog2"] = {};
  const testing::RegistryKeys before = registry.keys();
  EXPECT_EQ(RegisterScript(Script(), registry), S_OK);
  EXPECT_EQ(UnregisterScript(Script(), registry), S_OK);
  EXPECT_EQ(registry.keys(), before);
}

TEST(ScriptRegistrar, UndoingGoesBackwards) {
  FakeRegistration registry;
  EXPECT_EQ(UnregisterScript(Script(), registry), S_OK);
  EXPECT_THAT(registry.log(),
              ElementsAre("delete CLSID\\id", "delete value CLSID Shared", "delete Prog"));
}

TEST(ScriptRegistrar, UndoingRemovesWhatWasAddedBelowItsOwnKeys) {
  FakeRegistration registry;
  EXPECT_EQ(RegisterScript(Script(), registry), S_OK);
  registry.keys()["Prog\\DefaultIcon"] = {};
  EXPECT_EQ(UnregisterScript(Script(), registry), S_OK);
  EXPECT_FALSE(registry.keys().contains("Prog\\DefaultIcon"));
}

TEST(ScriptRegistrar, EveryFailureEndsTheWriting) {
  FakeRegistration counted;
  ASSERT_EQ(RegisterScript(Script(), counted), S_OK);
  ASSERT_EQ(counted.operations(), 9U);
  for (std::size_t nth = 1; nth <= counted.operations(); ++nth) {
    FakeRegistration registry;
    registry.Fail(nth, E_ACCESSDENIED);
    EXPECT_EQ(RegisterScript(Script(), registry), E_ACCESSDENIED) << nth;
    EXPECT_EQ(registry.operations(), nth);
  }
}

TEST(ScriptRegistrar, EveryFailureEndsTheUndoing) {
  for (std::size_t nth = 1; nth <= 3; ++nth) {
    FakeRegistration registry;
    registry.Fail(nth, E_ACCESSDENIED);
    EXPECT_EQ(UnregisterScript(Script(), registry), E_ACCESSDENIED) << nth;
    EXPECT_EQ(registry.operations(), nth);
  }
}

TEST(ScriptRegistrar, UndoingWhatIsNotThereIsNoFailure) {
  FakeRegistration registry;
  EXPECT_EQ(UnregisterScript(Script(), registry), S_OK);
  EXPECT_THAT(registry.keys(), IsEmpty());
}

}  // namespace
}  // namespace pelora
