// SPDX-License-Identifier: Apache-2.0
#include "server/registration_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace pelora {

void PrintTo(const ScriptKey& key, std::ostream* out) {
  *out << (key.no_remove ? "NoRemove " : "") << (key.force_remove ? "ForceRemove " : "")
       << key.name;
  for (const ScriptValue& value : key.values) {
    *out << " [" << value.name.value_or("(default)") << "=" << value.text << "]";
  }
  *out << " {";
  for (const ScriptKey& below : key.keys) {
    *out << " ";
    PrintTo(below, out);
  }
  *out << " }";
}

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<ScriptKey> Read(std::string_view script, const ScriptReplacements& replacements = {}) {
  const ReadScriptResult result = ReadRegistrationScript(script, replacements);
  EXPECT_EQ(result.error, "");
  EXPECT_TRUE(result.keys.has_value());
  return result.keys.value_or(std::vector<ScriptKey>{});
}

std::string ErrorOf(std::string_view script, const ScriptReplacements& replacements = {}) {
  const ReadScriptResult result = ReadRegistrationScript(script, replacements);
  EXPECT_FALSE(result.keys.has_value());
  return result.error;
}

std::string Nested(std::size_t depth) {
  std::string script = "HKCR {";
  for (std::size_t level = 0; level < depth; ++level) script += " a {";
  return script + std::string(depth + 1, '}');
}

TEST(RegistrationScript, ReadsKeysValuesAndMarks) {
  const auto keys = Read(R"(HKCR
{
    NoRemove CLSID
    {
        ForceRemove '{1}' = s 'A class'
        {
            InprocServer32 = s 'C:\x.dll'
            {
                val ThreadingModel = s 'apartment'
            }
            val AppID = s 'id'
            Programmable
        }
    }
})");
  const ScriptKey server{.name = "InprocServer32",
                         .values = {{std::nullopt, "C:\\x.dll"}, {"ThreadingModel", "apartment"}}};
  const ScriptKey component{.name = "{1}",
                            .force_remove = true,
                            .values = {{std::nullopt, "A class"}, {"AppID", "id"}},
                            .keys = {server, {.name = "Programmable"}}};
  EXPECT_THAT(keys,
              ElementsAre(ScriptKey{.name = "CLSID", .no_remove = true, .keys = {component}}));
}

TEST(RegistrationScript, KnowsTheRootByBothNamesAndWithoutCase) {
  EXPECT_THAT(Read("HKEY_CLASSES_ROOT { a }"), ElementsAre(ScriptKey{.name = "a"}));
  EXPECT_THAT(Read("hkcr { a }"), ElementsAre(ScriptKey{.name = "a"}));
}

TEST(RegistrationScript, AnEmptyRootIsNoKeys) { EXPECT_THAT(Read("HKCR{}"), ElementsAre()); }

TEST(RegistrationScript, AQuotedTextMayHoldSignsBlanksAndQuotes) {
  EXPECT_THAT(Read("HKCR { 'a {b} = c' = s 'it''s' }"),
              ElementsAre(ScriptKey{.name = "a {b} = c", .values = {{std::nullopt, "it's"}}}));
}

TEST(RegistrationScript, AKeyMayBeCalledAsAMarkWhenQuoted) {
  EXPECT_THAT(Read("HKCR { 'val' 'NoRemove' }"),
              ElementsAre(ScriptKey{.name = "val"}, ScriptKey{.name = "NoRemove"}));
}

TEST(RegistrationScript, ReplacesNamesWithoutCaseAndDoubledPercents) {
  EXPECT_THAT(Read("HKCR { %Key% = s 'x%TEXT%y%%' }", {{"KEY", "k"}, {"text", "T"}}),
              ElementsAre(ScriptKey{.name = "k", .values = {{std::nullopt, "xTy%"}}}));
}

TEST(RegistrationScript, AReplacementCannotChangeTheStructure) {
  const std::string hostile = "C:\\O'Neil} HKCR { evil = s '%MODULE%'";
  EXPECT_THAT(Read("HKCR { a = s '%MODULE%' }", {{"MODULE", hostile}}),
              ElementsAre(ScriptKey{.name = "a", .values = {{std::nullopt, hostile}}}));
}

