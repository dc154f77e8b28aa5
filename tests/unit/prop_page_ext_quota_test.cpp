// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_quota.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using testing::FakeChoosers;
using ::testing::IsEmpty;
using testing::OpenPage;
using testing::PageBench;

const std::string kAda = "LDAP://CN=Ada,DC=x";
const std::string kBob = "LDAP://CN=Bob,DC=x";

constexpr std::size_t kLimits = 3;

/// One column of the table of controls and attributes.
struct Variation {
  const char* name;
  QuotaKind kind;
  ControlId override_box;
  std::array<ControlId, kLimits> limits;
  ControlId recipients;
  ControlId add_recipient;
  ControlId delete_recipient;
  const char* override_attribute;
  std::array<const char*, kLimits> limit_attributes;
  const char* recipients_attribute;
};

void PrintTo(const Variation& variation, std::ostream* out) { *out << variation.name; }

const Variation kVariations[] = {
    {"OwnQuota",
     QuotaKind::kOwn,
     202,
     {203, 204, 205},
     216,
     224,
     225,
     "peloraQuotaOverride",
     {"peloraQuotaWarn", "peloraQuotaSoft", "peloraQuotaHard"},
     "peloraQuotaCompanyWarningRecipients"},
    {"UserDefault",
     QuotaKind::kUserDefault,
     218,
     {220, 222, 223},
     234,
     232,
     233,
     "peloraUserDefaultQuotaOverride",
     {"peloraUserDefaultQuotaWarn", "peloraUserDefaultQuotaSoft", "peloraUserDefaultQuotaHard"},
     "peloraQuotaUserWarningRecipients"},
};

/// A page of one quota group and nothing else.
class QuotaPage final : public CSnapInPropertyPage {
 public:
  QuotaPage(const Platform& platform, const Variation& layout)
      : CSnapInPropertyPage(platform, IID_IADs, {}, 1, "Quota"),
        quota_(*this, platform, layout.kind) {
    Add(quota_);
  }

 private:
  ~QuotaPage() override = default;

  CPropPageExtQuota quota_;
};

resources::DialogItem Item(ControlId id, resources::ControlKind kind, std::uint32_t style) {
  constexpr std::uint32_t kVisible = 0x10000000;
  resources::DialogItem item;
  item.id = id;
  item.kind = kind;
  item.style = kVisible | style;
  return item;
}

/// A dialog with the controls of one variation.
resources::DialogTemplate Describe(const Variation& layout, bool with_recipients) {
  using enum resources::ControlKind;
  constexpr std::uint32_t kAutoCheckBox = 3;
  constexpr std::uint32_t kPushButton = 0;
  constexpr std::uint32_t kSorted = 2;
  constexpr std::uint32_t kDisabled = 0x08000000;
  resources::DialogTemplate described;
  described.items.push_back(Item(layout.override_box, kButton, kAutoCheckBox));
  for (const ControlId limit : layout.limits) described.items.push_back(Item(limit, kEdit, 0));
  if (!with_recipients) return described;
  described.items.push_back(Item(layout.recipients, kListBox, kSorted));
  described.items.push_back(Item(layout.add_recipient, kButton, kPushButton));
  described.items.push_back(Item(layout.delete_recipient, kButton, kPushButton | kDisabled));
  return described;
}

class QuotaTest : public ::testing::TestWithParam<Variation> {
 protected:
  const Variation& Layout() const { return GetParam(); }

  void Open(testing::FakeAttributes attributes, bool with_recipients = true) {
    bench_.directory.AddObject(kAda, std::move(attributes));
    OpenOn({kAda}, with_recipients);
  }
  void OpenOn(const std::vector<std::string>& paths, bool with_recipients = true) {
    page_.emplace(bench_, new QuotaPage(bench_.platform, Layout()),
                  Describe(Layout(), with_recipients), paths);
  }
  /// The override and three limits, all set.
  testing::FakeAttributes FullQuota() const {
    return {{Layout().override_attribute, Variant::Integer(1)},
            {Layout().limit_attributes[0], Variant::Integer(10)},
            {Layout().limit_attributes[1], Variant::Integer(20)},
            {Layout().limit_attributes[2], Variant::Integer(30)}};
  }

