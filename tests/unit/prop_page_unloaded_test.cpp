// SPDX-License-Identifier: Apache-2.0
// A tab that could not be loaded: its sheet can be used again once the directory is back, and what
// its controls never showed is never written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "server/component_server.h"
#include "tests/support/selection_data_object.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using testing::FaultPoint;
using ::testing::IsEmpty;
using testing::SelectionDataObject;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
constexpr ControlId kEdit = IDC_FILE_PATH;

/// A tab of one text that is written on every apply, as it shows.
class TextPage final : public CSnapInPropertyPage {
 public:
  explicit TextPage(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADsUser, {}, IDD_PROPPAGE_SERVER, "Text") {
    RegisterLoad([this](const BoundObjects& objects) {
      ++loads;
      LoadText(objects, "description", kEdit);
      return load_status;
    });
    RegisterCollect([this](ChangeList& changes) {
      changes.push_back({.value = Dialog().Text(kEdit), .name = "description"});
      return S_OK;
    });
    Route({{kEdit, ControlNotification::kEditChange, [this] {
              SetModified(true);
              return 0;
            }}});
  }

  int loads = 0;
  HRESULT load_status = S_OK;

 private:
  ~TextPage() override = default;
};

class UnloadedPageTest : public ::testing::Test {
 protected:
  UnloadedPageTest() {
    host_.directory.AddObject(kAda, {{"description", Variant::String("stored")}});
  }

  /// Opens a sheet of two tabs: the text's, whose loading is to fail, and another behind it.
  void Open() {
    for (TextPage* page : {page_.Get(), behind_.Get()}) {
      SelectionDataObject selection({kAda});
      ASSERT_EQ(page->Initialize(&selection), S_OK);
      ASSERT_EQ(page->AddPages(sheet_.PageTaker()), S_OK);
    }
    sheet_.Show();
    Forget();
  }
  void Forget() {
    host_.directory.ClearCalls();
    host_.messages.ClearRecords();
  }
  void FailBinding(std::size_t nth, HRESULT status) {
    host_.faults().Fail(FaultPoint::kGetObject, nth, status);
  }
  void Type(const std::string& text) {
    EXPECT_EQ(sheet_.User().EraseText(kEdit), UserAnswer::kDone);
    EXPECT_EQ(sheet_.User().TypeText(kEdit, text), UserAnswer::kDone);
  }
  std::vector<std::string> Writes() const {
    using enum DirectoryCall::Kind;
    return host_.directory.Log({kPut, kPutEx, kSetInfo});
  }
  std::vector<std::string> Boxes() const {
    std::vector<std::string> texts;
    for (const auto& record : host_.messages.records()) texts.push_back(record.message.text);
    return texts;
  }
  std::string Shown() { return sheet_.Dialog(0)->Text(kEdit); }

  testing::PageBench host_;
  Ref<TextPage> page_ = Ref<TextPage>::Adopt(new TextPage(host_.platform));
  Ref<TextPage> behind_ = Ref<TextPage>::Adopt(new TextPage(host_.platform));
  HeadlessPropertySheet sheet_{host_.templates()};
};

TEST_F(UnloadedPageTest, OnceTheDirectoryIsBackTheSameSheetIsAppliedAndClosed) {
  for (const HRESULT status : {kNoSuchObject, S_FALSE}) {
    SCOPED_TRACE(status);
    FailBinding(1, status);
    HeadlessPropertySheet sheet(host_.templates());
    const auto page = Ref<TextPage>::Adopt(new TextPage(host_.platform));
    SelectionDataObject selection({kAda});
    ASSERT_EQ(page->Initialize(&selection), S_OK);
    ASSERT_EQ(page->AddPages(sheet.PageTaker()), S_OK);
    sheet.Show();
    EXPECT_EQ(sheet.Dialog(0)->Text(kEdit), "");
    Forget();
    EXPECT_TRUE(sheet.Ok());
    EXPECT_EQ(page->loads, 1);
    EXPECT_THAT(Writes(), ElementsAre("Put " + kAda + " description \"stored\"", "SetInfo " + kAda))
        << "what is stored was shown before it was collected";
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(host_.directory.live_objects(), 0U);
  }
}

