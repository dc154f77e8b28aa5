// SPDX-License-Identifier: Apache-2.0
// Two consoles' sheets and a third program change the same users at random, each over a connection
// that fails now and then, and a checker looks whether what came of it can be explained.
#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <random>
#include <thread>

#include "hosts/changes/change_writer.h"
#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "tests/contract/guarded_sheet.h"
#include "tests/harness/history.h"
#include "tests/support/fault_store.h"
#include "tests/support/long_form.h"
#include "tests/support/temporary_folder.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

const std::string kCompany = ",OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const Lines kUsers = {"CN=Birgit Krämer,OU=Vertrieb" + kCompany,
                      "CN=Stefan Ebert,OU=Vertrieb" + kCompany};
constexpr std::array kNumbers = {"peloraQuotaWarn", "peloraQuotaHard"};
constexpr std::array<ControlId, 2> kNumberControls = {IDC_QUOTA_WARN, IDC_QUOTA_HARD};
constexpr const char* kList = "otherMailbox";

std::string NameOf(const std::string& user, const std::string& attribute) {
  return user.substr(0, user.find(',')) + " " + attribute;
}

/// So many addresses are enough: from there on some are taken out.
constexpr std::size_t kFull = 8;

/// Whether an address came by a writer.
bool IsOurs(const std::string& address) {
  return address.starts_with("n") && address.ends_with("@x.example");
}

/// What all writers share: the time, and numbers that nobody has written yet.
struct Common {
  std::atomic<std::uint64_t> clock = 0;
  std::atomic<int> next_number = 1000;
};

/// One writer with a connection of its own, on a thread of its own.
class Writer {
 public:
  Writer(const std::string& file, Common& common, unsigned seed) : common_(common), random_(seed) {
    // Whoever holds the file is waited for.
    const ldap::StoreStatus opened =
        ldap::OpenLdbStore(file, {.lock_wait = std::chrono::seconds(30)}, store_);
    if (!opened.Ok()) throw std::runtime_error(opened.text);
    faulty_.emplace(*store_);
  }
  virtual ~Writer() = default;

  void Work(std::size_t rounds) {
    for (std::size_t round = 0; round < rounds; ++round) {
      MaybeFail();
      Change(kUsers[Roll(kUsers.size())]);
    }
  }
  [[nodiscard]] const std::vector<Operation>& operations() const { return operations_; }

 protected:
  virtual void Change(const std::string& user) = 0;

  [[nodiscard]] std::size_t Roll(std::size_t sides) { return random_() % sides; }
  [[nodiscard]] std::string NewNumber() { return std::to_string(common_.next_number++); }
  [[nodiscard]] std::string NewAddress() { return "n" + NewNumber() + "@x.example"; }
  [[nodiscard]] ldap::IDirectoryStore& store() { return *faulty_; }
  void Begin(Operation& operation) { operation.begin = ++common_.clock; }
  void End(Operation operation, Answer answer) {
    operation.end = ++common_.clock;
    operation.answer = answer;
    operations_.push_back(std::move(operation));
  }

 private:
  void MaybeFail() {
    constexpr std::size_t kOneIn = 8;
    switch (Roll(kOneIn * 3)) {
      case 0:
        return faulty_->FailChange(1, {ldap::kLdapServerDown, "gone"});
      case 1:
        return faulty_->FailChange(1, {ldap::kLdapTimeout, "no answer"});
      case 2:
        return faulty_->FailChange(1, {ldap::kLdapTimeout, "no answer"}, true);
      default:
        return;
    }
  }

  Common& common_;
  std::mt19937 random_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
  std::optional<FaultStore> faulty_;
  std::vector<Operation> operations_;
};

/// An administrator before a sheet of the console's.
class SheetWriter final : public Writer {
 public:
  using Writer::Writer;

 private:
  void Change(const std::string& user) override {
    contract::GuardedSheet sheet(store(), {user});
    Operation operation;
    for (std::size_t number = 0; number < kNumbers.size(); ++number) {
      if (Roll(2) == 0) continue;
      const std::string wanted = NewNumber();
      operation.replacements.push_back({.attribute = NameOf(user, kNumbers.at(number)),
                                        .seen = sheet.page().Text(kNumberControls.at(number)),
                                        .wanted = wanted});
      sheet.Type(kNumberControls.at(number), wanted);
    }
    const std::string list = NameOf(user, kList);
    const Lines ours = Ours(sheet);
    const bool is_full = ours.size() >= kFull;
    if (!ours.empty() && (is_full || Roll(3) == 0)) {
      const std::string& gone = ours[Roll(ours.size())];
      sheet.DeleteAddress(gone);
      operation.list_changes.push_back({.attribute = list, .value = gone, .is_added = false});
    }
    if (operation.replacements.empty() || (!is_full && Roll(2) == 0)) {
      const std::string address = NewAddress();
      sheet.AddAddress(address);
      operation.list_changes.push_back({.attribute = list, .value = address});
    }
    Begin(operation);
    const bool is_done = sheet.sheet().Ok();
    std::string told;
    for (const std::string& box : sheet.TakeBoxes()) told += box;
    const bool is_unknown = told.find("may have been done") != std::string::npos;
    End(std::move(operation), is_done      ? Answer::kAccepted
                              : is_unknown ? Answer::kUnknown
                                           : Answer::kRefused);
    if (!is_done) sheet.sheet().Cancel();
  }
  /// The addresses that came here by a writer, but for the default one.
  static Lines Ours(contract::GuardedSheet& sheet) {
    Lines addresses;
    const IListBox& list = sheet.page().ListBox(IDC_EMAIL_LIST);
    for (RowIndex row = 0; row < list.Count(); ++row) {
      if (IsOurs(list.Text(row))) addresses.push_back(list.Text(row));
    }
    return addresses;
  }
};

