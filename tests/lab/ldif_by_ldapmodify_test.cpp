// SPDX-License-Identifier: Apache-2.0
// Changes as LDIF in the hands of OpenLDAP's own tool, which is part of what the tests need.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "hosts/changes/change_writer.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/lab/lab_test.h"
#include "tests/support/temporary_folder.h"

namespace pelora::lab {
namespace {

using changes::Change;
using changes::ChangeWriter;
using changes::Outcome;
using changes::ValueChange;
using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

class LdifByLdapmodify : public ::testing::Test {
 protected:
  LdifByLdapmodify() {
    static int number = 0;
    container_ = "OU=Ldif " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
    administrator_.Add(dn_ = "CN=Jürgen Weiß\\, Dr.," + container_,
                       {{"objectClass", {"user"}},
                        {"peloraQuotaHard", {"100"}},
                        {"otherMailbox", {"a@x", "b@x"}}});
  }

  /// Lets the tool apply changes; its exit code.
  int ApplyByTool(const std::vector<Change>& all) {
    std::string text;
    for (const Change& change : all) text += ToLdif(session_->store().schema(), change);
    std::ofstream(folder_.File("changes.ldif"), std::ios::binary) << text;
    const std::string command = "ldapmodify -N -Q -Y GSSAPI -H ldap://" + Server() + " -f '" +
                                folder_.File("changes.ldif") + "' > '" + folder_.File("said") +
                                "' 2>&1";
    const int status = std::system(command.c_str());
    std::ifstream said(folder_.File("said"));
    said_.assign(std::istreambuf_iterator<char>(said), {});
    return WEXITSTATUS(status);
  }
  int ApplyByTool(ValueChange value) {
    return ApplyByTool({{.dn = dn_, .attributes = {std::move(value)}}});
  }
  [[nodiscard]] Lines Stored(const std::string& attribute) { return LdapSearch(dn_, {attribute}); }

  LabAdministrator administrator_;
  std::string container_;
  std::string dn_;
  std::string said_;
  pelora::testing::TemporaryFolder folder_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
};

TEST_F(LdifByLdapmodify, TheToolDoesTheSame) {
  const std::string text(200, 'x');
  const Change change{.dn = dn_,
                      .attributes = {{"peloraQuotaHard", false, {"100"}, {"200"}},
                                     {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "Größe@x"}},
                                     {"displayName", false, {}, {" " + text}}}};
  EXPECT_EQ(ApplyByTool({change}), 0) << said_;
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 200"});
  EXPECT_EQ(Stored("otherMailbox").size(), 2U);
  EXPECT_EQ(ReadValue(session_->store(), dn_, "displayName"), " " + text);
  EXPECT_EQ(ApplyByTool({UndoOf(change)}), 0) << said_;
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 100"});
  EXPECT_EQ(Stored("otherMailbox"), (Lines{"otherMailbox: a@x", "otherMailbox: b@x"}));
  EXPECT_EQ(Stored("displayName"), Lines{});
}

TEST_F(LdifByLdapmodify, TheToolRefusesWhatIsStale) {
  administrator_.Set(dn_, "peloraQuotaHard", {"150"});
  EXPECT_EQ(ApplyByTool({"peloraQuotaHard", false, {"100"}, {"200"}}), 16) << said_;
  EXPECT_EQ(ApplyByTool({"peloraQuotaHard", false, {"100"}, {}}), 16) << said_;
  EXPECT_EQ(ApplyByTool({"peloraQuotaHard", false, {}, {"200"}}), 20) << said_;
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 150"});
  EXPECT_EQ(ApplyByTool({"otherMailbox", true, {"c@x"}, {"d@x"}}), 16) << said_;
  EXPECT_EQ(ApplyByTool({"otherMailbox", true, {}, {"a@x"}}), 20) << said_;
  EXPECT_EQ(Stored("otherMailbox"), (Lines{"otherMailbox: a@x", "otherMailbox: b@x"}));
}

TEST_F(LdifByLdapmodify, TheToolTakesBackWhatWasMadeWhileItIsAsItWasMade) {
  const struct {
    const char* name;
    std::vector<ValueChange> attributes;
  } kKinds[] = {
      {"CN=Änne",
       {{"objectClass", true, {}, {"user"}},
        {"sAMAccountName", false, {}, {"aenne2"}},
        {"userPrincipalName", false, {}, {"aenne2@pelora.test"}},
        {"userAccountControl", false, {}, {"514"}},
        {"givenName", false, {}, {"Änne"}},
        {"peloraAccount", false, {}, {"1"}}}},
      {"CN=Gruppe",
       {{"objectClass", true, {}, {"group"}},
        {"sAMAccountName", false, {}, {"gruppe2"}},
        {"groupType", false, {}, {"-2147483646"}},
        {"peloraAccount", false, {}, {"1"}}}},
      {"CN=SERVER2",
       {{"objectClass", true, {}, {"computer"}},
        {"sAMAccountName", false, {}, {"SERVER2$"}},
        {"userAccountControl", false, {}, {"4096"}},
        {"peloraAccount", false, {}, {"1"}}}},
      {"OU=Einheit",
       {{"objectClass", true, {}, {"organizationalUnit"}}, {"peloraAccount", false, {}, {"1"}}}},
  };
  for (const auto& kind : kKinds) {
    const std::string dn = std::string(kind.name) + "," + container_;
    const Change made{.kind = Change::Kind::kAdd, .dn = dn, .attributes = kind.attributes};
    EXPECT_EQ(ApplyByTool({made}), 0) << said_;
    administrator_.Set(dn, "peloraAccount", {"0"});
    EXPECT_EQ(ApplyByTool({UndoOf(made)}), 16) << kind.name << said_;
    administrator_.Set(dn, "peloraAccount", {"1"});
    EXPECT_EQ(ApplyByTool({UndoOf(made)}), 0) << kind.name << said_;
    Entry entry;
    EXPECT_EQ(session_->store().Read(dn, {}, entry).code, ldap::kLdapNoSuchObject) << kind.name;
    // And by this project's own way.
    ChangeWriter writer(session_->store());
    EXPECT_EQ(writer.Write(made).outcome, Outcome::kChanged) << kind.name;
    const changes::Result result = writer.Write(UndoOf(made));
    EXPECT_EQ(result.outcome, Outcome::kChanged) << kind.name << ": " << result.message;
  }
}

}  // namespace
}  // namespace pelora::lab
