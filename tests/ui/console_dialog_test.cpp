// SPDX-License-Identifier: Apache-2.0
// The user tab's dialog as hands, eyes and screen readers meet it.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyleFactory>
#include <QTest>

#include "hosts/console/dialogs/dialog_units.h"
#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UserDialog : public ConsoleTest {
 protected:
  [[nodiscard]] OpenSheet& Open() {
    sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects({kBirgit}));
    return *sheet_;
  }
  [[nodiscard]] QWidget& Widget(ControlId id) { return sheet_->dialog().Find(id)->widget(); }
  [[nodiscard]] std::string NameOf(ControlId id) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&Widget(id));
    return interface->text(QAccessible::Name).toStdString();
  }
  /// Presses a key with Alt in the sheet; buttons react to that after a moment.
  void PressMnemonic(Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier);
  }

 private:
  std::unique_ptr<OpenSheet> sheet_;
};

TEST_F(UserDialog, ScreenReadersAreToldWhatEachControlIs) {
  (void)Open();
  EXPECT_EQ(NameOf(IDC_QUOTA_OVERRIDE), "Use user quota");
  EXPECT_EQ(NameOf(IDC_QUOTA_WARN), "Warning at");
  EXPECT_EQ(NameOf(IDC_QUOTA_SOFT), "Soft limit");
  EXPECT_EQ(NameOf(IDC_QUOTA_HARD), "Hard limit");
  EXPECT_EQ(NameOf(IDC_PELORA_ACCOUNT), "Pelora Account");
  EXPECT_EQ(NameOf(IDC_PELORA_HIDDEN), "Hide from addressbook");
  EXPECT_EQ(NameOf(IDC_CAPACITY), "Capacity");
  EXPECT_EQ(NameOf(IDC_SERVER), "Home Server");
  EXPECT_EQ(NameOf(IDC_SERVER_SELECT), "Select");
  EXPECT_EQ(NameOf(IDC_EMAIL_LIST), "E-mail addresses");
  EXPECT_EQ(NameOf(IDC_EMAIL_ADD), "E-mail addresses: Add");
  EXPECT_EQ(NameOf(IDC_EMAIL_MODIFY), "Modify");
  EXPECT_EQ(NameOf(IDC_EMAIL_DELETE), "E-mail addresses: Delete");
  EXPECT_EQ(NameOf(IDC_EMAIL_DEFAULT), "Set as default");
  EXPECT_EQ(NameOf(IDC_SENDAS_LIST), "Send as");
  EXPECT_EQ(NameOf(IDC_SENDAS_ADD), "Send as: Add");
  EXPECT_EQ(NameOf(IDC_SENDAS_DELETE), "Send as: Delete");
}

TEST_F(UserDialog, ScreenReadersAreToldTheLabelOfADropDownList) {
  (void)Open();
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&Widget(IDC_ACCOUNT_TYPE));
  const auto labels = list->relations(QAccessible::Label);
  ASSERT_EQ(labels.size(), 1);
  EXPECT_EQ(labels.front().first->text(QAccessible::Name).toStdString(), "Account type");
}

TEST_F(UserDialog, ScreenReadersAreToldOfTheThirdState) {
  OpenSheet& open = Open();
  open.dialog().SetStyle(IDC_PELORA_ACCOUNT, ButtonStyle::kAutoThreeState);
  for (const CheckState state :
       {CheckState::kUnchecked, CheckState::kChecked, CheckState::kIndeterminate}) {
    open.dialog().SetCheck(IDC_PELORA_ACCOUNT, state);
    const QAccessible::State told =
        QAccessible::queryAccessibleInterface(&Widget(IDC_PELORA_ACCOUNT))->state();
    EXPECT_EQ(told.checkStateMixed, state == CheckState::kIndeterminate);
  }
}

