// SPDX-License-Identifier: Apache-2.0
// What the rows of lists say beyond their texts: names of delegates, and the default address.
#include "hosts/console/fields/shown_rows.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStyleOptionComboBox>

#include "hosts/console/dialogs/combo_box_control.h"
#include "hosts/console/dialogs/list_box_control.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/fields/page_marks.h"
#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> Data(const QListWidget& list, int role) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.count(); ++row) {
    texts.push_back(ToUtf8(list.item(row)->data(role).toString()));
  }
  return texts;
}

void Fill(QListWidget& list, std::initializer_list<const char*> texts) {
  list.clear();
  for (const char* text : texts) list.addItem(QString::fromUtf8(text));
}

/// Rows that are drawn bold.
std::vector<int> BoldRows(const QListWidget& list) {
  std::vector<int> rows;
  for (int row = 0; row < list.count(); ++row) {
    if (list.item(row)->font().bold()) rows.push_back(row);
  }
  return rows;
}

TEST(OwnNames, AreShownAndToldWhileThePageKeepsItsTexts) {
  QListWidget list;
  Fill(list, {"CN=Meyer\\, Anna,OU=Sales,DC=x", "no name at all"});
  console::ShowOwnNames(list);
  EXPECT_THAT(Data(list, console::kShownTextRole), ElementsAre("Meyer, Anna", "no name at all"));
  EXPECT_THAT(Data(list, Qt::AccessibleTextRole), ElementsAre("Meyer, Anna", "no name at all"));
  EXPECT_THAT(Data(list, Qt::AccessibleDescriptionRole).front(), HasSubstr("OU=Sales"));
  EXPECT_EQ(ToUtf8(list.item(0)->text()), "CN=Meyer\\, Anna,OU=Sales,DC=x");
}

TEST(OwnNames, OfTwoObjectsAreToldApartByTheirFolders) {
  QListWidget list;
  Fill(list, {"CN=Anna,OU=Sales,DC=x", "CN=Ben,OU=Sales,DC=x", "CN=ANNA,OU=Works,DC=x"});
  console::ShowOwnNames(list);
  EXPECT_THAT(Data(list, console::kShownTextRole),
              ElementsAre("Anna (x/Sales)", "Ben", "ANNA (x/Works)"));
}

TEST(DefaultAddress, IsTheOneInCapitals) {
  QListWidget list;
  Fill(list, {"a@x", "B@X", "c@x"});
  EXPECT_EQ(console::MarkDefault(list, {}), 1);
  EXPECT_THAT(BoldRows(list), ElementsAre(1));
  EXPECT_THAT(Data(list, Qt::AccessibleTextRole), ElementsAre("a@x", "B@X (default)", "c@x"));
  Fill(list, {"A@X", "b@x"});
  EXPECT_EQ(console::MarkDefault(list, {}), 0);
}

TEST(DefaultAddress, AmongOthersInCapitalsIsTheOneThatWasRead) {
  QListWidget list;
  Fill(list, {"A@X", "B@X", "c@x"});
  EXPECT_EQ(console::MarkDefault(list, QStringLiteral("b@x")), 1);
  EXPECT_EQ(console::MarkDefault(list, {}), -1) << "nobody can tell";
  EXPECT_THAT(BoldRows(list), ElementsAre());
}

TEST(DefaultAddress, LeavesRoomForTheWordBehindItHoweverLongItIs) {
  QListWidget list;
  list.setItemDelegate(new console::TabStopDelegate(&list));
  list.resize(220, 80);
  Fill(list, {"BIRGIT.KRAEMER.AND.SOMEBODY.ELSE@LINDEN-WERKE.EXAMPLE", "a@x"});
  ASSERT_EQ(console::MarkDefault(list, {}), 0);
  const int kept_free = list.item(0)->data(console::kKeptFreeRole).toInt();
  EXPECT_GT(kept_free, list.fontMetrics().horizontalAdvance(console::DefaultWord()));
  EXPECT_FALSE(list.item(1)->data(console::kKeptFreeRole).isValid());
  list.show();
  const QRect row = list.visualItemRect(list.item(0));
  const QImage picture = list.viewport()->grab(row).toImage();
  const auto is_ink = [&picture](int x) {
    for (int y = 0; y < picture.height(); ++y) {
      if (qGray(picture.pixel(x, y)) < 128) return true;
    }
    return false;
  };
  int last = picture.width() - 1;
  while (last > 0 && !is_ink(last)) --last;
  EXPECT_GT(last, 0) << "the address";
  EXPECT_LT(last, row.width() - kept_free);
}

