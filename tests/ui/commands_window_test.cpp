// SPDX-License-Identifier: Apache-2.0
// A command on a selection from the window's menu to the directory, by the keyboard alone.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <array>

#include "hosts/console/commands/command_dialog.h"
#include "tests/ui/window_test.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::Contains;
using ::testing::Not;

const std::string kSales = "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kStefanDn = "CN=Stefan Ebert," + kSales;

class CommandsWindow : public WindowTest {
 protected:
  CommandsWindow() {
    for (const auto& [dn, first, last] : {std::array<std::string, 3>{kBirgit, "Birgit", "Kraemer"},
                                          {kStefanDn, "Stefan", "Ebert"}}) {
      ModifyEntry(file(), "dn: " + dn + "\nchangetype: modify\nreplace: givenName\ngivenName: " +
                              first + "\n-\nreplace: sn\nsn: " + last + "\n");
    }
  }

  void Select(const std::vector<std::string>& names) {
    pane().GoTo(kSales);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] {
          const session::DirectoryObject* const shown = pane().Container();
          return shown != nullptr && shown->dn == kSales && !window().IsReading();
        },
        kPatience));
    pane().list().Select(names);
    list().setFocus();
    ASSERT_EQ(pane().list().Selection().size(), names.size());
  }

  /// A key goes where the keyboard is.
  static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* const popup = QApplication::activePopupWidget();
    QWidget* const at = popup != nullptr ? popup : QApplication::focusWidget();
    ASSERT_NE(at, nullptr) << "the keyboard is nowhere";
    QTest::keyClick(at, key, modifiers);
  }
  /// Goes on by Tab until the keyboard is in the field of that name.
  static void TabTo(const char* name) {
    constexpr int kMost = 20;
    for (int times = 0; times < kMost; ++times) {
      const QWidget* const at = QApplication::focusWidget();
      if (at != nullptr && at->objectName() == QLatin1String(name)) return;
      Key(Qt::Key_Tab);
    }
    FAIL() << "the keyboard does not come to " << name;
  }
  static void WaitUntilActive(QWidget& window) {
    ASSERT_TRUE(QTest::qWaitFor(
        [&window] {
          return QApplication::activeWindow() == &window && QApplication::focusWidget() != nullptr;
        },
        kPatience));
  }
};

TEST_F(CommandsWindow, AnAddressGoesFromTheMenuIntoTheDirectory) {
  const std::string address = "otherMailbox: stefan.ebert@keys.example";
  ASSERT_THAT(SearchEntry(file(), kStefanDn), Not(Contains(address)));
  Select({kBirgit, kStefanDn});
  WaitUntilActive(window());
  bool is_played = false;
  modal_scripts().Add([&](QWidget& shown) {
    auto* const dialog = dynamic_cast<console::CommandDialog*>(&shown);
    ASSERT_NE(dialog, nullptr) << ToUtf8(shown.objectName());
    WaitUntilActive(*dialog);
    const auto settle = [dialog] {
      EXPECT_TRUE(QTest::qWaitFor([dialog] { return !dialog->IsBusy(); }, kPatience));
    };
    settle();
    TabTo("commands_address");
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("{first}.{last}@keys.example"));
    settle();
    EXPECT_EQ(ToUtf8(Part<QLabel>(*dialog, "commands_sums").text()), "2 will be changed.");
    is_played = true;
    Key(Qt::Key_Return);
  });
  modal_scripts().Add([](QWidget& review) {
    EXPECT_EQ(review.objectName(), QStringLiteral("review"));
    WaitUntilActive(review);
    EXPECT_EQ(RowsOf(Part<QTableView>(review, "review_table")).size(), 2U);
    Key(Qt::Key_Return);
  });
  modal_scripts().Add([](QWidget& results) {
    WaitUntilActive(results);
    EXPECT_EQ(ToUtf8(Part<QLabel>(results, "results_summary").text()),
              "Everything was done: 2 written.");
    Key(Qt::Key_Escape);
  });
  Key(Qt::Key_O, Qt::AltModifier);
  ASSERT_TRUE(
      QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }, kPatience));
  EXPECT_EQ(ToUtf8(static_cast<QMenu*>(QApplication::activePopupWidget())->title()), "&Object");
  Key(Qt::Key_G);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(is_played);
  EXPECT_THAT(SearchEntry(file(), kStefanDn), Contains(address));
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("otherMailbox: birgit.kraemer@keys.example"));
  Settle();
}

}  // namespace
}  // namespace pelora::test
