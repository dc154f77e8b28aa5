// SPDX-License-Identifier: Apache-2.0
// The table that the console writes of what its list shows, and what the command line makes of it.
#include <gmock/gmock.h>

#include <QFileDialog>
#include <QListWidget>
#include <QProcess>
#include <QTimer>

#include "hosts/console/finding/column_dialog.h"
#include "tests/ui/window_test.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// What a program wrote, and its exit code.
struct Ended {
  int code = -1;
  std::string output;
  std::string errors;
};

Ended RunProgram(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  if (!process.waitForFinished(kPatience) || process.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << ToUtf8(program) << " did not end";
    return {};
  }
  return {.code = process.exitCode(),
          .output = process.readAllStandardOutput().toStdString(),
          .errors = process.readAllStandardError().toStdString()};
}

class ExportedTable : public WindowTest {
 protected:
  /// Shows a view with the columns of these names, or with all there are.
  void Show(const session::View& view, const std::vector<QString>& names) {
    ASSERT_EQ(ToUtf8(pane().remembered().SetViews({view})), "");
    OpenWindow();
    ASSERT_EQ(ToUtf8(pane().ShowView(ToQString(view.name))), "");
    Settle();
    QTimer::singleShot(0, [&names] {
      auto* dialog = dynamic_cast<console::ColumnDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      auto* columns = dialog->findChild<QListWidget*>(QStringLiteral("columns"));
      for (int row = 0; row < columns->count(); ++row) {
        const QString name = columns->item(row)->data(Qt::UserRole).toString();
        const bool wanted = names.empty() || std::ranges::find(names, name) != names.end();
        columns->item(row)->setCheckState(wanted ? Qt::Checked : Qt::Unchecked);
      }
      dialog->accept();
    });
    pane().ChooseColumns();
    Settle();
  }
  /// Exports what is shown by the window's own action; the file.
  [[nodiscard]] QString Export() {
    const QString path = ToQString(folder().File("table.csv"));
    QTimer::singleShot(0, [&path] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      dialog->selectFile(path);
      static_cast<QDialog*>(dialog)->accept();
    });
    for (QAction* action : window().findChildren<QAction*>()) {
      if (action->text() == QStringLiteral("&Export Table...")) action->trigger();
    }
    EXPECT_TRUE(QFile::exists(path));
    return path;
  }
  [[nodiscard]] Ended Apply(const QString& table) {
    return RunProgram(QStringLiteral(PELORACTL), {QStringLiteral("--directory"), ToQString(file()),
                                                  QStringLiteral("apply"), table});
  }
  /// Everything that the file holds.
  [[nodiscard]] std::string Dump() {
    return RunProgram(QStringLiteral("ldbsearch"),
                      {QStringLiteral("-H"), ToQString(file()), QStringLiteral("-S"),
                       QStringLiteral("(objectClass=*)")})
        .output;
  }
};

// Users, groups, contacts, units and computers, with every field of every tab.
TEST_F(ExportedTable, ThatNobodyChangedChangesNothing) {
  Show({.name = "All", .base = {}, .filter = "(objectClass=*)", .columns = {}}, {});
  ASSERT_THAT(Names(), SizeIs(Ge(40)));
  ASSERT_THAT(pane().list().columns(), SizeIs(Ge(40)));
  const QString table = Export();
  const std::string before = Dump();
  ASSERT_THAT(before, HasSubstr(kBirgit));
  const Ended applied = Apply(table);
  EXPECT_EQ(applied.code, 0) << applied.output << applied.errors;
  EXPECT_THAT(applied.errors, StartsWith("0 changed, "));
  EXPECT_EQ(Dump(), before);
}

TEST_F(ExportedTable, IsAppliedAsAScriptHasChangedIt) {
  Show({.name = "Users", .base = kCompany, .filter = "(objectClass=user)", .columns = {}},
       {QStringLiteral("folder"), QStringLiteral("peloraQuotaOverride"),
        QStringLiteral("peloraQuotaWarn")});
  const QString table = Export();
  const EntryLines before = SearchEntry(file(), kBirgit);
  ASSERT_EQ(
      RunProgram(QStringLiteral("sed"),
                 {QStringLiteral("-i"),
                  QStringLiteral("/^\"CN=Birgit Kr/s/,[a-z]*,[0-9]*\\r$/,yes,777\\r/"), table})
          .code,
      0);
  const Ended applied = Apply(table);
  EXPECT_EQ(applied.code, 0) << applied.output << applied.errors;
  EXPECT_THAT(applied.errors, StartsWith("1 changed, "));
  EXPECT_THAT(Difference(before, SearchEntry(file(), kBirgit)),
              ::testing::IsSupersetOf({"+ peloraQuotaOverride: 1", "+ peloraQuotaWarn: 777"}));
  // The list says so when it is read anew.
  pane().RefreshList();
  Settle();
  EXPECT_THAT(Column(3), Contains("777"));
}

}  // namespace
}  // namespace pelora::test
