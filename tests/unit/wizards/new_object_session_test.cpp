// SPDX-License-Identifier: Apache-2.0
// New-object wizards from the first page to the object in the directory.
#include "hosts/sheets/new_object_session.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hosts/headless/headless_new_object_wizard.h"
#include "platform/counted.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "server/component_server.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using sheets::NewObjectSetup;
using sheets::WizardRole;
using testing::FaultPoint;
using testing::PageBench;
using Lines = std::vector<std::string>;

const std::string kContainer = "OU=Sales,DC=x";

std::string PathOf(const std::string& name) { return "LDAP://CN=" + name + "," + kContainer; }

/// An extension that takes down what it is called with, and answers as it is told to.
class RecordingExtension final : public Counted<IDsAdminNewObjExt> {
 public:
  explicit RecordingExtension(Lines& log) : CountedBy(0), log_(log) {}

  HRESULT initialize = S_OK;
  HRESULT add_pages = S_OK;
  HRESULT summary = S_OK;
  HRESULT on_error = S_OK;
  std::map<NewObjectPhase, HRESULT> write;
  Ref<IDsAdminNewObj> wizard;
  Ref<IADs> object;

  HRESULT QueryInterface(const Guid& /*iid*/, void** object_out) override {
    *object_out = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT Initialize(IADs* container, IADs* copy_source, const std::string& class_name,
                     IDsAdminNewObj* site, const NewObjectDisplayInfo& info) override {
    log_.push_back("initialize " + class_name + ", " + info.container_name +
                   (container != nullptr ? ", container" : "") +
                   (copy_source != nullptr ? ", copy" : ""));
    wizard = Ref<IDsAdminNewObj>(site);
    return initialize;
  }
  HRESULT AddPages(const AddPropSheetPage& /*add_page*/) override {
    log_.emplace_back("add pages");
    return add_pages;
  }
  HRESULT SetObject(IADs* new_object) override {
    log_.emplace_back(new_object != nullptr ? "object" : "no object");
    object = Ref<IADs>(new_object);
    return S_OK;
  }
  HRESULT WriteData(IDialog* /*owner*/, NewObjectPhase phase) override {
    log_.push_back("write " + std::to_string(static_cast<int>(phase)));
    return write.contains(phase) ? write.at(phase) : S_OK;
  }
  HRESULT OnError(IDialog* /*owner*/, HRESULT status, NewObjectPhase phase) override {
    log_.push_back("error " + std::to_string(static_cast<std::uint32_t>(status)) + " in " +
                   std::to_string(static_cast<int>(phase)));
    return on_error;
  }
  HRESULT GetSummaryInfo(std::string& text) override {
    log_.emplace_back("summary");
    text = "of the recorder";
    return summary;
  }

 private:
  ~RecordingExtension() override { log_.emplace_back("gone"); }

  Lines& log_;
};

class NewObjectTest : public ::testing::Test {
 protected:
  NewObjectSetup SetupFor(const std::string& class_name, std::vector<Guid> interfaces = {}) {
    bench_.directory.AddObject("LDAP://" + kContainer);
    NewObjectSetup setup{
        .class_name = class_name,
        .container = {},
        .display_info = {.wizard_title = "New object", .container_name = "x/Sales"},
        .own_pages = 0,
        .make_object = {},
        .write_own = {}};
    EXPECT_EQ(bench_.directory.ADsGetObject("LDAP://" + kContainer, IID_IADs, setup.container),
              S_OK);
    setup.make_object = [this, interfaces](const std::string& name, Ref<IADs>& object) {
      object.Reset();
      if (SUCCEEDED(make_status_)) {
        object = bench_.faulty.Wrap(bench_.directory.MakeNewObject(PathOf(name), interfaces));
      }
      return make_status_;
    };
    setup.write_own = [](IADs& object) {
      return object.Put("displayName", Variant::String("own"));
    };
    return setup;
  }

  HRESULT Add(const char* class_name) {
    Ref<IDsAdminNewObjExt> extension;
    EXPECT_EQ(CreateComponent(FindClass(class_name)->class_id, bench_.platform,
                              IID_IDsAdminNewObjExt, reinterpret_cast<void**>(extension.Put())),
              S_OK);
    return wizard_->AddExtension(std::move(extension));
  }

