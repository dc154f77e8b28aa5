// SPDX-License-Identifier: Apache-2.0
// What holds for every window of the console, on a screen of 640 by 450: nothing is off the screen,
// every text shows whole, every control can be reached, with the mouse and without, and has a name.
// Pictures of two dots for each are kept for people to look at.
#include "tests/ui/every_window.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QScreen>
#include <QScrollArea>

#include "hosts/console/text/qt_text.h"
#include "tests/ui/dark_theme.h"
#include "tests/ui/faults_of_use.h"
#include "tests/ui/keep_picture.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

bool IsScrolled(const QWidget& widget) {
  for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
       parent = parent->parentWidget()) {
    if (qobject_cast<const QScrollArea*>(parent) != nullptr) return true;
  }
  return false;
}

/// What the person in front of a window cannot get at.
std::vector<std::string> OutOfReach(const QWidget& window) {
  std::vector<std::string> faults;
  const QRect screen = window.screen()->availableGeometry();
  if (!screen.contains(window.frameGeometry())) {
    const QRect place = window.frameGeometry();
    faults.push_back("the window lies at " + std::to_string(place.x()) + "," +
                     std::to_string(place.y()) + " and is " + std::to_string(place.width()) + "x" +
                     std::to_string(place.height()));
  }
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->window() != &window || IsScrolled(*button)) continue;
    const QRect place(button->mapTo(&window, QPoint(0, 0)), button->size());
    if (!window.rect().contains(place)) faults.push_back("button " + ToUtf8(button->text()));
  }
  return faults;
}

class EveryWindow : public ConsoleTest {
 protected:
  /// Opens every window; of so many of them pictures are kept under names that end so.
  void ExpectAllWithinReach(const std::string& ending,
                            const std::function<bool(const std::string& name)>& is_kept) {
    int count = 0;
    ForEveryWindow(*this, modal_scripts(), [&](QWidget& window, const std::string& name) {
      ++count;
      EXPECT_EQ(window.devicePixelRatio(), 2);
      EXPECT_THAT(OutOfReach(window), ::testing::IsEmpty());
      EXPECT_THAT(FaultsOfTexts(window), ::testing::IsEmpty());
      if (is_kept(name)) KeepPicture(window, "small-" + name + ending);
    });
    EXPECT_GE(count, 50);
  }
};

bool IsSheetOrMain(const std::string& name) {
  return name == "main" || name == "user-1" || name == "company-2" || name == "new-user";
}

TEST_F(EveryWindow, IsOnASmallScreenWithNamesOfTwoHundredCharacters) {
  EXPECT_EQ(QGuiApplication::primaryScreen()->size(), QSize(640, 450));
  // The main window's views look alike.
  ExpectAllWithinReach("", [](const std::string& name) { return !name.starts_with("main-view"); });
}

TEST_F(EveryWindow, HasALetterForEachControlAndNoneForTwo) {
  ForEveryWindow(*this, modal_scripts(), [](QWidget& window, const std::string& /*name*/) {
    EXPECT_THAT(FaultsOfKeys(window), ::testing::IsEmpty());
    EXPECT_THAT(FaultsOfNames(window), ::testing::IsEmpty());
  });
}

TEST_F(EveryWindow, IsThereInADarkTheme) {
  const DarkTheme dark;
  ExpectAllWithinReach("-dark", IsSheetOrMain);
}

TEST_F(EveryWindow, IsThereFromRightToLeft) {
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  ExpectAllWithinReach("-right-to-left", IsSheetOrMain);
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace
}  // namespace pelora::test
