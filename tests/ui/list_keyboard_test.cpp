// SPDX-License-Identifier: Apache-2.0
// The list of objects by keyboard, what the mouse is told there, and lists of many thousands.
#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolTip>

#include "hosts/console/finding/column_dialog.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/window_test.h"

namespace pelora::test {
namespace {

using console::ObjectListPane;
using console::OrderedObjects;
using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::HasSubstr;
using ::testing::Le;
using ::testing::SizeIs;

class ListKeyboard : public WindowTest {
 protected:
  ListKeyboard() {
    pane().GoTo(kSales);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return pane().Container() != nullptr && pane().Container()->dn == kSales; },
        kPatience));
    Settle();
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  [[nodiscard]] std::vector<std::string> Heads() {
    std::vector<std::string> heads;
    for (int place = 0; place < list().header()->count(); ++place) {
      const int column = list().header()->logicalIndex(place);
      heads.push_back(
          ToUtf8(list().model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString()));
    }
    return heads;
  }
  /// The mouse rests on a cell.
  void RestOn(const QModelIndex& cell) {
    const QPoint place = list().visualRect(cell).center();
    QHelpEvent event(QEvent::ToolTip, place, list().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list().viewport(), &event);
  }
};

TEST_F(ListKeyboard, ATipShowsWhatIsCutAndNothingElse) {
  const QModelIndex name = list().model()->index(0, 0);
  list().setColumnWidth(0, 60);
  RestOn(name);
  EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }, kPatience));
  EXPECT_THAT(ToUtf8(QToolTip::text()), HasSubstr(">" + Names().front() + "<"));
  list().setColumnWidth(0, 600);
  RestOn(name);
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, kPatience));
}

TEST_F(ListKeyboard, LettersLeadToTheObjectWhoseNameBeginsSo) {
  ASSERT_EQ(Names().front(), "Birgit Krämer");
  list().setFocus();
  list().setCurrentIndex(list().model()->index(0, 0));
  QTest::keyClick(&list(), Qt::Key_S);
  EXPECT_EQ(ToUtf8(list().currentIndex().data().toString()), "Stefan Ebert");
  ASSERT_THAT(pane().list().Selection(), SizeIs(1));
  EXPECT_EQ(pane().list().Selection().front().name, "Stefan Ebert");
}

TEST_F(ListKeyboard, DownLeadsFromTheFilterIntoTheList) {
  QLineEdit& filter = pane().list().filter();
  QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_EQ(QApplication::focusWidget(), &filter);
  QTest::keyClicks(&filter, QStringLiteral("ebert"));
  EXPECT_THAT(Names(), ElementsAre("Stefan Ebert"));
  Press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &list());
  ASSERT_THAT(window().Selection(), SizeIs(1));
  EXPECT_EQ(window().Selection().front().name, "Stefan Ebert");
}

TEST_F(ListKeyboard, TheFilterKeepsWhatIsSelectedOfWhatItLeaves) {
  list().selectAll();
  ASSERT_GT(pane().list().Selection().size(), 1U);
  pane().list().filter().setText(QStringLiteral("ebert"));
  ASSERT_THAT(pane().list().Selection(), SizeIs(1));
  EXPECT_EQ(pane().list().Selection().front().name, "Stefan Ebert");
  pane().list().filter().clear();
  EXPECT_THAT(pane().list().Selection(), SizeIs(1)) << "what was hidden is not selected again";
}

TEST_F(ListKeyboard, ControlAndADigitOrderByThatColumnAndOnceMoreTheOtherWayRound) {
  list().setFocus();
  const std::vector<std::string> by_name = Names();
  Press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(Names(), std::vector<std::string>(by_name.rbegin(), by_name.rend()));
  Press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(list().header()->sortIndicatorSection(), 2);
  std::vector<std::string> remarks = Column(2);
  std::erase(remarks, "");
  EXPECT_TRUE(std::ranges::is_sorted(remarks)) << ::testing::PrintToString(remarks);
  Press(Qt::Key_9, Qt::ControlModifier);
  EXPECT_EQ(list().header()->sortIndicatorSection(), 2) << "there is no ninth column";
}

