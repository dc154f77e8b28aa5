// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/recording_directory.h"

#include "hosts/changes/change_writer.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/new_store_object.h"
#include "tests/support/observed_store.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class RecordingDirectoryTest : public ChangesBench {
 protected:
  /// Binds the user anew, as a page does for every loading and every apply.
  [[nodiscard]] Ref<IADs> Bind(RecordingDirectory& directory, const std::string& dn = kUser) {
    std::vector<Ref<IADs>> objects;
    const std::vector<std::string> paths = {"LDAP://" + dn};
    EXPECT_EQ(directory.BindPaths(paths, IID_IADs, objects), S_OK);
    return objects.empty() ? Ref<IADs>() : objects.front();
  }
  [[nodiscard]] Ref<IADs> Bind() { return Bind(directory_); }
  void Load(const char* attribute) {
    Variant value;
    static_cast<void>(Bind()->Get(attribute, value));
  }
  void Apply(const char* attribute, const Variant& value, const std::string& dn = kUser) {
    const Ref<IADs> object = Bind(directory_, dn);
    EXPECT_EQ(object->Put(attribute, value), S_OK);
    EXPECT_EQ(object->SetInfo(), S_OK);
  }
  /// The one value that is recorded.
  [[nodiscard]] ValueChange Recorded() {
    const std::vector<Change> changes = directory_.TakeRecorded();
    if (changes.size() != 1 || changes[0].attributes.size() != 1) {
      ADD_FAILURE() << changes.size();
      return {};
    }
    return changes[0].attributes[0];
  }
  [[nodiscard]] Result WriteAll() {
    Result last;
    for (const Change& change : directory_.TakeRecorded()) {
      last = ChangeWriter(interrupted_).Write(change);
      directory_.Settle(change, last);
    }
    return last;
  }

  testing::ObservedStore observed_{*store_};
  RecordingDirectory directory_{observed_};
};

TEST_F(RecordingDirectoryTest, ACommitIsRecordedAndSendsNothing) {
  Store("peloraQuotaHard", {"100"});
  Load("peloraQuotaHard");
  observed_.log.clear();
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(observed_.log, ElementsAre(std::string("read ") + kUser));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("100"));
  EXPECT_TRUE(directory_.HasRecorded());
  const ValueChange change = Recorded();
  EXPECT_EQ(change.attribute, "peloraQuotaHard");
  EXPECT_FALSE(change.is_list);
  EXPECT_THAT(change.seen, ElementsAre("100"));
  EXPECT_THAT(change.wanted, ElementsAre("200"));
}

TEST_F(RecordingDirectoryTest, WhatThePageWasToldCountsAndNotWhatABindingReads) {
  Store("peloraQuotaHard", {"100"});
  Load("peloraQuotaHard");
  Store("peloraQuotaHard", {"150"});
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(Recorded().seen, ElementsAre("100"));
  EXPECT_EQ(WriteAll().outcome, Outcome::kRefused);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("150"));
}

TEST_F(RecordingDirectoryTest, ThatNothingWasSetIsToldToo) {
  Load("peloraQuotaHard");
  Store("peloraQuotaHard", {"150"});
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(Recorded().seen, IsEmpty());
}

TEST_F(RecordingDirectoryTest, WhatThePageNeverAskedForIsAsTheLastBindingReadIt) {
  Store("peloraQuotaHard", {"100"});
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(Recorded().seen, ElementsAre("100"));
}

