// SPDX-License-Identifier: Apache-2.0
// Every field of every class, set to another value than it has, and back to what it was.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Sample {
  const char* word;
  const char* dn;
};

class EveryFieldTest : public PeloractlTest, public ::testing::WithParamInterface<Sample> {
 protected:
  /// What is not the value of a field, as it is given.
  [[nodiscard]] static std::string Another(const json& field, const json& value) {
    const std::string name = field.at("name");
    const std::string kind = field.at("kind");
    if (kind == "flag") return value == true ? "no" : "yes";
    if (kind == "number") return value == 7 ? "8" : "7";
    if (kind == "server") return value == "mail02" ? "mail01" : "mail02";
    if (kind == "name") return name == "peloraBase" ? sample::kSales : "h.oender";
    if (name == "mail" || name == "otherMailbox") return "new@linden-werke.example";
    if (name == "peloraFilter") return "(mail=*)";
    if (name == "peloraUserArchiveServers") return "archive03";
    if (name == "peloraViewPrivilege") return sample::kLaboratory;
    if (kind == "list") return "j.weissflog";
    if (field.contains("choices")) {
      for (const std::string choice : field.at("choices")) {
        const bool can_be_chosen = choice != "unset" && choice != "ambiguous";
        if (can_be_chosen && choice != value) return choice;
      }
    }
    return "192.0.2.77";
  }
  /// What a refusal says has to be set together with the field; empty where it says nothing of it.
  [[nodiscard]] static std::string Enabling(const std::string& output) {
    const std::string words = "set it together with ";
    const std::size_t at = output.find(words);
    if (at == std::string::npos) return {};
    return output.substr(at + words.size(), output.find('\n') - at - words.size());
  }
};

TEST_P(EveryFieldTest, IsShownAndCanBeSet) {
  const auto& [word, dn] = GetParam();
  const ProgramRun listed = Ctl({"fields", word, "--json"});
  ASSERT_FALSE(listed.Lines().empty());
  // What is taken back leaves it as it was.
  const json before = Fields(dn);
  for (const std::string& line : listed.Lines()) {
    const json field = json::parse(line);
    const std::string name = field.at("name");
    SCOPED_TRACE(name);
    ASSERT_TRUE(before.contains(name));
    if (field.at("readOnly") == true) {
      EXPECT_THAT(Ctl({"set", dn, name + "=x"}).output, StartsWith("refused\t"));
      continue;
    }
    const std::string assignment = name + "=" + Another(field, before.at(name));
    ProgramRun run = Ctl({"set", dn, assignment, "--undo-file", File("undo")});
    if (const std::string enabling = Enabling(run.output); !enabling.empty()) {
      run = Ctl({"set", dn, assignment, enabling, "--undo-file", File("undo")});
    }
    EXPECT_THAT(run.output, StartsWith("changed\t")) << assignment;
    EXPECT_NE(Fields(dn).at(name), before.at(name)) << assignment;
    EXPECT_EQ(Ctl({"undo", File("undo")}).code, 0);
    EXPECT_EQ(Fields(dn), before);
    std::filesystem::remove(File("undo"));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Classes, EveryFieldTest,
    ::testing::Values(Sample{"user", sample::kBirgit}, Sample{"contact", sample::kContact},
                      Sample{"group", sample::kGroup}, Sample{"addresslist", sample::kAddressList},
                      Sample{"dynamiclist", sample::kDynamicList}, Sample{"company", kUnit},
                      Sample{"server", sample::kServer}),
    [](const auto& each) { return std::string(each.param.word); });

}  // namespace
}  // namespace pelora::testing
