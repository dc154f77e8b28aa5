// SPDX-License-Identifier: Apache-2.0
// Measures tabs and the list of objects on a directory server against the tools that one would take
// instead, in one run and on one machine, and prints the ratios. Runs in the lab
// (run_directory_bench.sh).
//
//   directory_bench [--quick] CONTAINER LARGE-CONTAINER
//   directory_bench --count WORK CONTAINER USERS
//
// CONTAINER is an organizational unit with some users right below it, LARGE-CONTAINER one with ten
// times as many. The exit code is 1 when a ratio exceeds its limit. With --quick everything is done
// once and nothing is counted; with --count one thing is done and only counted, for the program
// itself (counted_work.h).
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "hosts/console/program/display.h"
#include "pages/objects/prop_page_recipient.h"
#include "pages/objects/prop_page_user.h"
#include "resources/resource.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/counted_run.h"
#include "tests/bench/counted_work.h"
#include "tests/bench/listing_bench.h"
#include "tests/bench/shown_list.h"
#include "tests/bench/takings.h"
#include "tests/lab/lab_page.h"
#include "tests/lab/lab_test.h"

namespace pelora::lab {
namespace {

constexpr auto kDelay = std::chrono::milliseconds(5);
/// Ten times as many may take 10.2 times as long.
constexpr double kMoreThanLinear = 1.02;

/// What the user tab reads.
constexpr const char* kAttributes =
    "objectClass mail otherMailbox peloraSendAsPrivilege peloraQuotaOverride peloraQuotaWarn "
    "peloraQuotaSoft peloraQuotaHard peloraAccount peloraHidden peloraAdmin peloraSharedStoreOnly "
    "peloraResourceType peloraResourceCapacity peloraUserServer";

std::vector<std::string> UsersBelow(ldap::IDirectoryStore& store, const std::string& container) {
  std::vector<std::string> names;
  const StoreStatus status = store.Search({.base = container,
                                           .scope = ldap::SearchScope::kOneLevel,
                                           .filter = "(objectClass=user)",
                                           .attributes = {"cn"}},
                                          [&](const Entry& entry) {
                                            names.push_back(entry.dn);
                                            return true;
                                          });
  if (!status.Ok() || names.empty()) throw std::runtime_error("no users below " + container);
  return names;
}

/// Opens the user tab on all of them.
void OpenTab(NetworkSession& session, const std::vector<std::string>& users) {
  testing::HostBench bench(session.service());
  const LabPage<CPropPageUser> page(bench, IDD_PROPPAGE_USER, users);
  if (page.opened() != S_OK) throw std::runtime_error("the tab cannot be opened");
}

/// A tab on which one box has been clicked, and that writes nothing else.
class EditedTab {
 public:
  EditedTab(NetworkSession& session, const std::vector<std::string>& users)
      : bench_(session.service()), page_(bench_, IDD_PROPPAGE_CONTACT, users) {}

  void Apply() {
    page_.Click(IDC_PELORA_HIDDEN);
    if (!page_.Apply()) throw std::runtime_error("not applied: " + bench_.Boxes());
  }

