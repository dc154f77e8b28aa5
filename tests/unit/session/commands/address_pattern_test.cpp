// SPDX-License-Identifier: Apache-2.0
// Addresses that are made from the names of objects.
#include "hosts/session/commands/address_pattern.h"

#include <gtest/gtest.h>

#include "hosts/session/commands/ascii_letters.h"

namespace pelora::session {
namespace {

const ldap::Entry kUser = {.dn = "CN=Jürgen O'Neil,DC=x",
                           .attributes = {{"cn", {"Jürgen O'Neil"}},
                                          {"sAMAccountName", {"joneil"}},
                                          {"givenName", {"Jürgen Karl"}},
                                          {"sn", {"O'Neil"}}}};

std::string Ascii(std::string_view name) { return InAsciiLetters(name).value_or("(none)"); }

TEST(AsciiLetters, UmlautsBecomeTwoLettersAndOtherMarksFallOff) {
  EXPECT_EQ(Ascii("Jürgen"), "juergen");
  EXPECT_EQ(Ascii("Groß"), "gross");
  EXPECT_EQ(Ascii("GROẞ"), "gross");
  EXPECT_EQ(Ascii("Ærøskøbing"), "aeroeskoebing");
  EXPECT_EQ(Ascii("Åsa Ñandú Çelik"), "asa-nandu-celik");
  EXPECT_EQ(Ascii("Łukasz Żółć"), "lukasz-zolc");
  EXPECT_EQ(Ascii("Dvořák Šťastný Ůžasný"), "dvorak-stastny-uzasny");
  EXPECT_EQ(Ascii("Őri Ű"), "oeri-ue");
  EXPECT_EQ(Ascii("Þór"), "thor");
  EXPECT_EQ(Ascii("u\xCC\x88"
                  "ber e\xCC\x81t"),
            "ueber-et")
      << "marks behind their letters";
}

TEST(AsciiLetters, WhatIsNoLetterFallsAway) {
  EXPECT_EQ(Ascii("O'Neil"), "oneil");
  EXPECT_EQ(Ascii("O\xE2\x80\x99Neil"), "oneil");
  EXPECT_EQ(Ascii("Müller (Vertrieb)"), "mueller-vertrieb");
  EXPECT_EQ(Ascii(" Anna  Maria "), "anna-maria");
  EXPECT_EQ(Ascii("Dr. Meyer-Lüdenscheid"), "dr.meyer-luedenscheid");
  EXPECT_EQ(Ascii("a_b.c-1"), "a_b.c-1");
}

TEST(AsciiLetters, LettersWithoutACounterpartGiveNothing) {
  EXPECT_EQ(Ascii("Αλέξανδρος"), "(none)");
  EXPECT_EQ(Ascii("Юлия Petrova"), "(none)");
  EXPECT_EQ(Ascii("'"), "(none)");
  EXPECT_EQ(Ascii(""), "(none)");
  EXPECT_EQ(Ascii("a\xFF"), "(none)") << "no UTF-8";
}

std::string For(const char* pattern) {
  const AddressPattern::Made made = AddressPattern(pattern).For(kUser);
  return made.missing.empty() ? made.text : made.missing;
}

TEST(AddressPattern, StandsForAnotherTextWithEachObject) {
  EXPECT_EQ(For("{logon}@x.example"), "joneil@x.example");
  EXPECT_EQ(For("{first}.{last}@x.example"), "juergen-karl.oneil@x.example");
  EXPECT_EQ(For("{name}@x.example"), "juergen-oneil@x.example");
  EXPECT_EQ(For("Info@X.example"), "Info@X.example") << "the rest stands as it is";
}

TEST(AddressPattern, SaysWhatAnObjectLacks) {
  const auto missing = [](const ldap::Entry& entry) {
    return AddressPattern("{first}.{last}@x.example").For(entry).missing;
  };
  EXPECT_EQ(missing({.dn = "CN=a", .attributes = {{"sn", {"A"}}}}), "It has no first name.");
  EXPECT_EQ(missing({.dn = "CN=a", .attributes = {{"givenName", {"A"}}}}), "It has no last name.");
  EXPECT_EQ(missing({.dn = "CN=a", .attributes = {{"givenName", {"Юлия"}}, {"sn", {"A"}}}}),
            "Its first name has letters that have no counterpart from a to z.");
}

TEST(AddressPattern, SaysWhatIsWrongWithIt) {
  const auto wrong = [](const char* pattern) { return AddressPattern(pattern).WhyWrong(false); };
  EXPECT_EQ(wrong("{first}.{last}@x.example"), "");
  EXPECT_EQ(wrong("{vorname}@x.example"),
            "{vorname} is not known; there are {logon}, {first}, {last} and {name}.");
  for (const char* const text : {"{first@x.example", "first}@x.example", "}{@x.example"}) {
    EXPECT_EQ(wrong(text), "\"{\" and \"}\" stand around a name: {logon}@example.org.") << text;
  }
  EXPECT_EQ(wrong("*@x.example"), "An address has no \"*\".");
  EXPECT_EQ(AddressPattern("*@x.example").WhyWrong(true), "");
  EXPECT_EQ(AddressPattern("*@*.example").WhyWrong(true), "One \"*\" only can stand for any text.");
}

TEST(AddressPattern, FitsAddresses) {
  const auto star = [](const char* pattern, const char* address) {
    return AddressPattern(pattern).Match(kUser, address).value_or("(no)");
  };
  EXPECT_EQ(star("*@old.example", "Ada@OLD.example"), "Ada");
  EXPECT_EQ(star("*@old.example", "ada@older.example"), "(no)");
  EXPECT_EQ(star("{logon}*@x.example", "joneil2@x.example"), "2");
  EXPECT_EQ(star("{logon}@x.example", "JONEIL@x.example"), "");
  EXPECT_EQ(star("ab*ba", "aba"), "(no)") << "no letter counts twice";
}

}  // namespace
}  // namespace pelora::session
