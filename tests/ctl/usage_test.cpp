// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class UsageTest : public PeloractlTest {};

TEST_F(UsageTest, WrongArgumentsAreOneLineAndTheCodeTwo) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"frobnicate"},
      {"set"},
      {"set", "h.oender"},
      {"set", "h.oender", "peloraHidden"},
      {"set", "peloraHidden=yes"},
      {"set", "h.oender", "=yes"},
      {"set", "h.oender", "peloraNothing=1"},
      {"set", "h.oender", "givenName=Helga"},
      {"set", "h.oender", "peloraHidden=yes", "PELORAHIDDEN=no"},
      {"set", "h.oender", "otherMailbox+=a@b.c", "otherMailbox=d@e.f"},
      {"set", "h.oender", "mail+=a@b.c"},
      {"set", "--class", "nobody", "peloraHidden=yes"},
      {"set", "--filter", "(cn=a)(cn=b)", "peloraHidden=yes"},
      {"set", "--base", "OU=Nowhere,DC=linden-werke,DC=example", "peloraHidden=yes"},
      {"set", "--from", "/nowhere/names", "peloraHidden=yes"},
      {"show"},
      {"show", "h.oender", "peloraHidden=yes"},
      {"edit", "h.oender", "peloraHidden=yes"},
      {"list", "nobody"},
      {"list", "user", "contact"},
      {"list", "--columns", "dn,peloraNothing"},
      {"list", "--csv", "--json"},
      {"undo"},
      {"undo", "/nowhere/undo"},
      {"apply"},
      {"apply", "/nowhere/table.csv"},
      {"fields", "nobody"},
      {"new", "user"},
      {"new", "user", "Ada"},
      {"new", "nobody", "Ada", "--in", kUnit},
      {"new", "user", "Ada", "--in", kUnit, "peloraNothing=1"},
      {"new", "user", "Ada", "--in", kUnit, "sn=A", "SN=B"},
      {"list", "--frobnicate"},
      {"list", "--json=no"},
      {"set", "h.oender", "peloraHidden=yes", "--dry-run=false"},
      {"--sample", "list"},
      {"status", "h.oender"},
      {"status", "--site", "Here"},
  };
  const std::string before = Dump();
  for (const std::vector<std::string>& arguments : wrong) {
    const ProgramRun run = Ctl(arguments);
    SCOPED_TRACE(::testing::PrintToString(arguments));
    EXPECT_EQ(run.code, 2);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, StartsWith("peloractl: "));
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
  }
  EXPECT_EQ(Dump(), before);
}

TEST_F(UsageTest, AnEmptyValueIsNone) {
  const std::string before = Dump();
  const std::vector<std::vector<std::string>> wrong = {
      {"set", "--base", "", "peloraHidden=yes"},
      {"set", "--class", "user", "--filter", "", "peloraHidden=yes"},
      {"set", "--class=", "user", "peloraHidden=yes"},
      {"set", "--from", "", "peloraHidden=yes"},
      {"set", "--undo-file", "", "h.oender", "peloraHidden=yes"},
      {"set", "--undo-file=", "h.oender", "peloraHidden=yes"},
      {"set", "--report", "", "h.oender", "peloraHidden=yes"},
      {"new", "contact", "Ada", "--in", ""},
      {"list", "--columns", ""},
      {"check", "--rule", ""},
      {"show", "h.oender", "--server", ""},
      {"show", "h.oender", "--server="},
  };
  for (const std::vector<std::string>& arguments : wrong) {
    const ProgramRun run = Ctl(arguments);
    SCOPED_TRACE(::testing::PrintToString(arguments));
    EXPECT_EQ(run.code, 2) << run.output;
    EXPECT_THAT(run.errors, HasSubstr("the value is empty"));
  }
  environment["PELORA_DIRECTORY"] = File("company.ldb");
  EXPECT_EQ(Bare({"--directory", "", "list"}).code, 2);
  EXPECT_EQ(Dump(), before);
  // Of what is no option it is a name that nobody has.
  EXPECT_THAT(Ctl({"set", "", "peloraHidden=yes"}).output, StartsWith("refused\t\tno such object"));
}

