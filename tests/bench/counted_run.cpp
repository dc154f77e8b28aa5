// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/counted_run.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "hosts/ldap/file_descriptor.h"
#include "tests/lab/tcp_relay.h"

namespace pelora::lab {
namespace {

constexpr std::uint16_t kDirectoryPort = 389;

/// A file in which each program that ends leaves how often it asked for memory.
class Ledger {
 public:
  Ledger() : file_(mkstemp(path_.data())) {
    if (!file_) throw std::runtime_error("no file can be made for the counts");
  }
  Ledger(const Ledger&) = delete;
  Ledger& operator=(const Ledger&) = delete;
  ~Ledger() { unlink(path_.c_str()); }

  [[nodiscard]] std::string Run(const std::string& command) const {
    return std::string("LD_PRELOAD=") + ALLOCATION_COUNTER + " PELORA_ALLOCATIONS=" + path_ + " " +
           command;
  }
  /// Of all programs together.
  [[nodiscard]] std::size_t Sum() const {
    std::ifstream lines(path_);
    std::size_t sum = 0;
    for (std::size_t count = 0; lines >> count;) sum += count;
    if (sum == 0) throw std::runtime_error("nobody has counted");
    return sum;
  }

 private:
  std::string path_ = std::filesystem::temp_directory_path() / "pelora-counts-XXXXXX";
  ldap::FileDescriptor file_;
};

}  // namespace

Counts CountsOf(const Command& command) {
  const TcpRelay relay(kDirectoryPort);
  const Ledger ledger;
  RunTool(ledger.Run(command(Server() + ":" + std::to_string(relay.port()))));
  const TcpRelay::Traffic traffic = relay.traffic();
  return {.requests = traffic.requests,
          .bytes = traffic.bytes_to_server + traffic.bytes_to_program,
          .allocations = ledger.Sum()};
}

Counts CountsOf(const std::string& command) {
  const Ledger ledger;
  RunTool(ledger.Run(command));
  return {.requests = 0, .bytes = 0, .allocations = ledger.Sum()};
}

}  // namespace pelora::lab
