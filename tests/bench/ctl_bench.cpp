// SPDX-License-Identifier: Apache-2.0
// Measures the command line against the tools that one would take instead, in one run and on one
// machine, and prints the ratios. Runs in the lab (run_ctl_bench.sh).
//
//   ctl_bench PELORACTL CONTAINER LARGE-CONTAINER FOLDER
//
// CONTAINER is an organizational unit with some users right below it, LARGE-CONTAINER one with ten
// times as many. In FOLDER a large directory file is made, and kept for the next time. The exit
// code is 1 when a ratio exceeds its limit.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/child_usage.h"
#include "tests/bench/counted_run.h"
#include "tests/bench/server_clock.h"
#include "tests/lab/tcp_relay.h"

namespace pelora::lab {
namespace {

constexpr auto kDelay = std::chrono::milliseconds(5);
constexpr std::uint16_t kDirectoryPort = 389;
constexpr int kUsersOfFile = 10'000;
constexpr int kRowsOfLargeTable = 100'000;
constexpr int kRoundsOfApply = 5;
/// Of what stands in the table to compare.
constexpr double kNoLimit = 0;

/// What the columns of the list need, and what the rules of the check look at.
constexpr const char* kListed =
    "objectClass name mail peloraAdmin peloraSharedStoreOnly peloraResourceType peloraUserServer "
    "peloraQuotaHard";
constexpr const char* kChecked =
    "objectClass mail otherMailbox peloraAccount peloraAdmin peloraSharedStoreOnly "
    "peloraResourceType peloraUserServer peloraCompanyServer peloraUserArchiveServers "
    "peloraSendAsPrivilege peloraSystemAdmin peloraViewPrivilege peloraAdminPrivilege "
    "peloraQuotaUserWarningRecipients peloraQuotaCompanyWarningRecipients peloraQuotaOverride "
    "peloraQuotaWarn peloraQuotaSoft peloraQuotaHard peloraUserDefaultQuotaOverride "
    "peloraUserDefaultQuotaWarn peloraUserDefaultQuotaSoft peloraUserDefaultQuotaHard peloraFilter "
    "peloraBase peloraEnabledFeatures peloraDisabledFeatures peloraHostAddress peloraFilePath "
    "peloraHttpPort peloraSslPort peloraHidden peloraResourceCapacity peloraContainsPublic";

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

/// A user of the directory file that is measured on.
std::string UserName(int number) {
  return "CN=User " + std::to_string(number) +
         ",OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
}

/// The sample company with many more users, made when it is not there yet.
std::string LargeFile(const std::string& folder) {
  const std::string path = folder + "/company-" + std::to_string(kUsersOfFile) + ".ldb";
  if (std::filesystem::exists(path)) return path;
  std::string ldif(ldap::SampleCompanyLdif());
  for (int number = 0; number < kUsersOfFile; ++number) {
    const std::string name = "u" + std::to_string(number);
    ldif += "\ndn: " + UserName(number) +
            "\nobjectClass: top\nobjectClass: person\nobjectClass: organizationalPerson\n"
            "objectClass: user\nsAMAccountName: " +
            name + "\nmail: " + name +
            "@linden-werke.example\npeloraAccount: 1\npeloraUserServer: mail01\n"
            "peloraQuotaOverride: 1\npeloraQuotaHard: 100\n";
  }
  std::cerr << "making " << path << " once" << std::endl;
  const ldap::StoreStatus made = ldap::CreateLdbDirectory(path, ldif);
  if (!made.Ok()) throw std::runtime_error(made.text);
  return path;
}

/// What several runs of one program took.
class Runs {
 public:
  void Do(const std::vector<std::string>& command) {
    const ChildUsage usage = UsageOf(command);
    if (usage.exit_code != 0) throw std::runtime_error("failed: " + command.front());
    seconds_.push_back(usage.seconds);
    cpu_.push_back(usage.cpu_seconds);
  }
  /// The same of a command for the shell, and of the server's processor time.
  void DoBesideServer(const std::string& command) {
    const double before = ServerSeconds();
    seconds_.push_back(SecondsOf([&command] { RunTool(command); }));
    cpu_.push_back(ServerSeconds() - before);
  }
  [[nodiscard]] double Seconds() const { return MedianOf(seconds_); }
  [[nodiscard]] double Cpu() const { return MedianOf(cpu_); }

 private:
  std::vector<double> seconds_;
  std::vector<double> cpu_;
};

class Bench {
 public:
  Bench(std::string program, std::string folder)
      : program_(std::move(program)), folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
  }

  /// Changes users there and back, the tool and the program in turn, so that each writes something
  /// else than what is there.
  void Set(const std::string& container, BenchTable& table) {
    MeasureSet(container, Server(), 5, "set on 1,000 users", 1.05, table);
  }

