// SPDX-License-Identifier: Apache-2.0
// The built command line on a domain, with the administrator's ticket and with one that may write
// nothing.
#include <cstring>
#include <nlohmann/json.hpp>

#include "tests/lab/peloractl_lab.h"

namespace pelora::lab {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST_F(LabPeloractl, SelectedUsersAreChangedAndTakenBack) {
  const std::string undo = Quoted(folder_.File("undo"));
  const ProgramRun run = Ctl("set --class user --base " + Quoted(container_) + " --undo-file " +
                             undo + " peloraHidden=yes otherMailbox+=desk@pelora.test");
  EXPECT_EQ(run.code, 0) << run.output << run.errors;
  EXPECT_EQ(run.errors, "2 changed, 0 unchanged, 0 refused, 0 failed, 0 unknown, 0 skipped\n");
  for (const std::string& dn : {ada_, ben_}) {
    EXPECT_THAT(LdapSearch(dn, {"peloraHidden", "otherMailbox"}),
                ElementsAre("otherMailbox: desk@pelora.test", "peloraHidden: 1"));
  }
  const ProgramRun undone = Ctl("undo " + undo);
  EXPECT_EQ(undone.code, 0) << undone.output << undone.errors;
  EXPECT_THAT(LdapSearch(ben_, {"peloraHidden", "otherMailbox"}), ElementsAre());
}

TEST_F(LabPeloractl, ListAndShowReadWhatIsThere) {
  const ProgramRun listed = Ctl("list user --csv --base " + Quoted(container_));
  EXPECT_EQ(listed.code, 0) << listed.errors;
  EXPECT_THAT(listed.output, AllOf(StartsWith("dn,name,class,mail"), HasSubstr("Ada"),
                                   HasSubstr("Ben Önder\\, Dr.")));
  const ProgramRun shown = Ctl("show --json " + Quoted(ben_));
  EXPECT_EQ(shown.code, 0) << shown.errors;
  EXPECT_THAT(shown.output, HasSubstr("\"accountType\":\"active-user\""));
}

TEST_F(LabPeloractl, TheStatusSaysWhichServerItIsAndWhy) {
  const ProgramRun run = Ctl("status --json", kHelper);
  ASSERT_EQ(run.code, 0) << run.errors;
  const auto status = nlohmann::json::parse(run.output);
  EXPECT_EQ(status.at("server"), Server());
  EXPECT_EQ(status.at("chosen"), "it was named");
  EXPECT_EQ(status.at("site"), "Default-First-Site-Name");
  EXPECT_EQ(status.at("readOnly"), false);
  EXPECT_EQ(status.at("user"), "helper@PELORA.TEST");
  EXPECT_EQ(status.at("ticketEnd").get<std::string>().size(), std::strlen("2026-11-22T10:00:00Z"));
  EXPECT_EQ(status.at("sealedBits"), 256);
  EXPECT_TRUE(status.at("clockDifference").is_number());
  const ProgramRun found = CtlOn("", "status --site Default-First-Site-Name");
  EXPECT_EQ(found.code, 0) << found.errors;
  EXPECT_THAT(found.output, AllOf(HasSubstr("Server:        " + Server()),
                                  HasSubstr("of the site 'Default-First-Site-Name'\n"),
                                  HasSubstr("Signed in as:  administrator@PELORA.TEST\n")));
  EXPECT_EQ(CtlOn("", "status --site Nowhere").code, 3);
}

TEST_F(LabPeloractl, WhoMayNotWriteIsToldWithTheCode) {
  const ProgramRun run = Ctl("set --json " + Quoted(ada_) + " peloraHidden=yes", kHelper);
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, AllOf(HasSubstr("\"result\":\"failed\""), HasSubstr("0X80070005")));
}

TEST_F(LabPeloractl, AnUndoFileOfWhatWasNotDoneIsNotLeft) {
  const ProgramRun run =
      Ctl("set " + Quoted(ada_) + " peloraHidden=yes --undo-file " + Quoted(folder_.File("undo")),
          kHelper);
  EXPECT_THAT(run.output, StartsWith("failed\t"));
  EXPECT_FALSE(std::ifstream(folder_.File("undo")).is_open());
}

TEST_F(LabPeloractl, ADryRunIsWhatLdapmodifyApplies) {
  const ProgramRun dry = Ctl("set --dry-run " + Quoted(ada_) + " mail=new@pelora.test");
  EXPECT_EQ(dry.code, 0) << dry.errors;
  std::ofstream(folder_.File("dry.ldif"), std::ios::binary) << dry.output;
  EXPECT_NO_THROW((void)OutputOf("ldapmodify -N -Q -Y GSSAPI -H ldap://" + Server() + " -f '" +
                                 folder_.File("dry.ldif") + "'"));
  const ProgramRun run = Ctl("set " + Quoted(ada_) + " mail=new@pelora.test");
  EXPECT_THAT(run.output, StartsWith("unchanged\t"));
}

