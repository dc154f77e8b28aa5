// SPDX-License-Identifier: Apache-2.0
// The system's object picker behind its port: every field that it is given, and what becomes of
// every answer.
#include "tests/windows/choosers/object_picker_test.h"

#include <gmock/gmock.h>

#include "tests/windows/support/malloc_counter.h"

namespace pelora::windows::test {
namespace {

using ::testing::ElementsAre;

using Operation = HRESULT (SelectADObject::*)(ChooserOwner, std::vector<std::string>&,
                                              SelectionMode) const;

/// One of the searches: the scope that the picker is given, and what stands for a chosen object.
struct Search {
  const char* name;
  Operation operation;
  const char* scope;
  const char* attribute;
};

void PrintTo(const Search& search, std::ostream* out) { *out << search.name; }

const Search kSearches[] = {
    {"Users", &SelectADObject::SelectUsers,
     "scope size 56, type 0x37f, flags 0x45, both 0x2, mixed 0x2, native 0x2, down 0x80000001, "
     "controller null, path null, status 0x0",
     "distinguishedName"},
    {"UsersAndGroups", &SelectADObject::SelectUsersAndGroups,
     "scope size 56, type 0x37f, flags 0xc5, both 0x3f2, mixed 0x3f2, native 0x3f2, "
     "down 0x80008007, controller null, path null, status 0x0",
     "distinguishedName"},
    {"Groups", &SelectADObject::SelectGroups,
     "scope size 56, type 0x37f, flags 0x85, both 0x3f0, mixed 0x3f0, native 0x3f0, "
     "down 0x80008006, controller null, path null, status 0x0",
     "distinguishedName"},
    {"Computers", &SelectADObject::SelectComputers,
     "scope size 56, type 0x6, flags 0x0, both 0x800, mixed 0x0, native 0x0, down 0x80000008, "
     "controller null, path null, status 0x0",
     "cn"},
};

class ObjectPickerSearchTest : public ObjectPickerTest,
                               public ::testing::WithParamInterface<Search> {
 protected:
  HRESULT Pick(SelectionMode mode) {
    return (chooser().*GetParam().operation)(dialog(), names_, mode);
  }
};

INSTANTIATE_TEST_SUITE_P(EverySearch, ObjectPickerSearchTest, ::testing::ValuesIn(kSearches),
                         [](const auto& search) { return std::string(search.param.name); });

TEST_P(ObjectPickerSearchTest, GivesThePickerEveryFieldForSeveralObjects) {
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_INVALIDARG);
  EXPECT_THAT(picker_.log(),
              ElementsAre("Initialize size 48, computer null, options 0x3, attributes 0 null, "
                          "scopes 1",
                          GetParam().scope, "InvokeDialog"));
  EXPECT_EQ(picker_.owner(), window());
}

TEST_P(ObjectPickerSearchTest, GivesThePickerEveryFieldForOneObject) {
  EXPECT_EQ(Pick(SelectionMode::kSingle), E_INVALIDARG);
  EXPECT_THAT(picker_.log(),
              ElementsAre("Initialize size 48, computer null, options 0x2, attributes 0 null, "
                          "scopes 1",
                          GetParam().scope, "InvokeDialog"));
}

TEST_P(ObjectPickerSearchTest, GivesTheNamesOfTheChosenObjectsInThePickersOrder) {
  PickedObjects picked({kMoon, kAda});
  picker_.Choose(picked);
  EXPECT_EQ(Pick(SelectionMode::kMultiple), S_OK);
  if (std::string_view(GetParam().attribute) == "cn") {
    EXPECT_THAT(names_, ElementsAre("月🌙", "Ada"));
  } else {
    EXPECT_THAT(names_, ElementsAre("CN=月🌙,DC=x", "CN=Ada,OU=Größe,DC=x"));
  }
  EXPECT_EQ(picked.rendered(), 1U);
  ExpectGivenBack(picked);
}

TEST_F(ObjectPickerTest, AControlOfTheDialogCanOwnThePicker) {
  EXPECT_EQ(chooser().SelectUsers({dialog(), kButton}, names_, SelectionMode::kSingle),
            E_INVALIDARG);
  EXPECT_EQ(picker_.owner(), button());
  EXPECT_EQ(chooser().SelectUsers({dialog(), 9999}, names_, SelectionMode::kSingle), E_INVALIDARG);
  EXPECT_EQ(picker_.owner(), window()) << "a control that is not there";
}

TEST_F(ObjectPickerTest, WithoutADialogTheActiveWindowOwnsThePicker) {
  ShowWindow(window(), SW_SHOW);
  SetActiveWindow(window());
  ASSERT_EQ(GetActiveWindow(), window());
  EXPECT_EQ(chooser().SelectUsers(nullptr, names_, SelectionMode::kSingle), E_INVALIDARG);
  EXPECT_EQ(picker_.owner(), window());
}

TEST_F(ObjectPickerTest, OneObjectMakesOneName) {
  PickedObjects picked({kAda});
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=Ada,OU=Größe,DC=x"));
}

TEST_F(ObjectPickerTest, NoObjectMakesAnEmptyList) {
  PickedObjects picked({});
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre());
  ExpectGivenBack(picked);
}