  OpenPage<QuotaPage>& page() { return *page_; }
  std::vector<std::string> Limits() {
    std::vector<std::string> texts;
    for (const ControlId limit : Layout().limits) texts.push_back(page().dialog().Text(limit));
    return texts;
  }
  std::vector<bool> LimitsEnabled() {
    std::vector<bool> enabled;
    for (const ControlId limit : Layout().limits) {
      enabled.push_back(page().dialog().IsEnabled(limit));
    }
    return enabled;
  }
  CheckState Override() { return page().dialog().Check(Layout().override_box); }
  std::vector<std::string> Recipients() { return page().Rows(Layout().recipients); }
  bool CanDeleteRecipient() { return page().dialog().IsEnabled(Layout().delete_recipient); }

  /// Applies and expects exactly these changes, each written "attribute value".
  void ExpectApplied(std::vector<std::string> changes) {
    bench_.directory.ClearCalls();
    EXPECT_TRUE(page().Apply());
    for (std::string& change : changes) change = "Put " + kAda + " " + change;
    changes.push_back("SetInfo " + kAda);
    EXPECT_EQ(bench_.Writes(), changes);
  }
  std::string Override(const std::string& value) const {
    return std::string(Layout().override_attribute) + " " + value;
  }
  std::string Limit(std::size_t limit, const std::string& value) const {
    return std::string(Layout().limit_attributes.at(limit)) + " " + value;
  }

  PageBench bench_;
  std::optional<OpenPage<QuotaPage>> page_;
};

