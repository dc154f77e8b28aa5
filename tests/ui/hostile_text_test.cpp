// SPDX-License-Identifier: Apache-2.0
// What somebody wrote into the directory is text in every window, whatever it looks like.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QLabel>
#include <QMessageBox>
#include <QProxyStyle>
#include <QScreen>
#include <QTest>
#include <QTextDocument>
#include <QTreeView>
#include <utility>

#include "hosts/console/choosers/container_browser.h"
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/writing/qt_writing_desk.h"
#include "hosts/ldap/object_name.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/open_wizard.h"
#include "tests/ui/scripted_store.h"
#include "tests/ui/taken_for_markup.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::IsEmpty;

constexpr int kPatience = 20000;

ldap::Entry HostileEntry(const char* object_class) {
  return {.dn = "CN=hostile,DC=x",
          .attributes = {{"objectClass", {"top", object_class}},
                         {"name", {kHostile}},
                         {"description", {kHostile}},
                         {"sAMAccountName", {kHostile}},
                         {"mail", {kHostile}}}};
}

/// Opens stores that find a hostile container and a hostile object of a class that nobody knows.
ldap::StoreOpener OpenHostile() {
  const auto script = [](const ldap::SearchRequest& /*request*/, const ldap::EntrySink& sink) {
    if (sink(HostileEntry("organizationalUnit"))) sink(HostileEntry(kHostile));
    return ldap::StoreStatus{};
  };
  return [script](std::unique_ptr<ldap::IDirectoryStore>& store, const std::stop_token& /*stop*/) {
    store = std::make_unique<ScriptedStore>(script, true);
    return ldap::StoreStatus{};
  };
}

class HostileText : public ConsoleTest {
 protected:
  HostileText() { EXPECT_TRUE(opener_(store_, {}).Ok()); }

  /// The window shows the text in so many places at least, and nowhere as markup.
  static void ExpectPlain(const QWidget& window, int places) {
    const ShownTexts shown = TextsOf(window);
    EXPECT_THAT(shown.faults, IsEmpty());
    EXPECT_GE(shown.places, places);
  }
  /// The same of the next box or dialog, which is closed then.
  void ExpectPlainBox(int places) {
    modal_scripts().Add([this, places](QWidget& box) {
      ExpectPlain(box, places);
      is_played_ = true;
      box.close();
    });
  }

  ldap::StoreOpener opener_ = OpenHostile();
  std::unique_ptr<ldap::IDirectoryStore> store_;
  bool is_played_ = false;
};

TEST_F(HostileText, InTheWindowsTreeListAndActions) {
  console::MainWindow window(module());
  ASSERT_TRUE(window.SetSession(std::make_unique<session::DirectorySession>(
      kHostile, std::move(store_), std::move(opener_))));
  window.show();
  auto* list = window.findChild<QTreeView*>(QStringLiteral("object_list"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount() == 2; }, kPatience));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !window.IsReading(); }, kPatience));
  list->selectAll();
  // Of two rows and of one node of the tree: names, descriptions and their tooltips.
  ExpectPlain(window, 6);
  list->setCurrentIndex(list->model()->index(1, 0));
  ExpectPlain(window, 6);
}

TEST_F(HostileText, InTheBoxesOfTheWindow) {
  console::MainWindow window(module());
  window.show();
  ExpectPlainBox(2);
  window.ReportLater(ToQString(kHostile), ToQString(kHostile));
  EXPECT_TRUE(QTest::qWaitFor([this] { return is_played_; }, kPatience));
}

TEST_F(HostileText, InTheBoxesOfTabs) {
  console::QtMessageBox box;
  ExpectPlainBox(1);
  box.Show(nullptr, {.text = kHostile, .caption = kHostile});
  EXPECT_TRUE(is_played_);
}

TEST_F(HostileText, WithoutEndLeavesABoxOnTheScreen) {
  const std::string word(10'000, 'W');
  std::string words;
  while (words.size() < word.size()) words += "W ";
  for (const std::string& text : {word, words}) {
    modal_scripts().Add([&](QWidget& box) {
      const QRect screen = box.screen()->availableGeometry();
      EXPECT_TRUE(QTest::qWaitFor([&] { return screen.contains(box.frameGeometry()); }, kPatience));
      for (const auto* button : box.findChildren<QAbstractButton*>()) {
        const QRect place(button->mapTo(&box, QPoint(0, 0)), button->size());
        EXPECT_TRUE(box.rect().contains(place)) << ToUtf8(button->text());
      }
      EXPECT_EQ(Copied(*box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))),
                text.substr(0, 2000) + "…");
      is_played_ = true;
      box.close();
    });
    console::QtWritingDesk().ShowFailure(nullptr,
                                         {.summary = text, .advice = text, .details = text});
    EXPECT_TRUE(std::exchange(is_played_, false));
  }
}

TEST_F(HostileText, InTheSearch) {
  console::SearchDialog dialog(
      {.title = ToQString(kHostile), .type_filter = "(a=b)", .multiple = true}, opener_, nullptr);
  dialog.show();
  auto* results = dialog.findChild<QTreeView*>(QStringLiteral("search_results"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return results->model()->rowCount() == 2; }, kPatience));
  results->selectAll();
  QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("add_chosen")), Qt::LeftButton);
  ExpectPlain(dialog, 8);
}

