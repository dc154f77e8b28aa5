// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/undo_file.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "hosts/changes/change_runner.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/harness/unwritable_disk.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class UndoFileTest : public ChangesBench {
 protected:
  [[nodiscard]] std::unique_ptr<UndoFile> Make() {
    std::unique_ptr<UndoFile> file;
    const StoreStatus status = UndoFile::Create(undo_path_, store_->schema(), file);
    EXPECT_TRUE(status.Ok()) << status.text;
    return file;
  }
  static Change Quota(const std::string& seen, const std::string& wanted) {
    return MakeChange(kUser, {"peloraQuotaHard", false, {seen}, {wanted}});
  }
  [[nodiscard]] std::vector<Change> ReadUndo() {
    std::vector<Change> changes;
    const StoreStatus status = ReadUndoFile(undo_path_, store_->schema(), changes);
    EXPECT_TRUE(status.Ok()) << status.text;
    return changes;
  }
  Tally RunAll(const std::vector<Change>& changes, IChangeLog* log) {
    words_.clear();
    return RunChanges(*store_, changes, {.log = log}, [this](std::size_t, const Result& result) {
      words_.emplace_back(WordOf(result.outcome));
    });
  }

  std::string undo_path_ = File("undo.ldif");
  std::vector<std::string> words_;
};

TEST_F(UndoFileTest, IsRemovedWhenItTakesNothingBack) {
  IChangeLog::NoteId first = 0;
  const std::vector<Change> two = {Quota("1", "2"), Quota("2", "3")};
  {
    const std::unique_ptr<UndoFile> file = Make();
    ASSERT_TRUE(file->Note(two, first).Ok());
    file->Withdraw(first);
    file->Withdraw(first + 1);
  }
  EXPECT_FALSE(std::filesystem::exists(undo_path_));
  {
    const std::unique_ptr<UndoFile> file = Make();
    ASSERT_TRUE(file->Note(two, first).Ok());
    file->Withdraw(first);
  }
  EXPECT_THAT(ReadUndo(), SizeIs(1));
}

TEST_F(UndoFileTest, NobodyElsesFileIsRemoved) {
  std::unique_ptr<UndoFile> file = Make();
  std::filesystem::rename(undo_path_, undo_path_ + ".away");
  std::ofstream(undo_path_) << "precious";
  file.reset();
  EXPECT_TRUE(std::filesystem::exists(undo_path_));
}

TEST_F(UndoFileTest, IsReadLatestFirst) {
  const std::unique_ptr<UndoFile> file = Make();
  IChangeLog::NoteId first = 9;
  const std::vector<Change> two = {Quota("1", "2"), Quota("2", "3")};
  ASSERT_TRUE(file->Note(two, first).Ok());
  EXPECT_EQ(first, 0U);
  const std::vector<Change> one = {Quota("3", "4")};
  ASSERT_TRUE(file->Note(one, first).Ok());
  EXPECT_EQ(first, 2U);
  const std::vector<Change> undo = ReadUndo();
  ASSERT_THAT(undo, SizeIs(3));
  EXPECT_THAT(undo[0].attributes[0].seen, ElementsAre("4"));
  EXPECT_THAT(undo[0].attributes[0].wanted, ElementsAre("3"));
  EXPECT_THAT(undo[2].attributes[0].wanted, ElementsAre("1"));
}

TEST_F(UndoFileTest, WhatWasWithdrawnIsPassedOver) {
  const std::unique_ptr<UndoFile> file = Make();
  IChangeLog::NoteId first = 0;
  const std::vector<Change> three = {Quota("1", "2"), Quota("2", "3"), Quota("3", "4")};
  ASSERT_TRUE(file->Note(three, first).Ok());
  file->Withdraw(1);
  const std::vector<Change> undo = ReadUndo();
  ASSERT_THAT(undo, SizeIs(2));
  EXPECT_THAT(undo[0].attributes[0].seen, ElementsAre("4"));
  EXPECT_THAT(undo[1].attributes[0].seen, ElementsAre("2"));
}

