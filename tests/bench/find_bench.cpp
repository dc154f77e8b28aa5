// SPDX-License-Identifier: Apache-2.0
// Measures how a directory with very many users is listed, scrolled and searched in the console's
// list, and prints a table of limits.
//
//   find_bench FOLDER [USERS]
//   find_bench --domain
//
// In FOLDER a directory file is made, with 100,000 users unless another number is given, and kept
// for the next time. The domain is the lab's, and has as many as it was made with. The exit code is
// 1 when a limit is exceeded.
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTreeView>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "hosts/console/reading/directory_reader.h"
#include "hosts/console/window/container_listing.h"
#include "hosts/console/window/object_list_pane.h"
#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/find/find_text.h"
#include "hosts/session/find/list_columns.h"
#include "hosts/session/search_filter.h"
#include "tests/bench/bench_table.h"
#include "tests/ui/turn_meter.h"

namespace pelora::lab {
namespace {

using State = console::ContainerListing::State;

constexpr int kUsers = 100'000;
/// In milliseconds and megabytes.
constexpr double kFirstRows = 200;
constexpr double kTurn = 50;
constexpr double kMemory = 300;
/// Beside the tool's search for the same.
constexpr double kFind = 1.2;
constexpr int kRounds = 5;
constexpr const char* kNobody = "nobody at all";
constexpr const char* kWord = "4242";
const std::vector<std::string> kColumns = {"type", "folder", "logon", "remark"};

/// What the list asks for.
std::string Asked() {
  std::string asked;
  for (const std::string& name : session::ListColumns(kColumns, nullptr).Attributes()) {
    asked += name + " ";
  }
  return asked;
}

/// Names in no order: as people come and go.
std::string NameOf(int number, int users) {
  const long long mixed = number * 7919LL % users;
  return "User " + std::to_string(mixed);
}

std::string LargeLdif(int users) {
  std::string ldif(ldap::SampleCompanyLdif());
  for (int number = 0; number < users; ++number) {
    const std::string name = NameOf(number, users);
    const std::string logon_name = "u" + std::to_string(number);
    ldif += "\ndn: CN=" + name +
            ",OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example\n"
            "objectClass: top\nobjectClass: person\nobjectClass: organizationalPerson\n"
            "objectClass: user\nsAMAccountName: " +
            logon_name + "\ndisplayName: " + name + "\nmail: " + logon_name +
            "@linden-werke.example\npeloraAccount: 1\npeloraUserServer: mail01\n";
  }
  return ldif;
}

/// Made by a process of its own: this one's memory is measured.
std::string LargeFile(const std::string& folder, int users) {
  std::filesystem::create_directories(folder);
  const std::string path = folder + "/find-" + std::to_string(users) + ".ldb";
  if (std::filesystem::exists(path)) return path;
  std::cerr << "making " << path << " once" << std::endl;
  const pid_t maker = fork();
  if (maker == 0) {
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(path, LargeLdif(users));
    if (!made.Ok()) std::cerr << made.text << std::endl;
    _exit(made.Ok() ? 0 : 1);
  }
  int outcome = -1;
  if (maker < 0 || waitpid(maker, &outcome, 0) != maker || outcome != 0) {
    throw std::runtime_error("the large file cannot be made");
  }
  return path;
}

/// The most memory that this process had at once, in megabytes.
double MostMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) return kilobytes / 1024;
  }
  throw std::runtime_error("the system does not say how much memory is used");
}

/// The list as the console's window has it.
class ShownList {
 public:
  explicit ShownList(session::DirectorySession& session) : reader_(session.open_another) {
    pane_.resize(900, 800);
    pane_.show();
    listing_.SetReader(&reader_);
  }
  ShownList(const ShownList&) = delete;
  ShownList& operator=(const ShownList&) = delete;
  ~ShownList() { listing_.SetReader(nullptr); }

  void Begin(const std::string& text) {
    listing_.Show({.listing = {.text = text}, .columns = kColumns});
  }
  void AwaitRows() {
    while (pane_.ShownCount() == 0 && listing_.state() == State::kReading) Turn();
    pane_.view().viewport()->repaint();
  }
  void AwaitEnd() {
    while (listing_.state() == State::kReading) Turn();
    QApplication::processEvents();
    if (listing_.state() != State::kWhole) throw std::runtime_error("not all is listed");
  }
  void Find(const std::string& text) {
    Begin(text);
    AwaitEnd();
  }
  /// Page by page from one end to the other.
  void Scroll() {
    QScrollBar& bar = *pane_.view().verticalScrollBar();
    constexpr int kStops = 500;
    for (int stop = 0; stop <= kStops; ++stop) {
      bar.setValue(static_cast<int>(static_cast<long long>(bar.maximum()) * stop / kStops));
      pane_.view().viewport()->repaint();
      QApplication::processEvents();
    }
  }
  [[nodiscard]] console::ObjectListPane& pane() { return pane_; }

 private:
  static void Turn() { QApplication::processEvents(QEventLoop::WaitForMoreEvents); }

  console::ObjectListPane pane_{nullptr};
  console::DirectoryReader reader_;
  console::ContainerListing listing_{pane_};
};

/// A directory, and the tool that searches it for what is to stand in between.
struct Measured {
  std::unique_ptr<session::DirectorySession> session;
  std::string tool;
  std::string search;

  /// How long its server takes this time until it gives anything of all there is, in seconds; none:
  /// it has no server.
  std::function<double()> first_of_server{};