TEST_F(UsageTest, ArgumentsAreTakenAsTheyStand) {
  ASSERT_EQ(Ctl({"new", "contact", "[Room]", "--in", kUnit}).code, 0);
  ASSERT_EQ(Ctl({"new", "contact", "{}", "--in", kUnit}).code, 0);
  for (const char* name : {"[Room]", "{}"}) {
    const ProgramRun run = Ctl({"show", "--json", name});
    EXPECT_EQ(run.code, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr(std::string("\"name\":\"") + name + "\""));
  }
  EXPECT_THAT(Ctl({"show", "[h.oender,t.richter]"}).errors,
              HasSubstr("[h.oender,t.richter]: no such object"));
  EXPECT_EQ(Ctl({"show", "h.oender", "++", "t.richter"}).code, 2);
  EXPECT_THAT(Ctl({"show", "--", "++"}).errors, HasSubstr("++: no such object"));
  EXPECT_THAT(Ctl({"check", "--rule", "[quota-order,value-range]"}).errors,
              HasSubstr("\"[quota-order,value-range]\""));
  EXPECT_THAT(Ctl({"show", "\xFF\xFE"}).errors, HasSubstr("\\xFF\\xFE: no such object"));
}

TEST_F(UsageTest, HelpAndVersionGoToTheOutput) {
  const ProgramRun help = Bare({"--help"});
  EXPECT_EQ(help.code, 0);
  EXPECT_THAT(help.output, AllOf(HasSubstr("--directory"), HasSubstr("apply"), HasSubstr("130")));
  const ProgramRun set = Bare({"set", "--help"});
  EXPECT_EQ(set.code, 0);
  EXPECT_THAT(set.output, AllOf(HasSubstr("OBJECT... FIELD=VALUE..."), HasSubstr("--undo-file")));
  const ProgramRun version = Bare({"--version"});
  EXPECT_EQ(version.code, 0);
  EXPECT_EQ(version.output, "peloractl " PELORA_VERSION "\n");
}

TEST_F(UsageTest, WithoutADirectoryOneLineNamesTheWaysToOne) {
  environment["KRB5CCNAME"] = "FILE:" + File("no-ticket");
  const ProgramRun run = Bare({"list"});
  EXPECT_EQ(run.code, 3);
  for (const char* way : {"kinit", "--server", "--directory", "--sample"}) {
    EXPECT_THAT(run.errors, HasSubstr(way));
  }
  EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
}

TEST_F(UsageTest, ADirectoryThatIsNotThereIsTheCodeThree) {
  const ProgramRun run = Bare({"--directory", File("nothing.ldb"), "list"});
  EXPECT_EQ(run.code, 3);
  EXPECT_THAT(run.errors, HasSubstr("nothing.ldb"));
}

