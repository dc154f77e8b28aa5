// SPDX-License-Identifier: Apache-2.0
// Attributes are edited as text, from the main window.
#include <gmock/gmock.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTreeView>

#include "hosts/console/window/main_window.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

constexpr int kPatience = 20000;

class Attributes : public WritingSheet {
 protected:
  Attributes() : window_(module()) {
    if (!window_.SetSession(TakeSession())) throw std::runtime_error("no session");
    window_.show();
    contract::Activate(window_);
    window_.pane().GoTo(kSales);
    Await([this] {
      const auto* const container = window_.pane().Container();
      return container != nullptr && container->dn == kSales;
    });
    window_.pane().list().Select({kBirgit});
    Part<QTreeView>(window_, "object_list").setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(window_.Selection().front().dn, kBirgit);
    Trigger("&Attributes");
  }
  ~Attributes() override {
    Await([] { return true; });
  }
  void Await(const std::function<bool()>& is_so) {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window_.IsReading() && is_so(); }, kPatience));
    QCoreApplication::processEvents();
  }
  void Trigger(const char* text) {
    for (QAction* action : window_.findChildren<QAction*>()) {
      if (!ToUtf8(action->text()).starts_with(text)) continue;
      action->trigger();
      return Await([] { return true; });
    }
    FAIL() << "there is no action " << text;
  }

  [[nodiscard]] QDialog& Shown() { return Part<QDialog>(window_, "attributes"); }
  [[nodiscard]] QTableWidget& Table() { return Part<QTableWidget>(Shown(), "attributes_table"); }
  [[nodiscard]] QPushButton& EditButton() { return Part<QPushButton>(Shown(), "attributes_edit"); }
  [[nodiscard]] std::string Note() {
    return ToUtf8(Part<QLabel>(Shown(), "attributes_note").text());
  }
  /// Goes to the first value of an attribute.
  void GoTo(const char* attribute) {
    const auto found = Table().findItems(QLatin1String(attribute), Qt::MatchExactly);
    ASSERT_FALSE(found.isEmpty()) << attribute;
    Table().setCurrentItem(found.front());
  }
  /// Edits the attribute with the keyboard on it in the dialog for it.
  void Edit(std::function<void(QWidget& window)> act) {
    In("attribute", std::move(act));
    EditButton().click();
  }
  static void TypeText(QWidget& window, const char* text) {
    Part<QPlainTextEdit>(window, "attribute_value").setPlainText(QString::fromUtf8(text));
  }
  static QPushButton& WriteButton(QWidget& window) {
    return Part<QPushButton>(window, "attribute_write");
  }
  static std::string HintIn(QWidget& window) {
    return ToUtf8(Part<QLabel>(window, "attribute_hint").text());
  }
  [[nodiscard]] console::MainWindow& window() { return window_; }

 private:
  const contract::PassedOver errands_{};
  console::MainWindow window_;
};

TEST_F(Attributes, AListIsEditedInLinesAndTakenBack) {
  const EntryLines before = SearchEntry(file(), kBirgit);
  GoTo("otherMailbox");
  EXPECT_EQ(Note(), "");
  const int row = Table().currentRow();
  const std::string other = ToUtf8(Table().item(row, 1)->text());
  Edit([&](QWidget& window) {
    EXPECT_FALSE(WriteButton(window).isEnabled()) << "nothing was changed";
    EXPECT_EQ(ToUtf8(Part<QPlainTextEdit>(window, "attribute_value").toPlainText()), other);
    TypeText(window, "eins@x.example\neins@x.example");
    EXPECT_THAT(HintIn(window), HasSubstr("twice"));
    EXPECT_FALSE(WriteButton(window).isEnabled());
    TypeText(window, "eins@x.example\nzwei@x.example\n");
    KeepPicture(window, "attribute");
    WriteButton(window).click();
  });
  EXPECT_THAT(Difference(before, SearchEntry(file(), kBirgit)),
              UnorderedElementsAre("- otherMailbox: " + other, "+ otherMailbox: eins@x.example",
                                   "+ otherMailbox: zwei@x.example"));
  EXPECT_THAT(RowsOf(Table()), Contains("otherMailbox|zwei@x.example"));
  Trigger("&Undo Last Change");
  EXPECT_THAT(Difference(before, SearchEntry(file(), kBirgit)), IsEmpty());
}

TEST_F(Attributes, WhatCannotBeEditedSaysWhy) {
  GoTo("objectClass");
  KeepPicture(Shown(), "attributes");
  EXPECT_THAT(Note(), HasSubstr("objectClass cannot be edited here. It is set when"));
  EXPECT_FALSE(EditButton().isEnabled());
  GoTo("peloraUserServer");
  EXPECT_EQ(Note(), "");
  EXPECT_TRUE(EditButton().isEnabled());
}

TEST_F(Attributes, NumbersAreCheckedByTheSchema) {
  GoTo("userAccountControl");
  Edit([](QWidget& window) {
    auto& number = Part<QLineEdit>(window, "attribute_value");
    EXPECT_EQ(ToUtf8(number.text()), "512");
    number.setText(QStringLiteral("many"));
    EXPECT_THAT(HintIn(window), HasSubstr("syntax"));
    EXPECT_FALSE(WriteButton(window).isEnabled());
    number.setText(QStringLiteral("514"));
    WriteButton(window).click();
  });
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("userAccountControl: 514"));
}

TEST_F(Attributes, WhatIsNotSetCanBeSet) {
  In("attribute_choice", [](QWidget& window) {
    auto& names = *window.findChild<QComboBox*>();
    EXPECT_LT(names.findText(QStringLiteral("objectClass")), 0);
    EXPECT_LT(names.findText(QStringLiteral("mail")), 0) << "set already";
    names.setCurrentText(QStringLiteral("info"));
    EXPECT_EQ(ToUtf8(names.currentText()), "info");
    dynamic_cast<QDialog&>(window).accept();
  });
  In("attribute", [](QWidget& window) {
    EXPECT_EQ(ToUtf8(window.windowTitle()), "info");
    TypeText(window, "one\ntwo");
    WriteButton(window).click();
  });
  Part<QPushButton>(Shown(), "attributes_set").click();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains(HasSubstr("info: one\r\ntwo")));
}

TEST_F(Attributes, SomebodyElsesValueIsNotOverwritten) {
  GoTo("peloraUserServer");
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: peloraUserServer\n"
                          "peloraUserServer: mail09\n");
  In("attribute", [](QWidget& window) {
    TypeText(window, "mail01");
    WriteButton(window).click();
  });
  In("conflicts", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  EditButton().click();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraUserServer: mail09"));
}

TEST_F(Attributes, AreClosedWithTheirDirectory) {
  session::SessionResult again = session::OpenDirectoryFile(file());
  ASSERT_TRUE(again.session);
  const auto shown = [this] {
    const auto all = window().findChildren<QDialog*>(QStringLiteral("attributes"));
    return std::ranges::count_if(all, [](const QDialog* dialog) { return dialog->isVisible(); });
  };
  EXPECT_EQ(shown(), 1);
  EXPECT_TRUE(window().SetSession(std::move(again.session)));
  EXPECT_EQ(shown(), 0);
}

}  // namespace
}  // namespace pelora::test
