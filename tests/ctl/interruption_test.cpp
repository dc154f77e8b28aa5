// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class InterruptionTest : public PeloractlTest {
 protected:
  /// A shell's line with the program as `$0` and the directory as `$1`.
  [[nodiscard]] ProgramRun Shell(const std::string& line) const {
    return RunProgram({"/bin/sh", "-c", line, PELORACTL, File("company.ldb")}, environment);
  }
};

/// The program with its output in a pipe that holds little, so that it waits for its reader.
class StuckProgram {
 public:
  explicit StuckProgram(std::vector<std::string> arguments) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    reader_ = ends[0];
    fcntl(ends[1], F_SETPIPE_SZ, 4096);
    std::vector<char*> given;
    for (std::string& argument : arguments) given.push_back(argument.data());
    given.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
      // Whatever this program was started with.
      signal(SIGINT, SIG_DFL);
      signal(SIGTERM, SIG_DFL);
      dup2(ends[1], STDOUT_FILENO);
      const int nothing = open("/dev/null", O_WRONLY);
      dup2(nothing, STDERR_FILENO);
      execv(given[0], given.data());
      _exit(127);
    }
    close(ends[1]);
  }
  StuckProgram(const StuckProgram&) = delete;
  StuckProgram& operator=(const StuckProgram&) = delete;
  ~StuckProgram() { close(reader_); }

  /// Takes off what it prints up to the first that says "changed"; some may be so already.
  void WaitForChange() const {
    for (std::string printed = "\n"; !printed.ends_with("\nchanged\t");) {
      std::array<char, 1> next{};
      if (read(reader_, next.data(), next.size()) != 1) throw std::runtime_error("no change");
      printed += next[0];
    }
  }
  /// Waits until it has written something, of which the first letter is taken.
  void WaitForOutput() const {
    std::array<char, 1> first{};
    if (read(reader_, first.data(), first.size()) != 1) throw std::runtime_error("no output");
  }
  /// Waits until it has written something and then no more.
  void WaitUntilStuck() const {
    // Taken off the first line, which says "changed".
    WaitForOutput();
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  }
  void Signal(int signal) const { kill(child_, signal); }
  /// What it prints from now on.
  [[nodiscard]] std::string Drain() const {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = read(reader_, block.data(), block.size()); count > 0;
         count = read(reader_, block.data(), block.size())) {
      text.append(block.data(), static_cast<std::size_t>(count));
    }
    return text;
  }
  [[nodiscard]] int Wait() const {
    int status = 0;
    waitpid(child_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  int reader_ = -1;
  pid_t child_ = 0;
};

TEST_F(InterruptionTest, WhatIsUnderWayIsFinishedAndTheRestSkipped) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const bool is_first = signal == SIGINT;
    const StuckProgram program(
        {PELORACTL, "--directory", File("company.ldb"), "set", "--stop", "--class", "user",
         is_first ? "peloraHidden=yes" : "peloraHidden=no", "--report", File("report")});
    program.WaitUntilStuck();
    program.Signal(signal);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const std::string printed = program.Drain();
    EXPECT_EQ(program.Wait(), 130);
    EXPECT_THAT(printed, HasSubstr("\nskipped\t"));
    // Everything is reported, and what is reported as changed is.
    const std::string report = Read(File("report"));
    std::size_t changed = 0;
    std::size_t lines = 0;
    std::istringstream stream(report);
    for (std::string line; std::getline(stream, line); ++lines) {
      const auto result = nlohmann::json::parse(line);
      if (result.at("result") != "changed") continue;
      ++changed;
      EXPECT_EQ(Stored(result.at("dn"), "peloraHidden"), is_first ? "1" : "0");
    }
    EXPECT_GT(changed, 0U);
    EXPECT_EQ(lines, Ctl({"list", "user", "--all", "--json"}).Lines().size());
  }
}

TEST_F(InterruptionTest, WhateverHappensTheUndoFileHasWhatWasChanged) {
  const std::string before = Dump();
  {
    const StuckProgram program({PELORACTL, "--directory", File("company.ldb"), "set", "--stop",
                                "--class", "user", "peloraHidden=yes", "--undo-file",
                                File("undo")});
    // Something has been changed, and how much does not matter.
    program.WaitForChange();
    program.Signal(SIGKILL);
    EXPECT_EQ(program.Wait(), -SIGKILL);
  }
  EXPECT_NE(Dump(), before);
  const ProgramRun undone = Ctl({"undo", File("undo")});
  EXPECT_EQ(undone.code, 0) << undone.output;
  EXPECT_EQ(Dump(), before);
}

TEST_F(InterruptionTest, AFileThatIsCutShortEndsTheProgramWithALine) {
  const std::string errors = File("errors");
  {
    const StuckProgram program({"/bin/sh", "-c",
                                "exec \"$0\" --directory \"$1\" set --stop --json --class user "
                                "peloraHidden=yes --report \"$2\" 2>\"$3\"",
                                PELORACTL, File("company.ldb"), File("report"), errors});
    // All the lines do not find room in the pipe: it is not done before they are taken.
    program.WaitForOutput();
    std::filesystem::resize_file(File("company.ldb"), 0);
    static_cast<void>(program.Drain());
    EXPECT_EQ(program.Wait(), 1);
  }
  EXPECT_THAT(Read(errors), HasSubstr("cut the directory file short"));
  // What was told until then is reported.
  EXPECT_THAT(Read(File("report")), HasSubstr("\"result\":"));
}

