// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "resources/resource.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using testing::FakeAttributes;
using testing::kTabPaths;
using testing::Lines;

const FakeAttributes kServer = {{"peloraAccount", Variant::Integer(1)},
                                {"peloraHostAddress", Variant::String("192.0.2.1")},
                                {"peloraHttpPort", Variant::Integer(236)},
                                {"peloraSslPort", Variant::Integer(237)},
                                {"peloraFilePath", Variant::String("/var/run/pelora")},
                                {"peloraContainsPublic", Variant::Integer(1)}};
const std::string kAddressLine = R"(peloraHostAddress "192.0.2.1")";

class ServerTabTest : public testing::TabTest {
 protected:
  void OpenOn(const std::vector<FakeAttributes>& servers) { Open("CPropPageServer", servers); }
};

TEST_F(ServerTabTest, ShowsAServer) {
  OpenOn({kServer});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  EXPECT_EQ(Text(IDC_HOST_ADDRESS), "192.0.2.1");
  EXPECT_EQ(Text(IDC_HTTP_PORT), "236");
  EXPECT_EQ(Text(IDC_SSL_PORT), "237");
  EXPECT_EQ(Text(IDC_FILE_PATH), "/var/run/pelora");
  EXPECT_EQ(dialog().Check(IDC_CONTAINS_PUBLIC), CheckState::kChecked);
}