TEST(ListedChoice, WhatIsSaidWithoutAChoiceEndsInDots) {
  console::DropDownList list(nullptr);
  list.addItem(QStringLiteral("one"));
  list.setCurrentIndex(-1);
  list.setPlaceholderText(QStringLiteral("i"));
  list.resize(120, list.sizeHint().height());
  list.show();
  const QImage few = list.grab().toImage();
  list.setPlaceholderText(QStringLiteral("different: active user (2), room (1)"));
  const QImage many = list.grab().toImage();
  const QRect room = [&list] {
    QStyleOptionComboBox option;
    option.initFrom(&list);
    return list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                        &list);
  }();
  // Of a text that is cut off, letters would stand at the very edge.
  for (int x = room.right() - 1; x <= room.right(); ++x) {
    for (int y = room.top(); y <= room.bottom(); ++y) {
      EXPECT_EQ(many.pixel(x, y), few.pixel(x, y)) << x << "," << y;
    }
  }
  EXPECT_NE(many, few);
}

TEST(NameLabels, BreakBetweenWordsAsLongAsEachHasRoom) {
  const QString text =
      QStringLiteral("A password can be given only over a sealed connection to a server.");
  console::NameLabel label;
  label.setWordWrap(true);
  label.setText(text);
  QLabel usual(text);
  usual.setWordWrap(true);
  for (const int letters : {20, 24, 28, 32, 36}) {
    const QSize size(letters * label.fontMetrics().averageCharWidth(),
                     6 * label.fontMetrics().height());
    label.resize(size);
    usual.resize(size);
    EXPECT_EQ(label.grab().toImage(), usual.grab().toImage()) << letters;
  }
}

/// A page with one field, and a list below it.
class DrawnMarks : public ::testing::Test {
 protected:
  DrawnMarks() {
    host_.resize(200, 140);
    page_.setGeometry(host_.rect());
    field_.setGeometry(kField);
    list_.setGeometry(60, 50, 80, 80);
    for (QWidget* const control : {static_cast<QWidget*>(&field_), static_cast<QWidget*>(&list_)}) {
      control->setFocusPolicy(Qt::NoFocus);
    }
    Fill(list_, {"a", "b", "c"});
    host_.show();
    plain_ = host_.grab().toImage();
  }

  [[nodiscard]] QImage Draw(std::vector<console::Mark> marks,
                            std::vector<console::Hint> hints = {}) {
    marks_.SetMarks(std::move(marks), std::move(hints));
    return host_.grab().toImage();
  }
  /// Where something is drawn on a line of the picture that is not there without it.
  [[nodiscard]] std::vector<int> Drawn(const QImage& picture, int line) const {
    std::vector<int> columns;
    for (int column = 0; column < picture.width(); ++column) {
      if (picture.pixel(column, line) != plain_.pixel(column, line)) columns.push_back(column);
    }
    return columns;
  }
  /// All of it.
  [[nodiscard]] QRect Drawn(const QImage& picture) const {
    QRect all;
    for (int line = 0; line < picture.height(); ++line) {
      for (const int column : Drawn(picture, line)) all |= QRect(column, line, 1, 1);
    }
    return all;
  }

  static constexpr QRect kField{60, 15, 80, 24};
  static constexpr int kMiddle = 27;
  QWidget host_;
  QWidget page_{&host_};
  QLineEdit field_{&page_};
  QListWidget list_{&page_};
  console::PageMarks marks_{page_};

 private:
  QImage plain_;
};

