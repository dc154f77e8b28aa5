// SPDX-License-Identifier: Apache-2.0
// Measures tabs and the list of objects on a directory server against the tools that one would take
// instead, in one run and on one machine, and prints the ratios. Runs in the lab
// (run_directory_bench.sh).
//
//   directory_bench CONTAINER [LARGE-CONTAINER]
//
// CONTAINER is an organizational unit with some users right below it, LARGE-CONTAINER one with ten
// times as many. The exit code is 1 when a ratio exceeds its limit.
#include <QApplication>
#include <chrono>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "hosts/console/program/display.h"
#include "pages/objects/prop_page_recipient.h"
#include "pages/objects/prop_page_user.h"
#include "resources/resource.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/listing_bench.h"
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
  const std::string path = lab::Home() + "/changes-" + std::to_string(round % 2) + ".ldif";
  std::ofstream file(path);
  for (const std::string& user : users) {
    file << "dn: " << user
         << "\nchangetype: modify\nreplace: peloraQuotaOverride\npeloraQuotaOverride: " << round % 2
         << "\n-\n\n";
  }
  return path;
}

class Bench {
 public:
  /// Everything is done so many times, within reason; or once.
  Bench(const std::string& container, bool is_quick)
      : container_(container),
        is_quick_(is_quick),
        users_(UsersBelow(session_->store(), container)) {}

  void Open(BenchTable& table) {
    const std::string search = Tool("ldapsearch") + "-LLL -E pr=1000/noprompt -b '" + container_ +
                               "' -s one '(objectClass=user)' " + kAttributes + " >/dev/null";
    const Pair open = MediansOf(
        Rounds(7), [&] { OpenTab(*session_, users_); }, [&] { RunTool(search); });
    table.Add("open a tab on " + Count(), open.first, "ldapsearch, one paged search", open.second,
              0.60);
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
    int round = 0;
    const Pair apply = MediansOf(
        Rounds(5), [&] { tab.Apply(); },
        [&] {
          RunTool(Tool("ldapmodify") + "-f " + files[static_cast<std::size_t>(++round % 2)] +
                  " >/dev/null");
        });
    table.Add("apply one change to " + Count(), apply.first, "ldapmodify, as many", apply.second,
              1.02);
  }

  void List(BenchTable& table, const std::string& large_container) {
    MeasureListing(*session_, large_container, container_, Rounds(5), table);
  }

  /// What a large selection costs, in terms of a tenth of it: of the same container, for how large
  /// that is costs the server something too.
  void Grow(BenchTable& table, const std::string& large_container) {
    const std::vector<std::string> many = UsersBelow(session_->store(), large_container);
    const auto tenth = static_cast<std::ptrdiff_t>(std::max<std::size_t>(1, many.size() / 10));
    const std::vector<std::string> few(many.begin(), many.begin() + tenth);
    const double times = static_cast<double>(many.size()) / static_cast<double>(few.size());
    const std::string label = std::to_string(many.size()) + " users";
    const std::string few_label = "on " + std::to_string(few.size()) + " of them";
    const Pair open = MediansOf(
        Rounds(3), [&] { OpenTab(*session_, many); }, [&] { OpenTab(*session_, few); });
    table.Add("open a tab on " + label, open.first, few_label, open.second,
              times * kMoreThanLinear);

    EditedTab many_tab(*session_, many);
    std::vector<double> of_many;
    std::vector<double> of_few;
    for (int round = 0; round < Rounds(3); ++round) {
      of_many.push_back(SecondsOf([&] { many_tab.Apply(); }));
      // There and back: what is written is always something else than what was there.
      EditedTab few_tab(*session_, few);
      for (int turn = 0; turn < 2; ++turn) of_few.push_back(SecondsOf([&] { few_tab.Apply(); }));
    }
    table.Add("apply one change to " + label, MedianOf(of_many), few_label, MedianOf(of_few),
              times * kMoreThanLinear);
  }

 private:
  [[nodiscard]] int Rounds(int rounds) const { return is_quick_ ? 1 : rounds; }
  [[nodiscard]] std::string Count() const { return std::to_string(users_.size()) + " users"; }

  std::string container_;
  bool is_quick_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  std::vector<std::string> users_;
};

int Run(const std::vector<std::string>& containers, bool is_quick) {
  BenchTable table;
  Bench bench(containers.front(), is_quick);
  bench.Open(table);
  bench.OpenFromAfar(table);
  bench.Apply(table);
  bench.List(table, containers.back());
  bench.Grow(table, containers.back());
  return is_quick || table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool is_quick = !arguments.empty() && arguments.front() == "--quick";
  if (is_quick) arguments.erase(arguments.begin());
  if (arguments.size() != 2) {
    std::cerr << "usage: directory_bench [--quick] CONTAINER LARGE-CONTAINER" << std::endl;
    return 2;
  }
  // The list of objects is drawn in memory.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const pelora::console::QuietToolkit quiet;
  int toolkit_argc = 1;
  const QApplication application(toolkit_argc, argv);
  try {
    return pelora::lab::Run(arguments, is_quick);
  } catch (const std::exception& error) {
    std::cerr << "directory_bench: " << error.what() << std::endl;
    return 2;
  }
}