INSTANTIATE_TEST_SUITE_P(BothKinds, QuotaTest, ::testing::ValuesIn(kVariations),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(QuotaTest, AnObjectWithoutQuotaShowsTheBoxUncheckedAndTheLimitsDisabled) {
  Open({});
  EXPECT_EQ(Override(), CheckState::kUnchecked);
  EXPECT_EQ(page().dialog().Style(Layout().override_box), ButtonStyle::kAutoCheckBox);
  EXPECT_THAT(LimitsEnabled(), ElementsAre(false, false, false));
  EXPECT_THAT(Limits(), ElementsAre("0", "0", "0"));
  EXPECT_FALSE(page().IsModified());
  ExpectApplied({});
}

TEST_P(QuotaTest, StoredValuesAreShownInTheirFields) {
  Open(FullQuota());
  EXPECT_EQ(Override(), CheckState::kChecked);
  EXPECT_THAT(LimitsEnabled(), ElementsAre(true, true, true));
  EXPECT_THAT(Limits(), ElementsAre("10", "20", "30"));
  ExpectApplied({});
}

TEST_P(QuotaTest, NumbersAreShownUnsigned) {
  Open({{Layout().limit_attributes[0], Variant::Integer(-1)}});
  EXPECT_THAT(Limits(), ElementsAre("4294967295", "0", "0"));
}

TEST_P(QuotaTest, CheckingTheBoxEnablesTheLimitsAndWritesTheBoxAlone) {
  Open({{Layout().limit_attributes[0], Variant::Integer(10)}});
  page().Click(Layout().override_box);
  EXPECT_THAT(LimitsEnabled(), ElementsAre(true, true, true));
  EXPECT_TRUE(page().IsModified());
  ExpectApplied({Override("1")});
}

TEST_P(QuotaTest, UncheckingTheBoxDisablesTheLimitsAndKeepsTheirValues) {
  Open(FullQuota());
  page().Click(Layout().override_box);
  EXPECT_THAT(LimitsEnabled(), ElementsAre(false, false, false));
  EXPECT_THAT(Limits(), ElementsAre("10", "20", "30"));
  ExpectApplied({Override("0")});
}

TEST_P(QuotaTest, ALimitEditedBeforeItWasDisabledIsWritten) {
  Open(FullQuota());
  page().Type(Layout().limits[1], "25");
  page().Click(Layout().override_box);
  ExpectApplied({Limit(1, "25"), Override("0")});
}

TEST_P(QuotaTest, EachLimitIsWrittenAloneAndAsTyped) {
  for (std::size_t limit = 0; limit < kLimits; ++limit) {
    page_.reset();
    Open(FullQuota());
    page().Type(Layout().limits.at(limit), "100");
    EXPECT_TRUE(page().IsModified());
    ExpectApplied({Limit(limit, "100")});
  }
}

TEST_P(QuotaTest, WritesLimitsBeforeTheBox) {
  Open({});
  page().Click(Layout().override_box);
  page().Type(Layout().limits[2], "3");
  page().Type(Layout().limits[1], "2");
  page().Type(Layout().limits[0], "1");
  ExpectApplied({Limit(0, "1"), Limit(1, "2"), Limit(2, "3"), Override("1")});
}

TEST_P(QuotaTest, TextIsReadAsFarAsItIsANumber) {
  const std::vector<std::pair<std::string, std::string>> typed = {
      {"12abc", "12"}, {"abc", "0"}, {"  7", "7"}, {"+8", "8"}, {"-1", "-1"}, {"007", "7"}};
  for (const auto& [text, written] : typed) {
    page_.reset();
    Open(FullQuota());
    page().Type(Layout().limits[0], text);
    ExpectApplied({Limit(0, written)});
  }
}

TEST_P(QuotaTest, AnErasedLimitIsCleared) {
  Open(FullQuota());
  page().user().EraseText(Layout().limits[0]);
  EXPECT_TRUE(page().Apply());
  EXPECT_EQ(bench_.directory.Log(testing::DirectoryCall::Kind::kPutEx).size(), 1U);
  EXPECT_TRUE(bench_.directory.Value(kAda, Layout().limit_attributes[0]).IsEmpty());
  EXPECT_EQ(bench_.directory.Value(kAda, Layout().limit_attributes[1]), Variant::Integer(20));
}

TEST_P(QuotaTest, LimitsNeedNoOrder) {
  Open(FullQuota());
  page().Type(Layout().limits[0], "500");
  page().Type(Layout().limits[2], "1");
  ExpectApplied({Limit(0, "500"), Limit(2, "1")});
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

TEST_P(QuotaTest, CollectingForgetsWhatWasChanged) {
  Open(FullQuota());
  page().Click(Layout().override_box);
  page().Click(Layout().override_box);
  page().Type(Layout().limits[0], "5");
  ExpectApplied({Limit(0, "5"), Override("1")});
  ExpectApplied({});
}

TEST_P(QuotaTest, ObjectsThatDifferShowAnIndeterminateBoxAndEmptyLimits) {
  bench_.directory.AddObject(kAda, FullQuota());
  bench_.directory.AddObject(kBob, {{Layout().limit_attributes[2], Variant::Integer(30)}});
  OpenOn({kAda, kBob});
  EXPECT_EQ(Override(), CheckState::kIndeterminate);
  EXPECT_EQ(page().dialog().Style(Layout().override_box), ButtonStyle::kAutoThreeState);
  EXPECT_THAT(Limits(), ElementsAre("", "", "30"));
  EXPECT_THAT(LimitsEnabled(), ElementsAre(false, false, false));
}

TEST_P(QuotaTest, TheFirstClickEndsTheIndeterminateState) {
  bench_.directory.AddObject(kAda, FullQuota());
  bench_.directory.AddObject(kBob);
  OpenOn({kAda, kBob});
  page().Click(Layout().override_box);
  EXPECT_EQ(page().dialog().Style(Layout().override_box), ButtonStyle::kAutoCheckBox);
  EXPECT_EQ(Override(), CheckState::kUnchecked);
  EXPECT_THAT(LimitsEnabled(), ElementsAre(false, false, false));
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("Put " + kAda + " " + Override("0"), "SetInfo " + kAda,
                                           "Put " + kBob + " " + Override("0"), "SetInfo " + kBob));
}

TEST_P(QuotaTest, AChangeGoesToEverySelectedObject) {
  bench_.directory.AddObject(kAda, FullQuota());
  bench_.directory.AddObject(kBob, FullQuota());
  OpenOn({kAda, kBob});
  page().Type(Layout().limits[0], "15");
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(),
              ElementsAre("Put " + kAda + " " + Limit(0, "15"), "SetInfo " + kAda,
                          "Put " + kBob + " " + Limit(0, "15"), "SetInfo " + kBob));
}

