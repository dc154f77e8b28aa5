// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pages/snap_in_property_page.h"
#include "resources/resource.h"
#include "tests/support/selection_data_object.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using testing::FaultPoint;
using ::testing::IsEmpty;
using testing::SelectionDataObject;

constexpr ControlId kBox = IDC_PELORA_ACCOUNT;
constexpr ControlId kEdit = IDC_QUOTA_HARD;

class ReaderPage final : public CSnapInPropertyPage {
 public:
  explicit ReaderPage(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_USER, "Readers") {}

 private:
  ~ReaderPage() override = default;
};

class PropPageReadersTest : public ::testing::Test {
 protected:
  /// Opens a page on one new object per value of `attribute` and runs `read` as its load handler.
  void Load(const std::string& attribute, const std::vector<Variant>& values,
            const std::function<void(CPropPage&, const BoundObjects&)>& read) {
    std::vector<std::string> paths;
    for (const Variant& value : values) {
      paths.push_back("LDAP://CN=o" + std::to_string(++made_) + ",DC=x");
      host_.directory.AddObject(paths.back());
      host_.directory.SetValue(paths.back(), attribute, value);
    }
    dialog_.reset();
    page_ = Ref<ReaderPage>::Adopt(new ReaderPage(host_.platform));
    page_->RegisterLoad([&](const BoundObjects& objects) {
      page_->Dialog().SetText(kEdit, "before");
      read(*page_, objects);
      return S_OK;
    });
    SelectionDataObject selection(paths);
    ASSERT_EQ(page_->Initialize(&selection), S_OK);
    dialog_ = std::make_unique<HeadlessDialog>(
        host_.templates().Dialog(IDD_PROPPAGE_USER).value.value(), *page_);
    ASSERT_EQ(dialog_->Open(), S_OK);
  }
  void LoadCheckBox(const std::vector<Variant>& values) {
    Load("peloraAccount", values, [](CPropPage& page, const BoundObjects& objects) {
      page.LoadCheckBox(objects, "peloraAccount", kBox);
    });
  }
  void LoadNumber(const std::vector<Variant>& values) {
    Load("peloraQuotaHard", values, [](CPropPage& page, const BoundObjects& objects) {
      page.LoadNumber(objects, "peloraQuotaHard", kEdit);
    });
  }
  void LoadText(const std::vector<Variant>& values) {
    Load("description", values, [](CPropPage& page, const BoundObjects& objects) {
      page.LoadText(objects, "description", kEdit);
    });
  }
  void LoadSingleText(const std::vector<Variant>& values) {
    Load("description", values, [](CPropPage& page, const BoundObjects& objects) {
      page.LoadSingleText(objects, "description", kEdit);
    });
  }
  std::vector<std::string> LoadMultiValue(const std::vector<Variant>& values, int stop_after = 99) {
    std::vector<std::string> taken;
    Load("otherMailbox", values, [&](CPropPage& page, const BoundObjects& objects) {
      page.LoadMultiValue(objects, "otherMailbox", [&](StoredValue value) {
        taken.push_back(std::move(value.text));
        cut_.push_back(value.is_shown_cut);
        return --stop_after > 0 ? 0 : 1;
      });
    });
    return taken;
  }

  testing::PageBench host_;
  int made_ = 0;
  /// Of the values taken, which are to be shown cut.
  std::vector<bool> cut_;
  Ref<ReaderPage> page_;
  std::unique_ptr<HeadlessDialog> dialog_;
};

TEST_F(PropPageReadersTest, AgreeingFlagsMakeATwoStateBox) {
  struct Row {
    std::vector<Variant> values;
    CheckState state;
  };
  const Variant unset;
  const std::vector<Row> rows = {
      {{Variant::Integer(1)}, CheckState::kChecked},
      {{Variant::Integer(2)}, CheckState::kChecked},
      {{Variant::Integer(-1)}, CheckState::kChecked},
      {{Variant::Integer(0)}, CheckState::kUnchecked},
      {{unset}, CheckState::kUnchecked},
      {{Variant::Integer(1), Variant::Integer(5)}, CheckState::kChecked},
      {{unset, Variant::Integer(0)}, CheckState::kUnchecked},
  };
  for (const Row& row : rows) {
    LoadCheckBox(row.values);
    EXPECT_EQ(dialog_->Style(kBox), ButtonStyle::kAutoCheckBox);
    EXPECT_EQ(dialog_->Check(kBox), row.state);
  }
}

TEST_F(PropPageReadersTest, DifferingFlagsMakeAnIndeterminateBox) {
  LoadCheckBox({Variant::Integer(1), Variant::Integer(0)});
  EXPECT_EQ(dialog_->Style(kBox), ButtonStyle::kAutoThreeState);
  EXPECT_EQ(dialog_->Check(kBox), CheckState::kIndeterminate);
  LoadCheckBox({Variant::Integer(1), Variant()});
  EXPECT_EQ(dialog_->Check(kBox), CheckState::kIndeterminate);
  LoadCheckBox({Variant::Integer(0), Variant::Integer(0), Variant::Integer(1)});
  EXPECT_EQ(dialog_->Check(kBox), CheckState::kIndeterminate);
}

