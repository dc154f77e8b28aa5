// SPDX-License-Identifier: Apache-2.0
// pelora_tab_sheet WINDOWS-PICTURES CONSOLE-PICTURES OUTPUT
//
// Puts the pictures that the tests of tabs keep on one sheet: for each tab the one of Windows and
// the one of the console, side by side.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <array>
#include <cstdio>

namespace {

struct Tab {
  /// The files' names without their ending.
  const char* windows;
  const char* console;
  const char* caption;
};

/// A tab of which the same test keeps a picture on both systems.
constexpr Tab SameOnBoth(const char* picture, const char* caption) {
  return {picture, picture, caption};
}

constexpr std::array kTabs = {
    SameOnBoth("sample_CPropPageUser", "Users"),
    Tab{"features_tab", "features-tab-light", "Users: Pelora Features"},
    SameOnBoth("sample_CPropPageContact", "Contacts"),
    SameOnBoth("sample_CPropPageDistlist", "Groups"),
    SameOnBoth("sample_CPropPageServer", "Servers (computers)"),
    SameOnBoth("sample_CPropPageAddresslistGeneral", "Address lists: General"),
    SameOnBoth("sample_CPropPageAddresslist", "Address lists: Pelora"),
    SameOnBoth("sample_CPropPageDynamicDistlistGeneral", "Dynamic distribution lists: General"),
    SameOnBoth("sample_CPropPageDynamicDistlist", "Dynamic distribution lists: Pelora"),
    SameOnBoth("sample_CPropPageCompany", "Companies (organizational units): Pelora"),
    SameOnBoth("sample_CPropPageCompanyQuota", "Companies: Pelora Quota"),
    SameOnBoth("sample_CPropPageCompanyRights", "Companies: Pelora Rights"),
};

constexpr std::size_t kColumns = 2;
constexpr int kGap = 24;
constexpr int kCaptionHeight = 28;

struct Pair {
  QString caption;
  QImage windows;
  QImage console;

  [[nodiscard]] QSize Size() const {
    return {windows.width() + kGap + console.width(),
            kCaptionHeight + std::max(windows.height(), console.height())};
  }
};

bool Read(const QString& folder, const char* name, QImage& picture) {
  const QString file = QDir(folder).filePath(QLatin1String(name) + QStringLiteral(".png"));
  if (picture.load(file)) return true;
  std::fprintf(stderr, "%s: there is no such picture\n", qPrintable(file));
  return false;
}

void Draw(QPainter& painter, QPoint place, const Pair& pair) {
  painter.drawText(QRect(place, QSize(pair.Size().width(), kCaptionHeight)), Qt::AlignVCenter,
                   pair.caption);
  place.ry() += kCaptionHeight;
  painter.drawImage(place, pair.windows);
  place.rx() += pair.windows.width() + kGap;
  painter.drawImage(place, pair.console);
}

QImage Sheet(const std::vector<Pair>& pairs) {
  QSize cell;
  for (const Pair& pair : pairs) cell = cell.expandedTo(pair.Size());
  cell += QSize(2 * kGap, kGap);
  const int rows = static_cast<int>((pairs.size() + kColumns - 1) / kColumns);
  QImage sheet(cell.width() * static_cast<int>(kColumns), cell.height() * rows + kGap,
               QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  QFont font = painter.font();
  font.setBold(true);
  painter.setFont(font);
  for (std::size_t index = 0; index < pairs.size(); ++index) {
    const int column = static_cast<int>(index % kColumns);
    const int row = static_cast<int>(index / kColumns);
    Draw(painter, {column * cell.width() + kGap, row * cell.height() + kGap / 2}, pairs[index]);
  }
  return sheet;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 4) {
    std::fprintf(stderr, "pelora_tab_sheet WINDOWS-PICTURES CONSOLE-PICTURES OUTPUT\n");
    return 2;
  }
  std::vector<Pair> pairs;
  for (const Tab& tab : kTabs) {
    Pair pair{.caption = QLatin1String(tab.caption), .windows = {}, .console = {}};
    if (!Read(arguments[1], tab.windows, pair.windows)) return 1;
    if (!Read(arguments[2], tab.console, pair.console)) return 1;
    pairs.push_back(pair);
  }
  if (Sheet(pairs).save(arguments[3])) return 0;
  std::fprintf(stderr, "%s: cannot be written\n", qPrintable(arguments[3]));
  return 1;
}
