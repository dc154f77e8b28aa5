// SPDX-License-Identifier: Apache-2.0
// What an apply of the features tab writes, and what it leaves behind when something fails.
#include <gtest/gtest.h>

#include <array>

#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::kAda;
using testing::kArchiverRow;
using testing::kBob;
using testing::kCyd;
using testing::kImapRow;
using testing::kPop3Row;
using Lines = std::vector<std::string>;

class FeaturesApplyTest : public testing::FeaturesTest {
 protected:
  void OpenOnThree() {
    AddUser(kAda, {});
    AddUser(kBob, {.disabled = {"imap"}});
    AddUser(kCyd, {.enabled = {"imap", "pop3"}});
    Open({kAda, kBob, kCyd});
  }
  void Enable(RowIndex row) {
    Select({row});
    EXPECT_EQ(user().Click(IDC_FEATURE_ENABLE), UserAnswer::kDone);
  }
  /// Adds a server in the archiver's dialog.
  void AddServer(const std::string& name) {
    bench_.dialogs.PlayNext([name](HeadlessUser& user) {
      user.TypeText(IDC_ARCHIVER_NAME, name);
      user.Click(IDC_ARCHIVER_ADD);
      user.Click(1);
    });
    DoubleClick(kArchiverRow);
  }
  bool Apply() {
    bench_.directory.ClearCalls();
    const bool applied = page().Apply();
    EXPECT_EQ(bench_.directory.live_objects(), 0U);
    return applied;
  }
  /// The feature lists of a user: "enabled / disabled".
  std::string ListsOf(const std::string& path) {
    return Stored(path, testing::kEnabledList) + " / " + Stored(path, testing::kDisabledList);
  }
};

const std::string kPutAda = "Put " + kAda + " ";
const std::string kPutBob = "Put " + kBob + " ";
const std::string kClearAda = "PutEx CLEAR " + kAda + " ";
const std::string kClearBob = "PutEx CLEAR " + kBob + " ";

TEST_F(FeaturesApplyTest, UntouchedItStagesNothing) {
  OpenOnThree();
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{"SetInfo " + kAda, "SetInfo " + kBob, "SetInfo " + kCyd}));
  EXPECT_EQ(Boxes(), Lines{});
}

TEST_F(FeaturesApplyTest, StagesEveryUserAndThenCommitsThemAll) {
  OpenOnThree();
  Enable(kImapRow);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{kPutAda + "peloraEnabledFeatures \"imap\"",
                                    kClearAda + "peloraDisabledFeatures nothing",
                                    kPutBob + "peloraEnabledFeatures \"imap\"",
                                    kClearBob + "peloraDisabledFeatures nothing", "SetInfo " + kAda,
                                    "SetInfo " + kBob, "SetInfo " + kCyd}));
  EXPECT_EQ(ListsOf(kAda), "\"imap\" / nothing");
  EXPECT_EQ(ListsOf(kBob), "\"imap\" / nothing");
  EXPECT_EQ(ListsOf(kCyd), R"(["imap", "pop3"] / nothing)");
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: Enabled"}));
}

TEST_F(FeaturesApplyTest, ASecondApplyWritesNothingMore) {
  OpenOnThree();
  Enable(kImapRow);
  EXPECT_TRUE(Apply());
  // Another administrator disables it meanwhile: the choice was written and is over.
  bench_.directory.SetValue(kAda, testing::kEnabledList, {});
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{"SetInfo " + kAda, "SetInfo " + kBob, "SetInfo " + kCyd}));
  // Disabling it from there is a choice again.
  Select({kImapRow});
  EXPECT_EQ(Buttons(), "Disable");
  EXPECT_EQ(user().Click(IDC_FEATURE_DISABLE), UserAnswer::kDone);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(ListsOf(kCyd), "\"pop3\" / \"imap\"");
}

TEST_F(FeaturesApplyTest, WhatAnotherAdministratorWroteMeanwhileIsKept) {
  OpenOnThree();
  Enable(kImapRow);
  bench_.directory.SetValue(kAda, testing::kEnabledList, Variant::String("mobile"));
  EXPECT_TRUE(Apply());
  EXPECT_EQ(ListsOf(kAda), R"(["imap", "mobile"] / nothing)");
}