  void StartUser() {
    wizard_ = std::make_unique<HeadlessNewObjectWizard>(
        bench_.templates(), SetupFor("user", {IID_IADsUser}), WizardRole::kSecondary);
    EXPECT_EQ(Add("CWizardExtUser"), S_OK);
    wizard_->Show();
  }
  void StartList() {
    wizard_ = std::make_unique<HeadlessNewObjectWizard>(
        bench_.templates(), SetupFor("peloraAddresslist"), WizardRole::kPrimary);
    EXPECT_EQ(Add("CWizardAddresslist"), S_OK);
    EXPECT_EQ(Add("CWizardExtAddresslist"), S_OK);
    wizard_->Show();
  }
  /// The recorder is the wizard's only extension, or stands behind those added before.
  RecordingExtension& AddRecorder() {
    auto* recorder = new RecordingExtension(log_);
    EXPECT_EQ(wizard_->AddExtension(Ref<IDsAdminNewObjExt>(recorder)), S_OK);
    return *recorder;
  }
  /// From the name to the summary, with an active user's address.
  void FillInUser(const std::string& name) {
    wizard_->TypeName(name);
    EXPECT_TRUE(wizard_->Next());
    EXPECT_EQ(wizard_->User().Click(IDC_CREATE_PELORA), UserAnswer::kDone);
    EXPECT_EQ(wizard_->User().TypeText(IDC_NEW_ADDRESS, "new@x"), UserAnswer::kDone);
    EXPECT_TRUE(wizard_->Next());
  }
  [[nodiscard]] std::size_t Commits() const {
    return bench_.directory.CountOf(testing::DirectoryCall::Kind::kSetInfo);
  }
  std::string LastBox() {
    const auto& records = bench_.messages.records();
    return records.empty() ? std::string() : records.back().message.text;
  }

  PageBench bench_;
  Lines log_;
  HRESULT make_status_ = S_OK;
  std::unique_ptr<HeadlessNewObjectWizard> wizard_;
};

const testing::FakeAttributes kActiveUserOnServer = {
    {"displayName", Variant::String("own")}, {"peloraAccount", Variant::Integer(1)},
    {"peloraAdmin", Variant::Integer(0)},    {"peloraSharedStoreOnly", Variant::Integer(0)},
    {"peloraHidden", Variant::Integer(0)},   {"mail", Variant::String("new@x")}};

TEST_F(NewObjectTest, AUserIsMadeByOneRequestWithTheExtensionsValuesInIt) {
  StartUser();
  EXPECT_EQ(wizard_->PageCount(), 3U);
  EXPECT_FALSE(wizard_->IsNextEnabled());
  FillInUser("Ada");
  EXPECT_TRUE(wizard_->IsSummary());
  EXPECT_EQ(wizard_->summaries(), Lines{"Pelora enabled"});
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), std::nullopt);
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_FALSE(wizard_->IsOpen());
  EXPECT_EQ(Commits(), 1U);
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), kActiveUserOnServer);
  wizard_.reset();
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
  EXPECT_EQ(bench_.library.initialized(), bench_.library.uninitialized());
}

TEST_F(NewObjectTest, GoingOnWithoutTouchingTheBoxMakesAnObjectWithoutAnAccount) {
  StartUser();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(wizard_->Title(wizard_->CurrentPage()), "New object: User");
  EXPECT_TRUE(wizard_->IsNextEnabled());
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(wizard_->summaries(), Lines{"Pelora disabled"});
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")),
            (testing::FakeAttributes{{"displayName", Variant::String("own")},
                                     {"peloraAccount", Variant::Integer(0)}}));
}

TEST_F(NewObjectTest, AnInvalidPageHoldsNextBackAndLetsOneGoBack) {
  StartUser();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(wizard_->User().Click(IDC_CREATE_PELORA), UserAnswer::kDone);
  EXPECT_FALSE(wizard_->IsNextEnabled());
  EXPECT_FALSE(wizard_->Next());
  EXPECT_EQ(wizard_->CurrentPage(), 1U);
  EXPECT_TRUE(wizard_->Back());
  EXPECT_TRUE(wizard_->IsNextEnabled());
  EXPECT_FALSE(wizard_->Back());
  EXPECT_TRUE(wizard_->Next());
  // What was clicked is still there.
  EXPECT_EQ(wizard_->Dialog(1)->Check(IDC_CREATE_PELORA), CheckState::kChecked);
  EXPECT_FALSE(wizard_->IsNextEnabled());
  EXPECT_EQ(wizard_->User().Click(IDC_CREATE_PELORA), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->IsNextEnabled());
}