TEST_F(UsageTest, TheEnvironmentNamesADirectory) {
  environment["PELORA_DIRECTORY"] = File("company.ldb");
  const ProgramRun run = Bare({"show", "h.oender", "--json"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("Helga"));
}

TEST_F(UsageTest, TheEnvironmentNamesAServer) {
  // That it is taken is seen by what cannot be reached.
  environment["PELORA_SERVER"] = "dc9.nowhere.invalid";
  environment["KRB5CCNAME"] = "FILE:" + File("no-ticket");
  const ProgramRun run = Bare({"list"});
  EXPECT_EQ(run.code, 3);
  EXPECT_THAT(run.errors, HasSubstr("dc9.nowhere.invalid"));
  EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
}

TEST_F(UsageTest, CommandsShareTheirOptions) {
  for (const char* command :
       {"show", "list", "set", "new", "apply", "edit", "check", "undo", "fields"}) {
    const ProgramRun help = Bare({command, "--help"});
    EXPECT_EQ(help.code, 0) << command;
    for (const char* option : {"--json", "--quiet", "--help"}) {
      EXPECT_THAT(help.output, HasSubstr(option)) << command;
    }
  }
  for (const char* command : {"set", "new", "apply", "edit", "check", "undo"}) {
    const ProgramRun help = Bare({command, "--help"});
    for (const char* option : {"--dry-run", "--undo-file", "--report", "--stop"}) {
      EXPECT_THAT(help.output, HasSubstr(option)) << command;
    }
  }
  for (const char* command : {"show", "set", "edit"}) {
    const ProgramRun help = Bare({command, "--help"});
    for (const char* option : {"--filter", "--class", "--base", "--from"}) {
      EXPECT_THAT(help.output, HasSubstr(option)) << command;
    }
  }
  EXPECT_EQ(Bare({"list", "--version"}).code, 2);
}

TEST_F(UsageTest, TheSampleCompanyIsMadeAtFirstUse) {
  environment["XDG_DATA_HOME"] = File("data");
  const ProgramRun run = Bare({"--sample", "list", "user"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("Helga Önder"));
  // As the handbook says.
  EXPECT_TRUE(std::filesystem::exists(File("data/pelora-console/sample-company.ldb")));
}

TEST_F(UsageTest, OptionsOfTheConnectionStandBeforeOrBehindTheCommand) {
  const ProgramRun run = Bare({"show", "h.oender", "--json", "--directory", File("company.ldb")});
  EXPECT_EQ(run.code, 0) << run.errors;
}

TEST_F(UsageTest, ACommandIsNeverTheHost) {
  environment["KRB5CCNAME"] = "FILE:" + File("no-ticket");
  const ProgramRun run = Bare({"--server", "list"});
  // The command was understood, and the server is what is missing.
  EXPECT_EQ(run.code, 3) << run.errors;
  EXPECT_EQ(Bare({"--server", "127.0.0.1:1"}).code, 2);
}

TEST_F(UsageTest, TheStatusNamesTheDirectory) {
  const ProgramRun run = Ctl({"status"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, AllOf(StartsWith("Directory file:  "), HasSubstr(File(""))));
  const auto status = nlohmann::json::parse(Ctl({"status", "--json"}).output);
  EXPECT_THAT(status.at("directory").get<std::string>(), StartsWith(File("")));
  EXPECT_TRUE(status.at("server").is_null());
  EXPECT_EQ(Ctl({"status"}).errors, "");
}

TEST_F(UsageTest, ASiteIsForAServerThatIsFound) {
  environment["KRB5CCNAME"] = "FILE:" + File("no-ticket");
  EXPECT_EQ(Bare({"--site", "Here", "status"}).code, 3);
  EXPECT_EQ(Bare({"--server", "--site", "Here", "status"}).code, 3);
  const std::vector<std::vector<std::string>> wrong = {
      {"--server", "dc1.x.test", "--site", "Here", "status"},
      {"--sample", "--site", "Here", "status"},
      {"--directory", "x.ldb", "--site", "Here", "status"},
      {"--site", "", "status"}};
  for (const std::vector<std::string>& arguments : wrong) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    EXPECT_EQ(Bare(arguments).code, 2);
  }
}

TEST_F(UsageTest, BehindTwoHyphensStandNoOptions) {
  const ProgramRun run = Ctl({"show", "--json", "--", "--help"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.errors, HasSubstr("--help: no such object"));
}

TEST_F(UsageTest, FieldsAreListedWithoutADirectory) {
  const ProgramRun run = Bare({"fields", "--json"});
  EXPECT_EQ(run.code, 0) << run.errors;
  bool has_limit = false;
  for (const std::string& line : run.Lines()) {
    const auto field = nlohmann::json::parse(line);
    if (field.at("name") != "peloraQuotaHard") continue;
    has_limit = true;
    EXPECT_EQ(field.at("label"), "Hard limit");
    EXPECT_EQ(field.at("kind"), "number");
    EXPECT_EQ(field.at("classes"), nlohmann::json::array({"user"}));
  }
  EXPECT_TRUE(has_limit);
  EXPECT_THAT(Bare({"fields", "server"}).output, HasSubstr("peloraHttpPort"));
  EXPECT_EQ(Bare({"fields", "server"}).output.find("peloraQuotaHard"), std::string::npos);
}

}  // namespace
}  // namespace pelora::testing