TEST_F(UnloadedPageTest, ItIsLoadedOnceAndShowsWhatIsStored) {
  FailBinding(1, E_FAIL);
  Open();
  EXPECT_EQ(page_->OnPageNotification(PageNotification::kApply), kPageApplied);
  EXPECT_EQ(Shown(), "stored");
  Type("typed");
  EXPECT_TRUE(sheet_.Apply());
  EXPECT_EQ(page_->loads, 1) << "a page that is loaded keeps what was typed";
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("typed"));
}

TEST_F(UnloadedPageTest, EveryApplyAsksTheDirectoryAndShowsItsAnswer) {
  FailBinding(1, kNoSuchObject);
  Open();
  for (const HRESULT status : {E_ACCESSDENIED, E_OUTOFMEMORY}) {
    Forget();
    FailBinding(1, status);
    EXPECT_FALSE(sheet_.Ok());
    EXPECT_TRUE(sheet_.IsOpen());
    const char* const code = status == E_ACCESSDENIED ? "0X80070005" : "0X8007000E";
    EXPECT_THAT(Boxes(), ElementsAre(std::string("Unable to get connection with the ldap user"
                                                 "\r\n\r\nError code: ") +
                                     code));
    EXPECT_THAT(Writes(), IsEmpty());
  }
  EXPECT_TRUE(sheet_.Ok());
}

TEST_F(UnloadedPageTest, WhatWasTypedWhereNothingWasShownIsNotWritten) {
  FailBinding(1, E_FAIL);
  Open();
  Type("typed");
  EXPECT_FALSE(sheet_.Ok());
  EXPECT_THAT(Writes(), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre("Validation of input fields failed: The settings could not be "
                                   "read before and are shown only now. Please enter your changes "
                                   "again\r\n\r\nError code: 0X80004005"));
  EXPECT_EQ(Shown(), "stored");
  EXPECT_FALSE(sheet_.IsApplyEnabled()) << "nothing is left to apply";
  Type("again");
  EXPECT_TRUE(sheet_.Ok());
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("again"));
}

TEST_F(UnloadedPageTest, WhatWasTypedGivesWayToAValueThatIsNotSet) {
  host_.directory.SetValue(kAda, "description", {});
  FailBinding(1, E_FAIL);
  Open();
  Type("typed");
  EXPECT_FALSE(sheet_.Apply());
  EXPECT_EQ(Shown(), "");
}

TEST_F(UnloadedPageTest, WhatCannotBeLoadedKeepsNobodyFromTheOtherTabs) {
  page_->load_status = E_ACCESSDENIED;
  Open();
  sheet_.SelectPage(1);
  EXPECT_EQ(sheet_.User().TypeText(kEdit, "!"), UserAnswer::kDone);
  Forget();
  EXPECT_TRUE(sheet_.Ok());
  EXPECT_EQ(page_->loads, 2) << "it was asked for once more";
  EXPECT_THAT(Writes(), ElementsAre("Put " + kAda + " description \"stored!\"", "SetInfo " + kAda))
      << "of the other tab alone";
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(UnloadedPageTest, WhatCannotBeLoadedButWasTypedIntoIsRefused) {
  page_->load_status = E_ACCESSDENIED;
  Open();
  Type("typed");
  EXPECT_FALSE(sheet_.Ok());
  EXPECT_TRUE(sheet_.IsApplyEnabled());
  EXPECT_THAT(Boxes(), ElementsAre("Unable to get connection with the ldap user"
                                   "\r\n\r\nError code: 0X80070005"));
  EXPECT_THAT(Writes(), IsEmpty());
  page_->load_status = S_OK;
  Forget();
  EXPECT_FALSE(sheet_.Ok()) << "it is shown now, and the typing is refused";
  EXPECT_TRUE(sheet_.Ok());
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("stored"));
}