TEST_F(HostileText, InTheContainerBrowser) {
  session::DirectoryObject base = session::ObjectOf(HostileEntry("domainDNS"));
  base.name = kHostile;
  console::ContainerBrowser dialog(
      opener_, std::move(base), [](const auto& /*dn*/) { return ToQString(kHostile); }, nullptr);
  dialog.show();
  auto* tree = dialog.findChild<QTreeView*>(QStringLiteral("container_tree"));
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return tree->model()->rowCount(tree->model()->index(0, 0)) == 1; }, kPatience));
  dialog.accept();
  ExpectPlain(dialog, 5);
}

TEST_F(HostileText, InTheBoxOfTheChoosers) {
  ScriptedStore broken(nullptr);
  broken.FailWith({.code = 52, .text = kHostile});
  console::QtChoosers choosers(broken, opener_);
  ExpectPlainBox(1);
  std::string path;
  EXPECT_NE(choosers.BrowseForContainer({.path_capacity = 260}, path), kDialogOk);
  EXPECT_TRUE(is_played_);
}

TEST_F(HostileText, InTheListsOfTabs) {
  const std::vector<ldap::Modification> change = {
      {.attribute = "otherMailbox", .values = {kHostile}}};
  ASSERT_TRUE(session().store->Modify(kAnna, change).Ok());
  const OpenSheet open(session(), module(), Objects({kAnna}));
  for (std::size_t page = 0; page < open.sheet().PageCount(); ++page) {
    open.sheet().SelectPage(page);
  }
  ExpectPlain(open.sheet(), 2);
}

TEST_F(HostileText, InTheWizards) {
  const std::string dn = ldap::ChildName(kCompany, "organizationalUnit", "<img src='x'> & co");
  const ldap::StoreStatus added = session().store->Add(
      {.dn = dn, .attributes = {{"objectClass", {"top", "organizationalUnit"}}}});
  ASSERT_TRUE(added.Ok()) << added.text;
  OpenWizard open(session(), module(), "contact", Objects({dn}).front());
  open.Write("own_name", kHostile);
  ExpectPlain(open.wizard(), 1);
  ASSERT_TRUE(open.wizard().next().isEnabled());
  open.Next();
  ExpectPlain(open.wizard(), 1);
}

// The helper itself.

QString Drawn(const QString& tool_tip) {
  QTextDocument document;
  document.setHtml(tool_tip);
  return document.toPlainText();
}

TEST(PlainToolTip, ShowsTheTextAsItIs) {
  const QString text = QStringLiteral("<b>a</b>  & b\n\"c\" <img src='x'>");
  EXPECT_EQ(ToUtf8(Drawn(console::PlainToolTip(text))), ToUtf8(text));
  EXPECT_TRUE(console::PlainToolTip({}).isEmpty());
}

TEST(Readable, KeepsWhatHarmsNobody) {
  EXPECT_EQ(ToUtf8(console::Readable(QStringLiteral("Zoë\tשלום\n"))), "Zoë\tשלום\n");
}

TEST(Readable, ShowsControlAndDirectionMarksInPlaceOfObeyingThem) {
  const QString text = QString::fromUtf8(u8"a\u202Eb\u0001c\u009Bd\u2067e");
  EXPECT_EQ(ToUtf8(console::Readable(text)), "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe");
}

TEST(Readable, CutsWhatNobodyReads) {
  const QString shown = console::Readable(QString(100'000, QLatin1Char('x')));
  EXPECT_EQ(shown.size(), 2001);
  EXPECT_LT(console::PlainToolTip(QString(100'000, QLatin1Char('<'))).size(), 10'000);
}

/// A desktop on which nothing that boxes say can be selected unless they ask for it.
class AloofStyle final : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    return hint == SH_MessageBox_TextInteractionFlags
               ? Qt::NoTextInteraction
               : QProxyStyle::styleHint(hint, option, widget, more);
  }
};

TEST(PlainTexts, OfABoxCanBeCopied) {
  AloofStyle style;
  QMessageBox box;
  box.setStyle(&style);
  console::SetPlainTexts(box, QStringLiteral("What is wrong"), QStringLiteral("and why\nit is so"));
  box.setDetailedText(QStringLiteral("Code: 1\nObject: CN=x"));
  box.show();
  const auto part = [&box](const char* name) -> QWidget& {
    return *box.findChild<QLabel*>(QLatin1String(name));
  };
  EXPECT_EQ(Copied(part("qt_msgbox_label")), "What is wrong");
  EXPECT_EQ(Copied(part("qt_msgbox_informativelabel")), "and why\nit is so");
  for (QAbstractButton* button : box.buttons()) {
    if (box.buttonRole(button) == QMessageBox::ActionRole) button->click();
  }
  EXPECT_EQ(Copied(box), "Code: 1\nObject: CN=x");
}

}  // namespace
}  // namespace pelora::test
