// SPDX-License-Identifier: Apache-2.0
// The system's directory query window behind its port: every field that it is given, and what
// becomes of every answer.
#include <gmock/gmock.h>

#include "tests/windows/choosers/chooser_test.h"
#include "tests/windows/support/malloc_counter.h"
#include "tests/windows/support/stand_in_query.h"

namespace pelora::windows::test {
namespace {

using ::testing::ElementsAre;

class CommonQueryTest : public ChooserTest {
 protected:
  ~CommonQueryTest() override { EXPECT_EQ(query_.references(), 0U); }

  HRESULT Query(SelectionMode mode = SelectionMode::kMultiple) {
    return chooser().SelectContainers(dialog(), names_, mode);
  }
  static void ExpectGivenBack(const Selection& found) {
    EXPECT_EQ(found.references(), 0U);
    EXPECT_EQ(found.released(), found.rendered());
    EXPECT_EQ(found.locks(), 0U);
  }
  void ExpectFailure(Selection& found, HRESULT expected) {
    query_.Find(found);
    EXPECT_EQ(Query(), expected);
    EXPECT_THAT(names_, ElementsAre("from before"));
    ExpectGivenBack(found);
  }

  StandInQuery query_;
};

constexpr const char* kHandlerRecord =
    "handler size 48, flags 0x1, scope null, save location null, user null, password null, "
    "server null";

TEST_F(CommonQueryTest, GivesTheWindowEveryFieldForSeveralContainers) {
  EXPECT_EQ(Query(), E_INVALIDARG);
  EXPECT_THAT(query_.log(),
              ElementsAre("window size 64, flags 0x63, handler "
                          "{8A23E65E-31C2-11D0-891C-00A024AB2DBB}, form "
                          "{C1B3CBF2-886A-11D0-9140-00AA00C16E65}, stored query null, "
                          "form parameters null",
                          kHandlerRecord));
  EXPECT_EQ(query_.owner(), window());
}

TEST_F(CommonQueryTest, GivesTheWindowEveryFieldForOneContainer) {
  EXPECT_EQ(Query(SelectionMode::kSingle), E_INVALIDARG);
  EXPECT_THAT(query_.log(),
              ElementsAre("window size 64, flags 0x67, handler "
                          "{8A23E65E-31C2-11D0-891C-00A024AB2DBB}, form "
                          "{C1B3CBF2-886A-11D0-9140-00AA00C16E65}, stored query null, "
                          "form parameters null",
                          kHandlerRecord));
}

TEST_F(CommonQueryTest, GivesTheNamesOfTheFoundContainersInOrder) {
  Selection found({"LDAP://dc1/OU=Größe,DC=x", "LDAP://OU=月🌙,DC=x", "LDAP://OU=a/b,DC=x"});
  query_.Find(found);
  EXPECT_EQ(Query(), S_OK);
  // The last one has no server, and is cut at its own slash.
  EXPECT_THAT(names_, ElementsAre("OU=Größe,DC=x", "OU=月🌙,DC=x", "b,DC=x"));
  EXPECT_EQ(found.rendered(), 1U);
  ExpectGivenBack(found);
  EXPECT_THAT(directory_.Log(), ElementsAre());
}

TEST_F(CommonQueryTest, NothingFoundMakesAnEmptyList) {
  Selection found({});
  query_.Find(found);
  EXPECT_EQ(Query(), S_OK);
  EXPECT_THAT(names_, ElementsAre());
  ExpectGivenBack(found);
}

TEST_F(CommonQueryTest, CancelIsAnInvalidArgumentAndChangesNothing) {
  for (const HRESULT answer : {S_FALSE, S_OK}) {
    query_.Answer(answer);
    EXPECT_EQ(Query(), E_INVALIDARG);
    EXPECT_THAT(names_, ElementsAre("from before"));
  }
}

TEST_F(CommonQueryTest, AWindowThatCannotBeMadeGivesItsStatus) {
  query_.class_object().FailWith(REGDB_E_CLASSNOTREG);
  EXPECT_EQ(Query(), REGDB_E_CLASSNOTREG);
  EXPECT_THAT(names_, ElementsAre("from before"));
  EXPECT_THAT(query_.log(), ElementsAre());
}

TEST_F(CommonQueryTest, AFailedWindowGivesItsStatus) {
  query_.Answer(E_NOTIMPL);
  EXPECT_EQ(Query(), E_NOTIMPL);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_F(CommonQueryTest, WhatAFailedWindowHandsOutIsGivenBackUnread) {
  Selection found({"LDAP://OU=One"});
  query_.Find(found, E_FAIL);
  EXPECT_EQ(Query(), E_FAIL);
  EXPECT_EQ(found.rendered(), 0U);
  ExpectGivenBack(found);
}

TEST_F(CommonQueryTest, ARenderingThatFailsGivesItsStatus) {
  Selection found({"LDAP://OU=One"});
  found.FailWith(E_ACCESSDENIED);
  ExpectFailure(found, E_ACCESSDENIED);
}

TEST_F(CommonQueryTest, AMediumThatIsNoMemoryIsReleasedAndRefused) {
  Selection found({"LDAP://OU=One"});
  found.RenderAs(TYMED_ENHMF);
  ExpectFailure(found, DV_E_TYMED);
  EXPECT_EQ(found.released(), 1U);
}

TEST_F(CommonQueryTest, ABlockCutShortIsRefused) {
  Selection found({"LDAP://OU=One"});
  std::vector<std::byte> head(20);
  head[16] = std::byte{2};
  found.Replace(head);
  ExpectFailure(found, E_INVALIDARG);
  EXPECT_EQ(found.released(), 1U);
}

TEST_F(CommonQueryTest, NoMemoryIsKept) {
  Selection found({"LDAP://OU=One", "LDAP://OU=Two"});
  const MallocCounter counter;
  query_.Find(found);
  EXPECT_EQ(Query(), S_OK);
  EXPECT_EQ(counter.live(), 0);
}

}  // namespace
}  // namespace pelora::windows::test