  void SearchFor(const std::string& word) const {
    const std::string filter = session::WithoutHidden(session::FilterOfWords({word}));
    RunTool(search + " '" + filter + "' " + Asked() + " > /dev/null 2>&1");
  }
};

Measured Opened(session::SessionResult opened, std::string tool, std::string search) {
  if (!opened.session) throw std::runtime_error(opened.error);
  return {
      .session = std::move(opened.session), .tool = std::move(tool), .search = std::move(search)};
}

Measured OpenFile(const std::string& folder, int users) {
  const std::string file = LargeFile(folder, users);
  return Opened(session::OpenDirectoryFile(file), "ldbsearch",
                "ldbsearch -H '" + file + "' -b DC=linden-werke,DC=example");
}

/// The time of the first entry of a search for all there is, without what it takes the tool to
/// begin and to sign in: that is in a search for one object, too.
double FirstOfServer(const std::string& search) {
  const std::string all =
      search + " '" + session::WithoutHidden("(objectClass=*)") + "' " + Asked();
  const double first = SecondsOf([&] { RunTool(all + " 2> /dev/null | head -c 1 > /dev/null"); });
  return first - SecondsOf([&] {
           RunTool(search + " -s base '(objectClass=*)' " + Asked() + " > /dev/null 2>&1");
         });
}

Measured OpenDomain() {
  const std::string search = Tool("ldapsearch") + "-LLL -b '" + Base() + "'";
  Measured domain = Opened(session::OpenServer(Server()), "ldapsearch", search);
  domain.first_of_server = [search] { return FirstOfServer(search); };
  return domain;
}

/// How much else the machine had to do.
std::string Load() {
  double load = 0;
  return getloadavg(&load, 1) == 1 ? "load " + std::to_string(load) : "load unknown";
}

/// The rows may be on the screen a moment after the directory has given something: how long that
/// takes is no matter of the console's. It takes longer the first time, so both are asked several
/// times, in turns.
void AddFirstRows(const Measured& measured, ShownList& list, BenchTable& table) {
  std::vector<double> rows;
  std::vector<double> servers;
  for (int round = 0; round < kRounds; ++round) {
    list.Find(kNobody);
    rows.push_back(1000 * SecondsOf([&] {
                     list.Begin({});
                     list.AwaitRows();
                   }));
    list.AwaitEnd();
    if (measured.first_of_server) servers.push_back(1000 * measured.first_of_server());
  }
  const double first = MedianOf(rows);
  if (servers.empty()) return table.Add("first rows", first, "a moment", kFirstRows, 1, "ms");
  const double server = MedianOf(servers);
  table.AddBeside("first rows", first, "the first entry of the tool's", server, "ms");
  table.Add("first rows without the server's time", first - server, "a moment", kFirstRows, 1,
            "ms");
}

int Run(const Measured& measured) {
  BenchTable table;
  table.Explain(Load());
  ShownList list(*measured.session);
  // The directory is in the machine's memory from now on.
  list.Find(kNobody);
  {
    test::TurnMeter meter;
    const double all = SecondsOf([&] { list.Find({}); });
    table.Add("longest turn while they arrive", static_cast<double>(meter.longest()), "a frame",
              kTurn, 1, "ms");
    table.Explain("all of " + std::to_string(list.pane().ShownCount()) + " after " +
                  std::to_string(all) + " s; turns: " + meter.Text());
  }
  {
    test::TurnMeter meter;
    list.Scroll();
    table.Add("longest turn while scrolling", static_cast<double>(meter.longest()), "a frame",
              kTurn, 1, "ms");
    table.Explain("turns: " + meter.Text());
  }
  for (const int column : {3, 0}) {
    table.Explain("ordered by column " + std::to_string(column) + " in " +
                  std::to_string(SecondsOf([&] {
                    list.pane().view().sortByColumn(column, Qt::AscendingOrder);
                    QApplication::processEvents();
                  })) +
                  " s");
  }
  table.Explain("narrowed in " + std::to_string(SecondsOf([&] {
                  list.pane().filter().setText(QStringLiteral("77"));
                  QApplication::processEvents();
                })) +
                " s");
  list.pane().filter().clear();
  table.Add("memory", MostMemory(), "the limit", kMemory, 1, "MB");
  AddFirstRows(measured, list, table);
  const Pair pair = MediansOf(
      kRounds,
      [&] {
        list.Find(kNobody);
        list.Find(kWord);
      },
      [&] {
        measured.SearchFor(kNobody);
        measured.SearchFor(kWord);
      });
  table.Add("find by part of a name", pair.first, measured.tool + ", the same filter", pair.second,
            kFind);
  table.Explain("found " + std::to_string(list.pane().ShownCount()) + "; " + Load());
  return table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  using namespace pelora::lab;
  const std::vector<std::string> words(argv + 1, argv + argc);
  const bool is_domain = words == std::vector<std::string>{"--domain"};
  if (words.empty() || words.size() > 2) {
    std::cerr << "usage: find_bench FOLDER [USERS] | find_bench --domain" << std::endl;
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  try {
    const int users = words.size() == 2 ? std::stoi(words[1]) : kUsers;
    return Run(is_domain ? OpenDomain() : OpenFile(words[0], users));
  } catch (const std::exception& failure) {
    std::cerr << "find_bench: " << failure.what() << std::endl;
    return 2;
  }
}
