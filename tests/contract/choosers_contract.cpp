// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/choosers_contract.h"

#include "directory/selection_reader.h"
#include "directory/utf.h"
#include "platform/dialog_controller.h"

namespace pelora::contract {
namespace {

constexpr ObjectPickerScope kUsers = {.types = 0x37F,
                                      .flags = 0x45,
                                      .up_level_both_modes = 0x2,
                                      .up_level_mixed_mode = 0x2,
                                      .up_level_native_mode = 0x2,
                                      .down_level = 0x80000001};
constexpr ObjectPickerScope kComputers = {
    .types = 0x6, .up_level_both_modes = 0x800, .down_level = 0x80000008};
constexpr ObjectPickerInit kSeveralUsers = {.scope = kUsers, .options = 0x3};
constexpr ObjectPickerInit kOneUser = {.scope = kUsers, .options = 0x2};
constexpr ObjectPickerInit kOneComputer = {.scope = kComputers, .options = 0x2};
constexpr QueryWindowInit kSeveralContainers = {
    .window_flags = 0x63,
    .handler = {0x8A23E65E, 0x31C2, 0x11D0, {0x89, 0x1C, 0, 0xA0, 0x24, 0xAB, 0x2D, 0xBB}},
    .default_form = {0xC1B3CBF2, 0x886A, 0x11D0, {0x91, 0x40, 0, 0xAA, 0, 0xC1, 0x6E, 0x65}},
    .handler_flags = 0x1};
constexpr std::uint32_t kEntireDirectory = 0x90000;

/// What a data object answers when it is asked for a format.
HRESULT Ask(IDataObject& chosen, const char* format) {
  std::unique_ptr<IStorageMedium> medium;
  const HRESULT status = chosen.GetData({.format = format}, medium);
  EXPECT_EQ(medium == nullptr, FAILED(status));
  if (medium != nullptr) medium->Release();
  return status;
}

}  // namespace

std::unique_ptr<IDsObjectPicker> ChoosersContract::MakePicker(const ObjectPickerInit& init) {
  std::unique_ptr<IDsObjectPicker> picker;
  EXPECT_EQ(Choosers().CreateObjectPicker(picker), S_OK);
  EXPECT_EQ(picker->Initialize(init), S_OK);
  return picker;
}

std::unique_ptr<ICommonQuery> ChoosersContract::MakeQuery() {
  std::unique_ptr<ICommonQuery> query;
  EXPECT_EQ(Choosers().CreateCommonQuery(query), S_OK);
  return query;
}

ChoosersContract::Names ChoosersContract::BoundNames(IDataObject* chosen) {
  Names paths;
  EXPECT_EQ(ReadSelection(chosen, kDsSelectionListFormat, paths), S_OK);
  for (std::string& path : paths) {
    EXPECT_TRUE(path.starts_with("LDAP://")) << path;
    Ref<IADs> object;
    Variant name;
    HRESULT status = host_->platform().directory.ADsGetObject(path, IID_IADs, object);
    if (SUCCEEDED(status)) status = object->Get("distinguishedName", name);
    EXPECT_EQ(status, S_OK) << path;
    path = name.type() == VT_BSTR ? name.string() : std::string();
  }
  return paths;
}

// The object picker.

TEST_P(ChoosersContract, PickedPathsLeadToTheObjectsInTheOrderOfTheChoice) {
  Host().Pick({kRolf, kBirgit, kAnna});
  Ref<IDataObject> chosen;
  EXPECT_EQ(MakePicker(kSeveralUsers)->InvokeDialog(nullptr, chosen), S_OK);
  EXPECT_EQ(BoundNames(chosen.Get()), (Names{kRolf.name, kBirgit.name, kAnna.name}));
}

TEST_P(ChoosersContract, OneObjectIsPickedWhereOneIsWanted) {
  Host().Pick({kAnna});
  Ref<IDataObject> chosen;
  EXPECT_EQ(MakePicker(kOneUser)->InvokeDialog(nullptr, chosen), S_OK);
  EXPECT_EQ(BoundNames(chosen.Get()), Names{kAnna.name});
}

TEST_P(ChoosersContract, ACancelledPickerHandsNothingOver) {
  Host().Pick({kBirgit});
  Ref<IDataObject> chosen;
  const auto picker = MakePicker(kSeveralUsers);
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_OK);
  Host().Pick({});
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_FALSE);
  EXPECT_EQ(chosen.Get(), nullptr) << "an earlier choice is let go";
}

TEST_P(ChoosersContract, APickerThatIsSetUpAnewForgetsWhatWasBefore) {
  const auto picker = MakePicker(kSeveralUsers);
  Host().Pick({kBirgit, kAnna});
  Ref<IDataObject> people;
  EXPECT_EQ(picker->InvokeDialog(nullptr, people), S_OK);
  EXPECT_EQ(picker->Initialize(kOneComputer), S_OK);
  Host().Pick({kServer});
  Ref<IDataObject> server;
  EXPECT_EQ(picker->InvokeDialog(nullptr, server), S_OK);
  EXPECT_EQ(BoundNames(server.Get()), Names{kServer.name});
  EXPECT_EQ(BoundNames(people.Get()), (Names{kBirgit.name, kAnna.name}));
}