TEST_F(NewObjectTest, ExtensionsAreCalledInTheConsolesOrder) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  AddRecorder();
  EXPECT_EQ(wizard_->PageCount(), 2U);
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"initialize user, x/Sales, container", "add pages", "object", "summary",
                         "write 1", "write 3", "no object", "gone"}));
}

TEST_F(NewObjectTest, AChangedNameGivesTheExtensionsANewObjectAndTheSameNameNone) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  AddRecorder();
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Back());
  log_.clear();
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(log_, Lines{"summary"});
  EXPECT_TRUE(wizard_->Back());
  wizard_->TypeName("Bob");
  log_.clear();
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(log_, (Lines{"object", "summary"}));
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), std::nullopt);
  EXPECT_NE(bench_.directory.Values(PathOf("Bob")), std::nullopt);
}

TEST_F(NewObjectTest, AnObjectThatCannotBeMadeKeepsTheWizardOnItsFirstPage) {
  StartUser();
  wizard_->TypeName("Ada");
  make_status_ = E_ADS_BAD_PATHNAME;
  EXPECT_FALSE(wizard_->Next());
  EXPECT_EQ(wizard_->CurrentPage(), 0U);
  make_status_ = S_OK;
  EXPECT_TRUE(wizard_->Next());
}

TEST_F(NewObjectTest, ANameInUseIsSaidOnceAndEverythingTypedStays) {
  bench_.directory.AddObject(PathOf("Ada"), {{"mail", Variant::String("old@x")}});
  StartUser();
  FillInUser("Ada");
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_TRUE(wizard_->IsOpen());
  EXPECT_EQ(wizard_->result()->status, kObjectAlreadyExists);
  EXPECT_TRUE(wizard_->result()->is_shown);
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(LastBox(),
            "The new object cannot be created because the name is already in use.\r\n"
            "Please select a different name and try again.");
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")),
            (testing::FakeAttributes{{"mail", Variant::String("old@x")}}));
  EXPECT_TRUE(wizard_->Back());
  EXPECT_EQ(wizard_->Dialog(1)->Text(IDC_NEW_ADDRESS), "new@x");
  EXPECT_TRUE(wizard_->Back());
  wizard_->TypeName("Ada2");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada2")), kActiveUserOnServer);
}

TEST_F(NewObjectTest, AFailedCommitIsCleanedUpAndMayBeTriedAgain) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(
      bench_.templates(), SetupFor("user", {IID_IADsUser}), WizardRole::kSecondary);
  EXPECT_EQ(Add("CWizardExtUser"), S_OK);
  AddRecorder();
  wizard_->Show();
  FillInUser("Ada");
  EXPECT_EQ(wizard_->summaries(), (Lines{"Pelora enabled", "of the recorder"}));
  log_.clear();
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"write 1", "object", "write 4"}));
  EXPECT_EQ(LastBox(), "Unknown error occured\r\n\r\nError code: 0X80070005");
  EXPECT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), std::nullopt);
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), kActiveUserOnServer);
  EXPECT_EQ(Commits(), 1U);
}

TEST_F(NewObjectTest, AFailureThatNoExtensionShowsIsLeftToTheHost) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  AddRecorder().on_error = E_NOTIMPL;
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  log_.clear();
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"write 1", "object", "write 4", "error 2147942405 in 2"}));
  EXPECT_FALSE(wizard_->result()->is_shown);
  // Without any extension there is nobody to show it either.
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_FALSE(wizard_->result()->is_shown);
  EXPECT_TRUE(wizard_->Finish());
}

TEST_F(NewObjectTest, AnExtensionMayPreventTheCommitAndNobodyAfterIt) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  RecordingExtension& recorder = AddRecorder();
  recorder.write[NewObjectPhase::kPreCommit] = E_FAIL;
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  log_.clear();
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"write 1", "object", "write 4", "error 2147500037 in 1"}));
  EXPECT_EQ(Commits(), 0U);
  recorder.write[NewObjectPhase::kPreCommit] = S_OK;
  recorder.write[NewObjectPhase::kPostCommit] = E_ACCESSDENIED;
  log_.clear();
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"write 1", "write 3", "error 2147942405 in 3", "no object", "gone"}));
  EXPECT_NE(bench_.directory.Values(PathOf("Ada")), std::nullopt);
}