TEST_F(UserDialog, TabGoesThroughTheTemplatesOrderAndThenToTheButtons) {
  OpenSheet& open = Open();
  for (const ControlId id : {IDC_CAPACITY, IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT,
                             IDC_SENDAS_DELETE, IDC_QUOTA_WARN, IDC_QUOTA_SOFT, IDC_QUOTA_HARD}) {
    open.dialog().SetEnabled(id, true);
  }
  open.sheet().ApplyButton().setEnabled(true);
  std::vector<std::string> visited;
  constexpr int kMostSteps = 40;
  for (int step = 0; step < kMostSteps; ++step) {
    const QWidget* now = QApplication::focusWidget();
    ASSERT_NE(now, nullptr);
    const auto* button = qobject_cast<const QAbstractButton*>(now);
    const bool is_control = now->objectName().startsWith(QStringLiteral("control_"));
    std::string name = now->objectName().toStdString();
    if (!is_control && button != nullptr)
      name = console::WithoutMnemonic(button->text()).toStdString();
    if (!visited.empty() && name == visited.front()) break;
    visited.push_back(name);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(visited,
              ElementsAre("control_202", "control_203", "control_204", "control_205", "control_214",
                          "control_284", "control_243", "control_298", "control_242", "control_271",
                          "control_206", "control_207", "control_209", "control_208", "control_213",
                          "control_237", "control_238", "control_239", "OK", "Cancel", "Apply",
                          "qt_tabwidget_tabbar"));
}

TEST_F(UserDialog, MnemonicsWorkTheControls) {
  OpenSheet& open = Open();
  for (const CheckState state : {CheckState::kChecked, CheckState::kUnchecked}) {
    PressMnemonic(Qt::Key_Q);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.dialog().Check(IDC_QUOTA_OVERRIDE) == state; }));
    // Unchecked again, it is as it was read.
    EXPECT_EQ(open.IsApplyEnabled(), state == CheckState::kChecked);
  }
  open.dialog().ListBox(IDC_EMAIL_LIST).Select(0);
  open.dialog().SetEnabled(IDC_EMAIL_MODIFY, true);
  modal_scripts().Add([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  PressMnemonic(Qt::Key_M);
  EXPECT_TRUE(QTest::qWaitFor([this] { return modal_scripts().waiting() == 0; }));
}

TEST_F(UserDialog, TheSpaceBarTicksTheBoxInFocus) {
  OpenSheet& open = Open();
  Widget(IDC_PELORA_HIDDEN).setFocus();
  QTest::keyClick(&Widget(IDC_PELORA_HIDDEN), Qt::Key_Space);
  EXPECT_EQ(open.dialog().Check(IDC_PELORA_HIDDEN), CheckState::kChecked);
  EXPECT_TRUE(open.IsApplyEnabled());
}

TEST_F(UserDialog, EnterIsOkAndEscapeIsCancel) {
  {
    OpenSheet& open = Open();
    QTest::keyClick(&Widget(IDC_QUOTA_OVERRIDE), Qt::Key_Return);
    EXPECT_FALSE(open.IsOpen());
  }
  OpenSheet& open = Open();
  QTest::keyClick(&Widget(IDC_QUOTA_OVERRIDE), Qt::Key_Escape);
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(UserDialog, AGroupBoxOwnsNoneOfItsMembers) {
  OpenSheet& open = Open();
  open.dialog().SetShown(IDC_EMAIL_GROUP, false);
  EXPECT_TRUE(Widget(IDC_EMAIL_LIST).isVisible());
  open.dialog().SetEnabled(IDC_SENDAS_GROUP, false);
  EXPECT_TRUE(open.dialog().IsEnabled(IDC_SENDAS_LIST));
}

TEST_F(UserDialog, ANumberFieldRefusesAPastedWord) {
  OpenSheet& open = Open();
  open.dialog().ComboBox(IDC_ACCOUNT_TYPE).Select(2);
  open.dialog().SetEnabled(IDC_CAPACITY, true);
  auto& edit = static_cast<QLineEdit&>(Widget(IDC_CAPACITY));
  QGuiApplication::clipboard()->setText(QStringLiteral("1a2"));
  edit.selectAll();
  edit.paste();
  EXPECT_EQ(edit.text(), QStringLiteral("0"));
  QGuiApplication::clipboard()->setText(QStringLiteral("12"));
  edit.selectAll();
  edit.paste();
  EXPECT_EQ(edit.text(), QStringLiteral("12"));
}

TEST_F(UserDialog, TheWheelChangesADropDownListOnlyInFocus) {
  OpenSheet& open = Open();
  const auto turn_wheel = [this] {
    QWidget& list = Widget(IDC_ACCOUNT_TYPE);
    const QPointF place = QPointF(list.rect().center());
    QWheelEvent turn(place, list.mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &turn);
  };
  ASSERT_EQ(open.dialog().ComboBox(IDC_ACCOUNT_TYPE).Selection(), 0U);
  turn_wheel();
  EXPECT_EQ(open.dialog().ComboBox(IDC_ACCOUNT_TYPE).Selection(), 0U);
  Widget(IDC_ACCOUNT_TYPE).setFocus();
  turn_wheel();
  EXPECT_EQ(open.dialog().ComboBox(IDC_ACCOUNT_TYPE).Selection(), 1U);
}

TEST_F(UserDialog, AColumnWithoutRoomShowsItsEnd) {
  (void)Open();
  auto& list = dynamic_cast<QListWidget&>(Widget(IDC_SENDAS_LIST));
  const auto draw = [&list](const QString& text) {
    list.clear();
    list.addItem(text);
    return list.viewport()->grab(list.visualItemRect(list.item(0))).toImage();
  };
  const QString cut = QStringLiteral("Name\t") + QString(200, QLatin1Char('W'));
  EXPECT_EQ(draw(cut + QLatin1Char('1')), draw(cut + QLatin1Char('1')));
  EXPECT_NE(draw(cut + QLatin1Char('1')), draw(cut + QLatin1Char('2')));
}

TEST_F(UserDialog, ARowClickedAgainStaysSelected) {
  OpenSheet& open = Open();
  auto& list = static_cast<QListWidget&>(Widget(IDC_EMAIL_LIST));
  const QPoint row = list.visualItemRect(list.item(1)).center();
  for (const Qt::KeyboardModifier key : {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, key, row);
    EXPECT_EQ(open.dialog().ListBox(IDC_EMAIL_LIST).Selection(), 1U);
  }
}

/// What is drawn of a widget without its text being cut off.
QSize RoomFor(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->sizeHint();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    return button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    return group->fontMetrics().size(Qt::TextShowMnemonic, group->title());
  }
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
    return {0, edit->minimumSizeHint().height()};
  }
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    const QFontMetrics metrics = list->fontMetrics();
    return {metrics.horizontalAdvance(QStringLiteral("system administrator")),
            list->minimumSizeHint().height()};
  }
  return {};
}

