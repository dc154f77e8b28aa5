// SPDX-License-Identifier: Apache-2.0
// What the controls of a page make of more room than its template gives them.
#include "hosts/console/dialogs/stretch.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QListWidget>
#include <QTreeWidget>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/resources/resource_file.h"
#include "resources/resource.h"
#include "tests/ui/faults_of_sight.h"

namespace pelora::test {
namespace {

using console::Growth;
using console::Stretchable;
using console::Stretched;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr QRect kRoom(0, 0, 100, 100);

Stretchable Field(QRect place) { return {place, Growth::kGrows, Growth::kRigid}; }
Stretchable List(QRect place) { return {place, Growth::kGrows, Growth::kGrows}; }
Stretchable Label(QRect place) { return {place, Growth::kNone, Growth::kRigid}; }
Stretchable Button(QRect place) { return {place, Growth::kRigid, Growth::kRigid}; }
Stretchable Frame(QRect place) { return {place, Growth::kRigid, Growth::kRigid, true}; }

TEST(Stretched, AFieldGrowsBetweenItsLabelAndItsButton) {
  EXPECT_THAT(Stretched({Label({0, 0, 20, 10}), Field({20, 0, 50, 10}), Button({75, 0, 20, 10})},
                        kRoom, {40, 30}),
              ElementsAre(QRect(0, 0, 20, 10), QRect(20, 0, 90, 10), QRect(115, 0, 20, 10)));
}

TEST(Stretched, AListGrowsAndTheButtonsBesideItStayAtItsTop) {
  EXPECT_THAT(Stretched({List({0, 10, 70, 40}), Button({75, 10, 20, 10}), Button({75, 25, 20, 10}),
                         Button({10, 80, 30, 10})},
                        kRoom, {40, 30}),
              ElementsAre(QRect(0, 10, 110, 70), QRect(115, 10, 20, 10), QRect(115, 25, 20, 10),
                          QRect(10, 110, 30, 10)));
}

TEST(Stretched, ARowOfButtonsKeepsToTheEdgeThatIsNearer) {
  EXPECT_THAT(
      Stretched({Button({5, 0, 20, 10}), Button({50, 20, 20, 10}), Button({75, 20, 20, 10})}, kRoom,
                {40, 30}),
      ElementsAre(QRect(5, 0, 20, 10), QRect(90, 20, 20, 10), QRect(115, 20, 20, 10)));
}

TEST(Stretched, FramesSideBySideShareTheWidthAndThoseWithListsTheHeight) {
  EXPECT_THAT(Stretched({Frame({0, 0, 50, 30}), Field({10, 10, 30, 10}), Frame({50, 0, 50, 30}),
                         Label({60, 10, 30, 10}), Frame({0, 30, 100, 60}), List({10, 40, 80, 40})},
                        kRoom, {40, 30}),
              ElementsAre(QRect(0, 0, 70, 30), QRect(10, 10, 50, 10), QRect(70, 0, 70, 30),
                          QRect(80, 10, 30, 10), QRect(0, 30, 140, 90), QRect(10, 40, 120, 70)));
}

TEST(Stretched, WithoutMoreRoomEverythingStays) {
  const std::vector<Stretchable> controls = {Frame({0, 0, 50, 50}), List({10, 10, 30, 30}),
                                             Button({60, 0, 20, 10})};
  const std::vector<QRect> places = Stretched(controls, kRoom, {0, 0});
  for (std::size_t at = 0; at < controls.size(); ++at) EXPECT_EQ(places[at], controls[at].place);
}

class Idle final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*notification*/) override {
    return 0;
  }
  void OnDestroy() override {}
};

