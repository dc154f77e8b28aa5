// SPDX-License-Identifier: Apache-2.0
// What somebody wrote into the directory, as short and as long as he likes, in the windows around
// the tabs: searching, attributes, deleting, writing and taking back.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QTreeView>

#include "hosts/console/attributes/attributes_window.h"
#include "hosts/console/choosers/container_browser.h"
#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/life/place_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/history_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/scripted_store.h"
#include "tests/ui/taken_for_markup.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::IsEmpty;

constexpr int kPatience = 20000;

/// With a text that is short, and with one of a hundred thousand characters.
class HostileWindows : public ConsoleTest, public ::testing::WithParamInterface<bool> {
 protected:
  [[nodiscard]] static std::string Text(std::size_t letters = 100'000) {
    std::string text = kHostile;
    if (GetParam()) text.append(letters, 'x');
    return text;
  }
  /// Finds a container and somebody; `fails` says whether what lies in the container can be read.
  [[nodiscard]] static ldap::StoreOpener Opener(bool fails = false) {
    const auto script = [fails](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
      if (fails && request.base != "DC=x") return ldap::StoreStatus{52, Text()};
      for (const char* object_class : {"organizationalUnit", "user"}) {
        const ldap::Entry entry = {.dn = "CN=hostile,DC=x",
                                   .attributes = {{"objectClass", {"top", object_class}},
                                                  {"name", {Text()}},
                                                  {"description", {Text()}},
                                                  {"sAMAccountName", {Text()}},
                                                  {"mail", {Text()}}}};
        if (!sink(entry)) break;
      }
      return ldap::StoreStatus{};
    };
    return [script](std::unique_ptr<ldap::IDirectoryStore>& store, const std::stop_token&) {
      store = std::make_unique<ScriptedStore>(script, true);
      return ldap::StoreStatus{};
    };
  }
  /// Plain everywhere, in so many places at least, and no wider for it.
  static void ExpectPlain(QWidget& window, int places) {
    const ShownTexts shown = TextsOf(window);
    EXPECT_THAT(shown.faults, IsEmpty());
    EXPECT_GE(shown.places, places);
    const int screen = window.screen()->size().width();
    EXPECT_LE(window.minimumSizeHint().width(), screen);
    EXPECT_LE(window.width(), screen);
    EXPECT_FALSE(window.grab().isNull());
  }
};

TEST_P(HostileWindows, TheWindowsTreeListAndLineOfSearching) {
  const ldap::StoreOpener opener = Opener();
  std::unique_ptr<ldap::IDirectoryStore> store;
  ASSERT_TRUE(opener(store, {}).Ok());
  console::MainWindow window(module());
  ASSERT_TRUE(window.SetSession(
      std::make_unique<session::DirectorySession>(Text(), std::move(store), opener)));
  window.show();
  auto* list = window.findChild<QTreeView*>(QStringLiteral("object_list"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount() == 2; }, kPatience));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !window.IsReading(); }, kPatience));
  list->selectAll();
  ExpectPlain(window, 6);
}

TEST_P(HostileWindows, TheSearchAndWhereItLooks) {
  const ldap::PlaceFinder places = [](ldap::IDirectoryStore& /*store*/,
                                      std::vector<ldap::SearchPlace>& found) {
    for (const std::string& domain : {std::string(), Text()}) {
      found.push_back({.domain = domain, .bases = {"DC=x"}, .open = Opener()});
    }
    return ldap::StoreStatus{};
  };
  console::SearchDialog dialog(
      {.title = ToQString(Text()), .type_filter = "(a=b)", .multiple = true, .find_places = places},
      Opener(), nullptr);
  dialog.show();
  auto* results = dialog.findChild<QTreeView*>(QStringLiteral("search_results"));
  auto* looked_in = dialog.findChild<QComboBox*>(QStringLiteral("search_place"));
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return results->model()->rowCount() >= 2 && looked_in->count() == 2; }, kPatience));
  results->selectAll();
  QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("add_chosen")), Qt::LeftButton);
  ExpectPlain(dialog, 10);
}

TEST_P(HostileWindows, AContainerThatCannotBeRead) {
  session::DirectoryObject base =
      session::ObjectOf({.dn = "DC=x", .attributes = {{"objectClass", {"domainDNS"}}}});
  console::ContainerBrowser dialog(
      Opener(true), std::move(base), [](const auto& /*dn*/) { return QString(); }, nullptr);
  dialog.show();
  auto* tree = dialog.findChild<QTreeView*>(QStringLiteral("container_tree"));
  const auto top = [&] { return tree->model()->index(0, 0); };
  ASSERT_TRUE(QTest::qWaitFor([&] { return tree->model()->rowCount(top()) > 0; }, kPatience));
  tree->expand(tree->model()->index(0, 0, top()));
  auto* status = dialog.findChild<QLabel*>(QStringLiteral("browser_status"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !status->text().isEmpty(); }, kPatience));
  ExpectPlain(dialog, 3);
}