TEST_F(DrawnMarks, AreABarBeforeTheFieldAndAFrameWhereItIsJudged) {
  using console::MarkKind;
  const QImage changed = Draw({{.control = &field_, .kind = MarkKind::kChanged}});
  EXPECT_THAT(Drawn(changed, kMiddle), ElementsAre(56, 57, 58));
  EXPECT_EQ(Drawn(changed), QRect(56, kField.top(), 3, kField.height())) << "and no frame";
  const QImage odd = Draw({{.control = &field_, .kind = MarkKind::kOdd}});
  EXPECT_EQ(Drawn(odd), QRect(56, kField.top(), 84, kField.height()));
  const QImage wrong = Draw({{.control = &field_, .kind = MarkKind::kWrong}});
  EXPECT_THAT(Drawn(wrong, kMiddle), ElementsAre(55, 56, 57, 58, 60, 139));
  EXPECT_LT(Drawn(odd, kField.top()).size(), Drawn(wrong, kField.top()).size() - 10) << "broken";
  EXPECT_NE(changed.pixel(57, kMiddle), odd.pixel(57, kMiddle));
  EXPECT_NE(odd.pixel(57, kMiddle), wrong.pixel(57, kMiddle));
  EXPECT_EQ(Drawn(Draw({})), QRect()) << "set back it is as it was";
  host_.setLayoutDirection(Qt::RightToLeft);
  EXPECT_THAT(Drawn(Draw({{.control = &field_, .kind = MarkKind::kChanged}}), kMiddle),
              ElementsAre(141, 142, 143));
}

TEST_F(DrawnMarks, SayWhatIsHintedAtAtTheEndOfTheFieldOrItsRow) {
  const QRect in_field = Drawn(Draw({}, {{.control = &field_, .text = QStringLiteral("not set")}}));
  EXPECT_FALSE(in_field.isEmpty());
  EXPECT_TRUE(QRect(80, 15, 60, 24).contains(in_field));
  const QRect row =
      list_.visualItemRect(list_.item(1)).translated(list_.viewport()->mapTo(&host_, QPoint(0, 0)));
  const QRect in_row =
      Drawn(Draw({}, {{.control = &list_, .text = QStringLiteral("on"), .row = 1}}));
  EXPECT_FALSE(in_row.isEmpty());
  EXPECT_TRUE(row.contains(in_row));
  EXPECT_GT(in_row.left(), row.center().x());
  EXPECT_EQ(Drawn(Draw({}, {{.control = &list_, .text = QStringLiteral("on"), .row = 7}})),
            QRect());
}

class ShownRows : public ConsoleTest {};

TEST_F(ShownRows, OfDelegatesAreNames) {
  const OpenSheet open(session(), module(), Objects({kBirgit}));
  const auto& list = static_cast<QListWidget&>(open.dialog().Find(IDC_SENDAS_LIST)->widget());
  ASSERT_GE(list.count(), 2);
  for (int row = 0; row < list.count(); ++row) {
    const std::string dn = open.dialog().ListBox(IDC_SENDAS_LIST).Text(static_cast<RowIndex>(row));
    const std::string shown = Data(list, console::kShownTextRole)[static_cast<std::size_t>(row)];
    EXPECT_TRUE(dn.starts_with("CN=")) << "for the page it is the name of an object";
    EXPECT_FALSE(shown.empty());
    EXPECT_THAT(shown, ::testing::Not(HasSubstr("=")));
    EXPECT_THAT(ToUtf8(list.item(row)->toolTip()), HasSubstr(dn));
  }
}

TEST_F(ShownRows, ALetterLeadsToTheNameThatBeginsSo) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  auto& list = static_cast<QListWidget&>(open.dialog().Find(IDC_SENDAS_LIST)->widget());
  const QString last = list.item(list.count() - 1)->data(console::kShownTextRole).toString();
  list.setCurrentRow(0);
  list.keyboardSearch(last.left(3));
  EXPECT_EQ(list.currentRow(), list.count() - 1);
}

TEST_F(ShownRows, OfTheDefaultAddressFollowWhatIsSet) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  const auto& list = static_cast<QListWidget&>(open.dialog().Find(IDC_EMAIL_LIST)->widget());
  ASSERT_EQ(list.count(), 2);
  ASSERT_EQ(BoldRows(list).size(), 1U);
  const QString before = list.item(BoldRows(list).front())->text();
  const RowIndex other = BoldRows(list).front() == 0 ? 1 : 0;
  open.user().ClickListRow(IDC_EMAIL_LIST, other);
  open.user().Click(IDC_EMAIL_DEFAULT);
  ASSERT_EQ(BoldRows(list).size(), 1U);
  EXPECT_NE(list.item(BoldRows(list).front())->text().toLower(), before.toLower());
}

}  // namespace
}  // namespace pelora::test