TEST_F(InterruptionTest, ProgressIsShownToAPersonAlone) {
  const std::string command = std::string(PELORACTL) + " --directory " + File("company.ldb") +
                              " set h.oender t.richter peloraHidden=";
  const auto on_terminal = [&](const std::string& rest) {
    return RunProgram({"/usr/bin/script", "-qec", command + rest + " >/dev/null", "/dev/null"},
                      environment)
        .output;
  };
  EXPECT_THAT(on_terminal("yes"), HasSubstr("1 of 2"));
  EXPECT_THAT(on_terminal("no --quiet"), IsEmpty());
  EXPECT_THAT(Shell(command + "yes").errors, Not(HasSubstr(" of 2")));
}

TEST_F(InterruptionTest, WhatWasIgnoredBeforeStaysSo) {
  const ProgramRun run = Shell(
      "trap '' INT TERM\n"
      "\"$0\" --directory \"$1\" set --stop --class user peloraHidden=yes >/dev/null &\n"
      "for round in 1 2 3 4 5 6 7 8; do kill -INT $!; kill -TERM $!; sleep 0.02; done\n"
      "wait $!");
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.errors, HasSubstr(" 0 skipped"));
}

TEST_F(InterruptionTest, WhoWaitsForNamesIsEndedAtOnce) {
  // The pipe opens when the program does; nobody writes into it.
  const ProgramRun run = Shell(
      "mkfifo \"$1.names\"\n"
      "timeout -k 1 20 \"$0\" --directory \"$1\" set --from \"$1.names\" "
      "peloraHidden=yes &\n"
      "exec 3>\"$1.names\"\n"
      "kill -TERM $!\n"
      "wait $!");
  EXPECT_EQ(run.code, 130) << run.errors;
}

TEST_F(InterruptionTest, NothingIsPrintedIntoTheDirectoryWhereOutputsAreClosed) {
  const ProgramRun run = Shell(
      "\"$0\" --directory \"$1\" set h.oender nobody peloraHidden=yes >&- 2>&- <&-\n"
      "\"$0\" --directory \"$1\" set t.richter peloraHidden=yes >&-");
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
  EXPECT_EQ(Stored(kTom, "peloraHidden"), "1");
  EXPECT_THAT(Dump(), HasSubstr("dn: "));
}

TEST_F(InterruptionTest, AClosedPipeEndsThePrintingAndNotTheWork) {
  const ProgramRun run =
      Shell("\"$0\" --directory \"$1\" set --class user peloraHidden=yes | true");
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(run.errors, Not(HasSubstr("peloractl:")));
  EXPECT_EQ(Stored(kTom, "peloraHidden"), "1");
}

TEST_F(InterruptionTest, AFullDiskIsToldAndTheWorkGoesOn) {
  const ProgramRun run = Shell(
      "\"$0\" --directory \"$1\" set h.oender t.richter peloraHidden=yes --report /dev/full "
      ">/dev/full");
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(run.errors, HasSubstr("/dev/full: No space left on device"));
  EXPECT_THAT(run.errors, HasSubstr("standard output: No space left on device"));
  EXPECT_EQ(Stored(kTom, "peloraHidden"), "1");
}

TEST_F(InterruptionTest, OutputIsUtf8WhateverTheLocale) {
  for (const char* locale : {"C", "POSIX", "de_DE.ISO-8859-1", "no_SUCH"}) {
    environment["LC_ALL"] = locale;
    EXPECT_THAT(Ctl({"list", "user", "--columns", "name"}).output, HasSubstr("Helga Önder"))
        << locale;
    EXPECT_THAT(Ctl({"show", "HELGA ÖNDER", "--json"}).output, HasSubstr("Helga Önder")) << locale;
  }
}

TEST_F(InterruptionTest, ControlCharactersNeverReachATerminal) {
  const std::string value =
      "\x1B[31mred\xC2\x9B"
      "2J\x07";
  ASSERT_EQ(Ctl({"new", "addresslist", "Hostile", "--in", kUnit, "peloraAccount=yes",
                 "peloraFilter=(cn=*)"})
                .code,
            0);
  ASSERT_EQ(Ctl({"set", "Hostile", "description=" + value}).code, 0);
  for (const std::string arguments : {"show Hostile", "list addresslist --columns description",
                                      "list addresslist --csv --columns description",
                                      "show --json Hostile", "set Hostile \"peloraHidden=$2\""}) {
    const ProgramRun run = RunProgram(
        {"/usr/bin/script", "-qec",
         std::string(PELORACTL) + " --quiet --directory " + File("company.ldb") + " " + arguments,
         "/dev/null"},
        environment);
    EXPECT_THAT(run.output, Not(HasSubstr("\x1B"))) << arguments;
    EXPECT_THAT(run.output, Not(HasSubstr("\xC2\x9B"))) << arguments;
    EXPECT_THAT(run.output, Not(IsEmpty())) << arguments;
  }
}

}  // namespace
}  // namespace pelora::testing
