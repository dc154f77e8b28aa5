// SPDX-License-Identifier: Apache-2.0
// The program as the command line meets it: what it writes, what it says and what it answers.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <sstream>

#include "hosts/console/program/command_line.h"
#include "hosts/console/program/stream_message_box.h"
#include "hosts/console/text/qt_text.h"
#include "platform/dialog_controller.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using console::ToQString;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// What a run of the program left behind.
struct Outcome {
  int exit_code = -1;
  std::string output;
  std::string errors;
};

class Program : public ConsoleTest {
 protected:
  /// Runs the program without a display, with a data folder of its own.
  [[nodiscard]] Outcome Console(
      const std::vector<std::string>& arguments,
      const std::vector<std::pair<const char*, const char*>>& settings = {}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
      environment.remove(QString::fromLatin1(name));
    }
    environment.insert(QStringLiteral("XDG_DATA_HOME"), ToQString(folder().File("data")));
    for (const auto& [name, value] : settings) {
      environment.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    }
    QStringList list;
    for (const std::string& argument : arguments) list.append(ToQString(argument));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PELORA_CONSOLE), list);
    EXPECT_TRUE(process.waitForFinished(kTimeout)) << "the program does not end";
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {.exit_code = process.exitCode(),
            .output = process.readAllStandardOutput().toStdString(),
            .errors = process.readAllStandardError().toStdString()};
  }

  [[nodiscard]] std::string Picture() const { return folder().File("picture.png"); }
  [[nodiscard]] bool HasPicture() const { return QFileInfo::exists(ToQString(Picture())); }
  [[nodiscard]] QByteArray FileHash() const {
    QFile read(ToQString(file()));
    EXPECT_TRUE(read.open(QIODevice::ReadOnly));
    return QCryptographicHash::hash(read.readAll(), QCryptographicHash::Sha256);
  }

 private:
  static constexpr int kTimeout = 30000;
};

TEST_F(Program, TellsItsOptionsAndExitCodes) {
  const Outcome help = Console({"--help"});
  EXPECT_EQ(help.exit_code, 0);
  EXPECT_THAT(help.output, AllOf(HasSubstr("--directory"), HasSubstr("--open"),
                                 HasSubstr("--screenshot"), HasSubstr("Exit status")));
  const Outcome version = Console({"--version"});
  EXPECT_EQ(version.exit_code, 0);
  EXPECT_EQ(version.output, "pelora-console " PELORA_VERSION "\n");
}

TEST_F(Program, RefusesWrongArguments) {
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{"--bogus"}, {"stray"}, {"--open"}, {"--directory"}}) {
    const Outcome run = Console(wrong);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_FALSE(run.errors.empty());
  }
}

