// SPDX-License-Identifier: Apache-2.0
// pelora-deploy against a domain: what it enters, that it enters it once, and that it takes it
// back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/network/network_session.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "tests/lab/lab.h"

namespace pelora::lab {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

using ::testing::Not;

/// How a run of pelora-deploy ended, and what it printed.
struct Outcome {
  int code = 0;
  std::string output;
};

Outcome Deploy(const std::string& arguments) {
  const std::string command = std::string(std::getenv("PELORA_DEPLOY")) + " " + arguments + " 2>&1";
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  Outcome run;
  for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
    run.output += static_cast<char>(letter);
  }
  run.code = WEXITSTATUS(pclose(pipe));
  return run;
}

Outcome DeployHere(const std::string& command) {
  return Deploy("--server " + Server() + " " + command);
}

std::string SpecifierOf(const std::string& object_class, const std::string& language = "409") {
  return "CN=" + object_class + "-Display,CN=" + language +
         ",CN=DisplaySpecifiers,CN=Configuration," + Base();
}

const std::vector<std::string> kAttributes = {"adminPropertyPages", "adminMultiselectPropertyPages",
                                              "creationWizard", "createWizardExt"};

std::vector<std::string> ValuesOf(const std::string& object_class) {
  return LdapSearch(SpecifierOf(object_class), kAttributes);
}

/// Everything that all display specifiers say of tabs and wizards.
std::string AllSpecifiers() {
  std::string attributes;
  for (const std::string& attribute : kAttributes) attributes += " " + attribute;
  return OutputOf("KRB5CCNAME=" + TicketsOf(kAdministrator) +
                  " ldapsearch -N -Q -LLL -o ldif-wrap=no -E pr=500/noprompt -Y GSSAPI"
                  " -H ldap://" +
                  Server() + " -b 'CN=DisplaySpecifiers,CN=Configuration," + Base() +
                  "' '(objectClass=displaySpecifier)'" + attributes + " | sort");
}

std::string IdOf(const char* name) { return GuidText(FindClass(name)->class_id); }

/// Behind the five tabs of the console's own, and behind what a class without a value of its own
/// falls back on for several objects.
void ExpectContactsTabs(const std::vector<std::string>& before) {
  std::vector<std::string> added = ValuesOf("contact");
  for (const std::string& line : before) {
    EXPECT_THAT(added, Contains(line));
    std::erase(added, line);
  }
  const std::string tab = IdOf("CPropPageContact");
  std::string fallback = ValuesOf("default").front();
  for (const std::string& line : ValuesOf("default")) {
    if (line.starts_with("adminMultiselectPropertyPages: ")) fallback = line;
  }
  EXPECT_THAT(added,
              ::testing::UnorderedElementsAre("adminPropertyPages: 6," + tab, fallback,
                                              "adminMultiselectPropertyPages: 2," + tab,
                                              "createWizardExt: 1," + IdOf("CWizardExtContact")));
}

void ExpectSpecifiersOfOurOwnClasses() {
  const std::vector<std::string> values = ValuesOf("peloraAddresslist");
  EXPECT_THAT(values, Contains("adminPropertyPages: 1," + IdOf("CPropPageAddresslistGeneral")));
  EXPECT_THAT(values, Contains("adminPropertyPages: 2," + IdOf("CPropPageAddresslist")));
  EXPECT_THAT(values, Contains("creationWizard: " + IdOf("CWizardAddresslist")));
  EXPECT_THAT(LdapSearch(SpecifierOf("peloraAddresslist", "407"), {"classDisplayName"}),
              Contains("classDisplayName: Address List"))
      << "in every language";
}

void ExpectThatConsolesReadThem() {
  std::unique_ptr<ldap::NetworkSession> session;
  ASSERT_TRUE(ldap::NetworkSession::Open({.server = Server()}, session).Ok());
  ldap::DisplaySpecifiers specifiers;
  ASSERT_TRUE(ldap::DisplaySpecifiers::Read(session->store(), "409", specifiers).Ok());
  for (const ConsoleRegistration& row : ConsoleRegistrations()) {
    EXPECT_EQ(specifiers.ComponentsOf(row.object_class, row.role),
              DefaultRegistrations(row.object_class, row.role))
        << row.object_class;
  }
}

