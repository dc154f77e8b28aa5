// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "tests/support/host_bench.h"
#include "tests/support/standing_page.h"

namespace pelora::lab {

/// A page that stands open on some objects of the domain.
template <class Page>
class LabPage : public testing::StandingPage<Page> {
 public:
  LabPage(testing::HostBench& bench, DialogId dialog, const std::vector<std::string>& dns)
      : testing::StandingPage<Page>(new Page(bench.platform), bench.Template(dialog),
                                    PathsOf(dns)) {}

 private:
  static std::vector<std::string> PathsOf(const std::vector<std::string>& dns) {
    std::vector<std::string> paths;
    for (const std::string& dn : dns) paths.push_back("LDAP://" + dn);
    return paths;
  }
};

}  // namespace pelora::lab