TEST_F(NewObjectTest, AFailedWriteOfTheExtensionStillMakesTheObject) {
  StartUser();
  FillInUser("Ada");
  bench_.faulty.plan().FailAttribute(FaultPoint::kPut, "peloraAccount", 1, E_ACCESSDENIED);
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(LastBox(), "Failed on field 'peloraAccount\r\n\r\nError code: 0X80070005");
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")),
            (testing::FakeAttributes{{"displayName", Variant::String("own")}}));
}

TEST_F(NewObjectTest, WhatTheHostItselfCannotWriteStopsTheCreation) {
  NewObjectSetup setup = SetupFor("user");
  setup.write_own = [](IADs& /*object*/) { return E_ADS_CANT_CONVERT_DATATYPE; };
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), std::move(setup),
                                                      WizardRole::kSecondary);
  AddRecorder();
  wizard_->Show();
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  log_.clear();
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(log_, (Lines{"object", "write 4", "error 2147504140 in 1"}));
  EXPECT_EQ(Commits(), 0U);
}

TEST_F(NewObjectTest, AnObjectThatCouldNotBeMadeAnewIsMadeByTheNextFinish) {
  StartUser();
  FillInUser("Ada");
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  make_status_ = E_OUTOFMEMORY;
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(wizard_->result()->status, E_ACCESSDENIED);
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(wizard_->result()->status, E_OUTOFMEMORY);
  make_status_ = S_OK;
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Ada")), kActiveUserOnServer);
}

TEST_F(NewObjectTest, CancelMakesNothing) {
  StartUser();
  FillInUser("Ada");
  EXPECT_TRUE(wizard_->Cancel());
  EXPECT_FALSE(wizard_->IsOpen());
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_FALSE(wizard_->Cancel());
  EXPECT_EQ(bench_.Writes(), Lines{});
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
  EXPECT_EQ(bench_.library.initialized(), bench_.library.uninitialized());
}

TEST_F(NewObjectTest, AWizardNeverShownLeavesNothingBehind) {
  StartUser();
  wizard_.reset();
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
  EXPECT_EQ(bench_.library.initialized(), 1);
  EXPECT_EQ(bench_.library.uninitialized(), 1);
}

// Wizards with a first page of an extension's.

TEST_F(NewObjectTest, AnAddressListIsNamedSearchedAndMade) {
  StartList();
  EXPECT_EQ(wizard_->PageCount(), 3U);
  EXPECT_FALSE(wizard_->IsNextEnabled());
  EXPECT_EQ(wizard_->User().TypeText(IDC_OBJECT_NAME, "Everyone"), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->IsNextEnabled());
  EXPECT_EQ(wizard_->User().Click(IDC_CREATE_PELORA), UserAnswer::kDone);
  EXPECT_FALSE(wizard_->IsNextEnabled());
  EXPECT_EQ(wizard_->User().TypeText(IDC_SEARCH_QUERY, "(cn=*)"), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(wizard_->summaries(), (Lines{"Fullname: Everyone\r\n", "Pelora enabled"}));
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(Commits(), 1U);
  EXPECT_EQ(bench_.directory.Values(PathOf("Everyone")),
            (testing::FakeAttributes{{"peloraAccount", Variant::Integer(1)},
                                     {"peloraHidden", Variant::Integer(0)},
                                     {"peloraFilter", Variant::String("(cn=*)")}}));
}

TEST_F(NewObjectTest, AListWhoseNameIsInUseIsRenamedAndMade) {
  bench_.directory.AddObject(PathOf("Everyone"), {});
  StartList();
  EXPECT_EQ(wizard_->User().TypeText(IDC_OBJECT_NAME, "Everyone"), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Next());
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_TRUE(wizard_->Back());
  EXPECT_TRUE(wizard_->Back());
  EXPECT_EQ(wizard_->User().TypeText(IDC_OBJECT_NAME, " Else"), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_EQ(bench_.directory.Values(PathOf("Everyone Else")),
            (testing::FakeAttributes{{"peloraAccount", Variant::Integer(0)}}));
}

TEST_F(NewObjectTest, AListThatCannotBeMadeIsReported) {
  StartList();
  EXPECT_EQ(wizard_->User().TypeText(IDC_OBJECT_NAME, "Everyone"), UserAnswer::kDone);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->Next());
  make_status_ = E_ADS_BAD_PATHNAME;
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(wizard_->result()->status, E_ADS_BAD_PATHNAME);
  // The second page had no object to write into, and the first tells of the failure.
  ASSERT_EQ(bench_.messages.records().size(), 2U);
  EXPECT_EQ(LastBox(), "Unknown error occured\r\n\r\nError code: 0X80005000");
  make_status_ = S_OK;
  EXPECT_TRUE(wizard_->Finish());
}

TEST_F(NewObjectTest, APrimaryThatMakesNothingMakesTheCreationFail) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(
      bench_.templates(), SetupFor("peloraAddresslist"), WizardRole::kPrimary);
  AddRecorder();
  wizard_->Show();
  EXPECT_EQ(wizard_->PageCount(), 1U);
  EXPECT_TRUE(wizard_->IsSummary());
  EXPECT_FALSE(wizard_->Finish());
  EXPECT_EQ(wizard_->result()->status, E_UNEXPECTED);
}