TEST_F(UnloadedPageTest, ALoadingThatThrowsIsOneThatFailed) {
  page_->RegisterLoad([this](const BoundObjects&) -> HRESULT {
    if (page_->loads == 1) throw std::bad_alloc();
    return S_OK;
  });
  Open();
  EXPECT_TRUE(sheet_.Ok());
  EXPECT_EQ(page_->loads, 2);
}

/// Fields of the tabs themselves, on a page whose first loading fails.
class UnloadedFieldsTest : public ::testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  /// Opens a tab on objects with these attributes, of which it shows nothing yet.
  void Open(std::string_view component, const std::vector<testing::FakeAttributes>& objects) {
    Lines paths;
    for (const testing::FakeAttributes& attributes : objects) {
      paths.push_back("LDAP://CN=" + std::to_string(paths.size()) + ",DC=x");
      bench_.directory.AddObject(paths.back(), attributes);
    }
    Ref<IShellExtInit> tab;
    ASSERT_EQ(CreateComponent(FindClass(component)->class_id, bench_.platform, IID_IShellExtInit,
                              reinterpret_cast<void**>(tab.Put())),
              S_OK);
    SelectionDataObject selection(paths);
    ASSERT_EQ(tab->Initialize(&selection), S_OK);
    ASSERT_EQ(Query<IShellPropSheetExt>(*tab)->AddPages(sheet_.PageTaker()), S_OK);
    bench_.faulty.plan().Fail(FaultPoint::kGetObject, 1, E_FAIL);
    sheet_.Show();
  }
  void Type(ControlId id, const std::string& text) {
    EXPECT_EQ(sheet_.User().TypeText(id, text), UserAnswer::kDone) << id;
  }
  /// Applies, which is refused for what was done where nothing was shown.
  void ApplyInVain() {
    EXPECT_FALSE(sheet_.Apply());
    EXPECT_THAT(bench_.Writes(), IsEmpty());
  }
  std::string Text(ControlId id) { return sheet_.Dialog(0)->Text(id); }
  Lines Rows(ControlId id) {
    Lines rows;
    const IListBox& list = sheet_.Dialog(0)->ListBox(id);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }

  testing::PageBench bench_;
  HeadlessPropertySheet sheet_{bench_.templates()};
};

TEST_F(UnloadedFieldsTest, WhatWasTypedGivesWayWhereTheObjectsDiffer) {
  const auto server = [](std::int32_t port, const char* path) {
    return testing::FakeAttributes{{"peloraHttpPort", Variant::Integer(port)},
                                   {"peloraFilePath", Variant::String(path)}};
  };
  Open("CPropPageServer", {server(236, "/a"), server(237, "/b")});
  Type(IDC_HTTP_PORT, "1");
  Type(IDC_FILE_PATH, "/c");
  ApplyInVain();
  EXPECT_EQ(Text(IDC_HTTP_PORT), "");
  EXPECT_EQ(Text(IDC_FILE_PATH), "");
}

TEST_F(UnloadedFieldsTest, WhatWasTypedGivesWayToATextThatIsNotSet) {
  Open("CPropPageAddresslistGeneral", {{}});
  Type(IDC_DESCRIPTION, "typed");
  ApplyInVain();
  EXPECT_EQ(Text(IDC_DESCRIPTION), "");
}

TEST_F(UnloadedFieldsTest, WhatWasAddedToAListGivesWayToTheNamesThatAreStored) {
  bench_.directory.AddObject("LDAP://CN=Bob,DC=x",
                             {{"distinguishedName", Variant::String("CN=Bob,DC=x")}});
  Open("CPropPageContact", {{{"peloraSendAsPrivilege", Variant::String("CN=Zoe,DC=x")}}});
  bench_.choosers.Choose({"LDAP://CN=Bob,DC=x"});
  EXPECT_EQ(sheet_.User().Click(IDC_SENDAS_ADD), UserAnswer::kDone);
  EXPECT_THAT(Rows(IDC_SENDAS_LIST), ElementsAre("CN=Bob,DC=x"));
  ApplyInVain();
  EXPECT_THAT(Rows(IDC_SENDAS_LIST), ElementsAre("CN=Zoe,DC=x"));
}

}  // namespace
}  // namespace pelora
