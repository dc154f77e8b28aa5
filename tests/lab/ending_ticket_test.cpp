// SPDX-License-Identifier: Apache-2.0
// A Kerberos ticket that ends by itself while a thousand objects are changed. The server ends the
// connection then.
#include <algorithm>
#include <filesystem>
#include <iostream>

#include "tests/lab/peloractl_bulk.h"

namespace pelora::lab {
namespace {

using ::testing::HasSubstr;

constexpr const char* kShort = "short";

void GetTicket(const std::string& life) {
  static_cast<void>(OutputOf("echo Lab-Passw0rd | kinit -l " + life + " -c '" + TicketsOf(kShort) +
                             "' administrator"));
}

class EndingTicket : public BulkPeloractl {};

TEST_F(EndingTicket, InTheMiddleOfAThousandChangesIsToldAndARenewedOneGoesOn) {
  const std::string table = Table();
  ProgramRun run;
  bool is_in_the_middle = false;
  // With a ticket that ends within two minutes nobody is let in. A busy machine gets more.
  for (int life = 130; !is_in_the_middle && life < 300; life += 60) {
    GetTicket(std::to_string(life) + "s");
    std::filesystem::remove(folder_.File("pipe"));
    run = Apply(
        table, Server(),
        [&is_in_the_middle] {
          is_in_the_middle = true;
          static_cast<void>(
              OutputOf("while klist -s -c '" + TicketsOf(kShort) + "'; do sleep 0.1; done"));
        },
        kShort);
  }
  std::map<std::string, int> counts = Judged();
  SCOPED_TRACE(::testing::PrintToString(counts));
  ASSERT_TRUE(is_in_the_middle) << run.errors;
  EXPECT_EQ(run.code, 1) << run.errors;
  EXPECT_GT(counts["skipped"], 0);
  EXPECT_EQ(counts["failed"], 1);
  EXPECT_THAT(Contents(folder_.File("report")), HasSubstr("the Kerberos ticket has expired"));
  std::cout << "a ticket that ends: " << counts["changed"] << " changed, " << counts["unknown"]
            << " unknown, " << counts["skipped"] << " skipped" << std::endl;

  GetTicket("10m");
  const ProgramRun retried =
      CtlOn(Server(), "apply '" + table + "' --retry '" + folder_.File("report") + "'", kShort);
  EXPECT_EQ(retried.code, 0) << retried.errors;
  EXPECT_EQ(std::count(retried.output.begin(), retried.output.end(), '\n'),
            kObjects - counts["changed"]);
  EXPECT_EQ(Ctl("list contact --all --csv --base " + Quoted(container_) +
                " --filter '(!(peloraHidden=1))'")
                .output.find("Many"),
            std::string::npos);
}

}  // namespace
}  // namespace pelora::lab