TEST_F(PropPageReadersTest, NumbersAreShownUnsigned) {
  LoadNumber({Variant::Integer(500)});
  EXPECT_EQ(dialog_->Text(kEdit), "500");
  LoadNumber({Variant::Integer(-1)});
  EXPECT_EQ(dialog_->Text(kEdit), "4294967295");
  LoadNumber({Variant::Integer(7), Variant::Integer(7)});
  EXPECT_EQ(dialog_->Text(kEdit), "7");
}

TEST_F(PropPageReadersTest, AnAbsentNumberIsShownAsZero) {
  LoadNumber({Variant()});
  EXPECT_EQ(dialog_->Text(kEdit), "0");
}

TEST_F(PropPageReadersTest, DifferingNumbersLeaveTheField) {
  LoadNumber({Variant::Integer(7), Variant::Integer(8)});
  EXPECT_EQ(dialog_->Text(kEdit), "before");
  LoadNumber({Variant::Integer(7), Variant()});
  EXPECT_EQ(dialog_->Text(kEdit), "before");
}

TEST_F(PropPageReadersTest, TextsAreShownWhenTheyAgree) {
  LoadText({Variant::String("d"), Variant::String("d")});
  EXPECT_EQ(dialog_->Text(kEdit), "d");
  LoadText({Variant()});
  EXPECT_EQ(dialog_->Text(kEdit), "");
  LoadText({Variant::String("d"), Variant::String("D")});
  EXPECT_EQ(dialog_->Text(kEdit), "before");
}

TEST_F(PropPageReadersTest, ASingleTextIsShownForOneObjectOnly) {
  LoadSingleText({Variant::String("d")});
  EXPECT_EQ(dialog_->Text(kEdit), "d");
  LoadSingleText({Variant()});
  EXPECT_EQ(dialog_->Text(kEdit), "before");
  LoadSingleText({Variant::Integer(7)});
  EXPECT_EQ(dialog_->Text(kEdit), "before");
  LoadSingleText({Variant::String("d"), Variant::String("d")});
  EXPECT_EQ(dialog_->Text(kEdit), "");
}

TEST_F(PropPageReadersTest, EveryValueOfAListIsHandedOver) {
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({"b@x", "a@x", "b@x"})}),
              ElementsAre("b@x", "a@x", "b@x"));
  EXPECT_THAT(LoadMultiValue({Variant::String("a@x")}), ElementsAre("a@x")) << "a single string";
  EXPECT_THAT(LoadMultiValue({Variant()}), IsEmpty());
  EXPECT_THAT(LoadMultiValue({Variant::Integer(7)}), IsEmpty());
}

TEST_F(PropPageReadersTest, NamesOfDeletedObjectsAreLeftOut) {
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({"CN=a", "CN=b\\0ADEL:7f,CN=x", "CN=c"})}),
              ElementsAre("CN=a", "CN=c"));
  EXPECT_THAT(LoadMultiValue({Variant::String("CN=b\\0ADEL:7f")}), IsEmpty());
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({"CN=b\\0adel:7f", "0ADEL:"})}),
              ElementsAre("CN=b\\0adel:7f", "0ADEL:"))
      << "only the mark itself counts";
}

TEST_F(PropPageReadersTest, ElementsComeWholeAndAreToBeShownCut) {
  const std::string text(2000, 'a');
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({text, "b"})}), ElementsAre(text, "b"));
  EXPECT_THAT(cut_, ElementsAre(true, true));
  cut_.clear();
  EXPECT_THAT(LoadMultiValue({Variant::String(text)}), ElementsAre(text));
  EXPECT_THAT(cut_, ElementsAre(false)) << "a single string";
}

TEST_F(PropPageReadersTest, AListThatRefusesAValueEndsTheLoading) {
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({"a", "b", "c"})}, 2), ElementsAre("a", "b"));
}

TEST_F(PropPageReadersTest, ListsAreNotReadForSeveralObjects) {
  EXPECT_THAT(LoadMultiValue({Variant::String("a"), Variant::String("a")}), IsEmpty());
}

TEST_F(PropPageReadersTest, TextsBeyond1023CharactersAreWhole) {
  const std::string text(2000, 't');
  LoadText({Variant::String(text)});
  EXPECT_EQ(dialog_->Text(kEdit), text);
  LoadSingleText({Variant::String(text)});
  EXPECT_EQ(dialog_->Text(kEdit), text);
  EXPECT_THAT(LoadMultiValue({Variant::String(text)}), ElementsAre(text)) << "a single string";
}

TEST_F(PropPageReadersTest, ASuccessCodeOfReadingHandsTheValuesOver) {
  host_.faults().Answer(FaultPoint::kGet, 1, S_FALSE);
  EXPECT_THAT(LoadMultiValue({Variant::StringArray({"a", "b"})}), ElementsAre("a", "b"));
  host_.faults().Answer(FaultPoint::kGet, 1, S_FALSE);
  LoadSingleText({Variant::String("d")});
  EXPECT_EQ(dialog_->Text(kEdit), "d");
}

TEST_F(PropPageReadersTest, AFailedReadHandsNothingOver) {
  host_.faults().Fail(FaultPoint::kGet, 1, E_ACCESSDENIED);
  EXPECT_THAT(LoadMultiValue({Variant::String("a")}), IsEmpty());
}

}  // namespace
}  // namespace pelora