TEST_P(QuotaTest, RecipientsAreShownWithoutDeletedOnes) {
  Open({{Layout().recipients_attribute,
         Variant::StringArray({"CN=Zoe,DC=x", "CN=Gone\\0ADEL:1,DC=x", "CN=Bob,DC=x"})}});
  EXPECT_THAT(Recipients(), ElementsAre("CN=Bob,DC=x", "CN=Zoe,DC=x"));
  ExpectApplied({});
}

TEST_P(QuotaTest, ChosenRecipientsAreAppendedInTheirOrder) {
  Open({{Layout().recipients_attribute, Variant::String("CN=Mia,DC=x")}});
  for (const std::string name : {"CN=Zoe,DC=x", "CN=Bob,DC=x"}) {
    bench_.directory.AddObject("LDAP://" + name, {{"distinguishedName", Variant::String(name)}});
  }
  bench_.choosers.Choose({"LDAP://CN=Zoe,DC=x", "LDAP://CN=Bob,DC=x"});
  page().Click(Layout().add_recipient);
  EXPECT_THAT(Recipients(), ElementsAre("CN=Bob,DC=x", "CN=Mia,DC=x", "CN=Zoe,DC=x"));
  EXPECT_TRUE(page().IsModified());
  const FakeChoosers::PickerRun& run = bench_.choosers.pickers().at(0);
  EXPECT_EQ(run.init.scope.flags, 0x45U) << "users";
  EXPECT_EQ(run.init.options, 0x3U) << "several at once";
  EXPECT_EQ(run.owner, &page().dialog());
  EXPECT_EQ(run.owner_control, 0U);
  ExpectApplied({std::string(Layout().recipients_attribute) +
                 R"( ["CN=Mia,DC=x", "CN=Zoe,DC=x", "CN=Bob,DC=x"])"});
}

TEST_P(QuotaTest, ACancelledOrFailedPickerChangesNothing) {
  Open({});
  page().Click(Layout().add_recipient);
  bench_.choosers.Choose({"LDAP://CN=Nobody,DC=x"});
  page().Click(Layout().add_recipient);
  EXPECT_EQ(bench_.choosers.pickers().size(), 2U);
  EXPECT_THAT(Recipients(), IsEmpty());
  EXPECT_FALSE(page().IsModified());
  ExpectApplied({});
}

TEST_P(QuotaTest, DeletingTheLastRecipientDisablesTheButtonAndWritesAnEmptyList) {
  Open({{Layout().recipients_attribute, Variant::StringArray({"CN=Bob,DC=x", "CN=Zoe,DC=x"})}});
  EXPECT_FALSE(CanDeleteRecipient());
  page().SelectRow(Layout().recipients, "CN=Bob,DC=x");
  EXPECT_TRUE(CanDeleteRecipient());
  page().Click(Layout().delete_recipient);
  EXPECT_TRUE(CanDeleteRecipient());
  EXPECT_TRUE(page().IsModified());
  page().Click(Layout().delete_recipient);
  EXPECT_FALSE(CanDeleteRecipient());
  EXPECT_THAT(Recipients(), IsEmpty());
  ExpectApplied({std::string(Layout().recipients_attribute) + " []"});
}

TEST_P(QuotaTest, OnAMultiSelectionRecipientsAreNeitherShownNorWritten) {
  bench_.directory.AddObject(kAda, {{Layout().recipients_attribute, Variant::String("CN=Mia,DC=x")},
                                    {"distinguishedName", Variant::String("CN=Ada,DC=x")}});
  bench_.directory.AddObject(kBob);
  OpenOn({kAda, kBob});
  EXPECT_THAT(Recipients(), IsEmpty());
  bench_.choosers.Choose({kAda});
  page().Click(Layout().add_recipient);
  EXPECT_THAT(Recipients(), ElementsAre("CN=Ada,DC=x"));
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda, "SetInfo " + kBob));
}

TEST_P(QuotaTest, ADialogWithoutAListOfRecipientsLeavesThemAlone) {
  Open({{Layout().recipients_attribute, Variant::StringArray({"CN=Bob,DC=x", "CN=Zoe,DC=x"})}},
       false);
  page().Click(Layout().override_box);
  ExpectApplied({Override("1")});
}

}  // namespace
}  // namespace pelora
