// SPDX-License-Identifier: Apache-2.0
#include "directory/ads_base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/selection_data_object.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using testing::FaultPoint;
using ::testing::IsEmpty;
using testing::MakeDsObjectNames;
using testing::SelectionDataObject;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
const std::string kBob = "LDAP://dc1/CN=Bob,DC=x";
const std::string kCara = "LDAP://dc1/CN=Cara,DC=x";

class Component final : public CADSBase {
 public:
  using CADSBase::CADSBase;
  IDialog* OwnerWindow() const override { return nullptr; }
};

class AdsBaseTest : public ::testing::Test {
 protected:
  AdsBaseTest() {
    for (const std::string& path : {kAda, kBob, kCara}) host_.directory.AddObject(path);
  }

  HRESULT Select(const std::vector<std::string>& paths) {
    SelectionDataObject selection(paths);
    return component_->Initialize(&selection);
  }
  std::vector<std::string> Boxes() const {
    std::vector<std::string> texts;
    for (const auto& record : host_.messages.records()) texts.push_back(record.message.text);
    return texts;
  }
  Ref<IADs> Bind(const std::string& path) {
    Ref<IADs> object;
    EXPECT_EQ(host_.directory.ADsGetObject(path, IID_IADs, object), S_OK);
    return object;
  }

  testing::PageBench host_;
  std::unique_ptr<Component> component_ = std::make_unique<Component>(host_.platform);
};

TEST_F(AdsBaseTest, InitialisesTheComponentLibraryAndUndoesIt) {
  EXPECT_EQ(host_.library.initialized(), 1);
  EXPECT_EQ(host_.library.uninitialized(), 0);
  component_.reset();
  EXPECT_EQ(host_.library.uninitialized(), 1);
}

TEST_F(AdsBaseTest, InitializeKeepsThePathsInTheConsolesOrder) {
  EXPECT_EQ(Select({kCara, kAda}), S_OK);
  EXPECT_THAT(component_->paths(), ElementsAre(kCara, kAda));
  EXPECT_EQ(Select({kBob}), S_OK);
  EXPECT_THAT(component_->paths(), ElementsAre(kBob)) << "replaced as a whole";
}

TEST_F(AdsBaseTest, InitializeAsksForTheSelectionInMemory) {
  SelectionDataObject selection({kAda});
  EXPECT_EQ(component_->Initialize(&selection), S_OK);
  EXPECT_EQ(selection.last_format().format, "DsObjectNames");
  EXPECT_EQ(selection.last_format().aspect, 1U);
  EXPECT_EQ(selection.last_format().index, -1);
  EXPECT_EQ(selection.last_format().medium, 1U);
  EXPECT_EQ(selection.locks(), 0) << "unlocked again";
  EXPECT_EQ(selection.releases(), 0) << "the block is the console's";
  EXPECT_EQ(selection.references(), 1U) << "not kept";
}

TEST_F(AdsBaseTest, InitializeTestsTheConnectionAsTheUser) {
  EXPECT_EQ(Select({kAda}), S_OK);
  EXPECT_THAT(host_.directory.Log(), ElementsAre("ADsOpenObject LDAP://rootDSE 1"));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, ASuccessCodeOfTheConnectionTestIsReturnedAsItIs) {
  host_.faults().Answer(FaultPoint::kOpenObject, 1, S_ADS_ERRORSOCCURRED);
  EXPECT_EQ(Select({kAda}), S_ADS_ERRORSOCCURRED);
  EXPECT_THAT(component_->paths(), ElementsAre(kAda));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, ASelectionRenderedWithASuccessCodeIsTaken) {
  SelectionDataObject selection({kAda});
  selection.FailWith(S_FALSE);
  EXPECT_EQ(component_->Initialize(&selection), S_OK);
  EXPECT_THAT(component_->paths(), ElementsAre(kAda));
}

