// SPDX-License-Identifier: Apache-2.0
#include "directory/select_ad_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::ChosenObjects;
using ::testing::ElementsAre;
using testing::FakeChoosers;
using testing::FaultPoint;
using testing::PageBench;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
const std::string kBob = "LDAP://dc1/CN=Bob,DC=x";

using Operation = HRESULT (SelectADObject::*)(ChooserOwner, std::vector<std::string>&,
                                              SelectionMode) const;

/// One row of the table of set-ups.
struct PickerRow {
  const char* name;
  Operation operation;
  std::uint32_t types;
  std::uint32_t flags;
  std::uint32_t both_modes;
  std::uint32_t mixed_mode;
  std::uint32_t native_mode;
  std::uint32_t down_level;
  const char* attribute;
};

void PrintTo(const PickerRow& row, std::ostream* out) { *out << row.name; }

const PickerRow kPickers[] = {
    {"Users", &SelectADObject::SelectUsers, 0x37F, 0x45, 0x2, 0x2, 0x2, 0x80000001,
     "distinguishedName"},
    {"UsersAndGroups", &SelectADObject::SelectUsersAndGroups, 0x37F, 0xC5, 0x3F2, 0x3F2, 0x3F2,
     0x80008007, "distinguishedName"},
    {"Groups", &SelectADObject::SelectGroups, 0x37F, 0x85, 0x3F0, 0x3F0, 0x3F0, 0x80008006,
     "distinguishedName"},
    {"Computers", &SelectADObject::SelectComputers, 0x6, 0, 0x800, 0, 0, 0x80000008, "cn"},
};

class SelectADObjectTest : public ::testing::Test {
 protected:
  SelectADObjectTest() {
    AddPerson(kAda, "CN=Ada,DC=x", "Ada");
    AddPerson(kBob, "CN=Bob,DC=x", "Bob");
  }

  void AddPerson(const std::string& path, const std::string& name, const std::string& cn) {
    bench_.directory.AddObject(
        path, {{"distinguishedName", Variant::String(name)}, {"cn", Variant::String(cn)}});
  }

  PageBench bench_;
  SelectADObject chooser_{bench_.platform};
  std::vector<std::string> names_ = {"from before"};
};

class ObjectPickerTest : public SelectADObjectTest,
                         public ::testing::WithParamInterface<PickerRow> {
 protected:
  HRESULT Pick(SelectionMode mode) {
    return (chooser_.*GetParam().operation)(bench_.some_dialog(), names_, mode);
  }
};

INSTANTIATE_TEST_SUITE_P(EverySetUp, ObjectPickerTest, ::testing::ValuesIn(kPickers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(ObjectPickerTest, IsSetUpByItsRow) {
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_INVALIDARG);
  ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
  const FakeChoosers::PickerRun& run = bench_.choosers.pickers().front();
  EXPECT_EQ(run.init.scope.types, GetParam().types);
  EXPECT_EQ(run.init.scope.flags, GetParam().flags);
  EXPECT_EQ(run.init.scope.up_level_both_modes, GetParam().both_modes);
  EXPECT_EQ(run.init.scope.up_level_mixed_mode, GetParam().mixed_mode);
  EXPECT_EQ(run.init.scope.up_level_native_mode, GetParam().native_mode);
  EXPECT_EQ(run.init.scope.down_level, GetParam().down_level);
  EXPECT_EQ(run.owner, bench_.some_dialog());
}

TEST_P(ObjectPickerTest, AsksForSeveralObjectsOnlyWhenTold) {
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_INVALIDARG);
  EXPECT_EQ(Pick(SelectionMode::kSingle), E_INVALIDARG);
  ASSERT_EQ(bench_.choosers.pickers().size(), 2U);
  EXPECT_EQ(bench_.choosers.pickers().at(0).init.options, 0x3U);
  EXPECT_EQ(bench_.choosers.pickers().at(1).init.options, 0x2U);
}