  void SetFromAfar(const std::string& container, BenchTable& table) {
    TcpRelay relay(kDirectoryPort);
    const std::string server = Server() + ":" + std::to_string(relay.port());
    relay.SetDelay(kDelay);
    MeasureSet(container, server, 3, "set on 1,000 users 5 ms away", 0.25, table);
    // What the way itself takes.
    relay.SetDelay(std::chrono::milliseconds(0));
    MeasureSet(container, server, 3, "the same way without the delay", kNoLimit, table);
  }

  void List(const std::string& container, BenchTable& table) {
    const Command ours = [&](const std::string& server) {
      return Program(server) + " list user --csv --all --base " + Quoted(container) +
             " > /dev/null";
    };
    Search("list --csv of 10,000 users", ours, container, kListed, 1.1, table);
  }

  void Check(const std::string& container, BenchTable& table) {
    // It finds things, which is an exit code of its own.
    const Command ours = [&](const std::string& server) {
      return Program(server) + " check --base " + Quoted(container) + " > /dev/null || test $? = 1";
    };
    Search("check of 10,000 users", ours, container, kChecked, 1.3, table);
  }

  void Apply(BenchTable& table) {
    const std::string original = LargeFile(folder_);
    const std::string file = folder_ + "/measured.ldb";
    const std::string rows = WriteRows(kUsersOfFile, "rows.csv");
    const std::string ldif = folder_ + "/rows.ldif";
    RunTool(OnFile(original) + " apply " + Quoted(rows) + " --dry-run > " + Quoted(ldif) +
            " 2> /dev/null");
    const auto anew = [&] {
      std::filesystem::copy_file(original, file, std::filesystem::copy_options::overwrite_existing);
    };
    // They take turns: what else the machine does falls on all of them.
    Runs ours;
    Runs theirs;
    Runs mapped;
    Runs unmapped;
    for (int round = 0; round < kRoundsOfApply; ++round) {
      anew();
      ours.Do({program_, "--directory", file, "apply", rows, "--quiet"});
      anew();
      theirs.Do({"ldbmodify", "-H", file, ldif});
      anew();
      mapped.Do({GUARDED_LDB, file, rows});
      anew();
      unmapped.Do({GUARDED_LDB, file, rows, "unmapped"});
    }
    const std::string tool = "ldbmodify, as many";
    table.Add("apply of 10,000 rows on a file", ours.Seconds(), tool, theirs.Seconds(), 1.5);
    table.AddBeside("the same, CPU", ours.Cpu(), tool, theirs.Cpu());
    anew();
    const Counts of_ours = CountsOf(OnFile(file) + " apply " + Quoted(rows) + " > /dev/null 2>&1");
    anew();
    table.AddCounts(of_ours,
                    CountsOf("ldbmodify -H " + Quoted(file) + " " + Quoted(ldif) + " > /dev/null"));
    table.AddBeside("a guarded program", mapped.Seconds(), tool, theirs.Seconds());
    table.AddBeside("the same, CPU", mapped.Cpu(), tool, theirs.Cpu());
    table.AddBeside("a guarded program, file not mapped", unmapped.Seconds(), tool,
                    theirs.Seconds());
    table.AddBeside("the same, CPU", unmapped.Cpu(), tool, theirs.Cpu());
    table.AddBeside("apply", ours.Seconds(), "the guarded program", mapped.Seconds());
    table.Explain("ldbmodify reads no object before it writes, and maps the file into its memory.");
    table.Explain(
        "The guarded programs read, compare and write by the same library, and do nothing");
    table.Explain(
        "else; apply maps the file as the first of them does. What it takes beyond that is");
    table.Explain("each object's tab in memory: opened, filled, edited, validated and collected.");
  }

  void Show(BenchTable& table) {
    const std::string file = folder_ + "/sample.ldb";
    std::filesystem::remove(file);
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(file, ldap::SampleCompanyLdif());
    if (!made.Ok()) throw std::runtime_error(made.text);
    std::vector<double> cpu;
    for (int round = 0; round < 11; ++round) {
      const ChildUsage usage = UsageOf({program_, "--directory", file, "show", "h.oender"});
      if (usage.exit_code != 0) throw std::runtime_error("show failed");
      cpu.push_back(usage.cpu_seconds);
    }
    table.Add("show of one user, CPU", MedianOf(cpu), "at most", 0.050, 1.0);
  }

