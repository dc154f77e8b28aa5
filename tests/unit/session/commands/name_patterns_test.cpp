// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/name_patterns.h"

#include <gtest/gtest.h>

namespace pelora::session {
namespace {

OwnValues Called(const char* first, const char* last) {
  OwnValues values;
  values.first_name = first;
  values.last_name = last;
  values.name = std::string(first) + " " + last;
  return values;
}

std::string LogonName(const char* pattern, const OwnValues& values) {
  return LogonNameOf({.logon_name = pattern}, NewObjectKinds().front(), values);
}

TEST(NamePatterns, MakeNamesOfWhatSomebodyIsCalled) {
  EXPECT_EQ(LogonName("{first}.{last}", Called(" Jürgen ", "Weißflog")), "juergen.weissflog");
  EXPECT_EQ(LogonName("{name}", Called("Ada", "Meyer")), "ada-meyer");
  OwnValues values = Called("Ada", "Meyer");
  values.logon_name = "am";
  EXPECT_EQ(AddressOf({.address = "{logon}@example.org"}, values), "am@example.org");
  EXPECT_EQ(AddressOf({.address = "{last}@example.org"}, values), "meyer@example.org");
}

TEST(NamePatterns, MakeNothingAsLongAsSomethingIsMissing) {
  EXPECT_EQ(LogonName("", Called("Ada", "Meyer")), "");
  EXPECT_EQ(LogonName("{first}.{last}", Called("Ada", "")), "");
  EXPECT_EQ(LogonName("{first}.{last}", Called("Ada", "Νικολαΐδης")), "") << "no letters for it";
  EXPECT_EQ(AddressOf({.address = "{logon}@example.org"}, Called("Ada", "Meyer")), "");
}

TEST(NamePatterns, MakeNoLongerLogonNameThanTheDirectoryTakes) {
  EXPECT_EQ(LogonName("{first}.{last}", Called("Maximiliane", "Oberhausen")),
            "maximiliane.oberhaus");
  EXPECT_EQ(LogonName("{first}.{last}", Called("Abcdefghijklmnopqrs", "Meyer")),
            "abcdefghijklmnopqrs")
      << "no full stop at the end";
}

TEST(NamePatterns, SayWhyTheyAreNone) {
  EXPECT_EQ(WhyWrong({}), "");
  EXPECT_EQ(WhyWrong({.logon_name = "{first}.{last}", .address = "{logon}@example.org"}), "");
  EXPECT_EQ(WhyWrong({.logon_name = "{logon}"}), "The logon name cannot be made of itself.");
  EXPECT_EQ(WhyWrong({.logon_name = "{first}@x"}),
            "User logon name: none of \" / \\ [ ] : ; | = , + * ? < > @.");
  EXPECT_EQ(WhyWrong({.logon_name = "{first"}),
            "\"{\" and \"}\" stand around a name: {logon}@example.org.");
  EXPECT_EQ(WhyWrong({.address = "{first}.{last}"}), "An address has an \"@\": name@example.org.");
  EXPECT_EQ(WhyWrong({.address = "*@example.org"}), "An address has no \"*\".");
}

}  // namespace
}  // namespace pelora::session
