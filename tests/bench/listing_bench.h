// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/network/network_session.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/counted_work.h"

namespace pelora::lab {

/// Measures how long the console's list of objects takes until it shows all that a container holds,
/// sorted, against one search of the ldapsearch tool for the same, and against what a smaller
/// container takes. What is asked and answered is counted, too, by `count` unless it is none. Needs
/// an application.
void MeasureListing(ldap::NetworkSession& session, const std::string& container,
                    const std::string& small_container, int rounds, const WorkCounter& count,
                    BenchTable& table);

}  // namespace pelora::lab