/// A person in the dialog of columns, who has the keyboard only.
class ColumnUser {
 public:
  explicit ColumnUser(QWidget& dialog)
      : dialog_(dialog), list_(*dialog.findChild<QListWidget*>(QStringLiteral("columns"))) {
    contract::Activate(dialog);
  }

  void GoTo(const char* column) {
    list_.setFocus();
    QTest::keyClick(&list_, Qt::Key_Home);
    for (int row = 1; row < list_.count() && Name() != column; ++row) {
      QTest::keyClick(&list_, Qt::Key_Down);
    }
    EXPECT_EQ(Name(), column);
  }
  void Toggle() { QTest::keyClick(&list_, Qt::Key_Space); }
  void Press(Qt::Key letter) { QTest::keyClick(&list_, letter, Qt::AltModifier); }
  /// Lets a button be seen going down and up again, which takes it a while.
  void MoveUp() { Click(Qt::Key_U, QStringLiteral("Move &Up")); }
  void MoveDown() { Click(Qt::Key_D, QStringLiteral("Move &Down")); }
  void MakeWide(const char* characters) {
    Press(Qt::Key_W);
    auto& width = *dialog_.findChild<QSpinBox*>(QStringLiteral("column_width"));
    EXPECT_EQ(QApplication::focusWidget(), &width);
    width.selectAll();
    QTest::keyClicks(&width, QString::fromLatin1(characters));
  }
  void Accept() { QTest::keyClick(&dialog_, Qt::Key_Return); }
  [[nodiscard]] std::string First() const {
    return ToUtf8(list_.item(0)->data(Qt::UserRole).toString());
  }

 private:
  void Click(Qt::Key letter, const QString& text) {
    const auto buttons = dialog_.findChildren<QPushButton*>();
    const auto button = std::ranges::find(buttons, text, &QPushButton::text);
    ASSERT_NE(button, buttons.end());
    const QSignalSpy clicked(*button, &QPushButton::clicked);
    Press(letter);
    EXPECT_TRUE(QTest::qWaitFor([&clicked] { return clicked.count() == 1; }, kPatience));
  }
  [[nodiscard]] std::string Name() const {
    return ToUtf8(list_.currentItem()->data(Qt::UserRole).toString());
  }

  QWidget& dialog_;
  QListWidget& list_;
};

TEST_F(ListKeyboard, ColumnsAreChosenOrderedAndSizedWithoutAMouse) {
  ASSERT_THAT(Heads(), ElementsAre("Name", "Type", "Description"));
  modal_scripts().Add([](QWidget& dialog) {
    ColumnUser user(dialog);
    user.GoTo("logon");
    user.Toggle();
    user.MakeWide("11");
    for (int step = 0; step < 2; ++step) user.MoveUp();
    user.GoTo("type");
    user.MakeWide("9");
    user.MoveUp();
    user.GoTo("name");
    user.Toggle();
    user.MakeWide("50");
    user.MoveDown();
    EXPECT_EQ(user.First(), "name") << "before the others, here too";
    KeepPicture(dialog, "columns");
    user.Accept();
  });
  pane().ChooseColumns();
  Settle();
  EXPECT_THAT(Heads(), ElementsAre("Name", "Type", "Logon Name", "Description"))
      << "the name stays, and stays first";
  const auto widths = [this] {
    std::vector<int> wide;
    for (const console::LyingColumn& lying : pane().list().Lying()) wide.push_back(lying.width);
    return wide;
  };
  EXPECT_THAT(widths(), ElementsAre(50, 9, 11, ::testing::_));
  const std::vector<int> before = widths();
  window().close();
  OpenWindow();
  EXPECT_THAT(Heads(), ElementsAre("Name", "Type", "Logon Name", "Description"));
  EXPECT_EQ(widths(), before) << "they are remembered";
}

TEST_F(ListKeyboard, TheDialogHasTheNameFirstWhereverItLies) {
  const std::vector<session::ListColumn> all = {{.name = "type", .title = "Type"},
                                                {.name = "name", .title = "Name"}};
  const std::vector<std::vector<console::LyingColumn>> cases = {
      {{.name = "type", .width = 9}, {.name = "name", .width = 20}},
      {{.name = "type", .width = 9}},
      {}};
  for (const std::vector<console::LyingColumn>& lying : cases) {
    const console::ColumnDialog dialog(all, lying, nullptr);
    const auto& columns = *dialog.findChild<QListWidget*>(QStringLiteral("columns"));
    ASSERT_EQ(columns.count(), 2);
    EXPECT_EQ(ToUtf8(columns.item(0)->data(Qt::UserRole).toString()), "name");
    EXPECT_EQ(columns.item(0)->checkState(), Qt::Checked);
  }
}

