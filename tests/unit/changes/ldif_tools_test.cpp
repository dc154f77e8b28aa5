// SPDX-License-Identifier: Apache-2.0
// Changes as LDIF in the hands of Samba's own tool, which is part of what the tests need.
#include <array>
#include <cstdio>

#include "hosts/changes/change_writer.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LdifToolsTest : public ChangesBench {
 protected:
  /// Lets the tool apply changes to the file; whether it did.
  bool ApplyByTool(const std::vector<Change>& changes) {
    std::string text;
    for (const Change& change : changes)
      text += ToLdif(store_->schema(), change, Lists::kUntouched);
    ldap::WriteFile(File("changes.ldif"), text);
    const std::string command = "ldbmodify -H '" + path() + "' '" + File("changes.ldif") + "' > '" +
                                File("said") + "' 2>&1";
    const int status = std::system(command.c_str());
    said_ = ldap::ReadFile(File("said"));
    EXPECT_EQ(said_.find("not found"), std::string::npos) << said_;
    return status == 0;
  }
  bool ApplyByTool(ValueChange value) { return ApplyByTool({MakeChange(kUser, std::move(value))}); }

  std::string said_;
};

TEST_F(LdifToolsTest, TheToolDoesTheSame) {
  Store("peloraQuotaHard", {"100"});
  Store("otherMailbox", {"a@x", "b@x"});
  const std::string text(400, 'x');
  Change change = MakeChange(kUser, {"peloraQuotaHard", false, {"100"}, {"200"}});
  change.attributes.push_back(
      {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "Müller <c@x>"}, true});
  change.attributes.push_back(
      {"peloraUserServer", false, Stored("peloraUserServer"), {" " + text}});
  EXPECT_TRUE(ApplyByTool({change})) << said_;
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("Müller <c@x>", "b@x"));
  EXPECT_THAT(Stored("peloraUserServer"), ElementsAre(" " + text));
  EXPECT_TRUE(ApplyByTool({UndoOf(change)})) << said_;
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("100"));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x", "b@x"));
}

TEST_F(LdifToolsTest, TheToolRefusesWhatIsStale) {
  Store("peloraQuotaHard", {"150"});
  EXPECT_FALSE(ApplyByTool({"peloraQuotaHard", false, {"100"}, {"200"}}));
  EXPECT_FALSE(ApplyByTool({"peloraQuotaHard", false, {"100"}, {}}));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("150"));
  Store("otherMailbox", {"a@x"});
  EXPECT_FALSE(ApplyByTool({"otherMailbox", true, {"b@x"}, {"c@x"}}));
  EXPECT_FALSE(ApplyByTool({"otherMailbox", true, {}, {"a@x"}}));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x"));
  EXPECT_TRUE(ApplyByTool({"otherMailbox", true, {}, {"d@x"}})) << said_;
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x", "d@x"));
}

TEST_F(LdifToolsTest, TheToolTakesBackWhatWasMadeWhileItIsAsItWasMade) {
  const std::string dn = "CN=Jürgen\\, neu," + std::string(kBase);
  const Change made{.kind = Change::Kind::kAdd,
                    .dn = dn,
                    .attributes = {{"objectClass", true, {}, {"top", "contact"}},
                                   {"cn", false, {}, {"Jürgen, neu"}},
                                   {"peloraAccount", false, {}, {"1"}},
                                   {"otherMailbox", true, {}, {"a@x", "b@x"}}}};
  EXPECT_TRUE(ApplyByTool({made})) << said_;
  ASSERT_TRUE(Replace(*store_, dn, "peloraAccount", {"0"}).Ok());
  EXPECT_FALSE(ApplyByTool({UndoOf(made)}));
  EXPECT_THAT(Read(*store_, dn, "peloraAccount"), ElementsAre("0"));
  ASSERT_TRUE(Replace(*store_, dn, "peloraAccount", {"1"}).Ok());
  EXPECT_TRUE(ApplyByTool({UndoOf(made)})) << said_;
  Entry entry;
  EXPECT_EQ(store_->Read(dn, {}, entry).code, ldap::kLdapNoSuchObject);
}

}  // namespace
}  // namespace pelora::changes