TEST_P(ObjectPickerTest, GivesTheAttributeOfEachChosenObjectInOrder) {
  bench_.choosers.Choose({kBob, kAda});
  EXPECT_EQ(Pick(SelectionMode::kMultiple), S_OK);
  if (std::string(GetParam().attribute) == "cn") {
    EXPECT_THAT(names_, ElementsAre("Bob", "Ada"));
  } else {
    EXPECT_THAT(names_, ElementsAre("CN=Bob,DC=x", "CN=Ada,DC=x"));
  }
  EXPECT_THAT(bench_.directory.Log(),
              ElementsAre("ADsGetObject " + kBob, "Get " + kBob + " " + GetParam().attribute,
                          "ADsGetObject " + kAda, "Get " + kAda + " " + GetParam().attribute));
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

TEST_P(ObjectPickerTest, CancelIsAnInvalidArgumentAndChangesNothing) {
  EXPECT_EQ(Pick(SelectionMode::kMultiple), HresultOfBits(0x80070057));
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_P(ObjectPickerTest, AFailedStepGivesItsStatus) {
  for (const auto step :
       {FakeChoosers::Step::kCreate, FakeChoosers::Step::kInitialize, FakeChoosers::Step::kRun}) {
    bench_.choosers.Choose({kAda});
    bench_.choosers.FailAt(step, E_ACCESSDENIED);
    EXPECT_EQ(Pick(SelectionMode::kMultiple), E_ACCESSDENIED);
    EXPECT_THAT(names_, ElementsAre("from before"));
  }
}

TEST_P(ObjectPickerTest, SuccessCodesOfStepsAndReadsEndNothing) {
  for (const auto step :
       {FakeChoosers::Step::kCreate, FakeChoosers::Step::kInitialize, FakeChoosers::Step::kRun}) {
    bench_.choosers.Choose({kAda});
    bench_.choosers.FailAt(step, S_FALSE);
    EXPECT_EQ(Pick(SelectionMode::kMultiple), S_OK);
    EXPECT_EQ(names_.size(), 1U);
  }
  bench_.choosers.Choose({kAda, kBob});
  bench_.faulty.plan().Answer(FaultPoint::kGet, 1, S_FALSE);
  bench_.faulty.plan().Answer(FaultPoint::kGetObject, 2, S_ADS_ERRORSOCCURRED);
  EXPECT_EQ(Pick(SelectionMode::kMultiple), S_OK);
  EXPECT_EQ(names_.size(), 2U);
}

TEST_P(ObjectPickerTest, NothingChosenIsAnEmptyList) {
  bench_.choosers.Choose(std::vector<std::string>{});
  EXPECT_EQ(Pick(SelectionMode::kMultiple), S_OK);
  EXPECT_TRUE(names_.empty());
}

TEST_P(ObjectPickerTest, AnObjectThatCannotBeBoundLosesTheWholeChoice) {
  bench_.choosers.Choose({kAda, "LDAP://CN=Gone,DC=x", kBob});
  EXPECT_EQ(Pick(SelectionMode::kMultiple), kNoSuchObject);
  EXPECT_THAT(names_, ElementsAre("from before"));
  EXPECT_EQ(bench_.directory.CountOf(testing::DirectoryCall::Kind::kGetObject), 2U);
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

TEST_P(ObjectPickerTest, AnObjectWithoutTheAttributeLosesTheWholeChoice) {
  bench_.directory.SetValue(kBob, GetParam().attribute, Variant());
  bench_.choosers.Choose({kAda, kBob});
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_P(ObjectPickerTest, ANameThatIsNoTextLosesTheWholeChoice) {
  bench_.directory.SetValue(kAda, GetParam().attribute, Variant::Integer(7));
  bench_.choosers.Choose({kAda});
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_P(ObjectPickerTest, AMalformedBlockIsRefused) {
  HeapBlock block = testing::MakeDsSelectionList({kAda});
  WriteUint64(block.span(), 16, 0);
  bench_.choosers.Choose(new ChosenObjects(kDsSelectionListFormat, std::move(block)));
  EXPECT_EQ(Pick(SelectionMode::kMultiple), E_INVALIDARG);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

using SelectContainersTest = SelectADObjectTest;

TEST_F(SelectContainersTest, TheQueryWindowIsSetUpForContainers) {
  EXPECT_EQ(chooser_.SelectContainers(bench_.some_dialog(), names_, SelectionMode::kMultiple),
            E_INVALIDARG);
  EXPECT_EQ(chooser_.SelectContainers(bench_.some_dialog(), names_, SelectionMode::kSingle),
            E_INVALIDARG);
  ASSERT_EQ(bench_.choosers.queries().size(), 2U);
  EXPECT_EQ(bench_.choosers.queries().at(0).init.window_flags, 0x63U);
  EXPECT_EQ(bench_.choosers.queries().at(1).init.window_flags, 0x67U);
  for (const FakeChoosers::QueryRun& run : bench_.choosers.queries()) {
    EXPECT_EQ(run.owner, bench_.some_dialog());
    EXPECT_EQ(run.init.handler_flags, 1U);
    EXPECT_EQ(run.init.handler,
              (Guid{0x8A23E65E, 0x31C2, 0x11D0, {0x89, 0x1C, 0, 0xA0, 0x24, 0xAB, 0x2D, 0xBB}}));
    EXPECT_EQ(run.init.default_form,
              (Guid{0xC1B3CBF2, 0x886A, 0x11D0, {0x91, 0x40, 0, 0xAA, 0, 0xC1, 0x6E, 0x65}}));
  }
}

TEST_F(SelectContainersTest, PathsBecomeDistinguishedNames) {
  bench_.choosers.Find(ChosenObjects::AsObjectNames({"LDAP://dc1/OU=One,DC=x", "LDAP://OU=Two"}));
  EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kMultiple), S_OK);
  EXPECT_THAT(names_, ElementsAre("OU=One,DC=x", "OU=Two"));
  EXPECT_EQ(bench_.directory.calls().size(), 0U);
}

TEST_F(SelectContainersTest, SuccessCodesOfStepsEndNothing) {
  for (const auto step : {FakeChoosers::Step::kCreate, FakeChoosers::Step::kRun}) {
    bench_.choosers.Find(ChosenObjects::AsObjectNames({"LDAP://OU=One,DC=x"}));
    bench_.choosers.FailAt(step, S_FALSE);
    EXPECT_EQ(chooser_.SelectContainers(bench_.some_dialog(), names_, SelectionMode::kSingle),
              S_OK);
    EXPECT_THAT(names_, ElementsAre("OU=One,DC=x"));
  }
}

TEST_F(SelectContainersTest, AFailedStepGivesItsStatus) {
  for (const auto step : {FakeChoosers::Step::kCreate, FakeChoosers::Step::kRun}) {
    bench_.choosers.Find(ChosenObjects::AsObjectNames({"LDAP://OU=One"}));
    bench_.choosers.FailAt(step, E_NOTIMPL);
    EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kMultiple), E_NOTIMPL);
    EXPECT_THAT(names_, ElementsAre("from before"));
  }
}

/// A directory that calls it a success to bind nothing.
class EmptyHandedDirectory final : public IDirectoryService {
 public:
  HRESULT ADsGetObject(const std::string&, const Guid&, Ref<IADs>&) override { return S_FALSE; }
  HRESULT ADsOpenObject(const std::string&, const std::optional<std::string>&,
                        const std::optional<std::string>&, std::uint32_t, const Guid&,
                        Ref<IADs>&) override {
    return E_FAIL;
  }
};

TEST_F(SelectADObjectTest, AnObjectThatIsBoundToNothingIsNotChosen) {
  EmptyHandedDirectory directory;
  const Platform platform{directory,       bench_.messages, bench_.dialogs,
                          bench_.choosers, bench_.text,     bench_.library};
  bench_.choosers.Choose(std::vector<std::string>{kAda});
  EXPECT_EQ(SelectADObject(platform).SelectUsers(nullptr, names_, SelectionMode::kSingle),
            E_UNEXPECTED);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

using BrowseContainerTest = SelectADObjectTest;

TEST_F(BrowseContainerTest, TheWholeDirectoryIsShown) {
  bench_.choosers.Browse(kDialogOk, "LDAP://dc1/OU=One,DC=x");
  std::string name = "from before";
  EXPECT_EQ(chooser_.BrowseContainer(name), S_OK);
  EXPECT_EQ(name, "OU=One,DC=x");
  ASSERT_EQ(bench_.choosers.browsers().size(), 1U);
  EXPECT_EQ(bench_.choosers.browsers().front().flags, 0x90000U);
  EXPECT_EQ(bench_.choosers.browsers().front().path_capacity, 260U);
}

TEST_F(BrowseContainerTest, AnyAnswerButOkFails) {
  for (const std::int32_t answer : {kDialogCancel, 0, -1}) {
    bench_.choosers.Browse(answer, "LDAP://OU=One");
    std::string name = "from before";
    EXPECT_EQ(chooser_.BrowseContainer(name), HresultOfBits(0x80004005));
    EXPECT_EQ(name, "from before");
  }
}

TEST(StripPath, DropsSchemeAndServer) {
  EXPECT_EQ(StripPath("LDAP://dc1.x/OU=One,DC=x"), "OU=One,DC=x");
  EXPECT_EQ(StripPath("LDAP://OU=One,DC=x"), "OU=One,DC=x");
}

TEST(StripPath, CutsANameWithoutServerAtItsOwnSlash) {
  EXPECT_EQ(StripPath("LDAP://OU=One\\/Two,DC=x"), "Two,DC=x");
}

TEST(StripPath, KeepsTheSlashesOfANameBehindAServer) {
  EXPECT_EQ(StripPath("LDAP://dc1/OU=One\\/Two,DC=x"), "OU=One\\/Two,DC=x");
}

TEST(StripPath, TakesAnySevenCharactersForTheScheme) {
  EXPECT_EQ(StripPath("abcdefgOU=One"), "OU=One");
  EXPECT_EQ(StripPath("LDAP://"), "");
  EXPECT_EQ(StripPath("LDAP:"), "");
  EXPECT_EQ(StripPath(""), "");
}

}  // namespace
}  // namespace pelora
