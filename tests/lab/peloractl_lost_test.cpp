// SPDX-License-Identifier: Apache-2.0
// The built command line in the middle of many objects, when the server goes away or the ticket
// ends.
#include <filesystem>

#include "tests/lab/peloractl_bulk.h"

namespace pelora::lab {
namespace {

using ::testing::HasSubstr;

class LostConnection : public BulkPeloractl {
 protected:
  [[nodiscard]] static std::string Through(const TcpRelay& relay) {
    return Server() + ":" + std::to_string(relay.port());
  }
};

TEST_F(LostConnection, IsMadeAnewAndWhatWasUnderWayIsUnknownUntilItIsRetried) {
  TcpRelay relay(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(table, Through(relay), [&] { relay.CutAtNextAnswer(); });
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
  const ProgramRun run = Apply(table, Through(relay), [&] { relay.GoAtNextAnswer(); });
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

TEST_F(LostConnection, ATicketThatEndsInTheMiddleIsToldAndARenewedOneGoesOn) {
  // Another cache of the same person's, in which the ticket ends as the test says.
  constexpr const char* kEnding = "ending";
  const auto get_ticket = [](const std::string& cache, const std::string& life) {
    static_cast<void>(
        OutputOf("echo Lab-Passw0rd | kinit -l " + life + " -c '" + cache + "' administrator"));
  };
  const std::string ended = "FILE:" + Home() + "/ended";
  get_ticket(ended, "1s");
  static_cast<void>(OutputOf("while klist -s -c " + ended + "; do sleep 0.1; done"));
  get_ticket(TicketsOf(kEnding), "10m");
  TcpRelay relay(ldap::kDirectoryPort);
  const std::string table = Table();
  const ProgramRun run = Apply(
      table, Through(relay),
      [&] {
        const auto path = [](const std::string& cache) { return cache.substr(5); };
        std::filesystem::rename(path(ended), path(TicketsOf(kEnding)));
        relay.CutAtNextAnswer();
      },
      kEnding);
  EXPECT_EQ(run.code, 1) << run.errors;
  std::map<std::string, int> counts = Judged();
  SCOPED_TRACE(::testing::PrintToString(counts));
  EXPECT_GT(counts["unknown"], 0);
  EXPECT_GT(counts["skipped"], 0);
  EXPECT_EQ(counts["failed"], 1);
  EXPECT_THAT(Contents(folder_.File("report")), HasSubstr("the Kerberos ticket has expired"));

  get_ticket(TicketsOf(kEnding), "10m");
  const ProgramRun retried =
      CtlOn(Server(), "apply '" + table + "' --retry '" + folder_.File("report") + "'", kEnding);
  EXPECT_EQ(retried.code, 0) << retried.errors;
  EXPECT_EQ(std::count(retried.output.begin(), retried.output.end(), '\n'),
            kObjects - counts["changed"]);
}

}  // namespace
}  // namespace pelora::lab