/// Calls back with every dialog of the module, shown.
void ForEveryDialog(const std::function<void(console::QtDialog& dialog, DialogId id)>& act) {
  constexpr DialogId kLast = 1000;
  const auto module = resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  int count = 0;
  for (DialogId id = 1; id < kLast; ++id) {
    const auto read = module.value.value().Dialog(id);
    if (!read.value) continue;
    Idle controller;
    QWidget window;
    console::QtDialog dialog(*read.value, controller, window, {});
    window.resize(dialog.widget().size());
    window.show();
    SCOPED_TRACE(::testing::Message() << "dialog " << id);
    act(dialog, id);
    ++count;
  }
  EXPECT_GE(count, 23) << "every tab, wizard page and dialog";
}

constexpr QSize kMoreRoom(300, 200);
constexpr std::array kMore = {QSize(0, 0), QSize(1, 1), QSize(300, 0), QSize(0, 200),
                              QSize(337, 211)};

TEST(StretchedDialogs, NothingOverlapsIsCutOffOrLeavesThePageInEitherDirection) {
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    ForEveryDialog([direction](console::QtDialog& dialog, DialogId /*id*/) {
      const QSize size = dialog.widget().size();
      dialog.widget().setLayoutDirection(direction);
      for (const QSize more : kMore) {
        dialog.widget().resize(size + more);
        EXPECT_THAT(FaultsOfSight(dialog.widget()), IsEmpty()) << more.width();
      }
    });
  }
}

TEST(StretchedDialogs, ListsTakeTheRoom) {
  ForEveryDialog([](console::QtDialog& dialog, DialogId /*id*/) {
    const QList<QAbstractItemView*> lists =
        dialog.widget().findChildren<QAbstractItemView*>(QString(), Qt::FindDirectChildrenOnly);
    QList<QSize> before;
    for (const QAbstractItemView* list : lists) before.append(list->size());
    dialog.widget().resize(dialog.widget().size() + kMoreRoom);
    int grown = 0;
    for (qsizetype at = 0; at < lists.size(); ++at) {
      EXPECT_EQ(lists[at]->width(), before[at].width() + kMoreRoom.width());
      grown += lists[at]->height() - before[at].height();
    }
    // They share it, but for what a division leaves over.
    EXPECT_NEAR(grown, lists.isEmpty() ? 0 : kMoreRoom.height(), static_cast<double>(lists.size()));
    EXPECT_EQ(dialog.GrowsDown(), !lists.isEmpty());
  });
}

TEST(StretchedDialogs, FromRightToLeftAPageIsItsOwnMirrorImage) {
  ForEveryDialog([](console::QtDialog& dialog, DialogId /*id*/) {
    QWidget& page = dialog.widget();
    QList<QRect> places;
    const auto controls = page.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* control : controls) places.append(control->geometry());
    page.setLayoutDirection(Qt::RightToLeft);
    for (qsizetype at = 0; at < controls.size(); ++at) {
      if (controls[at]->objectName().startsWith(QLatin1String("label_of_"))) continue;
      EXPECT_EQ(controls[at]->geometry(),
                QStyle::visualRect(Qt::RightToLeft, page.rect(), places[at]));
    }
  });
}

TEST(StretchedDialogs, TheColumnsOfAListShareItsWidth) {
  ForEveryDialog([](console::QtDialog& dialog, DialogId id) {
    if (id != IDD_PROPPAGE_FEATURES) return;
    IListView& list = dialog.ListView(IDC_FEATURE_LIST);
    const int width = dialog.ClientWidth(IDC_FEATURE_LIST);
    list.InsertColumn(0, "Feature", width / 2);
    list.InsertColumn(1, "Status", width / 2);
    const auto& tree = static_cast<QTreeWidget&>(dialog.Find(IDC_FEATURE_LIST)->widget());
    dialog.widget().resize(dialog.widget().size() + QSize(200, 0));
    EXPECT_NEAR(tree.columnWidth(0), width / 2 + 100, 2);
    EXPECT_NEAR(tree.columnWidth(1), width / 2 + 100, 2);
    dialog.widget().resize(dialog.widget().size() - QSize(200, 0));
    EXPECT_NEAR(tree.columnWidth(0) + tree.columnWidth(1), width, 3);
  });
}

}  // namespace
}  // namespace pelora::test
