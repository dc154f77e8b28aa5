// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/find_pasted_names.h"

#include "tests/unit/find/find_bench.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr const char* kAnybody = "(|(objectClass=user)(objectClass=contact)(objectClass=group))";
constexpr const char* kMeyer =
    "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

class PastedNames : public FindBench {
 protected:
  FoundNames Find(const std::string& text, const std::string& filter = kAnybody) {
    FoundNames found = FindPastedNames(store(), text, filter);
    EXPECT_TRUE(found.status.Ok()) << found.status.text;
    return found;
  }
};

TEST_F(PastedNames, AreNamesLogonNamesAddressesAndDistinguishedNames) {
  const FoundNames found =
      Find("s.ebert; birgit krämer\r\n\"Anna\" <A.Meyer@linden-werke.example>\n" +
           std::string(kMeyer) + "\nVertrieb Alle\n");
  EXPECT_THAT(found.names,
              UnorderedElementsAre(HasSubstr("Stefan Ebert"), HasSubstr("Birgit Krämer"), kMeyer,
                                   HasSubstr("CN=Vertrieb Alle")))
      << "each once";
  EXPECT_THAT(found.not_found, IsEmpty());
}

TEST_F(PastedNames, OneThatStandsAloneIsWholeToo) {
  EXPECT_THAT(Find(" Birgit Krämer ").names, ElementsAre(HasSubstr("CN=Birgit Krämer,")));
  EXPECT_THAT(Find("Ada <a.meyer@linden-werke.example>").names, ElementsAre(kMeyer));
  EXPECT_THAT(Find("Meyer, Anna").names, ElementsAre(kMeyer));
  EXPECT_THAT(Find("Birgit").not_found, ElementsAre("Birgit")) << "a part is not the whole";
}

TEST_F(PastedNames, WhoIsNobodyAndWhoIsSeveralIsTold) {
  ldap::Entry twin{
      .dn = "CN=Birgit Krämer,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
      .attributes = {{"objectClass", {"top", "person", "organizationalPerson", "contact"}},
                     {"cn", {"Birgit Krämer"}},
                     {"name", {"Birgit Krämer"}}}};
  (void)store().Add(twin);
  const FoundNames found = Find("Birgit Krämer\nnobody@example.org\nCN=x,DC=nowhere\ns.ebert");
  EXPECT_THAT(found.names, ElementsAre(HasSubstr("Stefan Ebert")));
  EXPECT_THAT(found.ambiguous, ElementsAre("Birgit Krämer"));
  EXPECT_THAT(found.not_found, UnorderedElementsAre("nobody@example.org", "CN=x,DC=nowhere"));
}

TEST_F(PastedNames, AreOfTheKindThatIsAskedFor) {
  const FoundNames found =
      Find("Vertrieb Alle\nBirgit Krämer\n" + std::string(kMeyer), "(objectClass=group)");
  EXPECT_THAT(found.names, ElementsAre(HasSubstr("CN=Vertrieb Alle")));
  EXPECT_THAT(found.not_found, UnorderedElementsAre("Birgit Krämer", kMeyer));
}

TEST_F(PastedNames, MayBeMoreThanGoIntoOneQuestion) {
  std::string list = "s.ebert";
  for (int at = 0; at < 120; ++at) list += "\nnobody" + std::to_string(at);
  const FoundNames found = Find(list + "\n" + std::string("a.meyer@linden-werke.example"));
  EXPECT_THAT(found.names, UnorderedElementsAre(HasSubstr("Stefan Ebert"), kMeyer));
  EXPECT_EQ(found.not_found.size(), 120U);
}

}  // namespace
}  // namespace pelora::session