TEST_F(ObjectPickerTest, ManyObjectsKeepTheirOrder) {
  std::vector<std::string> paths;
  std::vector<std::string> expected;
  for (int number = 0; number < 500; ++number) {
    const std::string name = "CN=Person " + std::to_string(number) + ",DC=x";
    paths.push_back("LDAP://" + name);
    directory_.AddObject(paths.back(), {{"distinguishedName", Variant::String(name)}});
    expected.push_back(name);
  }
  PickedObjects picked(paths);
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_EQ(names_, expected);
  ExpectGivenBack(picked);
}

TEST_F(ObjectPickerTest, TheStringsMayLieInTheListsOwnMemory) {
  PickedObjects picked({kMoon, kAda});
  picked.MoveStringsInside();
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=月🌙,DC=x", "CN=Ada,OU=Größe,DC=x"));
  ExpectGivenBack(picked);
}

TEST_F(ObjectPickerTest, CancelIsAnInvalidArgumentAndChangesNothing) {
  for (const HRESULT answer : {S_FALSE, S_OK}) {
    picker_.Answer(answer);
    EXPECT_EQ(PickUsers(), static_cast<HRESULT>(0x80070057));
    EXPECT_THAT(names_, ElementsAre("from before"));
  }
}

TEST_F(ObjectPickerTest, APickerThatCannotBeMadeGivesItsStatus) {
  for (const HRESULT status : {REGDB_E_CLASSNOTREG, E_ACCESSDENIED}) {
    picker_.class_object().FailWith(status);
    EXPECT_EQ(PickUsers(), status);
    EXPECT_THAT(names_, ElementsAre("from before"));
  }
  EXPECT_EQ(picker_.class_object().activations(), 2U);
  EXPECT_THAT(picker_.log(), ElementsAre());
}

TEST_F(ObjectPickerTest, AFailedSetUpGivesItsStatusAndShowsNoDialog) {
  picker_.FailInitialize(E_ACCESSDENIED);
  EXPECT_EQ(PickUsers(), E_ACCESSDENIED);
  EXPECT_EQ(picker_.log().size(), 2U);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_F(ObjectPickerTest, AFailedDialogGivesItsStatus) {
  picker_.Answer(E_OUTOFMEMORY);
  EXPECT_EQ(PickUsers(), E_OUTOFMEMORY);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_F(ObjectPickerTest, WhatAFailedDialogHandsOutIsGivenBackUnread) {
  PickedObjects picked({kAda});
  picker_.Choose(picked, E_FAIL);
  EXPECT_EQ(PickUsers(), E_FAIL);
  EXPECT_EQ(picked.rendered(), 0U);
  ExpectGivenBack(picked);
}

TEST_F(ObjectPickerTest, AnObjectThatCannotBeBoundLosesTheWholeChoice) {
  PickedObjects picked({kAda, "LDAP://dc1/CN=Gone,DC=x", kMoon});
  ExpectFailure(picked, kNoSuchObject);
  EXPECT_EQ(directory_.CountOf(pelora::testing::DirectoryCall::Kind::kGet), 1U);
}

TEST_F(ObjectPickerTest, NoMemoryIsKeptWhateverCameOfTheChoice) {
  std::vector<std::function<void(PickedObjects&)>> damages = {
      [](PickedObjects&) {}, [](PickedObjects& picked) { picked.FailWith(E_FAIL); },
      [](PickedObjects& picked) { picked.HideMemory(); },
      [](PickedObjects& picked) { picked.list().cItems = 99; },
      [](PickedObjects& picked) { picked.list().aDsSelection[1].pwzADsPath = nullptr; }};
  for (const auto& damage : damages) {
    PickedObjects picked({kMoon, kAda});
    damage(picked);
    const MallocCounter counter;
    picker_.Choose(picked);
    (void)PickUsers();
    names_.clear();
    EXPECT_EQ(counter.live(), 0);
  }
}

TEST_F(ObjectPickerTest, EachChoiceHasAPickerOfItsOwn) {
  for (int choice = 1; choice <= 3; ++choice) {
    EXPECT_EQ(PickUsers(), E_INVALIDARG);
    EXPECT_EQ(picker_.references(), 0U);
  }
  EXPECT_EQ(picker_.class_object().activations(), 3U);
}

}  // namespace
}  // namespace pelora::windows::test