TEST_F(RecordingDirectoryTest, WhatNobodyReadIsReadBeforeItIsRecorded) {
  Store("peloraQuotaHard", {"100"});
  Ref<IADs> object;
  ASSERT_EQ(directory_.ADsGetObject(std::string("LDAP://") + kUser, IID_IADs, object), S_OK);
  ASSERT_EQ(object->Put("peloraQuotaHard", Variant::Integer(200)), S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  EXPECT_THAT(Recorded().seen, ElementsAre("100"));

  // What cannot be read cannot be recorded.
  directory_.Forget(kUser);
  RecordingDirectory unlucky(interrupted_);
  ASSERT_EQ(unlucky.ADsGetObject(std::string("LDAP://") + kUser, IID_IADs, object), S_OK);
  ASSERT_EQ(object->Put("peloraQuotaHard", Variant::Integer(200)), S_OK);
  interrupted_.before_read = [] { return StoreStatus{ldap::kLdapBusy, "locked"}; };
  EXPECT_EQ(object->SetInfo(), ldap::HresultOfLdap(ldap::kLdapBusy));
  EXPECT_EQ(unlucky.last_failure().text, "locked");
  EXPECT_FALSE(unlucky.HasRecorded());
  object.Reset();
}

TEST_F(RecordingDirectoryTest, WhatIsStagedAsItWasSeenIsNoChange) {
  Store("peloraResourceType", {"room"});
  Load("peloraResourceType");
  Store("peloraResourceType", {"equipment"});
  Apply("peloraResourceType", Variant::String("room"));
  EXPECT_FALSE(directory_.HasRecorded());
  EXPECT_THAT(directory_.TakeRecorded(), IsEmpty());
}

TEST_F(RecordingDirectoryTest, ClearingAndListsAreChangesOfValues) {
  Store("otherMailbox", {"a@x", "b@x"});
  Load("otherMailbox");
  Ref<IADs> object = Bind();
  ASSERT_EQ(object->Put("OTHERMAILBOX", Variant::StringArray({"b@x", "c@x"})), S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  ValueChange change = Recorded();
  EXPECT_EQ(change.attribute, "otherMailbox");
  EXPECT_TRUE(change.is_list);
  EXPECT_THAT(change.seen, ElementsAre("a@x", "b@x"));
  EXPECT_THAT(change.wanted, ElementsAre("b@x", "c@x"));

  object = Bind();
  ASSERT_EQ(object->PutEx(ADS_PROPERTY_CLEAR, "otherMailbox", Variant()), S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  EXPECT_THAT(Recorded().wanted, IsEmpty());
  object = Bind();
  ASSERT_EQ(
      object->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"a@x", "d@x"})),
      S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  EXPECT_THAT(Recorded().wanted, ElementsAre("a@x", "b@x", "d@x"));
  object = Bind();
  ASSERT_EQ(object->PutEx(ADS_PROPERTY_DELETE, "otherMailbox", Variant::StringArray({"a@x"})),
            S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  EXPECT_THAT(Recorded().wanted, ElementsAre("b@x"));
}

TEST_F(RecordingDirectoryTest, TwoCommitsOfAnObjectBecomeOneChange) {
  Apply("peloraQuotaHard", Variant::Integer(200));
  Apply("peloraQuotaWarn", Variant::Integer(100));
  Apply("peloraQuotaHard", Variant::Integer(300));
  const std::vector<Change> changes = directory_.TakeRecorded();
  ASSERT_THAT(changes, SizeIs(1));
  ASSERT_THAT(changes[0].attributes, SizeIs(2));
  EXPECT_THAT(changes[0].Find("peloraQuotaHard")->wanted, ElementsAre("300"));
}

TEST_F(RecordingDirectoryTest, AfterAWriteWhatWasWrittenIsWhatIsSeen) {
  Store("peloraQuotaHard", {"100"});
  Load("peloraQuotaHard");
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_FALSE(directory_.HasRecorded());
  Apply("peloraQuotaHard", Variant::Integer(300));
  EXPECT_THAT(Recorded().seen, ElementsAre("200"));
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("300"));
}

TEST_F(RecordingDirectoryTest, WhatCouldNotBeWrittenGoesAlongWithTheNextRecording) {
  Load("peloraQuotaHard");
  Apply("peloraQuotaHard", Variant::Integer(200));
  interrupted_.before_write = [](std::size_t) {
    return StoreStatus{ldap::kLdapServerDown, "gone"};
  };
  EXPECT_EQ(WriteAll().outcome, Outcome::kFailed);
  interrupted_.before_write = nullptr;
  // The page has forgotten what it staged; it stages something else, or nothing.
  Apply("peloraQuotaWarn", Variant::Integer(100));
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_THAT(Stored("peloraQuotaWarn"), ElementsAre("100"));
  EXPECT_FALSE(directory_.HasRecorded());
}

TEST_F(RecordingDirectoryTest, WhatIsStagedAgainReplacesWhatIsPending) {
  Load("peloraQuotaHard");
  Apply("peloraQuotaHard", Variant::Integer(200));
  interrupted_.before_write = [](std::size_t) { return StoreStatus{ldap::kLdapBusy, "locked"}; };
  EXPECT_EQ(WriteAll().outcome, Outcome::kFailed);
  interrupted_.before_write = nullptr;
  Apply("peloraQuotaHard", Variant::Integer(250));
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("250"));
}

