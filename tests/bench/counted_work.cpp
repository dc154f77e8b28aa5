// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/counted_work.h"

#include <dlfcn.h>

#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tests/lab/lab_test.h"

namespace pelora::lab {
namespace {

/// Of this program, so far.
std::size_t Allocations() {
  // The counter is loaded before the program, or it is not there.
  using Counter = unsigned long (*)();
  const auto counter = reinterpret_cast<Counter>(dlsym(RTLD_DEFAULT, "pelora_allocations"));
  if (counter == nullptr) throw std::runtime_error("nobody counts the requests for memory");
  return counter();
}

}  // namespace

WorkCounter CountIn(std::string itself) {
  return [itself = std::move(itself)](const CountedWork& work) {
    std::istringstream words(OutputOf(std::string("LD_PRELOAD=") + ALLOCATION_COUNTER + " '" +
                                      itself + "' " + kCountArgument + " " + work.work + " '" +
                                      work.container + "' " + std::to_string(work.users)));
    Counts counts;
    if (!(words >> counts.requests >> counts.bytes >> counts.allocations)) {
      throw std::runtime_error("nothing was counted of " + work.work);
    }
    return counts;
  };
}

void CountWork(const std::vector<std::string>& arguments, const WorkPreparer& prepare) {
  if (arguments.size() != 3) throw std::runtime_error("what is to be counted?");
  const CountedWork work{
      .work = arguments[0], .container = arguments[1], .users = std::stoul(arguments[2])};
  Counts counts;
  {
    const RelayedSession relayed;
    const std::function<void()> action = prepare(*relayed.session, work);
    const TcpRelay::Traffic before = relayed.relay.traffic();
    action();
    const TcpRelay::Traffic after = relayed.relay.traffic();
    counts.requests = after.requests - before.requests;
    counts.bytes = after.bytes_to_server - before.bytes_to_server + after.bytes_to_program -
                   before.bytes_to_program;
  }
  // Without the relay, which would be counted with the rest.
  const std::unique_ptr<NetworkSession> session = OpenSession();
  const std::function<void()> action = prepare(*session, work);
  const std::size_t before = Allocations();
  action();
  counts.allocations = Allocations() - before;
  std::cout << counts.requests << " " << counts.bytes << " " << counts.allocations << std::endl;
}

}  // namespace pelora::lab