TEST_F(ListKeyboard, TheDialogHasTheColumnsAsTheMouseHasLeftThem) {
  list().header()->moveSection(2, 1);
  ASSERT_THAT(Heads(), ElementsAre("Name", "Description", "Type"));
  modal_scripts().Add([](QWidget& dialog) {
    ColumnUser user(dialog);
    user.GoTo("logon");
    user.Toggle();
    user.Accept();
  });
  pane().ChooseColumns();
  Settle();
  EXPECT_THAT(Heads(), ElementsAre("Name", "Description", "Type", "Logon Name"));
  // Another view with as many columns is not in that order.
  EXPECT_EQ(ToUtf8(pane().ShowView(QStringLiteral("Hidden"))), "");
  Settle();
  for (int place = 0; place < list().header()->count(); ++place) {
    EXPECT_EQ(list().header()->logicalIndex(place), place);
  }
}

// Many thousands.

/// A bench measures five times as many.
constexpr int kMany = 20'000;
constexpr int kArrival = 1000;

session::ListedObject Numbered(int number) {
  const std::string text = std::to_string(number);
  return {.object = {.dn = "CN=" + text, .name = text, .description = {}, .kind = {}},
          .cells = {"User " + text, text}};
}

/// A list into which objects arrive in no order.
class ManyObjects : public ::testing::Test {
 protected:
  ManyObjects() : pane_(nullptr) {
    pane_.SetColumns(
        {{.name = "name", .title = "Name"},
         {.name = "size", .title = "Size", .order = session::ListColumn::Order::kNumber}});
  }
  /// Those from `first`, in an order of its own.
  void Arrive(int first, int count) {
    std::vector<session::ListedObject> objects;
    for (int at = first; at < first + count; ++at) {
      objects.push_back(Numbered(static_cast<int>(at * 7919LL % kMany)));
    }
    pane_.Gather(std::move(objects));
    pane_.ShowGathered();
  }
  void ArriveAll() {
    for (int first = 0; first < kMany; first += kArrival) Arrive(first, kArrival);
  }
  [[nodiscard]] std::string Text(int row, int column) {
    return ToUtf8(pane_.view().model()->index(row, column).data().toString());
  }

  ObjectListPane pane_;
};

TEST_F(ManyObjects, AreInOrderWheneverTheyArriveAndEachArrivalIsOneChange) {
  pane_.view().sortByColumn(1, Qt::AscendingOrder);
  const QSignalSpy inserted(pane_.view().model(), &QAbstractItemModel::rowsInserted);
  const QSignalSpy ordered(pane_.view().model(), &QAbstractItemModel::layoutChanged);
  ArriveAll();
  EXPECT_THAT(inserted.count(), Eq(kMany / kArrival));
  EXPECT_THAT(ordered.count(), Le(kMany / kArrival));
  ASSERT_EQ(pane_.ShownCount(), kMany);
  for (int row = 0; row < kMany; ++row) ASSERT_EQ(Text(row, 1), std::to_string(row));
}

TEST_F(ManyObjects, AreNotComparedWithEachArrival) {
  // One after the other into what is there already: the worst there is.
  Arrive(0, kMany - 10);
  for (int at = kMany - 10; at < kMany; ++at) {
    const std::size_t before = pane_.rows().comparisons();
    Arrive(at, 1);
    // Twice for each time that the rows can be halved.
    EXPECT_LE(pane_.rows().comparisons() - before, 40U);
  }
}

TEST_F(ManyObjects, StaySelectedWhereverTheyMove) {
  pane_.view().sortByColumn(1, Qt::AscendingOrder);
  Arrive(0, 5000);
  const auto selected = [this] {
    std::vector<std::string> names;
    for (const session::DirectoryObject& object : pane_.Selection()) names.push_back(object.name);
    std::ranges::sort(names);
    return names;
  };
  pane_.Select({"CN=7919", "CN=15838"});
  ASSERT_THAT(selected(), ElementsAre("15838", "7919"));
  Arrive(5000, 5000);
  EXPECT_THAT(selected(), ElementsAre("15838", "7919"));
  pane_.view().sortByColumn(0, Qt::DescendingOrder);
  EXPECT_THAT(selected(), ElementsAre("15838", "7919"));
  EXPECT_EQ(ToUtf8(pane_.view().currentIndex().siblingAtColumn(1).data().toString()), "7919");
}

