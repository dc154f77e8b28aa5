// SPDX-License-Identifier: Apache-2.0
// The edits that every face makes, by the command line.
#include "tests/contract/same_edits.h"

#include "hosts/ldap/ldb_store.h"
#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using contract::SameNewUser;

class SameEditsTest : public PeloractlTest {
 protected:
  [[nodiscard]] contract::DumpedValues Object(const std::string& name) const {
    std::unique_ptr<ldap::IDirectoryStore> store;
    EXPECT_TRUE(ldap::OpenLdbStore(File("company.ldb"), {}, store).Ok());
    ldap::Entry entry;
    EXPECT_TRUE(store->Read(name, {}, entry).Ok()) << name;
    contract::DumpedValues values;
    for (const auto& [attribute, held] : entry.attributes) values[attribute] = held;
    return values;
  }
};

TEST_F(SameEditsTest, LeaveWhatEveryFaceLeaves) {
  for (const contract::SameEdit& edit : contract::SameEdits()) {
    for (const std::vector<std::string>& assignments : edit.commands) {
      std::vector<std::string> arguments = {"set"};
      arguments.insert(arguments.end(), edit.objects.begin(), edit.objects.end());
      arguments.insert(arguments.end(), assignments.begin(), assignments.end());
      const ProgramRun run = Ctl(arguments);
      EXPECT_EQ(run.code, 0) << run.output << run.errors;
    }
  }
  EXPECT_EQ(contract::DumpOf([this](const std::string& name) { return Object(name); }),
            contract::SameEditsDump());
}

TEST_F(SameEditsTest, LeaveTheNewUserThatEveryFaceLeaves) {
  const ProgramRun run =
      Ctl({"new", "user", SameNewUser::kName, "--in", kUnit,
           std::string("sAMAccountName=") + SameNewUser::kLogonName, "peloraAccount=yes",
           "accountType=room", std::string("peloraResourceCapacity=") + SameNewUser::kCapacity,
           "peloraHidden=yes", std::string("mail=") + SameNewUser::kAddress,
           "peloraUserServer=mail02"});
  ASSERT_EQ(run.code, 0) << run.output << run.errors;
  contract::DumpedValues made = Object(std::string("CN=") + SameNewUser::kName + "," + kUnit);
  EXPECT_EQ(contract::NewUserDump(
                [&](std::string_view attribute) { return made[std::string(attribute)]; }),
            contract::kSameNewUserDump);
}

}  // namespace
}  // namespace pelora::testing
