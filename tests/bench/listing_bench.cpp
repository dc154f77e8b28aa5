// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/listing_bench.h"

#include "tests/bench/counted_run.h"
#include "tests/bench/shown_list.h"
#include "tests/bench/takings.h"

namespace pelora::lab {
namespace {

/// What the list shows of an object: by most of it, which picture it has and what it is called.
constexpr const char* kListed =
    "objectClass name description peloraAccount peloraResourceType peloraSharedStoreOnly "
    "userAccountControl";
constexpr const char* kNamesAlone = "objectClass name description";

}  // namespace

void MeasureListing(ldap::NetworkSession& session, const std::string& container,
                    const std::string& small_container, int rounds, const WorkCounter& count,
                    BenchTable& table) {
  ShownList list(session);
  const auto search_for = [&container](const char* attributes) {
    return Command([&container, attributes](const std::string& server) {
      return Tool("ldapsearch", server) + "-LLL -E pr=1000/noprompt -b '" + container +
             "' -s one '(&(objectClass=*)(!(showInAdvancedViewOnly=TRUE)))' " + attributes +
             " >/dev/null";
    });
  };
  const Command search = search_for(kListed);
  int many = 0;
  int few = 0;
  Takings of_many;
  Takings of_few;
  Takings of_tool;
  Takings of_names;
  for (int round = 0; round < rounds; ++round) {
    list.LookAway();
    of_many.Do([&] { list.Show(container); });
    many = list.Count();
    list.LookAway();
    of_few.Do([&] { list.Show(small_container); });
    few = list.Count();
    of_tool.Do([&] { RunTool(search(Server())); });
    of_names.Do([&] { RunTool(search_for(kNamesAlone)(Server())); });
  }
  const std::string what = "list " + std::to_string(many) + " objects";
  AddBesideTool(table, what, of_many, "ldapsearch, one paged search", of_tool, 1.00);
  Counts counts_of_many;
  if (count) {
    counts_of_many = count({.work = kListObjects, .container = container});
    table.AddCounts(counts_of_many, CountsOf(search));
  }
  table.AddBeside("the same", of_many.Seconds(), "ldapsearch, less of each", of_names.Seconds());
  constexpr double kMoreThanLinear = 1.02;
  AddGrowth(table, what, of_many, "list " + std::to_string(few) + " others", of_few,
            static_cast<double>(many) / few * kMoreThanLinear);
  if (count) {
    table.AddCounts(counts_of_many, count({.work = kListObjects, .container = small_container}));
  }
}

}  // namespace pelora::lab