// One test, since each run writes some hundred specifiers.
TEST(DeployTest, TabsAreEnteredOnceAndTakenBackWithNothingElse) {
  const std::string before = AllSpecifiers();
  const std::vector<std::string> contact = ValuesOf("contact");
  const Outcome first = DeployHere("register");
  ASSERT_EQ(first.code, 0) << first.output;
  const std::string registered = AllSpecifiers();
  EXPECT_NE(registered, before);
  ExpectContactsTabs(contact);
  ExpectSpecifiersOfOurOwnClasses();
  ExpectThatConsolesReadThem();

  const Outcome again = DeployHere("register");
  EXPECT_EQ(again.code, 0);
  EXPECT_THAT(again.output, HasSubstr("nothing was changed"));
  EXPECT_EQ(AllSpecifiers(), registered);

  EXPECT_EQ(DeployHere("unregister").code, 0);
  EXPECT_EQ(AllSpecifiers(), before);
  EXPECT_THAT(DeployHere("unregister").output, HasSubstr("nothing was changed"));
}

TEST(DeployTest, ADryRunPrintsAndChangesNothing) {
  const std::string before = AllSpecifiers();
  const Outcome run = DeployHere("--dry-run register");
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(run.output, HasSubstr("adminPropertyPages: 12," + IdOf("CPropPageUser")));
  EXPECT_EQ(AllSpecifiers(), before);
}

TEST(DeployTest, WhoMayNotChangeSpecifiersIsToldAndNothingChanges) {
  const std::string before = AllSpecifiers();
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  const Outcome run = DeployHere("register");
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr("pelora-deploy: CN=user-Display,"));
  EXPECT_EQ(AllSpecifiers(), before);
}

TEST(DeployTest, WithoutTicketNothingIsAsked) {
  const EnvironmentVariable tickets("KRB5CCNAME", "FILE:/nonexistent");
  const Outcome run = DeployHere("register");
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr("pelora-deploy: "));
  EXPECT_THAT(run.output, Not(HasSubstr("Traceback")));
}

/// Plays the schema that is made for the tool of Windows, as that does: going on where something is
/// there already. Names and identifiers are put in others' place, so that a server that has our
/// schema takes it for another. Gives the codes with which requests ended that did not succeed.
std::string PlayWindowsSchema() {
  const std::string file = std::string(std::getenv("PELORA_DEPLOY_FOLDER")) + "/pelora-schema.ldf";
  return OutputOf(
      "sed -e 's/@SCHEMA@/CN=Schema,CN=Configuration," + Base() +
      "/' -e '/^schemaIDGUID::/d' -e 's/[.]2960252[.]/.2960253./' -e 's/Pelora-/Probe-/' "
      "-e 's/: pelora/: probe/' '" +
      file + "' | KRB5CCNAME=" + TicketsOf(kAdministrator) +
      " ldapmodify -c -N -Q -Y GSSAPI -H ldap://" + Server() +
      " 2>&1 >/dev/null | sed -n 's/^ldap_[a-z]*: \\(.*\\) (\\([0-9]*\\))$/\\2/p' | sort | uniq");
}

TEST(DeployTest, AServerTakesTheSchemaForWindowsAndTakesItAgain) {
  EXPECT_EQ(PlayWindowsSchema(), "");
  EXPECT_THAT(LdapSearch("CN=Probe-User-Settings,CN=Schema,CN=Configuration," + Base(),
                         {"lDAPDisplayName", "mayContain"}),
              Contains("mayContain: probeUserServer"));
  EXPECT_THAT(LdapSearch("CN=User,CN=Schema,CN=Configuration," + Base(), {"auxiliaryClass"}),
              Contains("auxiliaryClass: probeUserSettings"));
  // Already exists, value already exists: what ldifde passes over.
  EXPECT_THAT(PlayWindowsSchema(), ::testing::AnyOf("20\n68\n", "68\n"));
}

TEST(DeployTest, TheSchemaIsThereAndAddedOnce) {
  EXPECT_THAT(
      LdapSearch("CN=Pelora-Account,CN=Schema,CN=Configuration," + Base(), {"lDAPDisplayName"}),
      Contains("lDAPDisplayName: peloraAccount"));
  const Outcome run = DeployHere("schema");
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_THAT(run.output, HasSubstr("nothing was changed"));
}

}  // namespace
}  // namespace pelora::lab
