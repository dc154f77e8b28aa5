// SPDX-License-Identifier: Apache-2.0
// Measures how users are added to a directory file, against `ldbadd` on a file with the index that
// earlier versions gave their files, and prints a table of limits.
//
//   add_bench FOLDER [--long]
//
// In FOLDER files are made and removed. 1,000 and 10,000 users are added, with --long 100,000 too.
// The exit code is 1 when a limit is exceeded.
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/child_usage.h"

namespace pelora::lab {
namespace {

constexpr const char* kUnit = "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
/// Beside the tool on a file of an earlier version.
constexpr double kMostOfTool = 0.5;
/// Ten times as many, in terms of what a tenth of them takes.
constexpr double kTenTimes = 10.2;
constexpr int kUsers = 10'000;
/// Of which the middle one counts.
constexpr int kRounds = 3;

/// What earlier versions indexed.
constexpr const char* kEarlierIndex =
    "dn: @INDEXLIST\nchangetype: modify\nreplace: @IDXATTR\n"
    "@IDXATTR: objectClass\n@IDXATTR: cn\n@IDXATTR: ou\n@IDXATTR: name\n@IDXATTR: displayName\n"
    "@IDXATTR: sAMAccountName\n@IDXATTR: userPrincipalName\n@IDXATTR: mail\n"
    "@IDXATTR: lDAPDisplayName\n@IDXATTR: peloraAccount\n-\n";

std::string NameOf(int number) { return "Person " + std::to_string(number); }
std::string LogonOf(int number) { return "p" + std::to_string(number); }

/// As many users as records, for the tool and for a whole file.
std::string LdifOf(int users) {
  std::string ldif;
  for (int number = 0; number < users; ++number) {
    const std::string name = NameOf(number);
    const std::string logon = LogonOf(number);
    ldif += "\ndn: CN=" + name + "," + kUnit + "\nobjectClass: top\nobjectClass: person\n" +
            "objectClass: organizationalPerson\nobjectClass: user\ncn: " + name +
            "\nname: " + name + "\ndisplayName: " + name + "\nsAMAccountName: " + logon +
            "\nmail: " + logon + "@linden-werke.example\npeloraAccount: 1\n" +
            "peloraUserServer: mail01\n";
  }
  return ldif;
}

ldap::Entry UserOf(int number) {
  const std::string name = NameOf(number);
  const std::string logon = LogonOf(number);
  return {.dn = "CN=" + name + "," + kUnit,
          .attributes = {{"objectClass", {"user"}},
                         {"displayName", {name}},
                         {"sAMAccountName", {logon}},
                         {"mail", {logon + "@linden-werke.example"}},
                         {"peloraAccount", {"1"}},
                         {"peloraUserServer", {"mail01"}}}};
}

void Check(const ldap::StoreStatus& status) {
  if (!status.Ok()) throw std::runtime_error(status.text);
}

double CpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

class Bench {
 public:
  explicit Bench(std::string folder) : folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
  }

  /// Processor time of the tool on a file with the sample company and the earlier index.
  double ByTool(int users) {
    const std::string file = Anew();
    Write("index.ldif", kEarlierIndex);
    RunTool("ldbmodify -H '" + file + "' '" + folder_ + "/index.ldif' > /dev/null");
    const std::string ldif = Write("users.ldif", LdifOf(users));
    const ChildUsage usage = UsageOf({"ldbadd", "-H", file, ldif});
    if (usage.exit_code != 0) throw std::runtime_error("ldbadd failed");
    return usage.cpu_seconds;
  }
  /// The same of a whole file, made by us.
  double AsAWhole(int users) {
    const std::string file = folder_ + "/whole.ldb";
    std::filesystem::remove(file);
    const std::string ldif = std::string(ldap::SampleCompanyLdif()) + LdifOf(users);
    const double before = CpuSeconds();
    Check(ldap::CreateLdbDirectory(file, ldif));
    return CpuSeconds() - before;
  }
  /// One after the other, each on the disk before the next. What the last tenth takes, and all.
  std::array<double, 2> OneByOne(int users) {
    std::unique_ptr<ldap::IDirectoryStore> store;
    Check(ldap::OpenLdbStore(Anew(), {}, store));
    const double before = CpuSeconds();
    double at_last_tenth = 0;
    for (int number = 0; number < users; ++number) {
      if (number == users - users / 10) at_last_tenth = CpuSeconds();
      Check(store->Add(UserOf(number)));
    }
    const double after = CpuSeconds();
    return {after - at_last_tenth, after - before};
  }

 private:
  std::string Anew() {
    const std::string file = folder_ + "/added.ldb";
    std::filesystem::remove(file);
    Check(ldap::CreateLdbDirectory(file, ldap::SampleCompanyLdif()));
    return file;
  }
  std::string Write(const std::string& name, const std::string& text) const {
    const std::string path = folder_ + "/" + name;
    std::ofstream(path) << text;
    return path;
  }

  std::string folder_;
};

std::string Users(int count) { return std::to_string(count) + " users"; }

int Run(const std::string& folder, bool is_long) {
  Bench bench(folder);
  BenchTable table;
  const double tool = bench.ByTool(kUsers);
  const std::string against = "ldbadd, file of before, CPU";
  // The tenth is over in a moment, in which anything else that the machine does is much.
  std::vector<double> tenths;
  std::vector<double> wholes;
  for (int round = 0; round < kRounds; ++round) {
    for (int turn = 0; turn < kRounds; ++turn) tenths.push_back(bench.AsAWhole(kUsers / 10));
    wholes.push_back(bench.AsAWhole(kUsers));
  }
  double of_tenth = MedianOf(tenths);
  double whole = MedianOf(wholes);
  table.Add("a file with " + Users(kUsers) + " more, CPU", whole, against, tool, kMostOfTool);
  table.Add("the same", whole, "a tenth of them", of_tenth, kTenTimes);
  for (int users = kUsers / 10; users <= kUsers; users *= 10) {
    const auto [last, all] = bench.OneByOne(users);
    table.AddBeside("one by one, CPU: " + Users(users), all, "last tenth of them", last);
  }
  if (is_long) {
    of_tenth = whole;
    whole = bench.AsAWhole(kUsers * 10);
    table.Add("a file with " + Users(kUsers * 10) + " more, CPU", whole, "a tenth of them",
              of_tenth, kTenTimes);
  }
  return table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: add_bench FOLDER [--long]" << std::endl;
    return 2;
  }
  try {
    return pelora::lab::Run(argv[1], argc > 2);
  } catch (const std::exception& failure) {
    std::cerr << "add_bench: " << failure.what() << std::endl;
    return 2;
  }
}