TEST_F(UndoFileTest, IsForItsOwnerAndMustNotBeThere) {
  const std::unique_ptr<UndoFile> file = Make();
  struct stat about {};
  ASSERT_EQ(stat(undo_path_.c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0600U);
  std::unique_ptr<UndoFile> second;
  const StoreStatus status = UndoFile::Create(undo_path_, store_->schema(), second);
  EXPECT_EQ(status.code, ldap::kLdapAlreadyExists);
  EXPECT_THAT(status.text, HasSubstr(undo_path_));
  EXPECT_EQ(second, nullptr);
  EXPECT_EQ(UndoFile::Create(File("no/folder"), store_->schema(), second).code, ldap::kLdapOther);
}

TEST_F(UndoFileTest, TakesBackWhatWasDoneAndLeavesWhatWasChangedSince) {
  Store("peloraQuotaHard", {"100"});
  Store("otherMailbox", {"a@x", "b@x"});
  const std::string dn = "CN=Made," + std::string(kBase);
  const std::vector<Change> changes = {
      Quota("100", "200"),
      MakeChange(kUser, {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "c@x"}}),
      Quota("stale", "300"),
      {.kind = Change::Kind::kAdd,
       .dn = dn,
       .attributes = {{"objectClass", true, {}, {"contact"}}, {"mail", false, {}, {"m@x"}}}},
      MakeChange(dn, {"peloraAccount", false, {}, {"1"}}),
  };
  {
    const std::unique_ptr<UndoFile> file = Make();
    RunAll(changes, file.get());
  }
  EXPECT_THAT(words_, ElementsAre("changed", "changed", "refused", "changed", "changed"));
  const std::vector<Change> undo = ReadUndo();
  ASSERT_THAT(undo, SizeIs(4));
  Store("otherMailbox", {"b@x", "c@x", "theirs@x"});
  RunAll(undo, nullptr);
  EXPECT_THAT(words_, ElementsAre("changed", "changed", "changed", "changed"));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("100"));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x", "b@x", "theirs@x"));
  Entry entry;
  EXPECT_EQ(store_->Read(dn, {}, entry).code, ldap::kLdapNoSuchObject);
  // Once more: everything is as before, but for the object, of which nothing is left.
  RunAll(undo, nullptr);
  EXPECT_THAT(words_, ElementsAre("failed", "unchanged", "unchanged", "unchanged"));

  Store("peloraQuotaHard", {"777"});
  RunAll(undo, nullptr);
  EXPECT_EQ(words_[3], "refused");
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("777"));
}

TEST_F(UndoFileTest, AListOfWhichSomebodyChangedThatSinceIsLeftAlone) {
  Store("otherMailbox", {"a@x", "b@x"});
  const std::vector<Change> undo = {
      UndoOf(MakeChange(kUser, {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "c@x"}}))};
  const auto run = [&](const RunOptions& options) {
    std::string text;
    RunChanges(*store_, undo, options, [&](std::size_t, const Result& result) {
      text = std::string(WordOf(result.outcome)) + " " + result.message;
    });
    return text;
  };
  MemoryLog log;
  for (const bool is_rehearsal : {true, false}) {
    const RunOptions options{.is_rehearsal = is_rehearsal, .lists = Lists::kUntouched, .log = &log};
    // Another one took out what was put in.
    Store("otherMailbox", {"b@x"});
    EXPECT_EQ(run(options),
              "refused otherMailbox was b@x; c@x when it was read, is b@x now, and was to become "
              "a@x; b@x");
    EXPECT_THAT(Stored("otherMailbox"), ElementsAre("b@x"));
    // As before, but for what others did elsewhere in it.
    Store("otherMailbox", {"a@x", "d@x"});
    EXPECT_EQ(run(options), "unchanged ");
    EXPECT_EQ(log.notes.size(), log.withdrawn.size());
    Store("otherMailbox", {"b@x", "c@x", "d@x"});
    EXPECT_EQ(run(options), "changed ");
    EXPECT_THAT(Stored("otherMailbox"),
                is_rehearsal ? ElementsAre("b@x", "c@x", "d@x") : ElementsAre("a@x", "b@x", "d@x"));
    log = {};
  }
}