TEST_F(RecordingDirectoryTest, WhatIsPutBackAsItWasIsNoLongerPending) {
  Store("peloraQuotaHard", {"100"});
  Load("peloraQuotaHard");
  Apply("peloraQuotaHard", Variant::Integer(200));
  interrupted_.before_write = [](std::size_t) { return StoreStatus{ldap::kLdapBusy, "locked"}; };
  EXPECT_EQ(WriteAll().outcome, Outcome::kFailed);
  Apply("peloraQuotaHard", Variant::Integer(100));
  EXPECT_FALSE(directory_.HasRecorded());
}

TEST_F(RecordingDirectoryTest, EachObjectHasItsOwnPending) {
  const std::string other =
      "CN=Mehmet Yıldız,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  Apply("peloraQuotaHard", Variant::Integer(11), kUser);
  Apply("peloraQuotaHard", Variant::Integer(22), other);
  interrupted_.before_write = [](std::size_t count) -> std::optional<StoreStatus> {
    if (count == 0) return StoreStatus{ldap::kLdapBusy, "locked"};
    return std::nullopt;
  };
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  const std::vector<Change> pending = directory_.TakeRecorded();
  ASSERT_THAT(pending, SizeIs(1));
  EXPECT_EQ(pending[0].dn, kUser);
  EXPECT_THAT(Read(*store_, other, "peloraQuotaHard"), ElementsAre("22"));
  directory_.Forget("cn=heike NAUMANN" +
                    std::string(kUser).substr(std::string("CN=Heike Naumann").size()));
  EXPECT_FALSE(directory_.HasRecorded());
}

TEST_F(RecordingDirectoryTest, WhatWasLeftOutIsNotRecordedAgainUntilItIsAnother) {
  Store("peloraQuotaHard", {"100"});
  Apply("peloraQuotaHard", Variant::Integer(200));
  directory_.LeaveOut(kUser);
  EXPECT_FALSE(directory_.HasRecorded());
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_FALSE(directory_.HasRecorded()) << "the page stages it with every apply";
  Apply("peloraQuotaSoft", Variant::Integer(50));
  EXPECT_EQ(Recorded().attribute, "peloraQuotaSoft") << "that is another attribute";
  directory_.Forget(kUser);
  Apply("peloraQuotaHard", Variant::Integer(300));
  EXPECT_THAT(Recorded().wanted, ElementsAre("300"));
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(Recorded().wanted, ElementsAre("200")) << "it was another in between";
}

TEST_F(RecordingDirectoryTest, WhatWasLeftOutAndIsTakenInAgainIsRecorded) {
  Apply("peloraQuotaHard", Variant::Integer(200));
  directory_.LeaveOut(kUser);
  const std::vector<std::string_view> other = {"peloraQuotaSoft"};
  directory_.TakeInAgain(other);
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_FALSE(directory_.HasRecorded());
  const std::vector<std::string_view> same = {"PELORAQUOTAHARD"};
  directory_.TakeInAgain(same);
  Apply("peloraQuotaHard", Variant::Integer(200));
  EXPECT_THAT(Recorded().wanted, ElementsAre("200"));
}

TEST_F(RecordingDirectoryTest, AConflictThatWasShownIsReplacedKnowingly) {
  Store("peloraQuotaHard", {"100"});
  Load("peloraQuotaHard");
  Store("peloraQuotaHard", {"150"});
  Apply("peloraQuotaHard", Variant::Integer(200));
  const Result refused = WriteAll();
  ASSERT_EQ(refused.outcome, Outcome::kRefused);
  EXPECT_EQ(WriteAll().outcome, Outcome::kRefused);
  directory_.AcceptAsSeen(refused);
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
}

