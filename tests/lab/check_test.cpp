// SPDX-License-Identifier: Apache-2.0
// The check of a domain from the command line: what a directory server makes of names of objects
// that are gone, and whether what is mended stays so.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/lab/lab_test.h"

namespace pelora::lab {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Names = std::vector<std::string>;

class LabCheck : public ::testing::Test {
 protected:
  LabCheck() {
    static int number = 0;
    unit_ = "OU=Check " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(unit_, {{"objectClass", {"organizationalUnit"}}});
    ada_ = AddUser("Ada");
    bert_ = AddUser("Bert");
  }

  std::string AddUser(const std::string& name) {
    const std::string dn = "CN=" + name + "," + unit_;
    administrator_.Add(
        dn,
        {{"objectClass", {"user"}}, {"mail", {name + "@check.example"}}, {"peloraAccount", {"1"}}});
    return dn;
  }

  /// Runs the program on the unit, whatever its exit code, and gives its lines.
  static std::vector<nlohmann::json> Lines(const std::string& arguments) {
    std::istringstream output(OutputOf(std::string("'" PELORACTL "' --server ") + Server() +
                                       " --json --quiet " + arguments + " || test $? = 1"));
    std::vector<nlohmann::json> lines;
    for (std::string line; std::getline(output, line);) {
      lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
  }
  [[nodiscard]] std::vector<nlohmann::json> Check(const std::string& arguments = {}) const {
    return Lines("check --base '" + unit_ + "' " + arguments);
  }
  /// The objects that a rule finds.
  [[nodiscard]] Names Found(const std::string& rule) const {
    Names names;
    for (const nlohmann::json& line : Check("--rule " + rule)) names.push_back(line.at("dn"));
    return names;
  }
  [[nodiscard]] Names Stored(const std::string& dn, const std::string& attribute) {
    return administrator_.Stored(dn)[attribute];
  }

  LabAdministrator administrator_;
  std::string unit_;
  std::string ada_;
  std::string bert_;
};

TEST_F(LabCheck, ASoundUnitHasNoFindings) { EXPECT_THAT(Check(), IsEmpty()); }

TEST_F(LabCheck, ANameOfSomebodyWhoWasDeletedIsTakenOut) {
  const std::string carl = AddUser("Carl");
  administrator_.Set(ada_, "peloraSendAsPrivilege", {bert_, carl});
  EXPECT_THAT(Check(), IsEmpty());
  administrator_.Remove(carl);
  EXPECT_THAT(Found("reference-dangling"), ElementsAre(ada_));
  const auto mended = Check("--fix");
  ASSERT_EQ(mended.size(), 1U) << ::testing::PrintToString(mended);
  EXPECT_EQ(mended[0].at("result"), "changed") << mended[0];
  EXPECT_THAT(Stored(ada_, "peloraSendAsPrivilege"), ElementsAre(bert_));
  EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(LabCheck, NamesElsewhereInTheDomainAreThere) {
  administrator_.Set(ada_, "peloraSendAsPrivilege",
                     {"CN=Administrator,CN=Users," + Base(), "CN=Users," + Base(), Base()});
  EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(LabCheck, ADefaultAddressGoesFromTheOthersAndNothingElseDoes) {
  administrator_.Set(ada_, "otherMailbox", {"ADA@check.example", "ada@other.example"});
  const auto mended = Check("--fix");
  ASSERT_EQ(mended.size(), 1U) << ::testing::PrintToString(mended);
  EXPECT_EQ(mended[0].at("result"), "changed") << mended[0];
  EXPECT_THAT(Stored(ada_, "otherMailbox"), ElementsAre("ada@other.example"));
  EXPECT_THAT(Stored(ada_, "mail"), ElementsAre("Ada@check.example"));
}

TEST_F(LabCheck, EveryOtherKindOfFaultIsFound) {
  const std::string list = "CN=List," + unit_;
  administrator_.Add(list, {{"objectClass", {"peloraAddresslist"}}, {"peloraAccount", {"1"}}});
  administrator_.Set(unit_, "peloraAccount", {"1"});
  administrator_.Set(unit_, "peloraSystemAdmin", {list});
  administrator_.Set(ada_, "otherMailbox", {"bert@check.example", "no address"});
  administrator_.Set(ada_, "peloraUserServer", {"nowhere"});
  administrator_.Set(ada_, "peloraQuotaOverride", {"1"});
  administrator_.Set(ada_, "peloraQuotaWarn", {"9"});
  administrator_.Set(ada_, "peloraQuotaHard", {"8"});
  administrator_.Set(ada_, "peloraEnabledFeatures", {"imap"});
  administrator_.Set(ada_, "peloraDisabledFeatures", {"imap"});
  administrator_.Set(bert_, "peloraResourceType", {"room"});
  administrator_.Set(bert_, "peloraHidden", {"2"});
  const std::string carl = AddUser("Carl");
  administrator_.Set(carl, "mail", {});
  EXPECT_THAT(Found("address-duplicate"), ElementsAre(ada_, bert_));
  EXPECT_THAT(Found("address-missing"), ElementsAre(carl));
  EXPECT_THAT(Found("address-syntax"), ElementsAre(ada_));
  EXPECT_THAT(Found("server-unknown"), ElementsAre(ada_));
  EXPECT_THAT(Found("quota-order"), ElementsAre(ada_));
  EXPECT_THAT(Found("filter-syntax"), ElementsAre(list));
  EXPECT_THAT(Found("feature-conflict"), ElementsAre(ada_));
  EXPECT_THAT(Found("resource-type"), ElementsAre(bert_));
  EXPECT_THAT(Found("company-admin"), ElementsAre(unit_));
  EXPECT_THAT(Found("value-range"), ElementsAre(bert_));
  administrator_.Set(list, "peloraBase", {"OU=Gone," + Base()});
  EXPECT_THAT(Found("base-unknown"), ElementsAre(list));
}

TEST_F(LabCheck, AServerIsOneOfTheWholeDomain) {
  const std::string box = "CN=box,OU=Contract," + Base();
  administrator_.Add(box, {{"objectClass", {"computer"}},
                           {"peloraAccount", {"1"}},
                           {"peloraHostAddress", {"192.0.2.1"}}});
  administrator_.Set(ada_, "peloraUserServer", {"BOX"});
  EXPECT_THAT(Found("server-unknown"), IsEmpty());
  const auto incomplete = Lines("check --rule server-incomplete --base '" + box + "'");
  ASSERT_EQ(incomplete.size(), 1U);
  EXPECT_EQ(incomplete[0].at("dn"), box);
  administrator_.Remove(box);
  EXPECT_THAT(Found("server-unknown"), ElementsAre(ada_));
}

TEST_F(LabCheck, MoreUsersThanAPageHasAreAllLookedAt) {
  // They have a home server that there is not.
  std::set<std::string> found;
  for (const nlohmann::json& line :
       Lines("check --rule server-unknown --base 'OU=Many," + Base() + "'")) {
    found.insert(line.at("dn").get<std::string>());
  }
  EXPECT_EQ(found.size(), 1100U);
}

}  // namespace
}  // namespace pelora::lab