 private:
  testing::HostBench bench_;
  LabPage<CPropPageContact> page_;
};

/// As an edited tab's change, for the tool: of another flag of the same kind, since a server has
/// less to do when a value stays as it is, and both write the same users in turn.
std::string WriteChanges(const std::vector<std::string>& users, int round) {
  const std::string path = lab::Home() + "/changes-" + std::to_string(users.size()) + "-" +
                           std::to_string(round % 2) + ".ldif";
  std::ofstream file(path);
  for (const std::string& user : users) {
    file << "dn: " << user
         << "\nchangetype: modify\nreplace: peloraQuotaOverride\npeloraQuotaOverride: " << round % 2
         << "\n-\n\n";
  }
  return path;
}

std::vector<std::string> FirstOf(const std::vector<std::string>& all, std::size_t count) {
  const std::size_t taken = count == 0 ? all.size() : std::min(count, all.size());
  return {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(taken)};
}

/// What is done when only that is counted.
std::function<void()> PrepareWork(NetworkSession& session, const CountedWork& work) {
  if (work.work == kListObjects) {
    const auto list = std::make_shared<ShownList>(session);
    list->LookAway();
    return [list, container = work.container] { list->Show(container); };
  }
  const std::vector<std::string> users =
      FirstOf(UsersBelow(session.store(), work.container), work.users);
  if (work.work == kOpenTab) return [&session, users] { OpenTab(session, users); };
  if (work.work != kApplyTab) throw std::runtime_error("no work is called " + work.work);
  const auto tab = std::make_shared<EditedTab>(session, users);
  return [tab] { tab->Apply(); };
}

class Bench {
 public:
  /// Everything is done so many times, within reason, and counted; or once, without a `count`.
  Bench(const std::string& container, WorkCounter count)
      : container_(container),
        count_(std::move(count)),
        users_(UsersBelow(session_->store(), container)) {}

  void Open(BenchTable& table) {
    const Command search = [this](const std::string& server) {
      return Tool("ldapsearch", server) + "-LLL -E pr=1000/noprompt -b '" + container_ +
             "' -s one '(objectClass=user)' " + kAttributes + " >/dev/null";
    };
    Takings ours;
    Takings theirs;
    for (int round = 0; round < Rounds(7); ++round) {
      ours.Do([&] { OpenTab(*session_, users_); });
      theirs.Do([&] { RunTool(search(Server())); });
    }
    AddBesideTool(table, "open a tab on " + Count(), ours, "ldapsearch, one paged search", theirs,
                  0.60);
    AddCounts(table, {.work = kOpenTab, .container = container_}, search);
  }

  void OpenFromAfar(BenchTable& table) {
    TcpRelay relay(ldap::kDirectoryPort);
    const auto session = OpenSession({.server = Server() + ":" + std::to_string(relay.port())});
    const Pair open = MediansOf(
        Rounds(5),
        [&] {
          relay.SetDelay(kDelay);
          OpenTab(*session, users_);
        },
        [&] {
          relay.SetDelay(std::chrono::microseconds(0));
          OpenTab(*session, users_);
        });
    const double ten_trips = std::chrono::duration<double>(kDelay).count() * 10;
    table.Add("open them 5 ms away", open.first, "without the delay, x1.5 + 50 ms",
              open.second * 1.5 + ten_trips, 0.50);
  }

  void Apply(BenchTable& table) {
    EditedTab tab(*session_, users_);
    const std::vector<std::string> files = {WriteChanges(users_, 0), WriteChanges(users_, 1)};
    int turn = 0;
    const Command modify = [&](const std::string& server) {
      return Tool("ldapmodify", server) + "-f " + files[static_cast<std::size_t>(++turn % 2)] +
             " >/dev/null";
    };
    Takings ours;
    Takings theirs;
    for (int round = 0; round < Rounds(5); ++round) {
      ours.Do([&] { tab.Apply(); });
      theirs.Do([&] { RunTool(modify(Server())); });
    }
    AddBesideTool(table, "apply one change to " + Count(), ours, "ldapmodify, as many", theirs,
                  1.02);
    AddCounts(table, {.work = kApplyTab, .container = container_}, modify);
  }

  void List(BenchTable& table, const std::string& large_container) {
    MeasureListing(*session_, large_container, container_, Rounds(5), count_, table);
  }

