// SPDX-License-Identifier: Apache-2.0
// Commands on a selection: addresses by pattern and names in lists, shown for each object before
// they are looked at and written.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <map>
#include <optional>

#include "hosts/console/commands/command_dialog.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/session/fields/field_catalogue.h"
#include "tests/support/fake_choosers.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

const std::string kUnit = ",OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kBirgitDn = "CN=Birgit Krämer" + kUnit;
const std::string kStefanDn = "CN=Stefan Ebert" + kUnit;

class Commands : public WritingSheet {
 protected:
  Commands() {
    Set(kBirgitDn, {{"givenName", "Birgit"}, {"sn", "Krämer"}});
    Set(kStefanDn, {{"givenName", "Stefan"}, {"sn", ""}});
    objects_ = Objects({kBirgitDn, kStefanDn});
    fields_ = session::CommandFieldsOf(catalogue_, objects_);
    command_.emplace(
        session::CommitSurroundings{.store = store(),
                                    .errands = errands_,
                                    .message_box = box_,
                                    .desk = &desk(),
                                    .history = &history_,
                                    .book = fields_.book,
                                    .name_of = [](const std::string& dn) { return dn; }},
        objects_, fields_.Attributes());
    EXPECT_TRUE(command_->Read().Ok());
    dialog_.emplace(*command_, fields_, errands_, store(), session().open_another, nullptr);
    dialog_->show();
    Settle();
  }

  /// An empty value takes the attribute away.
  void Set(const std::string& dn, const std::map<std::string, std::string>& values) {
    std::vector<ldap::Modification> change;
    for (const auto& [name, value] : values) {
      change.push_back({.attribute = name, .values = {}});
      if (!value.empty()) change.back().values.push_back(value);
    }
    ASSERT_TRUE(store().Modify(dn, change).Ok());
  }
  void Settle() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !dialog_->IsBusy(); }, 20000));
  }
  void Choose(const char* what) {
    auto& list = Part<QComboBox>(*dialog_, "commands_what");
    const int row = list.findText(QString::fromUtf8(what));
    ASSERT_GE(row, 0) << what;
    list.setCurrentIndex(row);
    Settle();
  }
  void Type(const char* field, const char* text) {
    auto& edit = Part<QLineEdit>(*dialog_, field);
    edit.clear();
    QTest::keyClicks(&edit, QString::fromLatin1(text));
    Settle();
  }
  [[nodiscard]] Lines Rows() { return RowsOf(Part<QTableView>(*dialog_, "commands_table")); }
  [[nodiscard]] std::string Sums() {
    return ToUtf8(Part<QLabel>(*dialog_, "commands_sums").text());
  }
  [[nodiscard]] QPushButton& WriteButton() { return Part<QPushButton>(*dialog_, "commands_write"); }

  pelora::testing::FakeChoosers choosers_;
  console::QtMessageBox box_;
  console::ConsolePlatform platform_{session().service, box_, choosers_, module()};
  ldap::DisplaySpecifiers specifiers_;
  session::FieldCatalogue catalogue_{specifiers_, platform_.platform(), module()};
  session::ErrandsAtOnce errands_;
  session::ChangeHistory history_{folder().File("changes"), "x", session().store->schema()};
  std::vector<session::DirectoryObject> objects_;
  session::CommandFields fields_;
  std::optional<session::SelectionCommand> command_;
  std::optional<console::CommandDialog> dialog_;
};

TEST_F(Commands, EachObjectIsShownWhileThePatternIsTyped) {
  EXPECT_FALSE(WriteButton().isEnabled());
  Type("commands_address", "{first}.{last}@linden-werke.example");
  const Lines rows = Rows();
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_THAT(rows[0], HasSubstr("birgit.kraemer@linden-werke.example"));
  EXPECT_THAT(rows[1], HasSubstr("Stefan Ebert|||Left out: It has no last name."));
  EXPECT_EQ(Sums(), "1 will be changed, 1 is left out.");
  EXPECT_TRUE(WriteButton().isEnabled());
  Type("commands_address", "{vorname}@linden-werke.example");
  EXPECT_FALSE(WriteButton().isEnabled());
  EXPECT_EQ(Sums(), "");
}

TEST_F(Commands, WhatIsOddOrInUseIsLeftOutUntilSomebodyMeansIt) {
  Type("commands_address", "b.kraemer@linden-werke.example");
  EXPECT_THAT(
      Rows()[1],
      HasSubstr("Left out: b.kraemer@linden-werke.example is an address of Birgit Krämer."));
  EXPECT_FALSE(WriteButton().isEnabled()) << "Birgit has it already";
  Part<QCheckBox>(*dialog_, "commands_leave_odd").click();
  EXPECT_EQ(Sums(), "1 will be changed, 1 stays as it is.");
  EXPECT_TRUE(WriteButton().isEnabled());
}

TEST_F(Commands, WhatIsWrittenIsReviewedFirstAndCanBeTakenBack) {
  Set(kStefanDn, {{"sn", "Ebert"}});
  EXPECT_TRUE(command_->Read().Ok());
  Type("commands_address", "{first}.{last}@linden-werke.example");
  EXPECT_EQ(Sums(), "2 will be changed.");
  In("review", [&](QWidget& window) {
    EXPECT_EQ(RowsOf(Part<QTableView>(window, "review_table")).size(), 2U);
    Part<QPushButton>(window, "review_write").click();
  });
  In("results", [](QWidget& window) {
    EXPECT_EQ(Part<QLabel>(window, "results_summary").text(),
              QStringLiteral("Everything was done: 2 written."));
  });
  WriteButton().click();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_THAT(SearchEntry(file(), kStefanDn.c_str()),
              ::testing::Contains("otherMailbox: stefan.ebert@linden-werke.example"));
  ASSERT_EQ(history_.List().size(), 1U);
  for (const auto& result : history_.Undo(history_.List().front().id, store(), errands_)) {
    EXPECT_TRUE(result.IsDone()) << result.message;
  }
  EXPECT_THAT(
      SearchEntry(file(), kStefanDn.c_str()),
      ::testing::Not(::testing::Contains("otherMailbox: stefan.ebert@linden-werke.example")));
}

TEST_F(Commands, NamesGoIntoTheDelegatesOfAll) {
  Choose("Add names to \"Send as\"");
  EXPECT_FALSE(Part<QLineEdit>(*dialog_, "commands_address").isVisible());
  EXPECT_FALSE(WriteButton().isEnabled());
  dialog_->AddName(objects_[1]);
  Settle();
  EXPECT_THAT(Rows()[0], HasSubstr(kStefanDn));
  In("review", [](QWidget& window) { Part<QPushButton>(window, "review_write").click(); });
  In("results", [](QWidget& /*window*/) {});
  WriteButton().click();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  ldap::Entry entry;
  const Lines wanted = {"peloraSendAsPrivilege"};
  ASSERT_TRUE(store().Read(kBirgitDn, wanted, entry).Ok());
  EXPECT_THAT(entry.attributes["peloraSendAsPrivilege"], ::testing::Contains(kStefanDn));
}

TEST_F(Commands, AllOfItCanBeSeenAndIsNamed) {
  Type("commands_address", "{first}.{last}@linden-werke.example");
  EXPECT_THAT(FaultsOfSight(*dialog_), ::testing::IsEmpty());
  KeepPicture(*dialog_, "commands");
}

}  // namespace
}  // namespace pelora::test