TEST_F(FeaturesApplyTest, AFeatureThatOneUserHasAndAnotherDoesNotCanOnlyBeDisabled) {
  AddUser(kAda, {.enabled = {"pop3"}});
  AddUser(kBob, {});
  Open({kAda, kBob});
  EXPECT_EQ(Rows().back(), "pop3: Enabled");
  Select({kPop3Row});
  dialog().Notify(IDC_FEATURE_ENABLE, ControlNotification::kClicked);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(ListsOf(kBob), "nothing / nothing");
  EXPECT_EQ(user().Click(IDC_FEATURE_DISABLE), UserAnswer::kDone);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(ListsOf(kAda), "nothing / \"pop3\"");
  EXPECT_EQ(ListsOf(kBob), "nothing / \"pop3\"");
}

TEST_F(FeaturesApplyTest, AUserWithTheFeatureInBothListsKeepsBoth) {
  OpenOn({.enabled = {"imap"}, .disabled = {"imap"}});
  EXPECT_EQ(Rows()[kImapRow], "imap: (Ambiguous)");
  Select({kImapRow});
  EXPECT_EQ(user().Click(IDC_FEATURE_DISABLE), UserAnswer::kDone);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), Lines{"SetInfo " + kAda});
  EXPECT_EQ(ListsOf(kAda), "\"imap\" / \"imap\"");
}

TEST_F(FeaturesApplyTest, ServersAreStagedBehindTheListsOfAllUsersAndOnEveryApply) {
  AddUser(kAda, {});
  AddUser(kBob, {.enabled = {"imap"}, .servers = {}});
  Open({kAda, kBob});
  AddServer("arc1");
  Select({kPop3Row});
  EXPECT_EQ(user().Click(IDC_FEATURE_DISABLE), UserAnswer::kDone);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(
      bench_.Writes(),
      (Lines{
          kClearAda + "peloraEnabledFeatures nothing", kPutAda + "peloraDisabledFeatures \"pop3\"",
          kPutBob + "peloraEnabledFeatures \"imap\"", kPutBob + "peloraDisabledFeatures \"pop3\"",
          kPutAda + "peloraUserArchiveServers \"arc1\"",
          kPutBob + "peloraUserArchiveServers \"arc1\"", "SetInfo " + kAda, "SetInfo " + kBob}));
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{kPutAda + "peloraUserArchiveServers \"arc1\"",
                                    kPutBob + "peloraUserArchiveServers \"arc1\"",
                                    "SetInfo " + kAda, "SetInfo " + kBob}));
}

/// Properties of one text of each user, which an edit replaces; a box says that it is edited.
template <char name>
class TextProps final : public IFeatureProps {
 public:
  explicit TextProps(const Platform& platform) : platform_(platform) {}

  HRESULT Load(const BoundObjects& objects) override {
    ambiguous_ = SummarizeString(objects, Attribute()).value() == "?";
    return S_OK;
  }
  HRESULT Edit() override {
    Message message;
    message.text = status_;
    platform_.message_box.Show(nullptr, message);
    modified_ = true;
    return S_OK;
  }
  HRESULT Save(const BoundObjects& objects) override {
    for (const Ref<IADs>& object : objects) {
      if (const HRESULT status = object->Put(Attribute(), Variant::String(status_));
          FAILED(status)) {
        return status;
      }
    }
    return S_OK;
  }
  const std::string& StatusText() override { return status_; }
  bool IsModified() const override { return modified_; }
  bool IsAmbiguous() const override { return ambiguous_; }
  std::function<void()> TakeDown() override {
    return [] {};
  }

  static const char* Attribute() { return name == 'a' ? "description" : "mail"; }
  static std::shared_ptr<IFeatureProps> Create(const Platform& platform) {
    return std::make_shared<TextProps>(platform);
  }

 private:
  const Platform& platform_;
  std::string status_{name};
  bool modified_ = false;
  bool ambiguous_ = false;
};

constexpr std::array<std::string_view, 1> kPlainAmong = {"b"};
constexpr std::array kTwoWithProps = {FeatureWithProps{"c", &TextProps<'c'>::Create},
                                      FeatureWithProps{"a", &TextProps<'a'>::Create}};
constexpr FeatureTable kThree = {kPlainAmong, kTwoWithProps};

