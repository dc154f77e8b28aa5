// SPDX-License-Identifier: Apache-2.0
// The script for sites with Windows only. There is no PowerShell here to run it: it is looked over.
#include <gmock/gmock.h>

#include "tests/packages/handed_out.h"

namespace pelora::test {
namespace {

constexpr const char* kCheck = "\"$source/tests/packages/check_powershell.py\" ";

TEST(PowershellScript, GivesTheCheckNothingToSay) {
  EXPECT_EQ(OutputOf(std::string(kCheck) + "release/Deploy-Pelora.ps1"), "\n");
}

struct Fault {
  const char* edit;
  const char* finding;
};

class PowershellFault : public ::testing::TestWithParam<Fault> {};

TEST_P(PowershellFault, IsFound) {
  const ShellResult checked =
      RunThere("sed '" + std::string(GetParam().edit) +
               "' release/Deploy-Pelora.ps1 > faulty.ps1; " + kCheck + "faulty.ps1");
  EXPECT_EQ(checked.exit_code, 1) << checked.output;
  EXPECT_THAT(checked.output, ::testing::HasSubstr(GetParam().finding));
}

INSTANTIATE_TEST_SUITE_P(
    Of, PowershellFault,
    ::testing::Values(Fault{"s/if ($isNew) {/if ($isNew)/", "closes nothing"},
                      Fault{"s/foreach ($record in $records)/foreach ($record in $record5)/",
                            "$record5 is never given a value"},
                      Fault{"s/-Fallback \\$fallback/-Falback $fallback/", "has no -Falback"},
                      Fault{"s/Open-Entry -Name/Open-Entri -Name/", "open-entri"},
                      Fault{"s/Write-Warning -Message/Write-Warning -Text/", "has no -Text"}));

// A server knows what was added only when it has read its schema anew.
TEST(SchemaForWindows, IsReadAnewAfterTheAttributesTheClassesAndTheLinks) {
  EXPECT_EQ(OutputOf("awk 'BEGIN { RS = \"\" } /^#/ { next } "
                     "/objectClass: attributeSchema/ { print \"attribute\"; next } "
                     "/objectClass: classSchema/ { print \"class\"; next } "
                     "/schemaUpdateNow: 1/ { print \"anew\"; next } { print \"link\" }' "
                     "release/pelora-schema.ldf | uniq"),
            "attribute\nanew\nclass\nanew\nlink\nanew\n");
}

// What the script takes for granted of the file that pelora-deploy applies, too.
TEST(PowershellScript, UnderstandsEveryLineOfTheDisplaySpecifiers) {
  EXPECT_EQ(OutputOf("grep -vE '^(#.*|-|)$|^dn: "
                     "CN=[^,]+-Display,CN=@LANGUAGE@,CN=DisplaySpecifiers,@CONFIGURATION@$"
                     "|^changetype: (add|modify)$|^objectClass: displaySpecifier$|^add: [A-Za-z]+$"
                     "|^classDisplayName: .+$|^[A-Za-z]+: (@NEXT@,)?[{][0-9A-F-]{36}[}]$' "
                     "release/display-specifiers.ldif || true"),
            "");
}

}  // namespace
}  // namespace pelora::test
