// SPDX-License-Identifier: Apache-2.0
// The built command line in the middle of many objects, when the server goes away.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

#include "hosts/ldap/file_descriptor.h"
#include "tests/lab/peloractl_lab.h"

namespace pelora::lab {
namespace {

using ::testing::HasSubstr;

constexpr int kObjects = 1000;
/// How many results are there when the connection goes: in the middle of those that are written
/// after one reading, so that a change is under way, and no reading.
constexpr std::ptrdiff_t kDoneBefore = 300;

class LostConnection : public LabPeloractl {
 protected:
  LostConnection() {
    for (int number = 0; number < kObjects; ++number) {
      administrator_.Add(NameOf(number), {{"objectClass", {"contact"}}, {"peloraAccount", {"1"}}});
    }
  }

  [[nodiscard]] std::string NameOf(int number) const {
    return "CN=Many " + std::to_string(number) + "," + container_;
  }
  /// A table that gives the field to every object.
  [[nodiscard]] std::string Table() const {
    std::string path = folder_.File("table.csv");
    std::ofstream file(path);
    file << "dn,peloraHidden\n";
    for (int number = 0; number < kObjects; ++number) {
      file << '"' << NameOf(number) << "\",yes\n";
    }
    return path;
  }
  /// Applies a table through a relay, and does something when the first results are there. They are
  /// read from a pipe that holds few of them: meanwhile the program does not get any further.
  [[nodiscard]] ProgramRun Apply(const std::string& table, TcpRelay& relay,
                                 const std::function<void()>& in_the_middle) const {
    const std::string pipe = folder_.File("pipe");
    if (mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR) != 0) throw std::runtime_error("no pipe");
    // With a writer of our own it never ends, whenever the program opens it.
    const ldap::FileDescriptor end(open(pipe.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    constexpr int kLeast = 4096;
    if (!end || fcntl(end.get(), F_SETPIPE_SZ, kLeast) < 0) throw std::runtime_error("no pipe");
    std::atomic<bool> has_ended = false;
    std::thread reader([&] {
      std::ofstream report(folder_.File("report"), std::ios::binary | std::ios::trunc);
      bool is_before = true;
      for (std::ptrdiff_t lines = 0;;) {
        const bool is_last = has_ended;
        const std::string bytes = Next(end);
        if (bytes.empty() && is_last) return;
        report << bytes;
        lines += std::ranges::count(bytes, '\n');
        if (is_before && lines >= kDoneBefore) {
          is_before = false;
          in_the_middle();
        }
      }
    });
    const std::string server = Server() + ":" + std::to_string(relay.port());
    ProgramRun run = CtlOn(server, "apply '" + table + "' --report '" + pipe + "'");
    has_ended = true;
    reader.join();
    return run;
  }
  /// What is in a pipe, at most a few lines, after waiting a moment for it; may be nothing.
  [[nodiscard]] static std::string Next(const ldap::FileDescriptor& end) {
    pollfd watched{.fd = end.get(), .events = POLLIN, .revents = 0};
    poll(&watched, 1, 20);
    std::string bytes(1024, '\0');
    const ssize_t size = read(end.get(), bytes.data(), bytes.size());
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
  }
  /// What the report says, by result, and whether it is so.
  [[nodiscard]] std::map<std::string, int> Judged() const {
    std::map<std::string, int> counts;
    const std::string hidden = Ctl("list contact --all --json --columns dn --base " +
                                   Quoted(container_) + " --filter '(peloraHidden=1)'")
                                   .output;
    std::istringstream report(Contents(folder_.File("report")));
    int number = 0;
    for (std::string line; std::getline(report, line); ++number) {
      const auto result = nlohmann::json::parse(line);
      EXPECT_EQ(result.at("dn"), NameOf(number));
      const std::string word = result.at("result");
      ++counts[word];
      const bool is_so = hidden.find("\"" + NameOf(number) + "\"") != std::string::npos;
      EXPECT_TRUE(word == "unknown" || is_so == (word == "changed")) << line;
    }
    EXPECT_EQ(number, kObjects);
    return counts;
  }
};

TEST_F(LostConnection, IsMadeAnewAndWhatWasUnderWayIsUnknownUntilItIsRetried) {
  TcpRelay relay(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(table, relay, [&] { relay.CutAtNextAnswer(); });
  ASSERT_EQ(run.code, 1) << run.errors;
  EXPECT_EQ(relay.connections(), 2);
  const std::map<std::string, int> counts = Judged();
  ASSERT_EQ(counts.size(), 2U) << ::testing::PrintToString(counts);
  EXPECT_GT(counts.at("unknown"), 0);
  EXPECT_LE(counts.at("unknown"), 64);
  EXPECT_GT(counts.at("changed"), kDoneBefore);

  const ProgramRun retried = Ctl("apply '" + table + "' --retry '" + folder_.File("report") + "'");
  EXPECT_EQ(retried.code, 0) << retried.errors;
  EXPECT_EQ(std::count(retried.output.begin(), retried.output.end(), '\n'), counts.at("unknown"));
  EXPECT_EQ(Ctl("list contact --all --csv --base " + Quoted(container_) +
                " --filter '(!(peloraHidden=1))'")
                .output.find("Many"),
            std::string::npos);
}

TEST_F(LostConnection, EndsTheRunWhenThereIsNoOtherAndARetryDoesTheRest) {
  TcpRelay relay(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(table, relay, [&] { relay.GoAtNextAnswer(); });
  ASSERT_EQ(run.code, 1) << run.errors;
  std::map<std::string, int> counts = Judged();
  SCOPED_TRACE(::testing::PrintToString(counts));
  EXPECT_GT(counts["unknown"], 0);
  EXPECT_EQ(counts["failed"], 1);
  EXPECT_GT(counts["skipped"], 0);
  EXPECT_THAT(run.errors, HasSubstr(std::to_string(counts["skipped"]) + " skipped\n"));

  const ProgramRun retried = Ctl("apply '" + table + "' --retry '" + folder_.File("report") + "'");
  EXPECT_EQ(retried.code, 0) << retried.errors;
  EXPECT_EQ(std::count(retried.output.begin(), retried.output.end(), '\n'),
            kObjects - counts["changed"]);
}

}  // namespace
}  // namespace pelora::lab