TEST_F(LabPeloractl, ADryRunNamesDeletedObjectsAsTheServerFindsThem) {
  const std::string gone = AddUser("Gone", "ctl-gone" + ada_.substr(7, 1));
  administrator_.Set(ada_, "peloraSendAsPrivilege", {ben_, gone});
  administrator_.Remove(gone);
  const std::string stored = LdapSearch(ada_, {"peloraSendAsPrivilege"}).front();
  ASSERT_THAT(stored, HasSubstr("0ADEL:"));
  const std::string name = stored.substr(stored.find(": ") + 2);
  const ProgramRun dry =
      Ctl("set --dry-run " + Quoted(ada_) + " " + Quoted("peloraSendAsPrivilege-=" + name));
  EXPECT_THAT(dry.errors, StartsWith("changed\t"));
  // In base64 as all that begins with the sign: <GUID=
  EXPECT_THAT(dry.output, HasSubstr("peloraSendAsPrivilege:: PEdVSUQ9"));
  std::ofstream(folder_.File("dry.ldif"), std::ios::binary) << dry.output;
  EXPECT_NO_THROW((void)OutputOf("ldapmodify -N -Q -Y GSSAPI -H ldap://" + Server() + " -f '" +
                                 folder_.File("dry.ldif") + "'"));
  EXPECT_THAT(LdapSearch(ada_, {"peloraSendAsPrivilege"}), ElementsAre(Not(HasSubstr("0ADEL"))));
}

TEST_F(LabPeloractl, AUserIsMadeWithAPasswordAndTakenBack) {
  const std::string undo = Quoted(folder_.File("undo"));
  std::ofstream(folder_.File("password")) << "Gr8-secret-word\n";
  const ProgramRun run =
      Ctl("new user 'Carla Ctl' --in " + Quoted(container_) +
          " sAMAccountName=ctl-carla peloraAccount=yes mail=carla@pelora.test --password-stdin "
          "--undo-file " +
          undo + " < '" + folder_.File("password") + "'");
  EXPECT_EQ(run.code, 0) << run.output << run.errors;
  const std::string dn = "CN=Carla Ctl," + container_;
  EXPECT_THAT(LdapSearch(dn, {"mail", "userAccountControl"}),
              ElementsAre("mail: carla@pelora.test", "userAccountControl: 512"));
  EXPECT_THAT(Contents(folder_.File("undo")), Not(HasSubstr("unicodePwd")));
  const ProgramRun undone = Ctl("undo " + undo);
  EXPECT_EQ(undone.code, 0) << undone.output << undone.errors;
  EXPECT_THAT(LdapSearch(container_, {"ou"}), ElementsAre(HasSubstr("Ctl")));
}

TEST_F(LabPeloractl, HostileNamesFindNothingElse) {
  for (const char* name : {"*", "ctl-ada*", "x)(objectClass=*", "\\2a", "a\\"}) {
    // In a file a name may hold what an argument would be taken for a field by.
    std::ofstream(folder_.File("names")) << name << "\n";
    const ProgramRun run = Ctl("show --from " + Quoted(folder_.File("names")));
    EXPECT_EQ(run.code, 1) << name << run.output;
    EXPECT_THAT(run.errors, HasSubstr("no such object")) << name;
  }
}

TEST_F(LabPeloractl, WithoutAHostOneOfTheTicketsDomainIsAsked) {
  for (const char* connection : {" --server", ""}) {
    const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kAdministrator));
    const std::string command = std::string(PELORACTL) + connection + " list user --csv --base " +
                                Quoted(container_) + " > '" + folder_.File("out") + "' 2> '" +
                                folder_.File("err") + "'";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << Contents(folder_.File("err"));
    EXPECT_THAT(Contents(folder_.File("out")), HasSubstr("Ben Önder\\, Dr."));
  }
}

TEST_F(LabPeloractl, AServerThatIsNotThereIsTheCodeThree) {
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kAdministrator));
  const std::string command = std::string(PELORACTL) + " --server nowhere.pelora.test list 2> '" +
                              folder_.File("err") + "'";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 3);
  EXPECT_THAT(Contents(folder_.File("err")), HasSubstr("nowhere.pelora.test"));
}

}  // namespace
}  // namespace pelora::lab
