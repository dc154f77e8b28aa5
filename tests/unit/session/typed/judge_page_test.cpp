// SPDX-License-Identifier: Apache-2.0
// What is typed on a page, judged field by field, on the dialog of the user tab.
#include "hosts/session/typed/judge_page.h"

#include <gmock/gmock.h>

#include <map>

#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/field_values.h"
#include "resources/resource.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Lines = std::vector<std::string>;

class Idle final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
  void OnDestroy() override {}
};

FieldRow Number(std::string_view attribute, ControlId control) {
  return {.name = std::string(attribute),
          .kind = FieldKind::kNumber,
          .control = control,
          .attributes = {attribute}};
}

class JudgePageTest : public ::testing::Test {
 protected:
  JudgePageTest() {
    dialog_.Open();
    fields_.dialog = &dialog_;
    fields_.page = &idle_;
    fields_.touched.Watch({{.name = "box",
                            .kind = FieldKind::kFlag,
                            .control = IDC_QUOTA_OVERRIDE,
                            .attributes = {"peloraQuotaOverride"}},
                           Number("peloraQuotaWarn", IDC_QUOTA_WARN),
                           Number("peloraQuotaSoft", IDC_QUOTA_SOFT),
                           Number("peloraQuotaHard", IDC_QUOTA_HARD),
                           Number("peloraResourceCapacity", IDC_CAPACITY),
                           {.name = "mail",
                            .kind = FieldKind::kDefaultEntry,
                            .control = IDC_EMAIL_LIST,
                            .attributes = {"mail", "otherMailbox"}}});
    dialog_.SetCheck(IDC_QUOTA_OVERRIDE, CheckState::kChecked);
    Select(1);
    fields_.seen = [this](const DirectoryObject& object, std::string_view attribute) {
      const auto found = seen_.find(object.dn + " " + std::string(attribute));
      return found == seen_.end() ? Lines() : Lines{found->second};
    };
  }

  void Select(std::size_t count) {
    objects_.clear();
    for (std::size_t at = 0; at < count; ++at) objects_.emplace_back().dn = std::to_string(at);
    fields_.selection = objects_;
  }
  /// The page was filled with these limits.
  void Fill(const char* warn, const char* soft, const char* hard) {
    Type(warn, soft, hard);
    fields_.touched.Settle(dialog_);
  }
  void Type(const char* warn, const char* soft, const char* hard) {
    dialog_.SetText(IDC_QUOTA_WARN, warn);
    dialog_.SetText(IDC_QUOTA_SOFT, soft);
    dialog_.SetText(IDC_QUOTA_HARD, hard);
  }
  Lines Judged() {
    fields_.touched.Look(dialog_);
    GatherValues(fields_, schema_);
    Lines lines;
    for (const FieldJudgement& judged : JudgePage(fields_)) {
      const char* const verdict = judged.judgement.verdict == Verdict::kWrong ? "wrong "
                                  : judged.judgement.verdict == Verdict::kOdd ? "odd "
                                                                              : "";
      lines.push_back(verdict + fields_.touched.Row(judged.field).name + ": " +
                      judged.judgement.sentence);
    }
    return lines;
  }

  Idle idle_;
  HeadlessDialog dialog_{resources::ResourceFile::Read(resources::EmbeddedResourceBytes())
                             .value.value()
                             .Dialog(IDD_PROPPAGE_USER)
                             .value.value(),
                         idle_};
  ldap::Schema schema_;
  PageFields fields_;
  std::vector<DirectoryObject> objects_;
  /// By name and attribute.
  std::map<std::string, std::string> seen_;
};

TEST_F(JudgePageTest, LimitsThatGoUpAreFine) {
  Fill("", "", "");
  for (const auto& [warn, soft, hard] :
       {std::array{"1", "2", "3"}, std::array{"5", "5", "5"}, std::array{"900", "", "0"},
        std::array{"", "", "1"}, std::array{"1", "0", "1"}}) {
    Type(warn, soft, hard);
    EXPECT_THAT(Judged(), IsEmpty()) << warn << " " << soft << " " << hard;
  }
}

