// SPDX-License-Identifier: Apache-2.0
#include "tests/ctl/peloractl.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "hosts/ctl/program.h"
#include "hosts/ldap/ldb_store.h"

namespace pelora::testing {

std::vector<std::string> ProgramRun::Lines() const {
  std::vector<std::string> lines;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

namespace {

/// What a program is given and what it leaves behind, as files.
struct Streams {
  static constexpr int kMade = O_WRONLY | O_CREAT;
  static constexpr mode_t kOwn = 0600;

  explicit Streams(const std::string& input) { std::ofstream(in, std::ios::binary) << input; }

  /// What became of the program, once it has ended.
  [[nodiscard]] ProgramRun Await(pid_t child) const {
    int status = 0;
    waitpid(child, &status, 0);
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {.code = code, .output = ReadFile(out), .errors = ReadFile(err)};
  }

  TemporaryFolder folder;
  std::string in = folder.File("in");
  std::string out = folder.File("out");
  std::string err = folder.File("err");
};

void OpenAs(int descriptor, const std::string& path, int flags) {
  const int opened = open(path.c_str(), flags, Streams::kOwn);
  if (opened < 0 || dup2(opened, descriptor) < 0) _exit(127);
}

/// The program in a process of its own that begins as a copy of this one: all that the built one
/// does from its first line on, without the time that it takes under the sanitizers to be loaded.
/// Nothing of this process is open in it. It ends as programs do, sanitizers' last words included.
ProgramRun RunCopy(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment,
                   const std::string& input) {
  const Streams streams(input);
  // What is still to be written here is not to be written there as well.
  std::cout.flush();
  std::cerr.flush();
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process can be made");
  if (child > 0) return streams.Await(child);
  OpenAs(STDIN_FILENO, streams.in, O_RDONLY);
  OpenAs(STDOUT_FILENO, streams.out, Streams::kMade);
  OpenAs(STDERR_FILENO, streams.err, Streams::kMade);
  closefrom(STDERR_FILENO + 1);
  clearenv();
  setenv("LDB_MODULES_DISABLE_DEEPBIND", "1", 1);
  for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
  std::exit(ctl::RunProgram(arguments));
}

}  // namespace

ProgramRun RunProgram(const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& environment,
                      const std::string& input) {
  const Streams streams(input);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, streams.in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, streams.out.c_str(), Streams::kMade,
                                   Streams::kOwn);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, streams.err.c_str(), Streams::kMade,
                                   Streams::kOwn);
  std::vector<std::string> words = arguments;
  std::vector<char*> given;
  for (std::string& word : words) given.push_back(word.data());
  given.push_back(nullptr);
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  // A sanitizer cannot watch modules that the database's library binds deeply.
  variables.emplace_back("LDB_MODULES_DISABLE_DEEPBIND=1");
  std::vector<char*> surroundings;
  for (std::string& variable : variables) surroundings.push_back(variable.data());
  surroundings.push_back(nullptr);
  pid_t child = 0;
  const int failed = posix_spawn(&child, words.front().c_str(), &files, nullptr, given.data(),
                                 surroundings.data());
  posix_spawn_file_actions_destroy(&files);
  if (failed != 0) throw std::runtime_error("cannot run " + words.front());
  return streams.Await(child);
}

PeloractlTest::PeloractlTest() {
  environment = {{"HOME", file_.folder().path().string()}, {"PATH", "/usr/bin:/bin"}};
}

ProgramRun PeloractlTest::Bare(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), PELORACTL);
  return RunProgram(arguments, environment);
}

ProgramRun PeloractlTest::Ctl(std::vector<std::string> arguments, const std::string& input) const {
  arguments.insert(arguments.begin(), {"--directory", File("company.ldb")});
  return RunCopy(arguments, environment, input);
}

nlohmann::json PeloractlTest::Fields(const std::string& object) const {
  const ProgramRun run = Ctl({"show", "--json", object});
  EXPECT_EQ(run.code, 0) << run.errors;
  return nlohmann::json::parse(run.output).at("fields");
}

std::string PeloractlTest::Stored(const std::string& dn, const std::string& attribute) const {
  std::unique_ptr<ldap::IDirectoryStore> store;
  const ldap::StoreStatus opened = ldap::OpenLdbStore(File("company.ldb"), {}, store);
  if (!opened.Ok()) throw std::runtime_error(opened.text);
  ldap::Entry entry;
  const ldap::StoreStatus read = store->Read(dn, {}, entry);
  if (!read.Ok()) return "no such object";
  std::vector<std::string> values = entry.attributes[attribute];
  std::ranges::sort(values);
  std::string text;
  for (const std::string& value : values) text += (text.empty() ? "" : "\n") + value;
  return text;
}

std::string PeloractlTest::Dump() const {
  const ProgramRun run = RunProgram({"/usr/bin/ldbsearch", "-H", File("company.ldb"), "--sorted"},
                                    {{"PATH", "/usr/bin:/bin"}});
  EXPECT_EQ(run.code, 0) << run.errors;
  return run.output;
}

std::string PeloractlTest::Write(const std::string& name, const std::string& text) const {
  std::ofstream(File(name), std::ios::binary) << text;
  return File(name);
}

std::string PeloractlTest::Read(const std::string& path) { return ReadFile(path); }

}  // namespace pelora::testing