TEST_P(ChoosersContract, AChoiceOutlivesItsPickerAndIsRenderedAsOftenAsAsked) {
  Host().Pick({kRolf, kBirgit});
  Ref<IDataObject> chosen;
  EXPECT_EQ(MakePicker(kSeveralUsers)->InvokeDialog(nullptr, chosen), S_OK);
  const Names expected = {kRolf.name, kBirgit.name};
  EXPECT_EQ(BoundNames(chosen.Get()), expected);
  EXPECT_EQ(BoundNames(chosen.Get()), expected) << "after the first rendering was released";
}

TEST_P(ChoosersContract, EachChoiceKnowsItsOwnFormat) {
  Host().Pick({kBirgit});
  Ref<IDataObject> picked;
  EXPECT_EQ(MakePicker(kOneUser)->InvokeDialog(nullptr, picked), S_OK);
  EXPECT_EQ(Ask(*picked, kDsSelectionListFormat), S_OK);
  EXPECT_EQ(Ask(*picked, kDsObjectNamesFormat), DV_E_FORMATETC);
  Host().Find({kSales});
  Ref<IDataObject> found;
  EXPECT_EQ(MakeQuery()->OpenQueryWindow(nullptr, kSeveralContainers, found), S_OK);
  EXPECT_EQ(Ask(*found, kDsObjectNamesFormat), S_OK);
  EXPECT_EQ(Ask(*found, kDsSelectionListFormat), DV_E_FORMATETC);
}

// The query window.

TEST_P(ChoosersContract, ACancelledQueryHandsNothingOver) {
  Host().Find({kSales});
  Ref<IDataObject> chosen;
  EXPECT_EQ(MakeQuery()->OpenQueryWindow(nullptr, kSeveralContainers, chosen), S_OK);
  Host().Find({});
  EXPECT_EQ(MakeQuery()->OpenQueryWindow(nullptr, kSeveralContainers, chosen), S_FALSE);
  EXPECT_EQ(chosen.Get(), nullptr) << "an earlier choice is let go";
}

// The container browser.

TEST_P(ChoosersContract, ACancelledBrowserGivesNoPath) {
  Host().CancelBrowser();
  std::string path = "from before";
  EXPECT_NE(Choosers().BrowseForContainer({.flags = kEntireDirectory, .path_capacity = 260}, path),
            kDialogOk);
  EXPECT_EQ(path, "");
}

TEST_P(ChoosersContract, ABrowsedPathNeverOutgrowsItsRoom) {
  Host().BrowseLaboratory();
  std::string path;
  EXPECT_EQ(Choosers().BrowseForContainer({.flags = kEntireDirectory, .path_capacity = 260}, path),
            kDialogOk);
  const auto length = static_cast<std::uint32_t>(ToUtf16(path).size());
  for (const std::uint32_t room : {length + 1, length, 8U}) {
    Host().BrowseLaboratory();
    std::string cut;
    const std::int32_t answer =
        Choosers().BrowseForContainer({.flags = kEntireDirectory, .path_capacity = room}, cut);
    // A path that does not fit is cut off or not taken at all.
    EXPECT_LT(ToUtf16(cut).size(), room);
    EXPECT_TRUE(path.starts_with(cut)) << cut;
    EXPECT_TRUE(answer == kDialogOk || room <= length);
    EXPECT_EQ(answer == kDialogOk, !cut.empty());
  }
}

// What the extension makes of a choice.

TEST_P(ChoosersContract, ChosenUsersBecomeDistinguishedNames) {
  Host().Pick({kAnna, kRolf});
  Names names = {"from before"};
  EXPECT_EQ(Chooser().SelectUsers(nullptr, names, SelectionMode::kMultiple), S_OK);
  EXPECT_EQ(names, (Names{kAnna.name, kRolf.name}));
}

TEST_P(ChoosersContract, AChosenComputerBecomesItsCommonName) {
  Host().Pick({kServer});
  Names names = {"from before"};
  EXPECT_EQ(Chooser().SelectComputers(nullptr, names, SelectionMode::kSingle), S_OK);
  EXPECT_EQ(names, Names{"mail02"});
}

TEST_P(ChoosersContract, FoundContainersBecomeDistinguishedNames) {
  Host().Find({kSales, kLaboratory});
  Names names = {"from before"};
  EXPECT_EQ(Chooser().SelectContainers(nullptr, names, SelectionMode::kMultiple), S_OK);
  EXPECT_EQ(names, (Names{kSales.name, kLaboratory.name}));
  Host().Find({kSales});
  EXPECT_EQ(Chooser().SelectContainers(nullptr, names, SelectionMode::kSingle), S_OK);
  EXPECT_EQ(names, Names{kSales.name});
}

TEST_P(ChoosersContract, ABrowsedContainerBecomesItsDistinguishedName) {
  Host().BrowseLaboratory();
  std::string name = "from before";
  EXPECT_EQ(Chooser().BrowseContainer(name), S_OK);
  EXPECT_EQ(name, kLaboratory.name);
}

TEST_P(ChoosersContract, ACancelledChoiceChangesNothing) {
  Names names = {"from before"};
  Host().Pick({});
  EXPECT_EQ(Chooser().SelectUsersAndGroups(nullptr, names, SelectionMode::kMultiple), E_INVALIDARG);
  Host().Find({});
  EXPECT_EQ(Chooser().SelectContainers(nullptr, names, SelectionMode::kMultiple), E_INVALIDARG);
  EXPECT_EQ(names, Names{"from before"});
  Host().CancelBrowser();
  std::string name = "from before";
  EXPECT_EQ(Chooser().BrowseContainer(name), E_FAIL);
  EXPECT_EQ(name, "from before");
}

}  // namespace pelora::contract
