// SPDX-License-Identifier: Apache-2.0
// How pages look in the console, and that what is wrong with a look is seen.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/resources/resource_file.h"
#include "resources/resource.h"
#include "tests/ui/faults_of_sight.h"

namespace pelora::test {
namespace {

using Lines = std::vector<std::string>;

class Idle final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*notification*/) override {
    return 0;
  }
  void OnDestroy() override {}
};

/// A dialog of the module, shown.
class Shown {
 public:
  explicit Shown(DialogId id)
      : dialog_(resources::ResourceFile::Read(resources::EmbeddedResourceBytes())
                    .value.value()
                    .Dialog(id)
                    .value.value(),
                controller_, window_, {}) {
    window_.resize(dialog_.widget().size());
    window_.show();
  }

  [[nodiscard]] console::QtDialog& dialog() { return dialog_; }
  [[nodiscard]] QImage Draw(const QRect& part) { return dialog_.widget().grab(part).toImage(); }

 private:
  Idle controller_;
  QWidget window_;
  console::QtDialog dialog_;
};

/// Rows of a picture, counted from its top, in which something dark is drawn.
std::vector<int> InkedRows(const QImage& picture) {
  constexpr int kDark = 128;
  std::vector<int> rows;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (qGray(picture.pixel(x, y)) >= kDark) continue;
      rows.push_back(y);
      break;
    }
  }
  return rows;
}

TEST(TabLooks, TheObjectsPictureIsDrawn) {
  constexpr int kIconWidth = 30;
  for (const int id : {IDD_PROPPAGE_ADDRESSLIST_GENERAL, IDD_PROPPAGE_DYNAMIC_DISTLIST_GENERAL}) {
    Shown shown(static_cast<DialogId>(id));
    const QRect name = shown.dialog().Find(IDC_NAME_CN)->widget().geometry();
    const QImage picture = shown.Draw({0, 0, name.left() - 2, name.bottom() + 10});
    EXPECT_GE(static_cast<int>(InkedRows(picture).size()), kIconWidth);
  }
}

TEST(TabLooks, ANameForWhichThereIsNoRoomEndsInDots) {
  Shown shown(IDD_PROPPAGE_ADDRESSLIST_GENERAL);
  QWidget& label = shown.dialog().Find(IDC_NAME_CN)->widget();
  shown.dialog().SetText(IDC_NAME_CN, std::string(300, 'H'));
  EXPECT_EQ(shown.dialog().Text(IDC_NAME_CN), std::string(300, 'H'));
  const QRect place = label.geometry();
  const int dots = label.fontMetrics().horizontalAdvance(QChar(0x2026));
  const std::vector<int> letters =
      InkedRows(shown.Draw({place.left(), place.top(), dots, place.height()}));
  // Somewhere in the last letter's width and that of the dots the letters end.
  const int tail = dots / 2;
  const int last = label.fontMetrics().horizontalAdvance(QLatin1Char('H'));
  const std::vector<int> end =
      InkedRows(shown.Draw({place.right() - last - tail, place.top(), tail, place.height()}));
  ASSERT_FALSE(letters.empty());
  ASSERT_FALSE(end.empty());
  EXPECT_GT(end.front(), (letters.front() + letters.back()) / 2) << "dots stand low";
}

TEST(TabLooks, ANamesAmpersandIsShown) {
  Shown shown(IDD_PROPPAGE_ADDRESSLIST_GENERAL);
  shown.dialog().SetText(IDC_NAME_CN, "Rooms & &more");
  const auto& label = static_cast<const QLabel&>(shown.dialog().Find(IDC_NAME_CN)->widget());
  EXPECT_EQ(label.text(), QStringLiteral("Rooms & &more"));
  EXPECT_EQ(label.buddy(), nullptr);
}

// Faults are seen.

TEST(FaultsOfSight, AreSeen) {
  QWidget page;
  page.resize(200, 100);
  auto& label = *new QLabel(QStringLiteral("A label"), &page);
  label.setObjectName(QStringLiteral("label"));
  label.setGeometry(0, 0, 100, 20);
  auto& box = *new QCheckBox(QStringLiteral("A box"), &page);
  box.setObjectName(QStringLiteral("box"));
  box.setGeometry(0, 20, 100, 20);
  auto& frame = *new QGroupBox(QStringLiteral("A frame"), &page);
  frame.setGeometry(0, 0, 200, 100);
  EXPECT_EQ(FaultsOfSight(page), Lines());
  box.setGeometry(0, 19, 100, 20);
  EXPECT_EQ(FaultsOfSight(page), Lines{"label \"A label\" overlaps box \"A box\""});
  box.setGeometry(150, 50, 100, 20);
  EXPECT_EQ(FaultsOfSight(page), Lines{"box \"A box\" reaches over the edge"});
  box.setGeometry(0, 50, 100, 5);
  EXPECT_EQ(FaultsOfSight(page), Lines{"box \"A box\" has too much text"});
  box.setGeometry(0, 50, 30, 20);
  EXPECT_EQ(FaultsOfSight(page), Lines{"box \"A box\" has too much text"});
  box.hide();
  EXPECT_EQ(FaultsOfSight(page), Lines());
}

}  // namespace
}  // namespace pelora::test
