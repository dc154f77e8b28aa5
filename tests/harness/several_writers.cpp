// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/several_writers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <random>
#include <stdexcept>
#include <thread>

#include "hosts/changes/change_writer.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/contract/guarded_sheet.h"
#include "tests/support/fault_store.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

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

/// What all writers share: the users, the time, and numbers that nobody has written yet.
struct Common {
  Lines users;
  std::atomic<std::uint64_t> clock = 0;
  std::atomic<int> next_number = 1000;
};

/// One writer with a connection of its own, on a thread of its own.
class Writer {
 public:
  Writer(std::unique_ptr<ldap::IDirectoryStore> store, Common& common, unsigned seed)
      : common_(common), random_(seed), store_(std::move(store)), faulty_(*store_) {}
  virtual ~Writer() = default;

  void Work(std::size_t rounds) {
    for (std::size_t round = 0; round < rounds; ++round) {
      MaybeFail();
      Change(common_.users[Roll(common_.users.size())]);
    }
  }
  [[nodiscard]] const std::vector<Operation>& operations() const { return operations_; }

 protected:
  virtual void Change(const std::string& user) = 0;

  [[nodiscard]] std::size_t Roll(std::size_t sides) { return random_() % sides; }
  [[nodiscard]] std::string NewNumber() { return std::to_string(common_.next_number++); }
  [[nodiscard]] std::string NewAddress() { return "n" + NewNumber() + "@x.example"; }
  [[nodiscard]] ldap::IDirectoryStore& store() { return faulty_; }
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
        return faulty_.FailChange(1, {ldap::kLdapServerDown, "gone"});
      case 1:
        return faulty_.FailChange(1, {ldap::kLdapTimeout, "no answer"});
      case 2:
        return faulty_.FailChange(1, {ldap::kLdapTimeout, "no answer"}, true);
      default:
        return;
    }
  }

  Common& common_;
  std::mt19937 random_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
  FaultStore faulty_;
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

/// Gives the users what the writers begin with.
void Prepare(ldap::IDirectoryStore& store, const Lines& users) {
  for (const std::string& user : users) {
    const std::vector<ldap::Modification> first = {
        {.attribute = "peloraQuotaOverride", .values = {"1"}},
        {.attribute = kNumbers[0], .values = {"1"}},
        {.attribute = kNumbers[1], .values = {"2"}}};
    const ldap::StoreStatus status = store.Modify(user, first);
    if (!status.Ok()) throw std::runtime_error(status.text);
  }
}

void Look(ldap::IDirectoryStore& store, const Lines& users, History::Values& values,
          History::Lists& lists) {
  const Lines wanted = {kNumbers[0], kNumbers[1], kList};
  for (const std::string& user : users) {
    ldap::Entry entry;
    const ldap::StoreStatus status = store.Read(user, wanted, entry);
    if (!status.Ok()) throw std::runtime_error(status.text);
    for (const char* const attribute : kNumbers) {
      values[NameOf(user, attribute)] = ldap::FirstValue(entry, attribute);
    }
    const ldap::AttributeValues& addresses = entry.attributes[kList];
    lists[NameOf(user, kList)] = {addresses.begin(), addresses.end()};
  }
}

}  // namespace

WritersDeeds PlayWriters(const WritersPlace& place, std::size_t rounds, unsigned seed) {
  const std::unique_ptr<ldap::IDirectoryStore> store = place.open();
  Prepare(*store, place.users);
  WritersDeeds deeds;
  History& history = deeds.history;
  Look(*store, place.users, history.before, history.lists_before);
  Common common{.users = place.users};
  std::vector<std::unique_ptr<Writer>> writers;
  writers.push_back(std::make_unique<SheetWriter>(place.open(), common, seed));
  writers.push_back(std::make_unique<SheetWriter>(place.open(), common, seed + 1));
  writers.push_back(std::make_unique<ProgramWriter>(place.open(), common, seed + 2));
  {
    std::vector<std::jthread> threads;
    for (const auto& writer : writers) {
      threads.emplace_back([&writer, rounds] { writer->Work(rounds); });
    }
  }
  Look(*store, place.users, history.after, history.lists_after);
  for (const auto& writer : writers) {
    for (const Operation& operation : writer->operations()) {
      ++deeds.answers[operation.answer];
      history.operations.push_back(operation);
    }
  }
  return deeds;
}

std::string TextOf(const WritersDeeds& deeds, std::size_t rounds) {
  const auto count = [&deeds](Answer answer) {
    const auto found = deeds.answers.find(answer);
    return std::to_string(found == deeds.answers.end() ? 0 : found->second);
  };
  return std::to_string(rounds) + " each, " + count(Answer::kAccepted) + " accepted, " +
         count(Answer::kRefused) + " refused, " + count(Answer::kUnknown) +
         " unknown, all explained";
}

}  // namespace pelora::testing