  /// The objects of most of the rows are not there: they are refused, and as many are kept.
  void ApplyLargeTable(BenchTable& table) {
    const std::string file = folder_ + "/measured.ldb";
    std::filesystem::copy_file(LargeFile(folder_), file,
                               std::filesystem::copy_options::overwrite_existing);
    const std::string rows = WriteRows(kRowsOfLargeTable, "many-rows.csv");
    const ChildUsage usage = UsageOf({program_, "--directory", file, "apply", rows});
    if (usage.exit_code != 1) throw std::runtime_error("apply ended otherwise than it should");
    table.Add("memory of apply, 100,000 rows", usage.megabytes, "at most", 200, 1.0, "MB");
  }

 private:
  [[nodiscard]] std::string Program(const std::string& server) const {
    return Quoted(program_) + " --server " + server;
  }
  [[nodiscard]] std::string OnFile(const std::string& file) const {
    return Quoted(program_) + " --directory " + Quoted(file);
  }

  /// Measures what reads, against the tool's search for the same attributes.
  static void Search(const std::string& what, const Command& ours, const std::string& base,
                     const std::string& attributes, double limit, BenchTable& table) {
    const Command theirs = [&](const std::string& server) {
      return Tool("ldapsearch", server) + "-LLL -E pr=1000/noprompt -b " + Quoted(base) +
             " '(objectClass=user)' " + attributes + " > /dev/null";
    };
    const Pair pair = MediansOf(
        5, [&] { RunTool(ours(Server())); }, [&] { RunTool(theirs(Server())); });
    table.Add(what, pair.first, "ldapsearch, as many", pair.second, limit);
    table.AddCounts(CountsOf(ours), CountsOf(theirs));
  }

  void MeasureSet(const std::string& container, const std::string& server, int rounds,
                  const std::string& what, double limit, BenchTable& table) {
    const std::string ldif = folder_ + "/set.ldif";
    const std::string objects = " set --class user --base " + Quoted(container) + " ";
    int limit_of_quota = 1000;
    const auto set = [&](const std::string& at) {
      return Program(at) + objects + "peloraQuotaHard=" + std::to_string(++limit_of_quota) +
             " --quiet > /dev/null";
    };
    // As many other changes, for the tool: it shows what the reading costs the server, too.
    const auto rehearse = [&] {
      return Program(Server()) + objects + "peloraQuotaHard=" + std::to_string(++limit_of_quota) +
             " --dry-run > " + Quoted(ldif) + " 2> /dev/null";
    };
    const Command modify = [&](const std::string& at) {
      return Tool("ldapmodify", at) + "-f " + Quoted(ldif) + " > /dev/null";
    };
    Runs ours;
    Runs theirs;
    Runs reading;
    RunTool(Program(Server()) + objects + "peloraQuotaOverride=yes peloraQuotaHard=999 --quiet" +
            " > /dev/null");
    for (int round = 0; round < rounds; ++round) {
      ours.DoBesideServer(set(server));
      reading.DoBesideServer(rehearse());
      theirs.DoBesideServer(modify(server));
    }
    const std::string tool = "ldapmodify, as many";
    if (limit > kNoLimit) {
      table.Add(what, ours.Seconds(), tool, theirs.Seconds(), limit);
    } else {
      table.AddBeside(what, ours.Seconds(), tool, theirs.Seconds());
    }
    table.AddBeside("the server's processor meanwhile", ours.Cpu(), "for the tool", theirs.Cpu());
    table.AddBeside("of that before the writes", reading.Cpu(), "for the tool", theirs.Cpu());
    const Counts of_ours = CountsOf(Command(set));
    RunTool(rehearse());
    table.AddCounts(of_ours, CountsOf(modify));
  }

  /// A table that changes a limit of each user of the large file, and of others who are not there.
  [[nodiscard]] std::string WriteRows(int count, const std::string& name) const {
    const std::string path = folder_ + "/" + name;
    std::ofstream file(path);
    file << "dn,peloraQuotaHard\r\n";
    for (int number = 0; number < count; ++number) {
      file << '"' << UserName(number) << "\"," << 200 + number % 100 << "\r\n";
    }
    return path;
  }

  std::string program_;
  std::string folder_;
};

int Run(const std::vector<std::string>& arguments) {
  Bench bench(arguments[0], arguments[3]);
  BenchTable table;
  bench.Show(table);
  bench.Apply(table);
  bench.ApplyLargeTable(table);
  bench.Set(arguments[1], table);
  bench.SetFromAfar(arguments[1], table);
  bench.List(arguments[2], table);
  bench.Check(arguments[2], table);
  return table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() != 4) {
    std::cerr << "usage: ctl_bench PELORACTL CONTAINER LARGE-CONTAINER FOLDER" << std::endl;
    return 2;
  }
  try {
    return pelora::lab::Run(arguments);
  } catch (const std::exception& error) {
    std::cerr << "ctl_bench: " << error.what() << std::endl;
    return 2;
  }
}
