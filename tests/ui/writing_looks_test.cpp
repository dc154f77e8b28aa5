// SPDX-License-Identifier: Apache-2.0
// How the windows around the writing look: nothing is cut off, every button has its key, and what
// the directory holds is text. Pictures are kept for people to look at.
#include <gmock/gmock.h>

#include <QSet>

#include "hosts/console/attributes/attributes_window.h"
#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/life/place_dialog.h"
#include "hosts/console/life/rename_dialog.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/history_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"
#include "tests/ui/dark_theme.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using ::testing::IsEmpty;

const std::string kLongName(200, 'w');
const std::string kMarkup = "<b>bold</b><img src=\"/dev/zero\">";

/// Draws a window, and looks for what does not show whole and for keys taken twice.
void LookAt(QDialog& window, const std::string& name) {
  window.show();
  QCoreApplication::processEvents();
  EXPECT_THAT(FaultsOfSight(window), IsEmpty()) << name;
  QSet<QString> keys;
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->shortcut().isEmpty()) continue;
    const QString key = button->shortcut().toString();
    EXPECT_FALSE(keys.contains(key)) << name << ": " << key.toStdString();
    keys.insert(key);
  }
  KeepPicture(window, name);
}

session::Review SampleReview() {
  session::Review review;
  for (const std::string& name :
       {std::string("Birgit Krämer"), std::string("Rolf Uhlig"), kLongName, kMarkup}) {
    review.changes.push_back(
        {.dn = "CN=" + name + ",DC=x",
         .name = name,
         .fields = {{"peloraHidden", "Hide from addressbook", "not set", "yes"},
                    {"peloraQuotaHard", "Hard limit", "1500", "2000"}}});
  }
  review.changes[1].is_wanted = false;
  review.ldif_of = [](std::size_t /*at*/) {
    return std::string("dn: CN=Birgit\nchangetype: modify\n");
  };
  return review;
}

std::vector<session::WrittenChange> SampleResults() {
  return {
      {.name = "Birgit Krämer",
       .result = {.dn = "CN=Birgit,DC=x", .outcome = changes::Outcome::kChanged},
       .reason = {}},
      {.name = "Rolf Uhlig",
       .result = changes::NotDone("CN=Rolf,DC=x", {50, "00002098: insufficient rights"}),
       .reason = "You may not change this. What you typed is kept here: get the right to change "
                 "it and apply again. (0X80070005)"},
      {.name = kLongName,
       .result = {.dn = "CN=w,DC=x", .outcome = changes::Outcome::kSkipped},
       .reason = "Not begun."},
      {.name = kMarkup,
       .result = changes::NotDone("CN=b,DC=x", {-5, "no answer"}),
       .reason = "It may have been done or not: open the object anew, or apply again."}};
}

std::vector<session::ShownConflict> SampleConflicts() {
  return {{.dn = "CN=Birgit,DC=x",
           .name = "Birgit Krämer",
           .attribute = "peloraQuotaHard",
           .field = "Hard limit",
           .seen = "500",
           .there = "700",
           .wanted = "600"},
          {.dn = "CN=x",
           .name = kMarkup,
           .attribute = "otherMailbox",
           .field = "E-Mail Addresses",
           .seen = "a@x.example",
           .there = kLongName,
           .wanted = "not set",
           .is_list = true}};
}

void LookAtAll(const std::string& theme) {
  session::Review review = SampleReview();
  console::ReviewDialog reviewed(review, nullptr);
  LookAt(reviewed, "review-" + theme);
  const std::vector<session::WrittenChange> results = SampleResults();
  console::ResultDialog result(results, nullptr);
  LookAt(result, "results-" + theme);
  std::vector<session::ShownConflict> conflicts = SampleConflicts();
  console::ConflictDialog conflict(conflicts, nullptr);
  LookAt(conflict, "conflicts-" + theme);
  const std::vector<session::PastChange> past = {
      {.id = "2",
       .when = std::chrono::system_clock::time_point(std::chrono::hours(470000)),
       .objects = {"Birgit Krämer", "Rolf Uhlig", kMarkup, kLongName},
       .fields = {"Hide from addressbook", "Hard limit"},
       .is_undone = true},
      {.id = "1", .when = {}, .objects = {kLongName}, .fields = {"Hard limit"}}};
  console::HistoryDialog history([&past] { return past; }, nullptr);
  LookAt(history, "history-" + theme);
  session::PlacePlan plan{.names = {kMarkup},
                          .below = {{.type = "User", .count = 40}, {.type = "Group", .count = 2}},
                          .references = {}};
  for (const std::string& name : {std::string("Vertrieb Alle"), kLongName, kMarkup}) {
    plan.references.push_back({.holder_dn = "CN=" + name + ",DC=x",
                               .holder = name,
                               .field = "Members",
                               .target = "CN=Birgit Krämer,OU=Vertrieb,DC=x"});
  }
  console::PlaceDialog deletion(session::AskOfRemoval(plan), nullptr);
  LookAt(deletion, "delete-" + theme);
  plan.references.clear();
  plan.names = {"Birgit Krämer", "Rolf Uhlig"};
  console::PlaceDialog move(session::AskOfMoving(plan, "Linden Servis Beograd"), nullptr);
  LookAt(move, "move-" + theme);
  auto* const attributes = new console::AttributesWindow(
      QStringLiteral("Birgit Krämer"),
      [] {
        return std::vector<session::AttributeRow>{{.attribute = "cn", .value = "Birgit Krämer"},
                                                  {.attribute = "description", .value = kLongName},
                                                  {.attribute = "displayName", .value = kMarkup}};
      },
      nullptr);
  LookAt(*attributes, "attributes-" + theme);
  attributes->close();
  console::RenameDialog rename(QStringLiteral("Birgit Krämer"), nullptr);
  LookAt(rename, "rename-" + theme);
  console::ErrandDialog errand(QStringLiteral("Writing the changes of 5000 objects..."), nullptr);
  errand.ShowProgress(1200, 5000);
  LookAt(errand, "errand-" + theme);
}

TEST(WritingLooks, NothingIsCutOffInALightTheme) { LookAtAll("light"); }

TEST(WritingLooks, NothingIsCutOffInADarkTheme) {
  const DarkTheme dark;
  LookAtAll("dark");
}

TEST(WritingLooks, TabGoesFromTheTableToTheButtons) {
  session::Review review = SampleReview();
  console::ReviewDialog window(review, nullptr);
  window.show();
  contract::Activate(window);
  EXPECT_TRUE(Part<QTableView>(window, "review_table").hasFocus());
  QTest::keyClick(window.focusWidget(), Qt::Key_Space);
  EXPECT_FALSE(review.changes.front().is_wanted) << "the keyboard takes objects out, too";
  QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(window.focusWidget(), &Part<QPushButton>(window, "review_write"));
}

}  // namespace
}  // namespace pelora::test