TEST_F(FeaturesApplyTest, OfTwoFeaturesWithPropertiesEachIsItsOwn) {
  bench_.directory.AddObject(kAda, {{"mail", Variant::String("?")}});
  bench_.directory.AddObject(kBob, {{"mail", Variant::String("?")}});
  Open({kAda, kBob}, kThree);
  EXPECT_EQ(Rows(), (Lines{"a: a", "b: (Unset)", "c: (c)"})) << "whose colour it is";
  DoubleClick(2);
  EXPECT_EQ(Boxes(), Lines{"c"}) << "which is edited";
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{kPutAda + "mail \"c\"", kPutBob + "mail \"c\"",
                                    "SetInfo " + kAda, "SetInfo " + kBob}))
      << "the other one is not saved";
  Select({0});
  EXPECT_EQ(user().Click(IDC_FEATURE_PROPERTIES), UserAnswer::kDone);
  EXPECT_EQ(Boxes(), Lines{"a"});
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{kPutAda + "description \"a\"", kPutBob + "description \"a\"",
                                    kPutAda + "mail \"c\"", kPutBob + "mail \"c\"",
                                    "SetInfo " + kAda, "SetInfo " + kBob}))
      << "in the order of rows";
  // The first failure ends it: the second is not saved then.
  faults().FailAttribute(FaultPoint::kPut, "description", 1, E_ACCESSDENIED);
  EXPECT_FALSE(Apply());
  EXPECT_EQ(bench_.Writes(), Lines{});
}

TEST_F(FeaturesApplyTest, RemovingEveryServerClearsThemOnEveryUser) {
  AddUser(kAda, {.servers = {"arc1", "arc2"}});
  AddUser(kBob, {.servers = {"arc2", "arc1"}});
  Open({kAda, kBob});
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    for (int server = 0; server < 2; ++server) {
      user.SelectListRow(IDC_ARCHIVER_LIST, 0);
      user.Click(IDC_ARCHIVER_REMOVE);
    }
    user.Click(1);
  });
  DoubleClick(kArchiverRow);
  EXPECT_EQ(Rows().front(), "archiver: Disabled");
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), (Lines{kClearAda + "peloraUserArchiveServers nothing",
                                    kClearBob + "peloraUserArchiveServers nothing",
                                    "SetInfo " + kAda, "SetInfo " + kBob}));
  EXPECT_EQ(Stored(kBob, testing::kServerList), "nothing");
}

// Failures.

TEST_F(FeaturesApplyTest, AFailedBindingIsShownAndNothingIsWritten) {
  OpenOnThree();
  Enable(kImapRow);
  faults().Fail(FaultPoint::kGetObject, 2, E_ACCESSDENIED);
  EXPECT_FALSE(Apply());
  EXPECT_EQ(Boxes(), Lines{"Unable to get connection with the ldap user\r\n\r\n"
                           "Error code: 0X80070005"});
  EXPECT_EQ(bench_.Writes(), Lines{});
  EXPECT_TRUE(page().IsModified());
}

TEST_F(FeaturesApplyTest, ObjectsAreBoundThroughTheGeneralInterface) {
  OpenOnThree();
  bench_.directory.AddObject(kAda, {}, {});
  EXPECT_TRUE(Apply()) << "no user's interface is asked for any more";
}

TEST_F(FeaturesApplyTest, AFailedValidationIsShownWithItsText) {
  OpenOnThree();
  Enable(kImapRow);
  page().page().RegisterValidate([](std::string* message) {
    *message = "Missing Something";
    return E_FAIL;
  });
  EXPECT_FALSE(Apply());
  EXPECT_EQ(Boxes(), Lines{"Validation of input fields failed: Missing Something\r\n\r\n"
                           "Error code: 0X80004005"});
  EXPECT_EQ(bench_.Writes(), Lines{});
  EXPECT_TRUE(page().IsModified());
}