TEST_P(HostileWindows, AllAttributes) {
  const console::AttributeEditor editor{
      .why_read_only = [](const std::string&) { return Text(); },
      .edited =
          [](const std::string& attribute) {
            return session::EditableAttribute{.attribute = attribute, .values = {Text()}};
          },
      .settable = [] { return std::vector<std::string>{Text()}; },
      .why_not_taken = [](const std::string&, const ldap::AttributeValues&) { return Text(); },
      .write = [](const session::EditableAttribute&, ldap::AttributeValues) { return false; }};
  console::AttributesWindow window(
      ToQString(Text()),
      [] {
        return std::vector<session::AttributeRow>{{Text(), Text()}};
      },
      nullptr, editor);
  window.setAttribute(Qt::WA_DeleteOnClose, false);
  window.show();
  window.findChild<QTableWidget*>()->setCurrentCell(0, 0);
  ExpectPlain(window, 5);
  console::AttributeDialog dialog(editor.edited(Text()), editor, nullptr);
  dialog.show();
  ExpectPlain(dialog, 2);
}

TEST_P(HostileWindows, TheQuestionBeforeADeletion) {
  const session::PlaceQuestion question{
      .title = "Delete",
      .text = "Delete " + Text() + "?",
      .notes = {Text()},
      .about_references = Text(),
      .references = {{.holder_dn = Text(), .holder = Text(), .field = Text(), .target = Text()}},
      .to_type = Text(),
      .button = "&Delete"};
  console::PlaceDialog dialog(question, nullptr);
  dialog.show();
  ExpectPlain(dialog, 9);
  // Nobody can type such a name, and everybody can delete what has it.
  auto* const go_on = dialog.findChild<QPushButton*>(QStringLiteral("place_go_on"));
  auto* const typed = dialog.findChild<QLineEdit*>(QStringLiteral("place_typed"));
  EXPECT_FALSE(go_on->isEnabled());
  QTest::keyClicks(typed, QStringLiteral("delete"));
  EXPECT_TRUE(go_on->isEnabled());
}

TEST_P(HostileWindows, WhatIsWrittenAndTakenBack) {
  // In many places: as long as is certainly cut.
  const std::string text = Text(5'000);
  session::Review review;
  review.changes.push_back({.dn = text, .name = text, .fields = {{text, text, text, text}}});
  review.ldif_of = [](std::size_t) { return "# nothing\n"; };
  console::ReviewDialog review_dialog(review, nullptr);
  review_dialog.show();
  ExpectPlain(review_dialog, 2);

  std::vector<session::ShownConflict> conflicts = {{.dn = text,
                                                    .name = text,
                                                    .attribute = text,
                                                    .field = text,
                                                    .seen = text,
                                                    .there = text,
                                                    .wanted = text}};
  console::ConflictDialog conflict_dialog(conflicts, nullptr);
  conflict_dialog.show();
  ExpectPlain(conflict_dialog, 5);

  const std::vector<session::WrittenChange> written = {
      {.name = text,
       .result = {.dn = text, .outcome = changes::Outcome::kFailed, .message = text},
       .reason = text}};
  console::ResultDialog result_dialog(written, nullptr);
  result_dialog.show();
  ExpectPlain(result_dialog, 3);

  console::HistoryDialog history_dialog(
      [&text] {
        return std::vector<session::PastChange>{
            {.id = "1", .when = {}, .objects = {text, text}, .fields = {text}}};
      },
      nullptr);
  history_dialog.show();
  ExpectPlain(history_dialog, 4);
}

TEST_P(HostileWindows, WhatIsWaitedFor) {
  console::ErrandDialog dialog(ToQString("Reading the settings of " + Text() + "..."), nullptr);
  dialog.show();
  ExpectPlain(dialog, 1);
}

TEST_P(HostileWindows, ATabsFields) {
  const std::vector<ldap::Modification> change = {
      {.attribute = "otherMailbox", .values = {Text() + "@x.example", Text()}}};
  ASSERT_TRUE(session().store->Modify(kAnna, change).Ok());
  const OpenSheet open(session(), module(), Objects({kAnna}));
  for (std::size_t page = 0; page < open.sheet().PageCount(); ++page) {
    open.sheet().SelectPage(page);
    ExpectPlain(open.sheet(), 0);
  }
  ExpectPlain(open.sheet(), 4);
}

INSTANTIATE_TEST_SUITE_P(ShortAndLong, HostileWindows, ::testing::Values(false, true),
                         [](const auto& row) { return row.param ? "Long" : "Short"; });

TEST(PlainTitle, IsShownAsItIs) {
  QWidget window;
  console::SetPlainTitle(window, QStringLiteral("a[*]b\nc"));
  EXPECT_EQ(ToUtf8(window.windowTitle()), "a[*][*]b c") << "what the toolkit shows as a[*]b c";
}

}  // namespace
}  // namespace pelora::test