TEST_F(UndoFileTest, AListThatSomebodyTouchedSinceIsLeftAloneWhereAllOfItIsKnown) {
  Store("otherMailbox", {"a@x", "b@x"});
  {
    const std::unique_ptr<UndoFile> file = Make();
    RunAll({MakeChange(kUser, {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "c@x"}, true})},
           file.get());
  }
  const std::vector<Change> undo = ReadUndo();
  const auto run = [&](const RunOptions& options) {
    interrupted_.writes = 0;
    std::string text;
    RunChanges(interrupted_, undo, options, [&](std::size_t, const Result& result) {
      text = std::string(WordOf(result.outcome)) + " " + result.message;
    });
    return text;
  };
  for (const bool stops_at_first : {false, true}) {
    for (const bool is_rehearsal : {true, false}) {
      MemoryLog log;
      const RunOptions options{.stops_at_first = stops_at_first,
                               .is_rehearsal = is_rehearsal,
                               .lists = Lists::kUntouched,
                               .log = &log};
      Store("otherMailbox", {"b@x", "c@x", "theirs@x"});
      EXPECT_EQ(
          run(options),
          "refused otherMailbox was b@x; c@x when it was read, is b@x; c@x; theirs@x now, and "
          "was to become b@x; a@x");
      Store("otherMailbox", {"a@x", "b@x", "theirs@x"});
      EXPECT_THAT(run(options), HasSubstr("refused"));
      Store("otherMailbox", {"b@x", "a@x"});
      EXPECT_EQ(run(options), "unchanged ");
      EXPECT_EQ(interrupted_.writes, 0U);
      EXPECT_THAT(log.notes, IsEmpty());
      Store("otherMailbox", {"C@x", "b@x"});
      EXPECT_EQ(run(options), "changed ");
      ASSERT_THAT(log.notes, SizeIs(1));
      EXPECT_THAT(Stored("otherMailbox"),
                  is_rehearsal ? ElementsAre("C@x", "b@x") : ElementsAre("a@x", "b@x"));
    }
  }
}

TEST_F(UndoFileTest, ListsThatWereChangedTwiceAreTakenBackOneAfterTheOther) {
  Store("otherMailbox", {"a@x"});
  const std::string dn = "CN=Made," + std::string(kBase);
  const std::vector<Change> changes = {
      MakeChange(kUser, {"otherMailbox", true, {"a@x"}, {"a@x", "b@x"}, true}),
      {.kind = Change::Kind::kAdd,
       .dn = dn,
       .attributes = {{"objectClass", true, {}, {"contact"}}}},
      MakeChange(dn, {"otherMailbox", true, {}, {"m@x"}, true}),
      MakeChange(kUser, {"otherMailbox", true, {"a@x", "b@x"}, {"b@x", "c@x"}, true}),
      MakeChange(kUser, {"otherMailbox", true, {"b@x", "c@x"}, {"c@x", "d@x"}, true}),
  };
  {
    const std::unique_ptr<UndoFile> file = Make();
    RunAll(changes, file.get());
  }
  const std::vector<Change> undo = ReadUndo();
  interrupted_.fetches_ahead = 8;
  {
    words_.clear();
    MemoryLog log;
    RunChanges(interrupted_, undo, {.lists = Lists::kUntouched, .log = &log},
               [&](std::size_t, const Result& result) {
                 words_.emplace_back(WordOf(result.outcome));
                 EXPECT_EQ(result.message, "");
               });
    // As they were sent: taken back in turn, the last one goes first.
    std::vector<std::string> noted;
    for (const Change& note : log.notes) noted.push_back(note.dn);
    EXPECT_THAT(noted, ElementsAre(kUser, kUser, dn, dn, kUser));
    EXPECT_THAT(log.withdrawn, IsEmpty());
  }
  EXPECT_THAT(words_, ElementsAre("changed", "changed", "changed", "changed", "changed"));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x"));
  Entry entry;
  EXPECT_EQ(store_->Read(dn, {}, entry).code, ldap::kLdapNoSuchObject);
}

TEST_F(UndoFileTest, AListThatCannotBeLookedAtIsNotTakenBack) {
  Store("otherMailbox", {"b@x"});
  const Change undo = MakeChange(kUser, {"otherMailbox", true, {"b@x"}, {"a@x"}, true});
  const std::vector<Change> several = {
      undo, MakeChange("CN=Next," + std::string(kBase), undo.attributes.front())};
  interrupted_.before_read = [] { return StoreStatus{ldap::kLdapServerDown, "no connection"}; };
  words_.clear();
  RunChanges(interrupted_, several, {.lists = Lists::kUntouched},
             [&](std::size_t, const Result& result) {
               words_.emplace_back(std::string(WordOf(result.outcome)) + " " + result.message);
             });
  EXPECT_THAT(words_, ElementsAre("failed no connection", "skipped "));
  EXPECT_EQ(interrupted_.writes, 0U);
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("b@x"));
}