class UserDialogLook : public UserDialog,
                       public ::testing::WithParamInterface<std::tuple<const char*, int>> {
 protected:
  UserDialogLook() {
    QApplication::setStyle(QString::fromLatin1(std::get<0>(GetParam())));
    QFont font = before_;
    font.setPointSize(std::get<1>(GetParam()));
    QApplication::setFont(font);
  }
  ~UserDialogLook() override {
    QApplication::setFont(before_);
    QApplication::setStyle(QStringLiteral("fusion"));
  }

 private:
  QFont before_ = QApplication::font();
};

TEST_P(UserDialogLook, NothingIsCutOff) {
  OpenSheet& open = Open();
  const QWidget& page = open.dialog().widget();
  int looked_at = 0;
  for (const QWidget* widget : page.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!widget->isVisible()) continue;
    const QSize room = RoomFor(*widget);
    EXPECT_GE(widget->width(), room.width()) << widget->objectName().toStdString();
    EXPECT_GE(widget->height(), room.height()) << widget->objectName().toStdString();
    EXPECT_TRUE(page.rect().contains(widget->geometry())) << widget->objectName().toStdString();
    ++looked_at;
  }
  EXPECT_EQ(looked_at, 30);
  EXPECT_TRUE(page.parentWidget()->rect().contains(page.geometry()));
}

TEST_P(UserDialogLook, NoControlCoversAnother) {
  OpenSheet& open = Open();
  const QList<QWidget*> widgets =
      open.dialog().widget().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  for (const QWidget* left : widgets) {
    for (const QWidget* right : widgets) {
      if (left >= right || qobject_cast<const QGroupBox*>(left) != nullptr ||
          qobject_cast<const QGroupBox*>(right) != nullptr || !left->isVisible() ||
          !right->isVisible()) {
        continue;
      }
      EXPECT_FALSE(left->geometry().intersects(right->geometry()))
          << left->objectName().toStdString() << " and " << right->objectName().toStdString();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Desktops, UserDialogLook,
                         ::testing::Combine(::testing::Values("fusion", "windows"),
                                            ::testing::Values(8, 10, 14, 20)));

TEST(DialogUnits, AreThoseOfTheTemplatesFont) {
  const console::DialogUnits units{.base_x = 6, .base_y = 13};
  EXPECT_EQ(units.ToPixels(0, 0, 252, 218), QRect(0, 0, 378, 354));
  EXPECT_EQ(units.ToPixels(0, 0, 100, 100).size(), QSize(150, 163));
  EXPECT_EQ(units.ToPixels(7, 3, 1, 1), QRect(11, 5, 2, 2));
}

}  // namespace
}  // namespace pelora::test