// What extensions are offered.

TEST_F(NewObjectTest, TheSiteKnowsItsExtensionsPages) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(
      bench_.templates(), SetupFor("user", {IID_IADsUser}), WizardRole::kSecondary);
  EXPECT_EQ(Add("CWizardExtUser"), S_OK);
  const Ref<IDsAdminNewObj> site = AddRecorder().wizard;
  EXPECT_EQ(Query<IDsAdminNewObj>(*site), site);
  EXPECT_FALSE(Query<IDsAdminNewObjPrimarySite>(*site));
  EXPECT_EQ(site->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  wizard_->Show();
  std::int32_t total = 0;
  std::int32_t start = 0;
  EXPECT_EQ(site->GetPageCounts(total, start), S_OK);
  EXPECT_EQ(total, 2);
  EXPECT_EQ(start, 2);
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  // The page that shows is another's.
  EXPECT_EQ(site->SetButtons(0, false), S_OK);
  EXPECT_TRUE(wizard_->IsNextEnabled());
  wizard_.reset();
  EXPECT_EQ(site->SetButtons(0, false), E_UNEXPECTED);
  EXPECT_EQ(site->GetPageCounts(total, start), E_UNEXPECTED);
}

TEST_F(NewObjectTest, OnlyThePrimaryIsOfferedThePrimarySite) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(
      bench_.templates(), SetupFor("peloraAddresslist"), WizardRole::kPrimary);
  RecordingExtension& first = AddRecorder();
  RecordingExtension& second = AddRecorder();
  const Ref<IDsAdminNewObjPrimarySite> site = Query<IDsAdminNewObjPrimarySite>(*first.wizard);
  ASSERT_TRUE(site);
  EXPECT_FALSE(Query<IDsAdminNewObjPrimarySite>(*second.wizard));
  EXPECT_EQ(site->Commit(), E_NOTIMPL);
  // As other primary extensions do, long before the commit.
  log_.clear();
  EXPECT_EQ(site->CreateNew("Early"), S_OK);
  EXPECT_EQ(log_, (Lines{"object", "object"}));
  wizard_->Show();
  EXPECT_TRUE(wizard_->Finish());
  EXPECT_NE(bench_.directory.Values(PathOf("Early")), std::nullopt);
  EXPECT_EQ(site->CreateNew("Late"), E_UNEXPECTED);
}

TEST_F(NewObjectTest, AnExtensionThatRefusesIsLeftOut) {
  wizard_ = std::make_unique<HeadlessNewObjectWizard>(bench_.templates(), SetupFor("user"),
                                                      WizardRole::kSecondary);
  auto* refusing = new RecordingExtension(log_);
  refusing->initialize = E_ACCESSDENIED;
  EXPECT_EQ(wizard_->AddExtension(Ref<IDsAdminNewObjExt>(refusing)), E_ACCESSDENIED);
  auto* pageless = new RecordingExtension(log_);
  pageless->add_pages = S_FALSE;
  EXPECT_EQ(wizard_->AddExtension(Ref<IDsAdminNewObjExt>(pageless)), S_FALSE);
  EXPECT_EQ(log_, (Lines{"initialize user, x/Sales, container", "gone",
                         "initialize user, x/Sales, container", "add pages", "gone"}));
  log_.clear();
  AddRecorder().summary = E_NOTIMPL;
  wizard_->Show();
  EXPECT_EQ(wizard_->AddExtension(Ref<IDsAdminNewObjExt>(new RecordingExtension(log_))),
            E_UNEXPECTED);
  wizard_->TypeName("Ada");
  EXPECT_TRUE(wizard_->Next());
  EXPECT_EQ(wizard_->summaries(), Lines{});
}

}  // namespace
}  // namespace pelora