TEST_F(UndoFileTest, ARehearsalLooksAtWhatIsThere) {
  Store("peloraQuotaHard", {"2"});
  const std::string dn = "CN=Made," + std::string(kBase);
  const Change made{
      .kind = Change::Kind::kAdd,
      .dn = dn,
      .attributes = {{"objectClass", true, {}, {"contact"}}, {"peloraAccount", false, {}, {"1"}}}};
  const auto rehearse = [&](const std::vector<Change>& changes) {
    words_.clear();
    MemoryLog log;
    RunChanges(
        *store_, changes, {.is_rehearsal = true, .log = &log},
        [&](std::size_t, const Result& result) { words_.emplace_back(WordOf(result.outcome)); });
    return log.notes.size();
  };
  EXPECT_EQ(rehearse({Quota("2", "3"), Quota("1", "2"), Quota("1", "3"), made, UndoOf(made),
                      MakeChange(dn, {"peloraAccount", false, {}, {"1"}})}),
            2U);
  EXPECT_THAT(words_,
              ElementsAre("changed", "unchanged", "refused", "changed", "unchanged", "failed"));
  ASSERT_TRUE(store_->Add({.dn = dn, .attributes = {{"objectClass", {"contact"}}}}).Ok());
  EXPECT_EQ(rehearse({made, UndoOf(made)}), 0U);
  EXPECT_THAT(words_, ElementsAre("failed", "refused"));
  ASSERT_TRUE(Replace(*store_, dn, "peloraAccount", {"1"}).Ok());
  EXPECT_EQ(rehearse({UndoOf(made)}), 1U);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("2"));
}

TEST_F(UndoFileTest, AFileOfSomethingElseIsRefusedWithItsLine) {
  std::vector<Change> changes(1);
  ldap::WriteFile(undo_path_, "# change 0\ndn: CN=a\nchangetype: delete\n\n# change 1\nnonsense\n");
  const StoreStatus status = ReadUndoFile(undo_path_, store_->schema(), changes);
  EXPECT_EQ(status.code, ldap::kLdapOther);
  EXPECT_THAT(status.text, HasSubstr("line 6:"));
  EXPECT_THAT(status.text, HasSubstr(undo_path_));
  EXPECT_THAT(changes, IsEmpty());
  EXPECT_EQ(ReadUndoFile(File("missing"), store_->schema(), changes).code, ldap::kLdapOther);
  EXPECT_EQ(ReadUndoFile("/", store_->schema(), changes).code, ldap::kLdapOther);
}

TEST_F(UndoFileTest, OnAFullDiskNothingIsChangedAndNoHalfRecordIsLeft) {
  Store("peloraQuotaHard", {"100"});
  const std::unique_ptr<UndoFile> file = Make();
  EXPECT_EQ(RunAll({Quota("100", "200")}, file.get())[Outcome::kChanged], 1U);
  const std::string before = ldap::ReadFile(undo_path_);
  // Files cannot grow beyond this, which is what a full disk looks like.
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{.rlim_cur = before.size() + 20, .rlim_max = limit.rlim_max};
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const Tally tally = RunAll({Quota("200", "300")}, file.get());
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(tally[Outcome::kFailed], 1U);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_EQ(ldap::ReadFile(undo_path_), before);
  EXPECT_EQ(RunAll({Quota("200", "300")}, file.get())[Outcome::kChanged], 1U);
  EXPECT_THAT(ReadUndo(), SizeIs(2));
}

/// What is not safe on the disk takes nothing back after a crash.
TEST_F(UndoFileTest, AFileWhoseNameIsNotSafeIsNotMade) {
  std::unique_ptr<UndoFile> file;
  {
    const testing::UnsafeDisk unsafe(1);
    const StoreStatus status = UndoFile::Create(undo_path_, store_->schema(), file);
    EXPECT_EQ(testing::UnsafeDisk::count(), 1U);
    EXPECT_EQ(status.code, ldap::kLdapOther);
    EXPECT_EQ(status.text, "'" + undo_path_ + "' cannot be made: Input/output error");
  }
  EXPECT_EQ(file, nullptr);
  EXPECT_FALSE(std::filesystem::exists(undo_path_)) << "nothing is left behind";
  // The name is free.
  EXPECT_NE(Make(), nullptr);
}

TEST_F(UndoFileTest, WhatIsNotedAndNotSafeIsNotDone) {
  Store("peloraQuotaHard", {"100"});
  const std::unique_ptr<UndoFile> file = Make();
  EXPECT_EQ(RunAll({Quota("100", "200")}, file.get())[Outcome::kChanged], 1U);
  const std::string before = ldap::ReadFile(undo_path_);
  {
    const testing::UnsafeDisk unsafe(1);
    EXPECT_EQ(RunAll({Quota("200", "300")}, file.get())[Outcome::kFailed], 1U);
    EXPECT_EQ(testing::UnsafeDisk::count(), 1U) << "nothing was asked of the directory's file";
  }
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_EQ(ldap::ReadFile(undo_path_), before);
  EXPECT_EQ(RunAll({Quota("200", "300")}, file.get())[Outcome::kChanged], 1U);
  EXPECT_THAT(ReadUndo(), SizeIs(2));
}

}  // namespace
}  // namespace pelora::changes