  /// What a large selection costs, in terms of a tenth of it: of the same container, for how large
  /// that is costs the server something too.
  void Grow(BenchTable& table, const std::string& large_container) {
    const std::vector<std::string> many = UsersBelow(session_->store(), large_container);
    const std::vector<std::string> few = FirstOf(many, std::max<std::size_t>(1, many.size() / 10));
    const double limit =
        static_cast<double>(many.size()) / static_cast<double>(few.size()) * kMoreThanLinear;
    const std::string label = std::to_string(many.size()) + " users";
    const std::string few_label = "on " + std::to_string(few.size()) + " of them";
    const auto add = [&](const std::string& what, const Takings& of_many, const Takings& of_few,
                         const std::string& work) {
      AddGrowth(table, what + label, of_many, few_label, of_few, limit);
      if (!count_) return;
      table.AddCounts(count_({.work = work, .container = large_container}),
                      count_({.work = work, .container = large_container, .users = few.size()}));
    };
    Takings open_many;
    Takings open_few;
    for (int round = 0; round < Rounds(3); ++round) {
      open_many.Do([&] { OpenTab(*session_, many); });
      for (int turn = 0; turn < 3; ++turn) open_few.Do([&] { OpenTab(*session_, few); });
    }
    add("open a tab on ", open_many, open_few, kOpenTab);

    EditedTab many_tab(*session_, many);
    Takings apply_many;
    Takings apply_few;
    Takings tool_many;
    Takings tool_few;
    const auto modify = [](Takings& takings, const std::vector<std::string>& users, int turn) {
      const std::string file = WriteChanges(users, turn);
      takings.Do([&] { RunTool(Tool("ldapmodify") + "-f " + file + " >/dev/null"); });
    };
    for (int round = 0; round < Rounds(3); ++round) {
      apply_many.Do([&] { many_tab.Apply(); });
      modify(tool_many, many, round);
      // There and back: what is written is always something else than what was there.
      EditedTab few_tab(*session_, few);
      for (int turn = 1; turn < 3; ++turn) {
        apply_few.Do([&] { few_tab.Apply(); });
        modify(tool_few, few, round + turn);
      }
    }
    add("apply one change to ", apply_many, apply_few, kApplyTab);
    table.AddBeside("ldapmodify, as many", tool_many.Seconds(), few_label, tool_few.Seconds());
    table.AddBeside("the server's processor meanwhile", tool_many.Server(), few_label,
                    tool_few.Server());
  }

 private:
  [[nodiscard]] int Rounds(int rounds) const { return count_ ? rounds : 1; }
  [[nodiscard]] std::string Count() const { return std::to_string(users_.size()) + " users"; }
  void AddCounts(BenchTable& table, const CountedWork& work, const Command& tool) const {
    if (count_) table.AddCounts(count_(work), CountsOf(tool));
  }

  std::string container_;
  WorkCounter count_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  std::vector<std::string> users_;
};

/// All hold, unless there is no `count`.
int Run(const std::vector<std::string>& containers, const WorkCounter& count) {
  BenchTable table;
  Bench bench(containers.front(), count);
  bench.Open(table);
  bench.OpenFromAfar(table);
  bench.Apply(table);
  bench.List(table, containers.back());
  bench.Grow(table, containers.back());
  return count == nullptr || table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const std::string way = arguments.empty() ? std::string() : arguments.front();
  const bool is_quick = way == "--quick";
  const bool is_count = way == pelora::lab::kCountArgument;
  if (is_quick || is_count) arguments.erase(arguments.begin());
  if (arguments.size() != (is_count ? 3U : 2U)) {
    std::cerr << "usage: directory_bench [--quick] CONTAINER LARGE-CONTAINER" << std::endl;
    return 2;
  }
  // The list of objects is drawn in memory.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const pelora::console::QuietToolkit quiet;
  int toolkit_argc = 1;
  const QApplication application(toolkit_argc, argv);
  try {
    if (is_count) {
      pelora::lab::CountWork(arguments, pelora::lab::PrepareWork);
      return 0;
    }
    return pelora::lab::Run(arguments,
                            is_quick ? pelora::lab::WorkCounter() : pelora::lab::CountIn(argv[0]));
  } catch (const std::exception& error) {
    std::cerr << "directory_bench: " << error.what() << std::endl;
    return 2;
  }
}
