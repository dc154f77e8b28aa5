// SPDX-License-Identifier: Apache-2.0
// What all wizard pages have in common, and what tells the nine classes apart.
#include "wizards/wizard_base.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "server/class_table.h"
#include "server/component_server.h"
#include "tests/unit/wizards/wizard_bench.h"
#include "wizards/wizard_ext_user.h"
#include "wizards/wizard_page.h"
#include "wizards/wizard_pages.h"

namespace pelora {
namespace {

using testing::OpenWizardPage;
using testing::PageBench;
using testing::RecordingWizard;
using Lines = std::vector<std::string>;

constexpr auto kSetActive = PageNotification::kSetActive;

// The classes.

struct WizardClass {
  const char* name;
  const char* title;
  DialogId dialog;
  std::vector<ControlId> enabled_controls;
};

const std::array<WizardClass, 9> kClasses = {{
    {"CWizardExtUser", "New object: User", 205, {284, 243, 265, 268, 266, 242, 271}},
    {"CWizardExtContact", "New object: contact", 215, {243, 265, 268}},
    {"CWizardExtDistlist", "New object: distlist", 214, {243, 265, 268}},
    {"CWizardExtCompany",
     "New object: Organizational Unit",
     212,
     {243, 266, 242, 271, 270, 272, 227}},
    {"CWizardExtServer",
     "New object: Computer",
     213,
     {280, 245, 274, 246, 275, 247, 276, 249, 243}},
    {"CWizardExtAddresslist", "New object: peloraAddresslist", 219, {243, 288, 293, 289, 287}},
    {"CWizardExtDynamicDistlist",
     "New object: dynamic distlist",
     218,
     {243, 265, 268, 288, 293, 289, 287}},
    {"CWizardAddresslist", "New object: peloraAddresslist", 222, {}},
    {"CWizardDynamicDistlist", "New object: dynamic distlist", 223, {}},
}};

class WizardClassTest : public ::testing::TestWithParam<WizardClass> {
 protected:
  Ref<IDsAdminNewObjExt> Make() {
    Ref<IDsAdminNewObjExt> made;
    EXPECT_EQ(CreateComponent(FindClass(GetParam().name)->class_id, bench_.platform,
                              IID_IDsAdminNewObjExt, reinterpret_cast<void**>(made.Put())),
              S_OK);
    return made;
  }
  PageBench bench_;
};

INSTANTIATE_TEST_SUITE_P(Nine, WizardClassTest, ::testing::ValuesIn(kClasses),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(WizardClassTest, HasItsPageAndItsControls) {
  Ref<IDsAdminNewObjExt> wizard = Make();
  std::unique_ptr<PropSheetPage> page;
  EXPECT_EQ(wizard->AddPages([&page](std::unique_ptr<PropSheetPage> added) {
    page = std::move(added);
    return true;
  }),
            S_OK);
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(page->Title(), GetParam().title);
  EXPECT_EQ(page->Template(), GetParam().dialog);
  EXPECT_EQ(bench_.Template(page->Template()).title, GetParam().title);
  const auto& base = dynamic_cast<const CWizardBase&>(*wizard);
  EXPECT_EQ(std::vector<ControlId>(base.enabled_controls().begin(), base.enabled_controls().end()),
            GetParam().enabled_controls);
  wizard.Reset();
}

TEST_P(WizardClassTest, AnswersForItsInterfacesAndLivesByItsReferences) {
  const Ref<IDsAdminNewObjExt> wizard = Make();
  EXPECT_EQ(Query<IDsAdminNewObjExt>(*wizard), wizard);
  void* found = &bench_;
  EXPECT_EQ(wizard->QueryInterface(IID_IUnknown, &found), S_OK);
  EXPECT_EQ(wizard->Release(), 1U);
  EXPECT_EQ(wizard->QueryInterface(IID_IShellExtInit, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(wizard->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(bench_.library.initialized(), 1);
  EXPECT_EQ(bench_.library.uninitialized(), 0);
}

/// The names of the controls that are enabled, in tab order.
std::vector<ControlId> Enabled(const HeadlessDialog& dialog) {
  std::vector<ControlId> enabled;
  for (const HeadlessControl& control : dialog.controls()) {
    if (control.enabled && control.item.id != IDC_STATIC) enabled.push_back(control.item.id);
  }
  std::ranges::sort(enabled);
  return enabled;
}

std::vector<ControlId> Sorted(std::vector<ControlId> ids) {
  std::ranges::sort(ids);
  return ids;
}

TEST_P(WizardClassTest, ItsCheckBoxEnablesAndDisablesItsControlsAndNoOthers) {
  Ref<IDsAdminNewObjExt> wizard = Make();
  std::unique_ptr<PropSheetPage> page;
  EXPECT_EQ(wizard->AddPages([&page](std::unique_ptr<PropSheetPage> added) {
    page = std::move(added);
    return true;
  }),
            S_OK);
  wizard.Reset();
  HeadlessDialog dialog(bench_.Template(page->Template()), page->Controller());
  EXPECT_EQ(dialog.Open(), 0);
  HeadlessUser user(dialog);
  if (GetParam().enabled_controls.empty()) {
    EXPECT_EQ(Enabled(dialog), (std::vector<ControlId>{291, 292}));
    return;
  }
  const std::vector<ControlId> alone = {254, 291};
  EXPECT_EQ(Enabled(dialog), alone);
  std::vector<ControlId> all = GetParam().enabled_controls;
  all.insert(all.end(), alone.begin(), alone.end());
  EXPECT_EQ(user.Click(IDC_CREATE_PELORA), UserAnswer::kDone);
  EXPECT_EQ(Enabled(dialog), Sorted(all));
  EXPECT_EQ(user.Click(IDC_CREATE_PELORA), UserAnswer::kDone);
  EXPECT_EQ(Enabled(dialog), alone);
}

/// Which interface a class asks the new object for: the one without which it writes nothing.
TEST(WizardObjectInterface, IsThatOfUsersAndCompaniesOrThePlainOne) {
  struct Row {
    const char* name;
    Guid iid;
  };
  const std::array<Row, 7> rows = {{{"CWizardExtUser", IID_IADsUser},
                                    {"CWizardExtContact", IID_IADs},
                                    {"CWizardExtDistlist", IID_IADs},
                                    {"CWizardExtCompany", IID_IADsOU},
                                    {"CWizardExtServer", IID_IADs},
                                    {"CWizardExtAddresslist", IID_IADs},
                                    {"CWizardExtDynamicDistlist", IID_IADs}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    PageBench bench;
    Ref<IDsAdminNewObjExt> wizard;
    ASSERT_EQ(CreateComponent(FindClass(row.name)->class_id, bench.platform, IID_IDsAdminNewObjExt,
                              reinterpret_cast<void**>(wizard.Put())),
              S_OK);
    const auto& base = dynamic_cast<const CWizardBase&>(*wizard);
    EXPECT_EQ(base.object_interface(), row.iid);
    const Ref<IADs> plain = bench.directory.MakeNewObject("LDAP://CN=New,DC=x", {});
    EXPECT_EQ(wizard->SetObject(plain.Get()), S_OK);
    const bool plain_will_do = row.iid == IID_IADs;
    EXPECT_EQ(wizard->WriteData(nullptr, NewObjectPhase::kPreCommit), plain_will_do ? 1 : 0);
    EXPECT_EQ(bench.messages.records().size(), plain_will_do ? 0U : 1U);
  }
}

// The page.

TEST(WizardPage, ShowsTheContainerAndSetsTheButtonByItsFieldsThenByItsBox) {
  PageBench bench;
  OpenWizardPage<CWizardExtUser> page(bench);
  EXPECT_EQ(page.dialog().Text(IDC_CONTAINER_NAME), "x/Sales");
  // An active user lacks an address: the box is not looked at before the page is activated.
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
  EXPECT_EQ(page.Tell(kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
}

TEST(WizardPage, BeforeItsDialogStandsTheTemplateSaysUnknownPath) {
  PageBench bench;
  for (const WizardClass& row : kClasses) {
    bool found = false;
    for (const resources::DialogItem& item : bench.Template(row.dialog).items) {
      if (item.id == 291) found = item.title == "Unknown Path";
    }
    EXPECT_TRUE(found) << row.name;
  }
}

TEST(WizardPage, LooksAtTheWizardAndTheContainersNameAlone) {
  PageBench bench;
  OpenWizardPage<CWizardExtUser> page(bench);
  EXPECT_EQ(bench.directory.Log(), Lines{});
  EXPECT_EQ(page.wizard().container_name(), "x/Sales");
}

TEST(WizardPage, ASecondInitializeLetsTheFirstWizardGo) {
  PageBench bench;
  OpenWizardPage<CWizardExtUser> page(bench);
  EXPECT_EQ(page.console().references(), 2U);
  Lines second_log;
  bool second_live = false;
  auto second = Ref<RecordingWizard>::Adopt(new RecordingWizard(second_log, second_live));
  EXPECT_EQ(page.extension().Initialize(nullptr, nullptr, "", second.Get(), {"", "elsewhere"}),
            S_OK);
  EXPECT_EQ(page.console().references(), 1U);
  EXPECT_EQ(second->references(), 2U);
  (void)page.TakeLog();
  EXPECT_EQ(page.Tell(kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{});
  EXPECT_EQ(second_log, Lines{"buttons 0 on"});
  // The same one again is not lost on the way.
  RecordingWizard* const raw = second.Get();
  second.Reset();
  EXPECT_EQ(page.extension().Initialize(nullptr, nullptr, "", raw, {"", "elsewhere"}), S_OK);
  EXPECT_TRUE(second_live);
  EXPECT_EQ(page.extension().Initialize(nullptr, nullptr, "", nullptr, {"", ""}), S_OK);
  EXPECT_FALSE(second_live);
  // Without a wizard there is no button to set, and nothing else to fear.
  EXPECT_EQ(page.Tell(kSetActive), 0);
  page.Click(IDC_CREATE_PELORA);
}

TEST(WizardPage, IsNeverHeldBackByItself) {
  PageBench bench;
  OpenWizardPage<CWizardExtUser> page(bench);
  page.Click(IDC_CREATE_PELORA);
  (void)page.TakeLog();
  using enum PageNotification;
  for (const PageNotification notification :
       {kWizardNext, kWizardFinish, kQueryCancel, kKillActive, kApply, kReset}) {
    EXPECT_EQ(page.Tell(notification), 0) << static_cast<int>(notification);
  }
  EXPECT_EQ(page.TakeLog(), Lines{});
}

TEST(WizardPage, GoingBackFromAnInvalidPageEnablesTheButton) {
  PageBench bench;
  OpenWizardPage<CWizardExtUser> extension(bench);
  extension.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(extension.TakeLog().back(), "buttons 0 off");
  EXPECT_EQ(extension.Tell(PageNotification::kWizardBack), 0);
  EXPECT_EQ(extension.TakeLog(), Lines{"buttons 0 on"});
  OpenWizardPage<CWizardAddresslist> primary(bench);
  EXPECT_EQ(primary.TakeLog(), Lines{"buttons 0 off"});
  EXPECT_EQ(primary.Tell(PageNotification::kWizardBack), 0);
  EXPECT_EQ(primary.TakeLog(), Lines{"buttons 0 on"});
}

TEST(WizardPage, OnActivationAnExtensionIsValidatedOnlyWhenItsBoxIsChecked) {
  PageBench bench;
  OpenWizardPage<CWizardExtContact> page(bench);
  page.Click(IDC_CREATE_PELORA);
  (void)page.TakeLog();
  EXPECT_EQ(page.Tell(kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
  page.Type(IDC_NEW_ADDRESS, "a");
  (void)page.TakeLog();
  EXPECT_EQ(page.Tell(kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
}

TEST(WizardPage, UncheckingTheBoxEnablesTheButtonWhateverTheFieldsHold) {
  PageBench bench;
  OpenWizardPage<CWizardExtContact> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.TakeLog().back(), "buttons 0 off");
  EXPECT_TRUE(page.wizard().create_checked());
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  EXPECT_FALSE(page.wizard().create_checked());
}

TEST(WizardPage, OnlyAFullyCheckedBoxCounts) {
  PageBench bench;
  OpenWizardPage<CWizardExtContact> page(bench);
  page.dialog().SetStyle(254, ButtonStyle::kAutoThreeState);
  page.Click(IDC_CREATE_PELORA);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.dialog().Check(IDC_CREATE_PELORA), CheckState::kIndeterminate);
  EXPECT_FALSE(page.wizard().create_checked());
  EXPECT_FALSE(page.dialog().IsEnabled(IDC_NEW_ADDRESS));
}

/// A page whose loading can be made to fail, or to throw.
class StubbornPage : public CWizardPage<CWizardExtension> {
 public:
  explicit StubbornPage(const Platform& platform)
      : CWizardPage(platform, {.dialog_template = 215, .title = "Stubborn"}) {
    RegisterLoad([](const BoundObjects& objects) {
      EXPECT_TRUE(objects.empty());
      return E_FAIL;
    });
    RegisterValidate([](std::string* message) {
      EXPECT_EQ(message, nullptr);
      ADD_FAILURE() << "validated";
      return S_OK;
    });
  }

 protected:
  ~StubbornPage() override = default;
};

TEST(WizardPage, APageThatCannotBeLoadedAnswersOneAndLeavesTheButton) {
  PageBench bench;
  OpenWizardPage<StubbornPage> page(bench, 1);
  EXPECT_EQ(page.dialog().Text(IDC_CONTAINER_NAME), "x/Sales");
  EXPECT_EQ(page.TakeLog(), Lines{});
}

/// A first page whose name enables other controls; the module's own have none.
class NamePageWithControls : public CWizardPage<CWizardCreate> {
 public:
  static constexpr std::array<ControlId, 1> kControls = {IDC_CONTAINER_NAME};

  explicit NamePageWithControls(const Platform& platform)
      : CWizardPage(platform,
                    {.dialog_template = 222, .title = "Named", .enabled_controls = kControls}) {
    Route(
        {{IDC_OBJECT_NAME, ControlNotification::kEditChange, [this] { return OnNameChanged(); }}});
  }

 protected:
  ~NamePageWithControls() override = default;
};

TEST(WizardPage, ANameEnablesTheControlsThatGoWithItAndAnEmptyOneDisablesThem) {
  PageBench bench;
  OpenWizardPage<NamePageWithControls> page(bench);
  for (int round = 0; round < 2; ++round) {
    page.Type(IDC_OBJECT_NAME, "A");
    EXPECT_TRUE(page.dialog().IsEnabled(IDC_CONTAINER_NAME));
    EXPECT_EQ(page.user().EraseText(IDC_OBJECT_NAME), UserAnswer::kDone);
    EXPECT_FALSE(page.dialog().IsEnabled(IDC_CONTAINER_NAME));
  }
}

/// A page with two callbacks of a kind.
class TwoValidators : public CWizardPage<CWizardExtension> {
 public:
  explicit TwoValidators(const Platform& platform)
      : CWizardPage(platform, {.dialog_template = 215, .title = "Two"}) {
    RegisterValidate([this](std::string* /*message*/) {
      calls.emplace_back("first");
      return first;
    });
    RegisterValidate([this](std::string* /*message*/) {
      calls.emplace_back("second");
      return S_FALSE;
    });
    Route({{254, ControlNotification::kClicked, [this] { return OnCreateClicked(); }}});
  }

  HRESULT first = S_OK;
  Lines calls;

 protected:
  ~TwoValidators() override = default;
};

TEST(WizardPage, TheFirstInvalidFieldEndsTheValidation) {
  PageBench bench;
  OpenWizardPage<TwoValidators> page(bench);
  EXPECT_EQ(std::exchange(page.wizard().calls, {}), (Lines{"first", "second"}));
  // Only a failure disables the button.
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  page.wizard().first = E_FAIL;
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.wizard().calls, Lines{"first"});
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
}

// Reference counts.

class BarePage : public CWizardPage<CWizardExtension> {
 public:
  BarePage(const Platform& platform, bool& live)
      : CWizardPage(platform, {.dialog_template = 215, .title = "Bare"}), live_(live) {
    live_ = true;
  }

 protected:
  ~BarePage() override { live_ = false; }

 private:
  bool& live_;
};

TEST(WizardLifetime, TheBaseCountsFromNothingAndLeavesInterfacesToTheComponent) {
  PageBench bench;
  bool live = false;
  auto* page = new BarePage(bench.platform, live);
  void* found = &bench;
  EXPECT_EQ(page->QueryInterface(IID_IUnknown, &found), E_NOTIMPL);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(page->AddRef(), 1U);
  EXPECT_EQ(page->AddRef(), 2U);
  EXPECT_EQ(page->Release(), 1U);
  EXPECT_TRUE(live);
  EXPECT_EQ(page->Release(), 0U);
  EXPECT_FALSE(live);
  EXPECT_EQ(bench.library.uninitialized(), 1);
}

TEST(WizardLifetime, ThePagesReleaseEndsTheObjectWhateverReferencesAreHeld) {
  PageBench bench;
  bool live = false;
  bool wizard_live = false;
  Lines log;
  auto* page = new BarePage(bench.platform, live);
  auto wizard = Ref<RecordingWizard>::Adopt(new RecordingWizard(log, wizard_live));
  page->AddRef();
  page->AddRef();
  page->AddRef();
  EXPECT_EQ(page->Initialize(nullptr, nullptr, "", wizard.Get(), {}), S_OK);
  const Ref<IADs> object = bench.directory.MakeNewObject("LDAP://CN=New,DC=x");
  EXPECT_EQ(page->SetObject(object.Get()), S_OK);
  std::unique_ptr<PropSheetPage> taken;
  EXPECT_EQ(page->AddPages([&taken](std::unique_ptr<PropSheetPage> added) {
    taken = std::move(added);
    return true;
  }),
            S_OK);
  wizard.Reset();
  EXPECT_TRUE(wizard_live);
  taken.reset();
  EXPECT_FALSE(live);
  EXPECT_FALSE(wizard_live);
  // Our own reference to the new object is the last.
  EXPECT_EQ(object->AddRef(), 2U);
  EXPECT_EQ(object->Release(), 1U);
}

TEST(WizardLifetime, TheConsolesLastReleaseDoesNotEndAnObjectWhosePageIsThere) {
  PageBench bench;
  bool live = false;
  auto* page = new BarePage(bench.platform, live);
  page->AddRef();
  std::unique_ptr<PropSheetPage> taken;
  EXPECT_EQ(page->AddPages([&taken](std::unique_ptr<PropSheetPage> added) {
    taken = std::move(added);
    return true;
  }),
            S_OK);
  EXPECT_EQ(page->Release(), 1U);
  EXPECT_TRUE(live);
  taken.reset();
  EXPECT_FALSE(live);
}

TEST(WizardLifetime, ARefusedPageTakesNoObjectWithIt) {
  PageBench bench;
  bool live = false;
  auto* page = new BarePage(bench.platform, live);
  page->AddRef();
  EXPECT_EQ(page->AddPages([](std::unique_ptr<PropSheetPage> added) {
    added.reset();
    return false;
  }),
            S_OK);
  EXPECT_TRUE(live);
  // It may be offered to another wizard.
  std::unique_ptr<PropSheetPage> taken;
  const auto take = [&taken](std::unique_ptr<PropSheetPage> added) {
    taken = std::move(added);
    return true;
  };
  EXPECT_EQ(page->AddPages(take), S_OK);
  ASSERT_NE(taken, nullptr);
  EXPECT_EQ(page->Release(), 1U);
  taken.reset();
  EXPECT_FALSE(live);
}

TEST(WizardLifetime, IsAskedForItsPageASecondTimeAndGivesOne) {
  PageBench bench;
  bool live = false;
  auto* page = new BarePage(bench.platform, live);
  page->AddRef();
  std::vector<std::unique_ptr<PropSheetPage>> taken;
  const auto take = [&taken](std::unique_ptr<PropSheetPage> added) {
    taken.push_back(std::move(added));
    return true;
  };
  EXPECT_EQ(page->AddPages(take), S_OK);
  EXPECT_EQ(page->AddPages(take), S_OK);
  ASSERT_EQ(taken.size(), 2U);
  EXPECT_EQ(taken[1]->Template(), taken[0]->Template());
  EXPECT_EQ(page->AddRef(), 4U) << "each page holds a reference";
  HeadlessDialog left(bench.Template(taken[1]->Template()), taken[1]->Controller());
  EXPECT_EQ(left.Open(), 0);

  taken.erase(taken.begin());
  EXPECT_FALSE(live) << "the first release ends the object";
  // What is left stands without it and does nothing.
  EXPECT_EQ(taken[0]->Controller().OnPageNotification(PageNotification::kSetActive), 0);
  EXPECT_EQ(taken[0]->Controller().OnCommand(IDC_CREATE_PELORA, ControlNotification::kClicked), 0);
  EXPECT_FALSE(taken[0]->Title().empty());
  taken[0]->Controller().OnDestroy();
}

}  // namespace
}  // namespace pelora