/// A directory that notes what is asked of the root entry.
class AskedDirectory final : public IDirectoryService {
 public:
  HRESULT ADsGetObject(const std::string&, const Guid&, Ref<IADs>&) override { return E_FAIL; }
  HRESULT ADsOpenObject(const std::string&, const std::optional<std::string>&,
                        const std::optional<std::string>&, std::uint32_t, const Guid& iid,
                        Ref<IADs>&) override {
    asked = iid;
    return S_OK;
  }
  Guid asked{};
};

TEST_F(AdsBaseTest, TheConnectionTestAsksForTheGeneralInterface) {
  AskedDirectory directory;
  const Platform platform{directory,      host_.messages, host_.dialogs,
                          host_.choosers, host_.text,     host_.library};
  Component component(platform);
  SelectionDataObject selection({kAda});
  EXPECT_EQ(component.Initialize(&selection), S_OK);
  EXPECT_TRUE(directory.asked == IID_IADs);
}

/// Notes how many objects are bound when the library goes.
class LibraryLast final : public IComponentLibrary {
 public:
  explicit LibraryLast(const testing::FakeDirectory& directory) : directory_(directory) {}
  LibraryThread CoInitialize() override { return 7; }
  void CoUninitialize(LibraryThread thread) override {
    EXPECT_EQ(thread, 7U) << "the thread that initialised it";
    bound_at_the_end = directory_.live_objects();
  }
  std::size_t bound_at_the_end = 99;

 private:
  const testing::FakeDirectory& directory_;
};

TEST_F(AdsBaseTest, ThePresetObjectGoesBeforeTheComponentLibrary) {
  LibraryLast library(host_.directory);
  const Platform platform{host_.faulty,   host_.messages, host_.dialogs,
                          host_.choosers, host_.text,     library};
  auto component = std::make_unique<Component>(platform);
  component->SetObject(Bind(kAda).Get());
  EXPECT_EQ(host_.directory.live_objects(), 1U);
  component.reset();
  EXPECT_EQ(library.bound_at_the_end, 0U);
}

