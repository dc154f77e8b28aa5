// SPDX-License-Identifier: Apache-2.0
// What a person reads around the list of objects: why it is empty, how much it shows, and where.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <algorithm>

#include "hosts/console/dialogs/name_label.h"
#include "tests/ui/window_test.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

/// How a list draws a text in one of its columns.
QImage Drawn(const session::ListColumn& column, const std::string& text) {
  console::ObjectListPane pane(nullptr);
  pane.SetColumns({{.name = "name", .title = "Name"}, column});
  pane.Gather({{.object = {.dn = "CN=x", .name = "x", .description = {}, .kind = {}},
                .cells = {"x", text}}});
  pane.ShowGathered();
  QTreeView& view = pane.view();
  // No row is marked as the current one.
  view.setFocusPolicy(Qt::NoFocus);
  pane.show();
  QCoreApplication::processEvents();
  return view.viewport()->grab(view.visualRect(view.model()->index(0, 1))).toImage();
}

class AroundTheList : public WindowTest {
 protected:
  void Find(const char* text) {
    pane().find().text().setText(QString::fromUtf8(text));
    QTest::keyClick(&pane().find().text(), Qt::Key_Return);
    Settle();
  }
  void Choose(const char* view) {
    QComboBox& views = pane().find().views();
    const int index = views.findText(QString::fromUtf8(view));
    ASSERT_GE(index, 0) << view;
    views.setCurrentIndex(index);
    Q_EMIT views.activated(index);
    Settle();
    QCoreApplication::processEvents();
  }
  void Refresh() {
    pane().RefreshList();
    Settle();
  }
  /// What the list of a window says in place of objects.
  [[nodiscard]] static std::string WordsOf(const QWidget& window) {
    const auto* const words = window.findChild<QLabel*>(QStringLiteral("list_is_empty"));
    return words->isVisible() ? ToUtf8(words->text()) : std::string();
  }
};

TEST_F(AroundTheList, AnEmptyListSaysWhy) {
  EXPECT_EQ(WordsOf(window()), "");
  Find("nobody has such a name");
  EXPECT_EQ(WordsOf(window()), "Nothing was found.");
  Find("kraemer");
  EXPECT_EQ(WordsOf(window()), "");
  pane().list().filter().setText(QStringLiteral("<b>zz</b>"));
  EXPECT_EQ(
      WordsOf(window()),
      "No object here has \"<b>zz</b>\" in a column. Without a text in \"Filter\" all of them "
      "are shown.");
  pane().list().filter().clear();
  EXPECT_EQ(WordsOf(window()), "");
  pane().GoTo("CN=Builtin,DC=linden-werke,DC=example");
  EXPECT_TRUE(QTest::qWaitFor(
      [this] { return WordsOf(window()) == "There is nothing in this container."; }, kPatience));
  console::MainWindow without(module());
  without.show();
  EXPECT_EQ(WordsOf(without),
            "Nothing is open. \"Open Directory File\" and \"Connect to Domain\" are in the menu "
            "\"File\".");
  EXPECT_EQ(ToUtf8(without.pane().find().views().currentText()), "All objects");
}

TEST_F(AroundTheList, AViewWithoutItsAnswerListsNothingAndSaysWhatToType) {
  Choose("No mailbox");
  EXPECT_GT(pane().list().ShownCount(), 0);
  Choose("Home server");
  EXPECT_EQ(pane().list().ShownCount(), 0);
  EXPECT_EQ(WordsOf(window()), "Type the name of a server.");
  EXPECT_TRUE(StatusTexts().starts_with("Type the name of a server.|")) << StatusTexts();
  Refresh();
  EXPECT_EQ(pane().list().ShownCount(), 0) << "nothing is asked";
  QTest::keyClicks(&pane().find().answer(), QStringLiteral("mail02"));
  QTest::keyClick(&pane().find().answer(), Qt::Key_Return);
  Settle();
  EXPECT_GT(pane().list().ShownCount(), 0);
  EXPECT_EQ(WordsOf(window()), "");
}

TEST_F(AroundTheList, AnAnswerHasRoomForADate) {
  Choose("Changed since");
  const QLineEdit& answer = pane().find().answer();
  EXPECT_EQ(answer.text().size(), 10);
  constexpr int kFrame = 12;
  EXPECT_LE(answer.fontMetrics().horizontalAdvance(answer.text()) + kFrame, answer.width());
}

TEST_F(AroundTheList, LinesBeginAtOneEdgeAndHeadsShowTheirBeginnings) {
  const auto edge = [this](const QWidget& line) { return line.mapTo(&window(), QPoint(0, 0)).x(); };
  EXPECT_EQ(edge(pane().find().text()), edge(pane().find().views()));
  EXPECT_EQ(edge(pane().find().text()), edge(pane().list().filter()));
  EXPECT_EQ(list().header()->textElideMode(), Qt::ElideRight);
}

TEST_F(AroundTheList, ATextWithoutRoomIsCutWhereItTellsLeast) {
  const auto shows_its_end = [](const session::ListColumn& column) {
    const std::string cut(300, 'W');
    EXPECT_EQ(Drawn(column, cut + "1"), Drawn(column, cut + "1"));
    return Drawn(column, cut + "1") != Drawn(column, cut + "2");
  };
  EXPECT_TRUE(shows_its_end({.name = "folder", .title = "Folder", .tells_at_end = true}));
  EXPECT_FALSE(shows_its_end({.name = "remark", .title = "Description"}));
}

TEST_F(AroundTheList, TheStatusEndsInDotsWhereItHasNoRoom) {
  Find("nobody1@example.org;nobody2@example.org;nobody3@example.org");
  window().resize(window().minimumSizeHint().width(), window().height());
  QCoreApplication::processEvents();
  const auto labels = window().statusBar()->findChildren<QLabel*>();
  const auto status = std::ranges::find_if(
      labels, [](const QLabel* label) { return label->text().contains(u"not found"); });
  ASSERT_NE(status, labels.end());
  const auto* const shown = dynamic_cast<const console::NameLabel*>(*status);
  ASSERT_NE(shown, nullptr);
  EXPECT_TRUE(shown->ShownText().endsWith(QChar(0x2026))) << ToUtf8(shown->ShownText());
  EXPECT_TRUE(window().statusBar()->rect().contains(shown->geometry()));
}

}  // namespace
}  // namespace pelora::test