TEST_F(JudgePageTest, ALimitOutOfOrderIsWrongWhereItWasTyped) {
  Fill("100", "200", "300");
  dialog_.SetText(IDC_QUOTA_HARD, "150");
  EXPECT_THAT(Judged(), ElementsAre("wrong peloraQuotaHard: This is below the soft limit."));
  dialog_.SetText(IDC_QUOTA_HARD, "300");
  dialog_.SetText(IDC_QUOTA_WARN, "1 GB");
  EXPECT_THAT(Judged(), ElementsAre("peloraQuotaWarn: This is 1024 MB.",
                                    "wrong peloraQuotaWarn: This is above the soft limit."));
  dialog_.SetText(IDC_QUOTA_SOFT, "");
  EXPECT_THAT(Judged(), ElementsAre("peloraQuotaWarn: This is 1024 MB.",
                                    "wrong peloraQuotaWarn: This is above the hard limit."));
}

TEST_F(JudgePageTest, LimitsDoNotCountWithoutTheirBox) {
  Fill("100", "200", "300");
  Type("900", "200", "100");
  dialog_.SetCheck(IDC_QUOTA_OVERRIDE, CheckState::kUnchecked);
  EXPECT_THAT(Judged(), IsEmpty());
}

TEST_F(JudgePageTest, WhatIsStoredAlreadyIsOddAndHindersNobody) {
  Fill("900", "200", "4294967295");
  EXPECT_THAT(Judged(), ElementsAre("odd peloraQuotaHard: This is no size in MB from 0 to "
                                    "2147483647, nor one with a unit, as \"2 GB\".",
                                    "odd peloraQuotaSoft: This is below the warning level."));
}

TEST_F(JudgePageTest, OfSeveralObjectsEachHasItsOwnLimits) {
  Select(3);
  seen_ = {{"0 peloraQuotaSoft", "100"}, {"1 peloraQuotaSoft", "900"}};
  Fill("50", "", "");
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_THAT(Judged(),
              ElementsAre("odd peloraQuotaHard: This is below the soft limit of 1 of the 3 "
                          "objects."));
  dialog_.SetText(IDC_QUOTA_WARN, "600");
  EXPECT_THAT(Judged(),
              ElementsAre("odd peloraQuotaWarn: This is above the soft limit of 1 of the 3 "
                          "objects."));
  dialog_.SetText(IDC_QUOTA_SOFT, "700");
  EXPECT_THAT(Judged(), ElementsAre("wrong peloraQuotaHard: This is below the soft limit."))
      << "all of them get it";
}

TEST_F(JudgePageTest, WhatCannotBeTypedIntoIsNotJudged) {
  Fill("", "", "");
  dialog_.SetEnabled(IDC_CAPACITY, true);
  dialog_.SetText(IDC_CAPACITY, "12x");
  EXPECT_EQ(Judged().size(), 1U);
  dialog_.SetEnabled(IDC_CAPACITY, false);
  EXPECT_THAT(Judged(), IsEmpty());
}

TEST_F(JudgePageTest, TheLastAddressIsOnlyReplaced) {
  seen_ = {{"0 mail", "a@x.test"}};
  dialog_.ListBox(IDC_EMAIL_LIST).Add("A@X.TEST");
  Fill("", "", "");
  EXPECT_THAT(Judged(), IsEmpty());
  dialog_.ListBox(IDC_EMAIL_LIST).Clear();
  fields_.touched.Touch(IDC_EMAIL_LIST);
  EXPECT_THAT(Judged(),
              ElementsAre("wrong mail: The last address cannot be removed, only replaced: "
                          "add another one."));
  seen_.clear();
  EXPECT_THAT(Judged(), IsEmpty()) << "it was none of the kind";
}

TEST_F(JudgePageTest, WhatIsMeantTakesThePlaceOfWhatWasTyped) {
  Fill("", "", "3 GB");
  dialog_.SetText(IDC_QUOTA_WARN, "1 GB");
  dialog_.SetText(IDC_QUOTA_SOFT, "2 apples");
  fields_.touched.Look(dialog_);
  PutWhatIsMeant(fields_);
  EXPECT_EQ(dialog_.Text(IDC_QUOTA_WARN), "1024");
  EXPECT_EQ(dialog_.Text(IDC_QUOTA_SOFT), "2 apples");
  EXPECT_EQ(dialog_.Text(IDC_QUOTA_HARD), "3 GB") << "nobody has typed it";
}

}  // namespace
}  // namespace pelora::session
