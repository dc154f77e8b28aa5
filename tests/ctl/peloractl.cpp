// SPDX-License-Identifier: Apache-2.0
#include "tests/ctl/peloractl.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "hosts/ldap/ldb_store.h"

namespace pelora::testing {

std::vector<std::string> ProgramRun::Lines() const {
  std::vector<std::string> lines;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

ProgramRun RunProgram(const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& environment,
                      const std::string& input) {
  const TemporaryFolder folder;
  const std::string in = folder.File("in");
  const std::string out = folder.File("out");
  const std::string err = folder.File("err");
  std::ofstream(in, std::ios::binary) << input;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  constexpr int kMade = O_WRONLY | O_CREAT;
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), kMade, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), kMade, 0600);
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
  int status = 0;
  waitpid(child, &status, 0);
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return {.code = code, .output = ReadFile(out), .errors = ReadFile(err)};
}

PeloractlTest::PeloractlTest() {
  environment = {{"HOME", file_.folder().path().string()}, {"PATH", "/usr/bin:/bin"}};
}

ProgramRun PeloractlTest::Bare(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), PELORACTL);
  return RunProgram(arguments, environment);
}

ProgramRun PeloractlTest::Ctl(std::vector<std::string> arguments, const std::string& input) const {
  arguments.insert(arguments.begin(), {PELORACTL, "--directory", File("company.ldb")});
  return RunProgram(arguments, environment, input);
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