TEST_F(AdsBaseTest, AFailedConnectionTestIsReturnedAndThePathsStay) {
  host_.faults().Fail(FaultPoint::kOpenObject, 1, E_ACCESSDENIED);
  EXPECT_EQ(Select({kAda}), E_ACCESSDENIED);
  EXPECT_THAT(component_->paths(), ElementsAre(kAda));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(AdsBaseTest, AMalformedBlockKeepsNoPathAndTestsNothing) {
  EXPECT_EQ(Select({kAda, kBob}), S_OK);
  host_.directory.ClearCalls();
  std::vector<std::byte> block = MakeDsObjectNames({kAda});
  WriteUint32(block, 28, 0xFFFFFFF0U);
  SelectionDataObject selection(block);
  EXPECT_EQ(component_->Initialize(&selection), E_INVALIDARG);
  EXPECT_THAT(component_->paths(), IsEmpty());
  EXPECT_EQ(selection.locks(), 0);
  EXPECT_THAT(host_.directory.Log(), IsEmpty());
}

TEST_F(AdsBaseTest, ADataObjectThatCannotRenderTheSelectionChangesNothing) {
  EXPECT_EQ(Select({kAda}), S_OK);
  SelectionDataObject selection({kBob});
  selection.FailWith(DV_E_FORMATETC);
  EXPECT_EQ(component_->Initialize(&selection), DV_E_FORMATETC);
  EXPECT_EQ(component_->Initialize(nullptr), E_INVALIDARG);
  EXPECT_THAT(component_->paths(), ElementsAre(kAda));
}

TEST_F(AdsBaseTest, InitializeDropsAPresetObject) {
  component_->SetObject(Bind(kBob).Get());
  EXPECT_EQ(host_.directory.live_objects(), 1U);
  EXPECT_EQ(Select({kAda}), S_OK);
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, BindsEveryPathInOrder) {
  EXPECT_EQ(Select({kBob, kAda}), S_OK);
  host_.directory.ClearCalls();
  BoundObjects objects;
  EXPECT_EQ(component_->BindObjects(IID_IADsUser, objects), S_OK);
  EXPECT_EQ(objects.size(), 2U);
  EXPECT_THAT(host_.directory.Log(), ElementsAre("ADsGetObject " + kBob, "ADsGetObject " + kAda));
  CADSBase::ReleaseObjects(objects);
  EXPECT_THAT(objects, IsEmpty());
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, TheFirstBindingThatIsNotExactlyOkReleasesWhatWasBound) {
  EXPECT_EQ(Select({kAda, kBob, kCara}), S_OK);
  for (const HRESULT status : {kNoSuchObject, S_FALSE}) {
    host_.directory.ClearCalls();
    host_.faults().Fail(FaultPoint::kGetObject, 2, status);
    BoundObjects objects;
    EXPECT_EQ(component_->BindObjects(IID_IADs, objects), status);
    EXPECT_THAT(objects, IsEmpty());
    EXPECT_EQ(host_.directory.live_objects(), 0U);
    EXPECT_EQ(host_.directory.CountOf(DirectoryCall::Kind::kGetObject), 1U)
        << "the third is not tried";
  }
}

TEST_F(AdsBaseTest, APresetObjectTakesPrecedenceOverThePaths) {
  EXPECT_EQ(Select({kAda, kBob}), S_OK);
  EXPECT_TRUE(component_->IsMultiSelect());
  const Ref<IADs> preset = Bind(kCara);
  component_->SetObject(preset.Get());
  EXPECT_FALSE(component_->IsMultiSelect());
  host_.directory.ClearCalls();
  BoundObjects objects;
  EXPECT_EQ(component_->BindObjects(IID_IADsUser, objects), S_OK);
  EXPECT_THAT(objects, ElementsAre(preset));
  EXPECT_THAT(host_.directory.Log(), IsEmpty()) << "no path is bound";
  component_->SetObject(nullptr);
  EXPECT_TRUE(component_->IsMultiSelect());
}

TEST_F(AdsBaseTest, APresetObjectWithoutTheInterfaceFails) {
  component_->SetObject(Bind(kCara).Get());
  BoundObjects objects;
  EXPECT_EQ(component_->BindObjects(IID_IADsOU, objects), E_NOINTERFACE);
  EXPECT_THAT(objects, IsEmpty());
}

TEST_F(AdsBaseTest, APresetObjectThatAnswersWithARemarkIsNotBoundAndNotKept) {
  host_.faults().Answer(FaultPoint::kQueryInterface, 1, S_FALSE);
  {
    const Ref<IADs> preset = host_.faulty.Wrap(Bind(kCara));
    component_->SetObject(preset.Get());
    BoundObjects objects;
    EXPECT_EQ(component_->BindObjects(IID_IADs, objects), S_FALSE);
    EXPECT_THAT(objects, IsEmpty());
    component_->SetObject(nullptr);
  }
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, HoldsOneReferenceToThePresetObject) {
  component_->SetObject(Bind(kAda).Get());
  component_->SetObject(Bind(kBob).Get());
  EXPECT_EQ(host_.directory.live_objects(), 1U);
  component_.reset();
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(AdsBaseTest, TwoPathsAreAMultiSelection) {
  EXPECT_FALSE(component_->IsMultiSelect());
  EXPECT_EQ(Select({kAda}), S_OK);
  EXPECT_FALSE(component_->IsMultiSelect());
  EXPECT_EQ(Select({kAda, kBob}), S_OK);
  EXPECT_TRUE(component_->IsMultiSelect());
}

TEST_F(AdsBaseTest, WritesTheChangesInTheirOrder) {
  const Ref<IADs> object = Bind(kAda);
  host_.directory.ClearCalls();
  ChangeList changes = {
      {.value = "d", .name = "description"},
      {.value = "x", .name = "mail", .skip = true},
      {.value = "5", .name = "peloraQuotaHard", .type = ChangeType::kInteger},
      {.name = "peloraUserServer"},
  };
  EXPECT_EQ(component_->WriteAttributes(*object, changes, true), S_OK);
  EXPECT_THAT(host_.directory.Log(), ElementsAre("Put " + kAda + " description \"d\"",
                                                 "Put " + kAda + " peloraQuotaHard 5",
                                                 "PutEx CLEAR " + kAda + " peloraUserServer \"\""));
  EXPECT_EQ(host_.directory.CountOf(DirectoryCall::Kind::kSetInfo), 0U) << "the caller commits";
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(AdsBaseTest, AFailedWriteNamesItsFieldAndStops) {
  const Ref<IADs> object = host_.faulty.Wrap(Bind(kAda));
  host_.directory.ClearCalls();
  host_.faults().Fail(FaultPoint::kPut, 2, E_ACCESSDENIED);
  ChangeList changes = {{.value = "a", .name = "description"},
                        {.value = "b", .name = "mail"},
                        {.value = "c", .name = "name"}};
  EXPECT_EQ(component_->WriteAttributes(*object, changes, true), E_ACCESSDENIED);
  EXPECT_THAT(Boxes(), ElementsAre("Failed on field 'mail\r\n\r\nError code: 0X80070005"));
  EXPECT_EQ(host_.messages.records().front().message.icon, MessageIcon::kError);
  EXPECT_EQ(host_.messages.records().front().message.caption, "Pelora Error");
  EXPECT_EQ(host_.directory.calls().size(), 1U) << "what came before has been handed over";
}

TEST_F(AdsBaseTest, TheDirectorysSuccessCodesAreNoStop) {
  const Ref<IADs> object = host_.faulty.Wrap(Bind(kAda));
  host_.directory.ClearCalls();
  host_.faults().Answer(FaultPoint::kPut, 1, S_ADS_ERRORSOCCURRED);
  host_.faults().Answer(FaultPoint::kPut, 2, S_FALSE);
  ChangeList changes = {{.value = "a", .name = "description"},
                        {.value = "b", .name = "mail"},
                        {.value = "c", .name = "peloraUserServer"}};
  EXPECT_EQ(component_->WriteAttributes(*object, changes, true), S_OK);
  EXPECT_EQ(host_.directory.calls().size(), 3U);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(AdsBaseTest, AChangeOfAnotherTypeStopsWithAWarning) {
  const Ref<IADs> object = Bind(kAda);
  host_.directory.ClearCalls();
  ChangeList changes = {{.value = "a", .name = "description", .type = ChangeType{16}},
                        {.value = "b", .name = "mail"}};
  EXPECT_EQ(component_->WriteAttributes(*object, changes, true), S_ADS_ERRORSOCCURRED);
  EXPECT_THAT(Boxes(), ElementsAre("Failed on field 'description\r\n\r\nError code: 0X5011"));
  EXPECT_EQ(host_.messages.records().front().message.icon, MessageIcon::kWarning);
  EXPECT_THAT(host_.directory.Log(), IsEmpty());
}

TEST_F(AdsBaseTest, AListIsUsedUpByItsFirstObject) {
  ChangeList changes = {{.name = "otherMailbox",
                         .type = ChangeType::kMultiValued,
                         .variant = Variant::StringArray({"a@x"})}};
  EXPECT_EQ(component_->WriteAttributes(*Bind(kAda), changes, true), S_OK);
  EXPECT_EQ(component_->WriteAttributes(*Bind(kBob), changes, true), S_ADS_ERRORSOCCURRED);
  EXPECT_THAT(Boxes(), ElementsAre("Failed on field 'otherMailbox\r\n\r\nError code: 0X5011"));
}

/// Notes the order in which handlers are called, and what each answers.
class HandlerOrderTest : public AdsBaseTest {
 protected:
  LoadHandler Load(const std::string& name, HRESULT answer) {
    return [this, name, answer](const BoundObjects&) { return Note(name, answer); };
  }
  CollectHandler Collect(const std::string& name, HRESULT answer) {
    return [this, name, answer](ChangeList& changes) {
      changes.push_back({.name = name});
      return Note(name, answer);
    };
  }
  SkipValidationHandler Skip(const std::string& name, int answer) {
    return [this, name, answer] { return Note(name, answer); };
  }
  ValidateHandler Validate(const std::string& name, HRESULT answer) {
    return [this, name, answer](std::string* message) {
      if (FAILED(answer) && message != nullptr) *message = "from " + name;
      return Note(name, answer);
    };
  }
  int Note(const std::string& name, int answer) {
    called_.push_back(name);
    return answer;
  }

  std::vector<std::string> called_;
};

TEST_F(HandlerOrderTest, LoadStopsAtTheFirstFailure) {
  component_->RegisterLoad(Load("a", S_OK));
  component_->RegisterLoad(Load("b", S_FALSE));
  EXPECT_EQ(component_->LoadAll({}), S_OK);
  component_->RegisterLoad(Load("c", E_FAIL));
  component_->RegisterLoad(Load("d", S_OK));
  called_.clear();
  EXPECT_EQ(component_->LoadAll({}), E_FAIL);
  EXPECT_THAT(called_, ElementsAre("a", "b", "c"));
}

TEST_F(HandlerOrderTest, CollectAppendsInOrderAndStopsAtTheFirstFailure) {
  component_->RegisterCollect(Collect("a", S_OK));
  component_->RegisterCollect(Collect("b", E_ACCESSDENIED));
  component_->RegisterCollect(Collect("c", S_OK));
  ChangeList changes;
  EXPECT_EQ(component_->CollectAll(changes), E_ACCESSDENIED);
  EXPECT_THAT(called_, ElementsAre("a", "b"));
  ASSERT_EQ(changes.size(), 2U);
  EXPECT_EQ(changes[0].name, "a");
}

TEST_F(HandlerOrderTest, OneSkipEndsTheValidationAtOnce) {
  component_->RegisterSkipValidation(Skip("a", 0));
  component_->RegisterSkipValidation(Skip("b", 1));
  component_->RegisterSkipValidation(Skip("c", 0));
  component_->RegisterValidate(Validate("v", E_FAIL));
  std::string message;
  EXPECT_EQ(component_->ValidateAll(&message), S_OK);
  EXPECT_THAT(called_, ElementsAre("a", "b"));
  EXPECT_EQ(message, "");
}

TEST_F(HandlerOrderTest, OnlyTheAnswerOneSkips) {
  component_->RegisterSkipValidation(Skip("a", 2));
  component_->RegisterSkipValidation(Skip("b", -1));
  component_->RegisterValidate(Validate("v", E_FAIL));
  EXPECT_EQ(component_->ValidateAll(nullptr), E_FAIL);
  EXPECT_THAT(called_, ElementsAre("a", "b", "v"));
}

TEST_F(HandlerOrderTest, ValidationStopsAtTheFirstFailureWithItsMessage) {
  component_->RegisterSkipValidation(Skip("s", 0));
  component_->RegisterValidate(Validate("a", S_OK));
  component_->RegisterValidate(Validate("b", E_FAIL));
  component_->RegisterValidate(Validate("c", E_FAIL));
  std::string message;
  EXPECT_EQ(component_->ValidateAll(&message), E_FAIL);
  EXPECT_EQ(message, "from b");
  EXPECT_THAT(called_, ElementsAre("s", "a", "b"));
}

TEST_F(HandlerOrderTest, WithoutHandlersEverythingSucceeds) {
  ChangeList changes;
  EXPECT_EQ(component_->LoadAll({}), S_OK);
  EXPECT_EQ(component_->CollectAll(changes), S_OK);
  EXPECT_EQ(component_->ValidateAll(nullptr), S_OK);
}

}  // namespace
}  // namespace pelora
