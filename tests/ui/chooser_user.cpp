// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/chooser_user.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <stdexcept>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {

using console::ToUtf8;

namespace {

constexpr int kPatience = 20000;

}  // namespace

template <class Widget>
Widget& ChooserUser::Find(const char* name) const {
  auto* widget = window_.findChild<Widget*>(QLatin1String(name));
  if (widget == nullptr) throw std::runtime_error(std::string("there is no ") + name);
  return *widget;
}

std::string ChooserUser::Title() const { return ToUtf8(window_.windowTitle()); }

QLineEdit& ChooserUser::Text() const { return Find<QLineEdit>("search_text"); }

QComboBox& ChooserUser::Places() const { return Find<QComboBox>("search_place"); }

std::vector<std::string> ChooserUser::WaitForPlaces() {
  EXPECT_TRUE(QTest::qWaitFor([this] { return Places().isVisible(); }, kPatience));
  std::vector<std::string> names;
  for (int at = 0; at < Places().count(); ++at) names.push_back(ToUtf8(Places().itemText(at)));
  return names;
}

void ChooserUser::LookIn(int place) {
  Places().setFocus();
  while (Places().currentIndex() != place) {
    QTest::keyClick(&Places(), Places().currentIndex() < place ? Qt::Key_Down : Qt::Key_Up);
  }
  WaitForSearch();
}

QTreeView& ChooserUser::Results() const { return Find<QTreeView>("search_results"); }

QListWidget& ChooserUser::Chosen() const { return Find<QListWidget>("chosen_objects"); }

QTreeView& ChooserUser::Tree() const { return Find<QTreeView>("container_tree"); }

QLabel& ChooserUser::StatusLine() const {
  auto* status = window_.findChild<QLabel*>(QStringLiteral("search_status"));
  return status != nullptr ? *status : Find<QLabel>("browser_status");
}

std::string ChooserUser::Status() const { return ToUtf8(StatusLine().text()); }

Qt::TextFormat ChooserUser::StatusFormat() const { return StatusLine().textFormat(); }

QPushButton& ChooserUser::Button(const char* text) const {
  for (auto* button : window_.findChildren<QPushButton*>()) {
    if (console::WithoutMnemonic(button->text()) == QLatin1String(text)) return *button;
  }
  throw std::runtime_error(std::string("there is no button ") + text);
}

void ChooserUser::Type(const char* text) {
  Text().setFocus();
  Text().selectAll();
  QTest::keyClick(&Text(), Qt::Key_Backspace);
  QTest::keyClicks(&Text(), QString::fromUtf8(text));
}

void ChooserUser::Press(Qt::Key key) {
  QWidget* const focus = window_.focusWidget();
  ASSERT_NE(focus, nullptr);
  QTest::keyClick(focus, key);
}

void ChooserUser::WaitForSearch() {
  EXPECT_TRUE(QTest::qWaitFor([this] { return !Status().starts_with("Searching"); }, kPatience))
      << Status();
}

void ChooserUser::Search(const char* text) {
  Type(text);
  Press(Qt::Key_Return);
  WaitForSearch();
}

std::vector<std::string> ChooserUser::Column(int column) const {
  std::vector<std::string> texts;
  const QAbstractItemModel& model = *Results().model();
  for (int row = 0; row < model.rowCount(); ++row) {
    texts.push_back(ToUtf8(model.index(row, column).data().toString()));
  }
  return texts;
}

std::vector<std::string> ChooserUser::ChosenNames() const {
  std::vector<std::string> names;
  for (int row = 0; row < Chosen().count(); ++row) {
    names.push_back(ToUtf8(Chosen().item(row)->text()));
  }
  return names;
}

QModelIndex ChooserUser::RowOf(const char* name) const {
  const QAbstractItemModel& model = *Results().model();
  for (int row = 0; row < model.rowCount(); ++row) {
    if (model.index(row, 0).data().toString() == QString::fromUtf8(name)) {
      return model.index(row, 0);
    }
  }
  throw std::runtime_error(std::string("nothing found is called ") + name);
}

void ChooserUser::ClickRow(const char* name, Qt::KeyboardModifiers key) {
  const QModelIndex row = RowOf(name);
  Results().scrollTo(row);
  QTest::mouseClick(Results().viewport(), Qt::LeftButton, key, Results().visualRect(row).center());
}

void ChooserUser::DoubleClickRow(const char* name) {
  ClickRow(name);
  QTest::mouseDClick(Results().viewport(), Qt::LeftButton, Qt::NoModifier,
                     Results().visualRect(RowOf(name)).center());
}

void ChooserUser::Click(const char* button) {
  EXPECT_TRUE(Button(button).isEnabled()) << button;
  QTest::mouseClick(&Button(button), Qt::LeftButton);
}

void ChooserUser::GoToContainer(const std::vector<const char*>& way) {
  QAbstractItemModel& model = *Tree().model();
  QModelIndex at = model.index(0, 0);
  for (const char* name : way) {
    Tree().expand(at);
    QModelIndex next;
    const auto find = [&] {
      for (int row = 0; row < model.rowCount(at); ++row) {
        const QModelIndex child = model.index(row, 0, at);
        if (child.data().toString() == QString::fromUtf8(name)) next = child;
      }
      return next.isValid();
    };
    ASSERT_TRUE(QTest::qWaitFor(find, kPatience)) << name;
    at = next;
  }
  Tree().setCurrentIndex(at);
}

}  // namespace pelora::test