TEST_F(ManyObjects, AreNarrowedAsTheyArriveAndInOneStep) {
  Arrive(0, kMany / 2);
  const QSignalSpy reset(pane_.view().model(), &QAbstractItemModel::modelReset);
  const QSignalSpy removed(pane_.view().model(), &QAbstractItemModel::rowsRemoved);
  pane_.filter().setText(QStringLiteral("USER 999"));
  EXPECT_EQ(reset.count(), 1);
  EXPECT_EQ(removed.count(), 0);
  const int before = pane_.ShownCount();
  EXPECT_GT(before, 0);
  Arrive(kMany / 2, kMany / 2);
  EXPECT_GT(pane_.ShownCount(), before);
  ASSERT_EQ(pane_.ShownCount(), 11) << "999, 9990 to 9999";
  EXPECT_EQ(Text(0, 0), "User 999");
  EXPECT_EQ(Text(1, 0), "User 9990");
  EXPECT_EQ(Text(2, 0), "User 9991");
  pane_.filter().clear();
  EXPECT_EQ(pane_.ShownCount(), kMany);
}

TEST_F(ManyObjects, AreInOrderWhenOthersStandInTheirPlace) {
  const auto shown = [this] {
    std::vector<std::string> names;
    for (int row = 0; row < pane_.ShownCount(); ++row) names.push_back(Text(row, 0));
    return names;
  };
  const auto gather = [this](const std::vector<int>& numbers) {
    std::vector<session::ListedObject> objects;
    for (const int number : numbers) objects.push_back(Numbered(number));
    pane_.Gather(std::move(objects));
  };
  gather({5, 1, 3});
  pane_.ShowGathered();
  ASSERT_THAT(shown(), ElementsAre("User 1", "User 3", "User 5"));
  gather({9, 7});
  EXPECT_EQ(pane_.GatheredCount(), 2U);
  EXPECT_THAT(shown(), ElementsAre("User 1", "User 3", "User 5"));
  pane_.DropGathered();
  gather({4, 2, 6, 8});
  pane_.ShowGatheredOnly();
  EXPECT_THAT(shown(), ElementsAre("User 2", "User 4", "User 6", "User 8"));
  gather({3});
  pane_.ShowGathered();
  EXPECT_THAT(shown(), ElementsAre("User 2", "User 3", "User 4", "User 6", "User 8"));
}

TEST_F(ManyObjects, KeepWhatRepeatsOnce) {
  std::vector<session::ListedObject> objects;
  for (int at = 0; at < 4; ++at) {
    const std::string folder = at % 2 == 0 ? "x/Sales" : "x/Works";
    objects.push_back(
        {.object = {.dn = "CN=" + folder, .name = folder, .description = {}, .kind = {}},
         .cells = {"User " + std::to_string(at), folder}});
  }
  pane_.Gather(std::move(objects));
  pane_.ShowGathered();
  const auto characters = [this](int row) {
    return pane_.view().model()->index(row, 1).data().toString().constData();
  };
  EXPECT_EQ(Text(2, 1), "x/Sales");
  EXPECT_EQ(characters(0), characters(2));
  EXPECT_EQ(characters(1), characters(3));
  EXPECT_NE(characters(0), characters(1));
}

TEST_F(ManyObjects, ThatAreEqualStayAsTheyCame) {
  std::vector<session::ListedObject> objects;
  for (const char* text : {"b", "a", "c"}) {
    objects.push_back({.object = {.dn = text, .name = text, .description = {}, .kind = {}},
                       .cells = {text, "1"}});
  }
  pane_.Gather(std::move(objects));
  pane_.ShowGathered();
  for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
    pane_.view().sortByColumn(1, order);
    EXPECT_THAT((std::vector{Text(0, 0), Text(1, 0), Text(2, 0)}), ElementsAre("b", "a", "c"));
  }
}

}  // namespace
}  // namespace pelora::test
