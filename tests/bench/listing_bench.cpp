// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/listing_bench.h"

#include <QApplication>

#include "hosts/console/window/container_listing.h"
#include "hosts/console/window/object_list_pane.h"

namespace pelora::lab {
namespace {

using State = console::ContainerListing::State;

/// The list as the console's window has it: filled by a reader on a thread of its own, over a
/// connection of its own, and on the screen while it fills.
class ShownList {
 public:
  explicit ShownList(ldap::NetworkSession& session) : reader_(session.open_another()) {
    pane_.resize(600, 800);
    pane_.show();
    listing_.SetReader(&reader_);
  }
  ShownList(const ShownList&) = delete;
  ShownList& operator=(const ShownList&) = delete;
  ~ShownList() { listing_.SetReader(nullptr); }

  /// Lists a container that is not shown yet, and is done when it shows all of it.
  void Show(const std::string& container) {
    listing_.Show({.listing = {.base = container, .below = false}, .columns = {"type", "remark"}});
    while (listing_.state() == State::kReading) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QApplication::processEvents();
    if (listing_.state() != State::kWhole) throw std::runtime_error("not listed: " + container);
  }
  [[nodiscard]] int Count() const { return pane_.ShownCount(); }

 private:
  console::ObjectListPane pane_{nullptr};
  console::DirectoryReader reader_;
  console::ContainerListing listing_{pane_};
};

}  // namespace

void MeasureListing(ldap::NetworkSession& session, const std::string& container,
                    const std::string& small_container, int rounds, BenchTable& table) {
  ShownList list(session);
  const std::string search = Tool("ldapsearch") + "-LLL -E pr=1000/noprompt -b '" + container +
                             "' -s one '(&(objectClass=*)(!(showInAdvancedViewOnly=TRUE)))' "
                             "objectClass name description >/dev/null";
  const std::string elsewhere = "CN=Builtin," + Base();
  int count = 0;
  int few = 0;
  std::vector<double> ours;
  std::vector<double> of_few;
  std::vector<double> theirs;
  for (int round = 0; round < rounds; ++round) {
    // Another container first: what is shown already would be refreshed only.
    list.Show(elsewhere);
    ours.push_back(SecondsOf([&] { list.Show(container); }));
    count = list.Count();
    list.Show(elsewhere);
    of_few.push_back(SecondsOf([&] { list.Show(small_container); }));
    few = list.Count();
    theirs.push_back(SecondsOf([&] { RunTool(search); }));
  }
  const std::string what = "list " + std::to_string(count) + " objects";
  table.Add(what, MedianOf(ours), "ldapsearch, one paged search", MedianOf(theirs), 1.00);
  constexpr double kMoreThanLinear = 1.02;
  table.Add(what, MedianOf(ours), "list " + std::to_string(few) + " others", MedianOf(of_few),
            static_cast<double>(count) / few * kMoreThanLinear);
}

}  // namespace pelora::lab
