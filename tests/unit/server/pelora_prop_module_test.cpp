// SPDX-License-Identifier: Apache-2.0
#include "server/pelora_prop_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "server/class_table.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "tests/unit/server/fake_registration.h"

namespace pelora {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::Eq;
using testing::FakeRegistration;
using ::testing::IsEmpty;
using testing::RegistryKeys;
using ::testing::SizeIs;

class PeloraPropModuleTest : public ::testing::Test {
 protected:
  FakeRegistration registration_;
  CPeloraPropModule module_{registration_.Ports()};
};

RegistryKeys ExpectedEntries(const std::string& module_path) {
  const std::string application = GuidText(kApplicationId);
  RegistryKeys keys;
  keys["AppID"] = {};
  keys["AppID\\" + application] = {{"", "PeloraADS"}};
  keys["AppID\\PeloraADS.DLL"] = {{"AppID", application}};
  keys["CLSID"] = {};
  for (const ComponentClass& row : ClassTable()) {
    const std::string friendly = std::string(row.name) + " Object";
    const std::string prog_id(row.prog_id);
    const std::string independent(row.version_independent_prog_id);
    const std::string class_id = GuidText(row.class_id);
    const std::string component = "CLSID\\" + class_id;
    keys[prog_id] = {{"", friendly}};
    keys[prog_id + "\\CLSID"] = {{"", class_id}};
    keys[independent] = {{"", friendly}};
    keys[independent + "\\CLSID"] = {{"", class_id}};
    keys[independent + "\\CurVer"] = {{"", prog_id}};
    keys[component] = {{"", friendly}, {"AppID", application}};
    keys[component + "\\ProgID"] = {{"", prog_id}};
    keys[component + "\\VersionIndependentProgID"] = {{"", independent}};
    keys[component + "\\Programmable"] = {};
    keys[component + "\\InprocServer32"] = {{"", module_path}, {"ThreadingModel", "apartment"}};
    keys[component + "\\TypeLib"] = {{"", GuidText(kTypeLibraryId)}};
  }
  return keys;
}

TEST_F(PeloraPropModuleTest, RegistersTheApplicationEveryClassAndTheTypeLibrary) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(registration_.keys(), ExpectedEntries(registration_.Path()));
  EXPECT_TRUE(registration_.has_type_library());
  EXPECT_EQ(registration_.log().front(), "read script 101");
  EXPECT_EQ(registration_.log().back(), "register type library");
}

TEST_F(PeloraPropModuleTest, RegistersTheClassesInTheOrderOfTheTable) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  std::vector<std::string> created;
  for (const std::string& line : registration_.log()) {
    if (line.starts_with("create CLSID\\") && line.ends_with("}")) created.push_back(line);
  }
  std::vector<std::string> expected;
  for (const ComponentClass& row : ClassTable()) {
    expected.push_back("create CLSID\\" + GuidText(row.class_id));
  }
  EXPECT_EQ(created, expected);
}

TEST_F(PeloraPropModuleTest, ASharedProgramIdentifierNamesTheClassRegisteredLast) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  const std::string last = GuidText(FindClass("CWizardExtUser")->class_id);
  EXPECT_EQ(registration_.keys()["PeloraProp.PropPage\\CLSID"][""], last);
  EXPECT_EQ(registration_.keys()["PeloraProp.PropPage.1"][""], "CWizardExtUser Object");
}

TEST_F(PeloraPropModuleTest, RegisteringAgainChangesNothing) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  const RegistryKeys once = registration_.keys();
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(registration_.keys(), once);
}

TEST_F(PeloraPropModuleTest, UnregisteringLeavesNothingButTheSharedKeys) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(registration_.keys(), (RegistryKeys{{"AppID", {}}, {"CLSID", {}}}));
  EXPECT_FALSE(registration_.has_type_library());
}

TEST_F(PeloraPropModuleTest, UnregisteringGoesBackwards) {
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(registration_.log().front(), "unregister type library");
  std::vector<std::string> removed;
  for (const std::string& line : registration_.log()) {
    if (line.starts_with("delete CLSID\\")) removed.push_back(line);
  }
  ASSERT_THAT(removed, SizeIs(ClassTable().size()));
  EXPECT_EQ(removed.front(), "delete CLSID\\" + GuidText(ClassTable().back().class_id));
  EXPECT_EQ(removed.back(), "delete CLSID\\" + GuidText(ClassTable().front().class_id));
  EXPECT_EQ(registration_.log().back(), "delete AppID\\" + GuidText(kApplicationId));
}

TEST_F(PeloraPropModuleTest, WorksInTheSystemsLocaleAndRestoresTheThreads) {
  EXPECT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_THAT(registration_.writing_locales(),
              AllOf(SizeIs(registration_.operations()), Each(Eq(kSystemDefaultLocale))));
  EXPECT_EQ(registration_.Get(), 0x407U);
}

TEST_F(PeloraPropModuleTest, EveryFailureEndsTheRegistrationAndRestoresTheLocale) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  const std::size_t operations = registration_.operations();
  for (std::size_t nth = 1; nth <= operations; ++nth) {
    FakeRegistration failing;
    const CPeloraPropModule module(failing.Ports());
    failing.Fail(nth, E_ACCESSDENIED);
    EXPECT_EQ(module.RegisterServer(), E_ACCESSDENIED) << nth;
    EXPECT_EQ(failing.operations(), nth);
    EXPECT_EQ(failing.Get(), 0x407U);
  }
}

TEST_F(PeloraPropModuleTest, EveryFailureEndsTheUnregistrationAndRestoresTheLocale) {
  ASSERT_EQ(module_.UnregisterServer(), S_OK);
  const std::size_t operations = registration_.operations();
  for (std::size_t nth = 1; nth <= operations; ++nth) {
    FakeRegistration failing;
    const CPeloraPropModule module(failing.Ports());
    failing.Fail(nth, E_ACCESSDENIED);
    EXPECT_EQ(module.UnregisterServer(), E_ACCESSDENIED) << nth;
    EXPECT_EQ(failing.operations(), nth);
    EXPECT_EQ(failing.Get(), 0x407U);
  }
}

TEST_F(PeloraPropModuleTest, CountsItsLocks) {
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
  EXPECT_EQ(module_.Lock(), 1U);
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  EXPECT_EQ(module_.Lock(), 2U);
  EXPECT_EQ(module_.Unlock(), 1U);
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  EXPECT_EQ(module_.Unlock(), 0U);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_F(PeloraPropModuleTest, LocksAreCountedRightOnSeveralThreads) {
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([this] {
      for (int round = 0; round < 10000; ++round) {
        module_.Lock();
        module_.Unlock();
      }
    });
  }
  threads.clear();
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_F(PeloraPropModuleTest, ALockIsHeldAsLongAsItsHolderLives) {
  {
    const ModuleLock lock(module_);
    EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  }
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace pelora
