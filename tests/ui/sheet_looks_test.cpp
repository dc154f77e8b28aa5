// SPDX-License-Identifier: Apache-2.0
// How whole sheets of the sample company look, each page in a light and a dark theme: pictures are
// kept for the handbook, and for people to look at.
#include <gmock/gmock.h>

#include <QLabel>
#include <QTabWidget>
#include <QTest>
#include <optional>

#include "hosts/console/text/qt_text.h"
#include "tests/ui/console_test.h"
#include "tests/ui/dark_theme.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

/// Names of objects, and how the pictures of their sheet are called.
struct PicturedSheet {
  std::string name;
  std::vector<std::string> objects;
};

class SheetLooks : public ConsoleTest, public ::testing::WithParamInterface<PicturedSheet> {};

TEST_P(SheetLooks, EveryPageIsDrawnAndItsUnitsAreWrittenAsEverywhere) {
  for (const bool is_dark : {false, true}) {
    std::optional<DarkTheme> dark;
    if (is_dark) dark.emplace();
    OpenSheet open(session(), module(), Objects(GetParam().objects));
    for (std::size_t page = 0; page < open.sheet().PageCount(); ++page) {
      open.sheet().SelectPage(page);
      QCoreApplication::processEvents();
      open.AwaitAnswers();
      const QList<QLabel*> labels = open.sheet().Dialog(page)->widget().findChildren<QLabel*>();
      for (const QLabel* const label : labels) {
        EXPECT_NE(label->text(), QStringLiteral("Mb")) << label->objectName().toStdString();
      }
      const auto* const tabs = open.sheet().findChild<QTabWidget*>();
      QString title = tabs->tabText(static_cast<int>(page)).toLower();
      title.remove(QLatin1Char('&')).replace(QLatin1Char(' '), QLatin1Char('-'));
      EXPECT_THAT(FaultsOfSight(open.sheet().Dialog(page)->widget()), ::testing::IsEmpty());
      KeepPicture(open.sheet(), "sheet-" + GetParam().name + "-" + console::ToUtf8(title) +
                                    (is_dark ? "-dark" : ""));
    }
    open.ClickCancel();
    EXPECT_FALSE(open.IsOpen());
  }
}

INSTANTIATE_TEST_SUITE_P(Sample, SheetLooks,
                         ::testing::Values(PicturedSheet{"user", {kBirgit}},
                                           PicturedSheet{"users", {kBirgit, kAnna, kRolf}},
                                           PicturedSheet{"contact", {kContact}},
                                           PicturedSheet{"group", {kGroup}},
                                           PicturedSheet{"address-list", {kAddressList}},
                                           PicturedSheet{"dynamic-list", {kDynamicList}},
                                           PicturedSheet{"company", {kCompany}},
                                           PicturedSheet{"server", {kServer}}),
                         [](const auto& instance) {
                           std::string name = instance.param.name;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace pelora::test