TEST_F(RecordingDirectoryTest, OnlyWhatIsKeptIsRecorded) {
  RecordingDirectory directory(
      observed_, {.keeps = [](std::string_view name) { return name == "peloraQuotaHard"; }});
  const Ref<IADs> object = Bind(directory);
  ASSERT_EQ(object->Put("peloraQuotaHard", Variant::Integer(1)), S_OK);
  ASSERT_EQ(object->Put("peloraResourceType", Variant::String("room")), S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  const std::vector<Change> changes = directory.TakeRecorded();
  ASSERT_THAT(changes, SizeIs(1));
  EXPECT_THAT(changes[0].attributes, SizeIs(1));
}

TEST_F(RecordingDirectoryTest, AnObjectThatWasHandedOverIsNotReadAgain) {
  Entry entry;
  ASSERT_TRUE(store_->Read(kUser, {}, entry).Ok());
  entry.attributes["peloraQuotaHard"] = {"42"};
  directory_.Give(std::make_shared<const Entry>(entry));
  Variant value;
  EXPECT_EQ(Bind()->Get("peloraQuotaHard", value), S_OK);
  EXPECT_EQ(value, Variant::Integer(42));
  Ref<IADs> object;
  EXPECT_EQ(directory_.ADsGetObject(std::string("LDAP://") + kUser, IID_IADsUser, object), S_OK);
  EXPECT_THAT(observed_.log, IsEmpty());
  directory_.Forget(kUser);
  static_cast<void>(Bind());
  EXPECT_THAT(observed_.log, SizeIs(1));
}

TEST_F(RecordingDirectoryTest, WhatWasHandedOverIsNotTakenForTheWholeObject) {
  Store("telephoneNumber", {"4711"});
  const auto part = std::make_shared<const Entry>(
      Entry{.dn = kUser, .attributes = {{"objectClass", {"user"}}, {"peloraQuotaHard", {"42"}}}});
  directory_.Give(part);
  Entry whole;
  ASSERT_TRUE(directory_.store().Read(kUser, {}, whole).Ok());
  EXPECT_THAT(whole.attributes["telephoneNumber"], ElementsAre("4711"));
}

TEST_F(RecordingDirectoryTest, RecordingsThatShareAnObjectRecordApart) {
  const auto shared = std::make_shared<const Entry>(
      Entry{.dn = kUser, .attributes = {{"objectClass", {"user"}}, {"peloraQuotaHard", {"42"}}}});
  RecordingDirectory other(observed_);
  directory_.Give(shared);
  other.Give(shared);
  Apply("peloraQuotaHard", Variant::Integer(43));
  EXPECT_THAT(Recorded().seen, ElementsAre("42"));
  EXPECT_FALSE(other.HasRecorded());
  Variant value;
  EXPECT_EQ(Bind(other)->Get("peloraQuotaHard", value), S_OK);
  EXPECT_EQ(value, Variant::Integer(42));
  EXPECT_THAT(observed_.log, IsEmpty());
}

TEST_F(RecordingDirectoryTest, NothingComesAlongThatTheTabsDoNotKnow) {
  Store("telephoneNumber", {"4711"});
  const Ref<IADs> object = Bind();
  Variant value;
  EXPECT_EQ(object->Get("peloraQuotaHard", value), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_THAT(observed_.log, SizeIs(1));
  EXPECT_EQ(object->Get("telephoneNumber", value), S_OK);
  EXPECT_EQ(value, Variant::String("4711"));
  EXPECT_THAT(observed_.log, SizeIs(2));
}

TEST_F(RecordingDirectoryTest, AFailedReadingIsTheDirectorysOwn) {
  Ref<IADs> object;
  EXPECT_EQ(directory_.ADsGetObject(std::string("LDAP://CN=Nobody,") + kBase, IID_IADs, object),
            kNoSuchObject);
  EXPECT_EQ(directory_.last_failure().code, ldap::kLdapNoSuchObject);
  EXPECT_NE(directory_.last_failure().text, "");
}

TEST_F(RecordingDirectoryTest, ANewObjectIsRecordedAndCanBeReadUntilItIsSettled) {
  const std::string dn = std::string("CN=New,") + kBase;
  auto failure = std::make_shared<StoreStatus>();
  const auto object = Ref<ldap::NewStoreObject>::Adopt(
      new ldap::NewStoreObject(directory_.store(), dn, "contact", failure));
  ASSERT_EQ(object->Put("mail", Variant::String("new@x")), S_OK);
  ASSERT_EQ(object->SetInfo(), S_OK);
  Variant value;
  EXPECT_EQ(Bind(directory_, dn)->Get("mail", value), S_OK);
  EXPECT_EQ(value, Variant::String("new@x"));
  Apply("peloraAccount", Variant::Integer(1), dn);
  std::vector<Change> changes = directory_.TakeRecorded();
  ASSERT_THAT(changes, SizeIs(1));
  EXPECT_EQ(changes[0].kind, Change::Kind::kAdd);
  EXPECT_THAT(changes[0].Find("mail")->wanted, ElementsAre("new@x"));
  EXPECT_THAT(changes[0].Find("peloraAccount")->wanted, ElementsAre("1"));
  EXPECT_EQ(WriteAll().outcome, Outcome::kChanged);
  EXPECT_FALSE(directory_.HasRecorded());
  EXPECT_THAT(Read(*store_, dn, "peloraAccount"), ElementsAre("1"));
}

}  // namespace
}  // namespace pelora::changes
