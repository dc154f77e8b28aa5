// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

class SetAddressesTest : public PeloractlTest {
 protected:
  [[nodiscard]] std::string Set(const std::string& assignment) const {
    const ProgramRun run = Ctl({"set", "j.weissflog", assignment});
    return run.output.substr(0, run.output.find('\t'));
  }
  [[nodiscard]] std::string Default() const { return Fields("j.weissflog").at("mail"); }
  [[nodiscard]] std::vector<std::string> Others() const {
    return Fields("j.weissflog").at("otherMailbox");
  }
};

constexpr const char* kFirst = "j.weissflog@linden-werke.example";
constexpr const char* kSecond = "juergen@linden-werke.example";
constexpr const char* kThird = "geschaeftsleitung@linden-werke.example";

TEST_F(SetAddressesTest, AnAddressBecomesTheDefaultOne) {
  EXPECT_EQ(Set(std::string("mail=") + kSecond), "changed");
  EXPECT_EQ(Default(), kSecond);
  EXPECT_THAT(Others(), UnorderedElementsAre(kFirst, kThird));
}

TEST_F(SetAddressesTest, ANewDefaultAddressIsAddedFirst) {
  EXPECT_EQ(Set("mail=chef@linden-werke.example"), "changed");
  EXPECT_EQ(Default(), "chef@linden-werke.example");
  EXPECT_THAT(Others(), UnorderedElementsAre(kFirst, kSecond, kThird));
}

TEST_F(SetAddressesTest, TheDefaultAddressIsReplacedNotRemoved) {
  EXPECT_EQ(Set("mail="), "refused");
}

TEST_F(SetAddressesTest, OthersAreAddedAndRemoved) {
  EXPECT_EQ(Set("otherMailbox+=a@b.example;c@d.example"), "changed");
  EXPECT_THAT(Others(), UnorderedElementsAre(kSecond, kThird, "a@b.example", "c@d.example"));
  EXPECT_EQ(Set("otherMailbox-=A@B.example"), "changed");
  EXPECT_EQ(Set("otherMailbox-=nobody@b.example"), "unchanged");
  EXPECT_EQ(Set("otherMailbox+=c@d.example"), "unchanged");
  EXPECT_EQ(Set(std::string("otherMailbox+=") + kFirst), "unchanged");
  EXPECT_EQ(Set("otherMailbox+=x;;y"), "refused");
}

TEST_F(SetAddressesTest, AListThatIsSetPassesTheDefaultOver) {
  EXPECT_EQ(Set(std::string("otherMailbox=") + kFirst + ";" + kThird + ";neu@b.example"),
            "changed");
  EXPECT_EQ(Default(), kFirst);
  EXPECT_THAT(Others(), UnorderedElementsAre(kThird, "neu@b.example"));
  EXPECT_EQ(Set("otherMailbox="), "changed");
  EXPECT_TRUE(Others().empty());
}

TEST_F(SetAddressesTest, RemovingTheDefaultAddressPassesItOn) {
  EXPECT_EQ(Set(std::string("otherMailbox-=") + kFirst), "changed");
  EXPECT_THAT(Default(), ::testing::AnyOf(kSecond, kThird));
  EXPECT_EQ(Others().size(), 1U);
}

TEST_F(SetAddressesTest, TheLastAddressCannotBeRemoved) {
  for (const char* object : {"t.richter", "Bare"}) {
    if (std::string(object) == "Bare") {
      ASSERT_EQ(Ctl({"new", "contact", "Bare", "--in", kUnit, "peloraAccount=yes",
                     "mail=t.richter@linden-werke.example"})
                    .code,
                0);
    }
    const ProgramRun run = Ctl({"set", object, "otherMailbox-=t.richter@linden-werke.example"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.output, HasSubstr("otherMailbox: the last address cannot be removed"));
    EXPECT_EQ(Fields(object).at("mail"), "t.richter@linden-werke.example");
  }
}

TEST_F(SetAddressesTest, TheFirstAddressOfAllBecomesTheDefaultOne) {
  ASSERT_EQ(Ctl({"new", "contact", "Bare", "--in", kUnit}).code, 0);
  const ProgramRun run = Ctl({"set", "Bare", "otherMailbox=one@b.example;two@b.example"});
  EXPECT_THAT(run.output, StartsWith("changed\t"));
  EXPECT_EQ(Fields("Bare").at("mail"), "one@b.example");
  EXPECT_EQ(Fields("Bare").at("otherMailbox"), json::array({"two@b.example"}));
}

TEST_F(SetAddressesTest, DefaultAndOthersOfOneCommandBelongTogether) {
  const ProgramRun run = Ctl({"set", "j.weissflog", std::string("otherMailbox-=") + kFirst,
                              "mail=chef@linden-werke.example"});
  EXPECT_THAT(run.output, StartsWith("changed\t"));
  EXPECT_EQ(Default(), "chef@linden-werke.example");
  EXPECT_THAT(Others(), UnorderedElementsAre(kSecond, kThird));
}

TEST_F(SetAddressesTest, AThirdAddressIsTheOnlyDefaultThoughTheOldOneIsRemoved) {
  // By the rules of the tab's list the order of the two decides whether an address is lost.
  for (const bool is_default_first : {true, false}) {
    const std::string make_default = std::string("mail=") + kThird;
    const std::string remove = std::string("otherMailbox-=") + kFirst;
    const ProgramRun run = Ctl({"set", "j.weissflog", is_default_first ? make_default : remove,
                                is_default_first ? remove : make_default});
    EXPECT_THAT(run.output, StartsWith("changed\t"));
    EXPECT_EQ(Default(), kThird);
    EXPECT_THAT(Others(), UnorderedElementsAre(kSecond));
    ASSERT_EQ(Set(std::string("mail=") + kFirst), "changed");
    ASSERT_EQ(Others().size(), 2U);
  }
}

TEST_F(SetAddressesTest, ADefaultThatTheSameCommandRemovesIsRefused) {
  const ProgramRun run =
      Ctl({"set", "j.weissflog", "mail=new@b.example", "otherMailbox-=new@b.example"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr("mail: the same command removes new@b.example"));
  EXPECT_EQ(Default(), kFirst);
}

TEST_F(SetAddressesTest, ValuesMayHoldTheSignsOfLists) {
  EXPECT_EQ(Set(R"(otherMailbox+=semi\;colon@b.example;back\\slash@b.example;one\two@b.example)"),
            "changed");
  EXPECT_THAT(Others(), UnorderedElementsAre(kSecond, kThird, "semi;colon@b.example",
                                             R"(back\slash@b.example)", R"(one\two@b.example)"));
}

}  // namespace
}  // namespace pelora::testing