/// A program that reads what it changes and writes it guarded, as the command line does.
class ProgramWriter final : public Writer {
 public:
  using Writer::Writer;

 private:
  void Change(const std::string& user) override {
    const Lines wanted = {kNumbers[0], kNumbers[1], kList};
    ldap::Entry entry;
    if (!store().Read(user, wanted, entry).Ok()) throw std::runtime_error("cannot read");
    changes::Change change;
    change.dn = user;
    Operation operation;
    for (const char* const attribute : kNumbers) {
      const std::string number = NewNumber();
      const ldap::AttributeValues seen = entry.attributes[attribute];
      change.attributes.push_back(
          {.attribute = attribute, .is_list = false, .seen = seen, .wanted = {number}});
      operation.replacements.push_back({NameOf(user, attribute), seen.front(), number});
    }
    const ldap::AttributeValues& addresses = entry.attributes[kList];
    const auto ours = std::ranges::find_if(addresses, &IsOurs);
    const bool is_added = ours == addresses.end() || addresses.size() < kFull;
    const std::string address = is_added ? NewAddress() : *ours;
    changes::ValueChange list{.attribute = kList, .is_list = true};
    (is_added ? list.wanted : list.seen) = {address};
    change.attributes.push_back(std::move(list));
    operation.list_changes.push_back(
        {.attribute = NameOf(user, kList), .value = address, .is_added = is_added});
    Begin(operation);
    const changes::Result result = changes::ChangeWriter(store()).Write(change);
    End(std::move(operation), result.IsDone()                                ? Answer::kAccepted
                              : result.outcome == changes::Outcome::kUnknown ? Answer::kUnknown
                                                                             : Answer::kRefused);
  }
};

class SeveralWriters : public ::testing::Test {
 protected:
  SeveralWriters() {
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(file_, ldap::SampleCompanyLdif());
    EXPECT_TRUE(made.Ok()) << made.text;
    EXPECT_TRUE(ldap::OpenLdbStore(file_, {.lock_wait = std::chrono::seconds(30)}, store_).Ok());
    for (const std::string& user : kUsers) {
      const std::vector<ldap::Modification> first = {
          {.attribute = "peloraQuotaOverride", .values = {"1"}},
          {.attribute = kNumbers[0], .values = {"1"}},
          {.attribute = kNumbers[1], .values = {"2"}}};
      EXPECT_TRUE(store_->Modify(user, first).Ok());
    }
  }

  void Look(History::Values& values, History::Lists& lists) {
    const Lines wanted = {kNumbers[0], kNumbers[1], kList};
    for (const std::string& user : kUsers) {
      ldap::Entry entry;
      EXPECT_TRUE(store_->Read(user, wanted, entry).Ok());
      for (const char* const attribute : kNumbers) {
        values[NameOf(user, attribute)] = ldap::FirstValue(entry, attribute);
      }
      const ldap::AttributeValues& addresses = entry.attributes[kList];
      lists[NameOf(user, kList)] = {addresses.begin(), addresses.end()};
    }
  }

  /// Nothing of this has to outlive a crash: in memory nobody waits for a disk.
  static std::filesystem::path MemoryFolder() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }

  TemporaryFolder folder_{MemoryFolder()};
  std::string file_ = folder_.File("company.ldb");
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

TEST_F(SeveralWriters, EverythingThatCameOfItCanBeExplained) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  const std::size_t rounds = RoundsOr(60);
  History history;
  Look(history.before, history.lists_before);
  Common common;
  std::vector<std::unique_ptr<Writer>> writers;
  writers.push_back(std::make_unique<SheetWriter>(file_, common, seed));
  writers.push_back(std::make_unique<SheetWriter>(file_, common, seed + 1));
  writers.push_back(std::make_unique<ProgramWriter>(file_, common, seed + 2));
  {
    std::vector<std::jthread> threads;
    for (const auto& writer : writers) {
      threads.emplace_back([&writer, rounds] { writer->Work(rounds); });
    }
  }
  Look(history.after, history.lists_after);
  std::map<Answer, std::size_t> answers;
  for (const auto& writer : writers) {
    for (const Operation& operation : writer->operations()) {
      ++answers[operation.answer];
      history.operations.push_back(operation);
    }
  }
  EXPECT_EQ(FaultsOf(history), Lines());
  // They did meet, and did fail.
  EXPECT_GT(answers[Answer::kAccepted], 0U);
  EXPECT_GT(answers[Answer::kRefused], 0U);
  EXPECT_GT(answers[Answer::kUnknown], 0U);
  if (HasFailure()) return;
  std::cout << "rounds of three writers: " << rounds << " each, " << answers[Answer::kAccepted]
            << " accepted, " << answers[Answer::kRefused] << " refused, "
            << answers[Answer::kUnknown] << " unknown, all explained\n";
}

}  // namespace
}  // namespace pelora::testing