TEST_F(Program, WritesAPictureOfAUsersPropertiesAndChangesNothing) {
  const QByteArray before = FileHash();
  const Outcome run =
      Console({"--directory", file(), "--open", kBirgit, "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_THAT(run.errors, IsEmpty());
  const QImage picture(ToQString(Picture()), "png");
  EXPECT_GT(picture.width(), 400);
  EXPECT_GT(picture.height(), 400);
  EXPECT_EQ(FileHash(), before);
}

TEST_F(Program, PicturesOfOneAndOfSeveralUsersDiffer) {
  const std::string several = folder().File("several.png");
  EXPECT_EQ(
      Console({"--directory", file(), "--open", kBirgit, "--screenshot", Picture()}).exit_code, 0);
  EXPECT_EQ(
      Console({"--directory", file(), "--open", kBirgit, kAnna, kRolf, "--screenshot", several})
          .exit_code,
      0);
  const QImage one(ToQString(Picture()));
  const QImage three(ToQString(several));
  EXPECT_EQ(one.size(), three.size());
  EXPECT_NE(one, three);
}

TEST_F(Program, AnObjectNamedTwiceIsOpenedOnce) {
  const std::string twice = folder().File("twice.png");
  EXPECT_EQ(
      Console({"--directory", file(), "--open", kBirgit, "--screenshot", Picture()}).exit_code, 0);
  EXPECT_EQ(
      Console({"--directory", file(), "--open", kBirgit, kBirgit, "--screenshot", twice}).exit_code,
      0);
  EXPECT_EQ(QImage(ToQString(Picture())), QImage(ToQString(twice)));
}

TEST_F(Program, WritesAPictureOfItsWindow) {
  const Outcome run = Console({"--directory", file(), "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_THAT(run.errors, IsEmpty());
  EXPECT_GT(QImage(ToQString(Picture())).width(), 600);
}

TEST_F(Program, ShowsTheViewThatIsNamed) {
  const std::string view = folder().File("view.png");
  EXPECT_EQ(Console({"--directory", file(), "--screenshot", Picture()}).exit_code, 0);
  const Outcome run =
      Console({"--directory", file(), "--view", "own quota ABOVE=1000", "--screenshot", view});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_THAT(run.errors, IsEmpty());
  EXPECT_NE(QImage(ToQString(Picture())), QImage(ToQString(view)));
  const Outcome none =
      Console({"--directory", file(), "--view", "no such view", "--screenshot", Picture()});
  EXPECT_EQ(none.exit_code, 1);
  EXPECT_THAT(none.errors, HasSubstr("no such view"));
}

TEST(ProgramArguments, NameADirectoryOrAServer) {
  const auto parse = [](std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "pelora-console");
    std::ostringstream output;
    return console::ParseCommandLine(static_cast<int>(arguments.size()), arguments.data(), output,
                                     output);
  };
  const auto server = parse({"--server", "dc1.example.org", "--view", "Hidden"});
  EXPECT_FALSE(server.exit_code);
  EXPECT_EQ(server.command_line.server, "dc1.example.org");
  EXPECT_EQ(server.command_line.view, "Hidden");
  EXPECT_EQ(parse({"--server", "--view", "Hidden"}).command_line.server, "");
  EXPECT_EQ(parse({"--directory", "a.ldb"}).command_line.directory, "a.ldb");
  EXPECT_FALSE(parse({"--directory", "a.ldb"}).command_line.server);
  EXPECT_EQ(parse({"--directory", "a.ldb", "--server"}).exit_code, 2);
}

TEST_F(Program, APictureThatCannotBeWrittenIsAFailure) {
  const std::string nowhere = folder().File("missing/picture.png");
  const Outcome run = Console({"--directory", file(), "--screenshot", nowhere});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr(nowhere));
}

TEST_F(Program, AnUnknownNameIsAFailureThatNamesIt) {
  const Outcome run = Console({"--directory", file(), "--open", kBirgit, "CN=Nobody,DC=example",
                               "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr("CN=Nobody,DC=example: there is no such object"));
  EXPECT_FALSE(HasPicture());
}

TEST_F(Program, ObjectsWithoutPropertiesAreAFailure) {
  const Outcome run =
      Console({"--directory", file(), "--open", kPlotter, "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr("Objects of the type printQueue have no properties to show."));
  EXPECT_FALSE(HasPicture());
}

TEST(MessagesWithoutAScreen, GoToTheStreamAndAreRemembered) {
  std::ostringstream stream;
  console::StreamMessageBox box(stream);
  EXPECT_FALSE(box.has_shown());
  EXPECT_EQ(box.Show(nullptr, {.text = "One\r\n\r\nError code: 0X5011", .caption = "Pelora Error"}),
            kDialogOk);
  EXPECT_TRUE(box.has_shown());
  EXPECT_EQ(stream.str(), "Pelora Error: One\n\nError code: 0X5011\n");
  const Message question{.text = "Sure?",
                         .caption = std::nullopt,
                         .icon = MessageIcon::kNone,
                         .buttons = MessageButtons::kYesNo};
  EXPECT_EQ(box.Show(nullptr, question), kDialogNo);
}

TEST(MessagesWithoutAScreen, NothingInThemSteersATerminal) {
  std::ostringstream stream;
  console::StreamMessageBox box(stream);
  box.Show(nullptr, {.text = "\x1B[2JOne\r\n\xC2\x9B"
                             "1mTwo",
                     .caption = "Pelora\a"});
  EXPECT_EQ(stream.str(), "Pelora\\x07: \\x1B[2JOne\n\\xC2\\x9B1mTwo\n");
}

TEST_F(Program, NothingInAFailureSteersATerminal) {
  const Outcome run =
      Console({"--directory", file(), "--open", "CN=\x1B[2Jx,DC=y", "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr("CN=\\x1B[2Jx,DC=y: "));
}

TEST_F(Program, AMissingFileIsAFailureThatNamesIt) {
  const std::string missing = folder().File("missing.ldb");
  const Outcome run = Console({"--directory", missing, "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr(missing));
  EXPECT_FALSE(QFileInfo::exists(ToQString(missing)));
}

TEST_F(Program, ADamagedFileIsAFailureThatNamesItAndLeavesIt) {
  QFile damaged(ToQString(file()));
  ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
  ASSERT_TRUE(damaged.resize(damaged.size() / 2));
  damaged.close();
  const QByteArray before = FileHash();
  const Outcome run = Console({"--directory", file(), "--screenshot", Picture()});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr(file()));
  EXPECT_EQ(FileHash(), before);
}

TEST_F(Program, ALockedFileIsAFailureThatNamesIt) {
  const int descriptor = open(file().c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(descriptor, 0);
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  ASSERT_EQ(fcntl(descriptor, F_SETLK, &lock), 0);
  const Outcome run = Console({"--directory", file(), "--screenshot", Picture()});
  close(descriptor);
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.errors, HasSubstr(file()));
}

TEST_F(Program, SaysThatThereIsNoDisplay) {
  const Outcome none = Console({"--directory", file()});
  EXPECT_EQ(none.exit_code, 1);
  EXPECT_THAT(none.errors, HasSubstr("no display"));
  const Outcome unreachable = Console({"--directory", file()}, {{"DISPLAY", ":9999"}});
  EXPECT_EQ(unreachable.exit_code, 1);
  EXPECT_THAT(unreachable.errors, HasSubstr("no display can be opened"));
}

TEST_F(Program, MakesTheSampleDirectoryOnceAndKeepsWhatWasChanged) {
  const std::string sample = folder().File("data/pelora-console/sample-company.ldb");
  EXPECT_EQ(Console({"--screenshot", Picture()}).exit_code, 0);
  ASSERT_TRUE(QFileInfo::exists(ToQString(sample)));
  ModifyEntry(sample, std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: description\ndescription: Kept\n");
  EXPECT_EQ(Console({"--open", kBirgit, "--screenshot", Picture()}).exit_code, 0);
  EXPECT_THAT(SearchEntry(sample, kBirgit), ::testing::Contains("description: Kept"));
}

/// What a listener to a window of the program tells.
struct Heard {
  int controls = 0;
  std::vector<std::string> faults;
};

Heard Listen(const std::string& title, const QStringList& arguments) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME"}) {
    environment.remove(QString::fromLatin1(name));
  }
  // As if a screen reader ran.
  environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.start(
      QStringLiteral("dbus-run-session"),
      QStringList{QStringLiteral("--"), QStringLiteral("xvfb-run"), QStringLiteral("-a"),
                  QStringLiteral("/usr/bin/python3"), QStringLiteral(PELORA_SCREEN_READER),
                  ToQString(title), QStringLiteral(PELORA_CONSOLE)} +
          arguments);
  constexpr int kTimeoutOfListener = 200000;
  EXPECT_TRUE(process.waitForFinished(kTimeoutOfListener)) << "the listener does not end";
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  Heard heard;
  // The session bus writes lines of its own.
  for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
    if (line.startsWith("fault: ")) heard.faults.push_back(line.toStdString());
    if (line.startsWith("heard: ")) heard.controls = line.mid(7).toInt();
  }
  return heard;
}

TEST_F(Program, TellsAScreenReaderWhatEveryControlIsCalled) {
  struct Sheet {
    std::vector<std::string> names;
    const char* title;
    int controls;
  };
  for (const Sheet& sheet :
       {Sheet{{kBirgit}, "Birgit", 30}, Sheet{{kBirgit, kRolf}, "2 selected", 20},
        Sheet{{kCompany}, "Linden-Werke Chemnitz Properties", 25}}) {
    QStringList arguments = {QStringLiteral("--directory"), ToQString(file()),
                             QStringLiteral("--open")};
    for (const std::string& name : sheet.names) arguments.append(ToQString(name));
    const Heard heard = Listen(sheet.title, arguments);
    EXPECT_GE(heard.controls, sheet.controls) << sheet.title;
    EXPECT_THAT(heard.faults, IsEmpty()) << sheet.title;
  }
}

}  // namespace
}  // namespace pelora::test
