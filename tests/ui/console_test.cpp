// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/console_test.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>
#include <algorithm>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;

constexpr int kProcessTimeout = 30000;

QByteArray RunTool(const QString& program, const QStringList& arguments,
                   const QByteArray& input = {}) {
  QProcess process;
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  const bool finished = process.waitForFinished(kProcessTimeout);
  EXPECT_TRUE(finished) << ToUtf8(program) << ": " << ToUtf8(process.errorString());
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

/// "name: value", also for a value that stands in base 64.
std::string PlainLine(const QByteArray& line) {
  const qsizetype marked = line.indexOf(":: ");
  if (marked < 0) return line.toStdString();
  const QByteArray value = QByteArray::fromBase64(line.mid(marked + 3));
  return (line.left(marked) + ": " + value).toStdString();
}

}  // namespace

EntryLines SearchEntry(const std::string& file, const std::string& dn) {
  QByteArray output = RunTool(QStringLiteral("ldbsearch"),
                              {QStringLiteral("-H"), ToQString(file), QStringLiteral("-b"),
                               ToQString(dn), QStringLiteral("-s"), QStringLiteral("base")});
  // A long line goes on behind a blank.
  output.replace("\n ", "");
  EntryLines lines;
  for (const QByteArray& line : output.split('\n')) {
    if (!line.isEmpty() && !line.startsWith('#')) lines.push_back(PlainLine(line));
  }
  EXPECT_FALSE(lines.empty()) << dn;
  std::ranges::sort(lines);
  return lines;
}

void ModifyEntry(const std::string& file, const std::string& ldif) {
  (void)RunTool(QStringLiteral("ldbmodify"), {QStringLiteral("-H"), ToQString(file)},
                QByteArray::fromStdString(ldif));
}

std::string Copied(QWidget& part) {
  QGuiApplication::clipboard()->clear();
  QTest::keyClick(&part, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&part, Qt::Key_C, Qt::ControlModifier);
  return ToUtf8(QGuiApplication::clipboard()->text());
}

std::vector<std::string> Difference(const EntryLines& before, const EntryLines& after) {
  EntryLines gone;
  EntryLines come;
  std::ranges::set_difference(before, after, std::back_inserter(gone));
  std::ranges::set_difference(after, before, std::back_inserter(come));
  std::vector<std::string> difference;
  for (const std::string& line : gone) difference.push_back("- " + line);
  for (const std::string& line : come) difference.push_back("+ " + line);
  return difference;
}

OpenCompany::OpenCompany()
    : module_(resources::ResourceFile::Read(resources::EmbeddedResourceBytes())) {
  // What is kept for the user is kept for the test alone.
  qputenv("XDG_DATA_HOME", QByteArray::fromStdString(file_.File("data")));
  if (!module_.value) throw std::runtime_error(module_.error);
  session::SessionResult opened = session::OpenDirectoryFile(file());
  if (!opened.session) throw std::runtime_error(opened.error);
  session_ = std::move(opened.session);
}

std::unique_ptr<session::DirectorySession> OpenCompany::TakeSession() {
  return std::move(session_);
}

std::vector<session::DirectoryObject> OpenCompany::Objects(const std::vector<std::string>& names) {
  std::vector<session::DirectoryObject> objects;
  const session::DirectoryBrowser browser(*session_->store);
  for (const std::string& name : names) {
    session::DirectoryObject object;
    const ldap::StoreStatus status = browser.ReadObject(name, object);
    if (!status.Ok()) throw std::runtime_error(status.text);
    objects.push_back(std::move(object));
  }
  return objects;
}

}  // namespace pelora::test