TEST_F(FeaturesApplyTest, AFailureOnTheSecondUserCommitsNoneAndTheRetryWritesAll) {
  struct Case {
    FaultPoint point;
    const char* attribute;
    std::size_t nth;
    Lines writes;
  };
  const Lines ada = {kPutAda + "peloraEnabledFeatures \"imap\"",
                     kClearAda + "peloraDisabledFeatures nothing"};
  const Lines bob_too = {ada[0], ada[1], kPutBob + "peloraEnabledFeatures \"imap\""};
  for (const Case& row : {Case{FaultPoint::kGet, testing::kEnabledList, 2, ada},
                          Case{FaultPoint::kGet, testing::kDisabledList, 2, ada},
                          Case{FaultPoint::kPut, testing::kEnabledList, 2, ada},
                          Case{FaultPoint::kPutEx, testing::kDisabledList, 2, bob_too}}) {
    SCOPED_TRACE(row.attribute);
    OpenOnThree();
    Enable(kImapRow);
    AddServer("arc1");
    faults().FailAttribute(row.point, row.attribute, row.nth, E_ACCESSDENIED);
    EXPECT_FALSE(Apply());
    EXPECT_EQ(Boxes(), Lines{"Failed to update object: \r\n\r\nError code: 0X80070005"});
    EXPECT_EQ(bench_.Writes(), row.writes);
    EXPECT_EQ(ListsOf(kAda), "nothing / nothing");
    EXPECT_EQ(ListsOf(kBob), "nothing / \"imap\"");
    EXPECT_TRUE(page().IsModified());
    EXPECT_EQ(Rows()[kImapRow], "imap: Enabled");

    EXPECT_TRUE(Apply());
    EXPECT_EQ(ListsOf(kAda), "\"imap\" / nothing");
    EXPECT_EQ(ListsOf(kBob), "\"imap\" / nothing");
    EXPECT_EQ(Stored(kCyd, testing::kServerList), "\"arc1\"");
    EXPECT_EQ(Boxes(), Lines{});
    EXPECT_FALSE(page().IsModified());
  }
}

TEST_F(FeaturesApplyTest, AFailureToStageServersCommitsNone) {
  OpenOnThree();
  Enable(kImapRow);
  AddServer("arc1");
  faults().FailAttribute(FaultPoint::kPut, testing::kServerList, 2, E_ACCESSDENIED);
  EXPECT_FALSE(Apply());
  EXPECT_EQ(Boxes(), Lines{"Unknown error occured\r\n\r\nError code: 0X80070005"});
  EXPECT_EQ(bench_.Writes().back(), kPutAda + "peloraUserArchiveServers \"arc1\"");
  EXPECT_EQ(ListsOf(kAda), "nothing / nothing");
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(Apply());
  EXPECT_EQ(ListsOf(kAda), "\"imap\" / nothing");
  EXPECT_EQ(Stored(kBob, testing::kServerList), "\"arc1\"");
}

TEST_F(FeaturesApplyTest, ACommitThatFailsOnTheSecondUserLeavesTheThirdAndTheRetryEndsIt) {
  OpenOnThree();
  Enable(kImapRow);
  AddServer("arc1");
  faults().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
  EXPECT_FALSE(Apply());
  EXPECT_EQ(Boxes(), Lines{"Unknown error occured\r\n\r\nError code: 0X80070005"});
  EXPECT_EQ(bench_.Writes().back(), "SetInfo " + kAda);
  EXPECT_EQ(ListsOf(kAda), "\"imap\" / nothing");
  EXPECT_EQ(ListsOf(kBob), "nothing / \"imap\"");
  EXPECT_EQ(Stored(kAda, testing::kServerList), "\"arc1\"");
  EXPECT_EQ(Stored(kCyd, testing::kServerList), "nothing");
  EXPECT_TRUE(page().IsModified());

  EXPECT_TRUE(Apply());
  // The first user has the feature now and is left alone; the servers go to all.
  const std::string put_cyd = "Put " + kCyd + " ";
  EXPECT_EQ(bench_.Writes(), (Lines{kPutBob + "peloraEnabledFeatures \"imap\"",
                                    kClearBob + "peloraDisabledFeatures nothing",
                                    kPutAda + "peloraUserArchiveServers \"arc1\"",
                                    kPutBob + "peloraUserArchiveServers \"arc1\"",
                                    put_cyd + "peloraUserArchiveServers \"arc1\"",
                                    "SetInfo " + kAda, "SetInfo " + kBob, "SetInfo " + kCyd}));
  EXPECT_EQ(Stored(kCyd, testing::kServerList), "\"arc1\"");
  EXPECT_FALSE(page().IsModified());
}

TEST_F(FeaturesApplyTest, TheErrorBoxBelongsToThePage) {
  OpenOnThree();
  faults().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  EXPECT_FALSE(Apply());
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  const HeadlessMessageBox::Record& box = bench_.messages.records().front();
  EXPECT_EQ(box.owner, &dialog());
  EXPECT_EQ(box.message.caption, "Pelora Error");
  EXPECT_EQ(box.message.icon, MessageIcon::kError);
}

}  // namespace
}  // namespace pelora