TEST(RegistrationScript, ASharedKeyMayStandBelowAnother) {
  EXPECT_THAT(Read("HKCR { a { CLSID } }"),
              ElementsAre(ScriptKey{.name = "a", .keys = {{.name = "CLSID"}}}));
}

TEST(RegistrationScript, NestingHasABound) {
  EXPECT_EQ(Read(Nested(16)).size(), 1U);
  EXPECT_THAT(ErrorOf(Nested(17)), HasSubstr("nested too deep"));
  EXPECT_THAT(ErrorOf(Nested(100000)), HasSubstr("nested too deep"));
}

TEST(RegistrationScript, SaysTheLineOfAnError) {
  EXPECT_THAT(ErrorOf("HKCR\n{\n  a = d 5\n}"), StartsWith("line 3: "));
}

struct Refused {
  const char* name;
  std::string script;
  const char* reason;
};

class RefusedScript : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedScript, SaysWhy) {
  EXPECT_THAT(ErrorOf(GetParam().script, {{"EMPTY", ""}, {"PATH", "a\\b"}}),
              HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    RegistrationScript, RefusedScript,
    ::testing::Values(
        Refused{"Nothing", "", "root"}, Refused{"AnotherRoot", "HKLM { a }", "root"},
        Refused{"AQuotedRoot", "'HKCR' { a }", "root"}, Refused{"NoBody", "HKCR", "'{' is missing"},
        Refused{"AnOpenBody", "HKCR { a {", "'}' is missing"},
        Refused{"AnOpenRoot", "HKCR { a ", "'}' is missing"},
        Refused{"OneBraceTooMany", "HKCR { a } }", "follows the last"},
        Refused{"ASecondRoot", "HKCR { a } HKCR { b }", "follows the last"},
        Refused{"AnOpenQuote", "HKCR { a = s 'x }", "does not end"},
        Refused{"AnOpenQuoteAfterADoubledOne", "HKCR { a = s 'x'' }", "does not end"},
        Refused{"AValueWithoutName", "HKCR { val = s 'x' }", "no name"},
        Refused{"AValueWithoutSign", "HKCR { a { val b s 'x' } }", "'=' is missing"},
        Refused{"AValueOfAnotherType", "HKCR { a = d 1 }", "not a string"},
        Refused{"AValueWithoutText", "HKCR { a = s }", "no text"},
        Refused{"AMarkWithoutKey", "HKCR { NoRemove }", "no name"},
        Refused{"TwoMarksAndNoKey", "HKCR { NoRemove = s 'x' }", "no name"},
        Refused{"AStrayBody", "HKCR { { a } }", "no name"},
        Refused{"AnUnknownReplacement", "HKCR { %NOWHERE% }", "%NOWHERE%"},
        Refused{"ALonePercent", "HKCR { a = s '50%' }", "'%' stands alone"},
        Refused{"AnEmptyKeyName", "HKCR { '' }", "empty"},
        Refused{"AKeyNameReplacedByNothing", "HKCR { %EMPTY% }", "empty"},
        Refused{"AKeyNameWithABackslash", "HKCR { 'a\\b' }", "must not"},
        Refused{"AKeyNameReplacedByAPath", "HKCR { %PATH% }", "must not"},
        Refused{"AKeyNameWithAControlCharacter", "HKCR { 'a\x01' }", "must not"},
        Refused{"AKeyNameWithANul", std::string("HKCR { 'a\0' }", 14), "must not"},
        Refused{"AKeyNameThatIsTooLong", "HKCR { " + std::string(256, 'k') + " }", "too long"},
        Refused{"ASharedKeyToRemove", "HKCR { CLSID { a } }", "shared key CLSID"},
        Refused{"ASharedKeyToEmpty", "HKCR { ForceRemove clsid }", "shared key clsid"},
        Refused{"AllApplicationIdentifiers", "HKCR { AppID }", "shared key AppID"},
        Refused{"AllTypeLibraries", "HKCR { TypeLib }", "shared key TypeLib"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace pelora