TEST_F(ServerTabTest, AComputerThatIsNoServerShowsNoughts) {
  OpenOn({{}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  EXPECT_EQ(Text(IDC_HOST_ADDRESS), "");
  EXPECT_EQ(Text(IDC_HTTP_PORT), "0");
  EXPECT_EQ(Text(IDC_SSL_PORT), "0");
  EXPECT_EQ(dialog().Check(IDC_CONTAINS_PUBLIC), CheckState::kUnchecked);
}

TEST_F(ServerTabTest, EverythingCanBeEditedWhateverTheBoxSays) {
  OpenOn({{}});
  for (int round = 0; round < 2; ++round) {
    for (const ControlId id : {245U, 246U, 247U, 249U, 243U}) {
      EXPECT_TRUE(dialog().IsEnabled(id)) << id;
    }
    page().Click(IDC_PELORA_ACCOUNT);
  }
}

/// What each edit writes beside what is always written.
struct Edit {
  const char* name;
  ControlId control;
  /// Nothing: a click.
  const char* text;
  Lines written;
};

void PrintTo(const Edit& edit, std::ostream* out) { *out << edit.name; }

class ServerEditTest : public ServerTabTest, public ::testing::WithParamInterface<Edit> {};

INSTANTIATE_TEST_SUITE_P(
    EveryField, ServerEditTest,
    ::testing::Values(
        Edit{"Account", 214, nullptr, {"peloraAccount 0", kAddressLine, "peloraContainsPublic 1"}},
        Edit{"Address", 245, "host", {R"(peloraHostAddress "host")", "peloraContainsPublic 1"}},
        Edit{"Http", 246, "80", {kAddressLine, "peloraHttpPort 80", "peloraContainsPublic 1"}},
        Edit{"NoHttp", 246, "", {kAddressLine, "peloraHttpPort cleared", "peloraContainsPublic 1"}},
        Edit{"Ssl", 247, "0443", {kAddressLine, "peloraSslPort 443", "peloraContainsPublic 1"}},
        Edit{"NoSsl", 247, "", {kAddressLine, "peloraSslPort cleared", "peloraContainsPublic 1"}},
        Edit{"Path", 249, "/x", {kAddressLine, R"(peloraFilePath "/x")", "peloraContainsPublic 1"}},
        Edit{"Public", 243, nullptr, {kAddressLine, "peloraContainsPublic 0"}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(ServerEditTest, IsWrittenBesideAddressAndPublicStoreAndOnce) {
  OpenOn({kServer});
  const Edit& edit = GetParam();
  if (edit.text == nullptr) {
    page().Click(edit.control);
  } else {
    EXPECT_EQ(page().user().EraseText(edit.control), UserAnswer::kDone);
    EXPECT_EQ(page().user().TypeText(edit.control, edit.text), UserAnswer::kDone);
  }
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Applied(), edit.written);
  EXPECT_EQ(Applied().size(), 2U) << "address and public store alone";
}

TEST_F(ServerTabTest, EverythingIsWrittenInTheOrderOfTheFields) {
  OpenOn({kServer});
  page().Click(IDC_CONTAINS_PUBLIC);
  page().Type(IDC_FILE_PATH, "/new");
  page().Type(IDC_SSL_PORT, "2");
  page().Type(IDC_HTTP_PORT, "1");
  page().Type(IDC_HOST_ADDRESS, "new");
  page().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Applied(),
            (Lines{"peloraAccount 0", R"(peloraHostAddress "new")", "peloraHttpPort 1",
                   "peloraSslPort 2", R"(peloraFilePath "/new")", "peloraContainsPublic 0"}));
}

TEST_F(ServerTabTest, PortsTakeDigitsOnly) {
  OpenOn({kServer});
  EXPECT_EQ(page().user().TypeText(IDC_HTTP_PORT, "a7"), UserAnswer::kCharactersRefused);
  EXPECT_EQ(page().user().TypeText(IDC_SSL_PORT, "-b"), UserAnswer::kCharactersRefused);
  EXPECT_EQ(Text(IDC_HTTP_PORT), "2367");
  EXPECT_EQ(Text(IDC_SSL_PORT), "237");
}

TEST_F(ServerTabTest, PortsHaveNoUpperLimit) {
  OpenOn({kServer});
  page().Type(IDC_HTTP_PORT, "70000");
  EXPECT_EQ(Applied(), (Lines{kAddressLine, "peloraHttpPort 70000", "peloraContainsPublic 1"}));
}

// Validation.

/// Fields that are empty, and what is said.
struct Need {
  const char* name;
  std::vector<ControlId> empty;
  const char* message;
};

void PrintTo(const Need& need, std::ostream* out) { *out << need.name; }

class ServerNeedTest : public ServerTabTest, public ::testing::WithParamInterface<Need> {};

INSTANTIATE_TEST_SUITE_P(
    EveryNeed, ServerNeedTest,
    ::testing::Values(Need{"Nothing", {}, ""}, Need{"Address", {245}, "Missing Server Address"},
                      Need{"HttpAlone", {246}, ""}, Need{"SslAlone", {247}, ""},
                      Need{"BothPorts", {246, 247}, "Missing HTTP/SSL Port"},
                      Need{"Path", {249}, "Missing File Path"},
                      Need{"AddressFirst", {245, 246, 247, 249}, "Missing Server Address"},
                      Need{"PortsBeforePath", {246, 247, 249}, "Missing HTTP/SSL Port"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(ServerNeedTest, IsSaidWhetherTheServerIsEnabledOrNot) {
  for (const std::int32_t account : {1, 0}) {
    FakeAttributes server = kServer;
    server["peloraAccount"] = Variant::Integer(account);
    OpenOn({server});
    for (const ControlId id : GetParam().empty) {
      EXPECT_EQ(page().user().EraseText(id), UserAnswer::kDone);
    }
    const std::string message = GetParam().message;
    if (message.empty()) {
      EXPECT_EQ(Applied().size(), 2U + GetParam().empty.size());
    } else {
      EXPECT_EQ(Refusal(), "Validation of input fields failed: " + message);
    }
  }
}

TEST_F(ServerTabTest, IsRefusedAlsoWithoutRoomForAMessage) {
  OpenOn({{}});
  EXPECT_EQ(page().page().ValidateAll(nullptr), E_FAIL);
}

TEST_F(ServerTabTest, BlanksAreAnAddressAndAPath) {
  OpenOn({kServer});
  page().Type(IDC_HOST_ADDRESS, " ");
  page().Type(IDC_FILE_PATH, " ");
  EXPECT_EQ(Applied(),
            (Lines{R"(peloraHostAddress " ")", R"(peloraFilePath " ")", "peloraContainsPublic 1"}));
}

TEST_F(ServerTabTest, AnAddressThatIsAbsentKeepsTheComputerFromBeingSaved) {
  OpenOn({{}});
  EXPECT_EQ(Refusal(), "Validation of input fields failed: Missing Server Address");
}

// Several servers.

TEST_F(ServerTabTest, SeveralServersOfOneAddressAreSavedWithoutIt) {
  OpenOn({kServer, kServer, kServer});
  page().Click(IDC_PELORA_ACCOUNT);
  page().Type(IDC_HTTP_PORT, "80");
  const Lines written = {"peloraAccount 0", "peloraHttpPort 80"};
  EXPECT_EQ(Applied(), written);
  EXPECT_EQ(Staged(1), written);
  EXPECT_EQ(Staged(2), written);
}

TEST_F(ServerTabTest, SeveralServersOfDifferentAddressesAreRefused) {
  FakeAttributes other = kServer;
  other["peloraHostAddress"] = Variant::String("192.0.2.2");
  OpenOn({kServer, other});
  EXPECT_EQ(Text(IDC_HOST_ADDRESS), "");
  page().Type(IDC_HTTP_PORT, "80");
  EXPECT_EQ(Refusal(), "Validation of input fields failed: Missing Server Address");
}

TEST_F(ServerTabTest, ValuesThatDifferLeaveTheirControlsEmpty) {
  OpenOn({kServer, {{"peloraHostAddress", Variant::String("192.0.2.1")}}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  EXPECT_EQ(dialog().Check(IDC_CONTAINS_PUBLIC), CheckState::kIndeterminate);
  EXPECT_EQ(Text(IDC_HOST_ADDRESS), "192.0.2.1");
  EXPECT_EQ(Text(IDC_HTTP_PORT), "");
  EXPECT_EQ(Text(IDC_SSL_PORT), "");
  EXPECT_EQ(Text(IDC_FILE_PATH), "");
}

TEST_F(ServerTabTest, AnUndecidedBoxGoesRoundThreeStatesAndIsWrittenAsUncheckedUnlessChecked) {
  FakeAttributes other = kServer;
  other["peloraAccount"] = Variant::Integer(0);
  const std::array states = {CheckState::kUnchecked, CheckState::kChecked,
                             CheckState::kIndeterminate};
  for (std::size_t clicks = 1; clicks <= states.size(); ++clicks) {
    OpenOn({kServer, other});
    for (std::size_t click = 0; click < clicks; ++click) page().Click(IDC_PELORA_ACCOUNT);
    EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), states.at(clicks - 1));
    EXPECT_EQ(Applied(), Lines{clicks == 2 ? "peloraAccount 1" : "peloraAccount 0"});
  }
}

}  // namespace
}  // namespace pelora
