// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/console_test.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <algorithm>
#include <cstddef>
#include <system_error>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/read_bytes.h"

namespace pelora::test {
namespace {

constexpr std::size_t kMostOutput = std::size_t{64} << 20;

using console::ToUtf8;

/// A file in memory, from its beginning.
ldap::FileDescriptor FileOf(const QByteArray& bytes) {
  ldap::FileDescriptor file(memfd_create("tool", MFD_CLOEXEC));
  EXPECT_EQ(pwrite(file.get(), bytes.data(), static_cast<std::size_t>(bytes.size()), 0),
            bytes.size());
  return file;
}

/// Not by the toolkit's processes: they share this program's memory for a moment, in which the
/// thread sanitizer takes this program for the child and stops watching it, for good.
QByteArray RunTool(const std::string& program, std::vector<std::string> arguments,
                   const QByteArray& input = {}) {
  const ldap::FileDescriptor in = FileOf(input);
  const ldap::FileDescriptor out = FileOf({});
  arguments.insert(arguments.begin(), program);
  std::vector<char*> texts;
  for (std::string& argument : arguments) texts.push_back(argument.data());
  texts.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.get(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out.get(), STDOUT_FILENO);
  pid_t child = 0;
  const int started =
      posix_spawnp(&child, program.c_str(), &actions, nullptr, texts.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (started == 0) {
    EXPECT_EQ(waitpid(child, &status, 0), child);
  }
  EXPECT_EQ(status, 0) << program << ": " << std::generic_category().message(started);
  std::string output;
  EXPECT_EQ(lseek(out.get(), 0, SEEK_SET), 0);
  EXPECT_EQ(ldap::ReadBytes(out.get(), kMostOutput, output), ldap::ReadEnd::kWhole);
  return QByteArray::fromStdString(output);
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
  QByteArray output = RunTool("ldbsearch", {"-H", file, "-b", dn, "-s", "base"});
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
  (void)RunTool("ldbmodify", {"-H", file}, QByteArray::fromStdString(ldif));
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
