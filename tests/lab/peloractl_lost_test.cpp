// SPDX-License-Identifier: Apache-2.0
// The built command line in the middle of many objects, when the server goes away.
#include <atomic>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/lab/peloractl_lab.h"

namespace pelora::lab {
namespace {

using ::testing::HasSubstr;

constexpr int kObjects = 1000;
/// How many results are there when the connection goes.
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
  [[nodiscard]] static std::ptrdiff_t LinesOf(const std::string& path) {
    const std::string text = Contents(path);
    return std::count(text.begin(), text.end(), '\n');
  }
  /// Applies a table through a relay, and does something when the first results are there.
  [[nodiscard]] ProgramRun Apply(const std::string& table, std::unique_ptr<TcpRelay>& relay,
                                 const std::function<void()>& in_the_middle) const {
    const std::string server = Server() + ":" + std::to_string(relay->port());
    const std::string report = folder_.File("report");
    // A run that ends before that has no middle, and says itself what became of it.
    std::atomic<bool> has_ended = false;
    std::thread other([&] {
      while (!has_ended && LinesOf(report) < kDoneBefore) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
      }
      if (!has_ended) in_the_middle();
    });
    std::ofstream(report, std::ios::trunc).close();
    ProgramRun run = CtlOn(server, "apply '" + table + "' --report '" + report + "'");
    has_ended = true;
    other.join();
    return run;
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
  auto relay = std::make_unique<TcpRelay>(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(table, relay, [&] { relay->Cut(); });
  EXPECT_EQ(run.code, 1) << run.errors;
  EXPECT_EQ(relay->connections(), 2);
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
  auto relay = std::make_unique<TcpRelay>(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(table, relay, [&] { relay.reset(); });
  EXPECT_EQ(run.code, 1) << run.errors;
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
