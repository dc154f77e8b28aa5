// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace pelora::lab {

/// Stands between programs and a server, on a port of this machine, and passes on what they say to
/// each other until it is told otherwise. It understands none of it but where a message ends.
class TcpRelay {
 public:
  /// What went through it, of all connections together.
  struct Traffic {
    std::size_t requests = 0;
    std::size_t bytes_to_server = 0;
    std::size_t bytes_to_program = 0;
  };

  /// To `port` of this machine, or of one of its addresses, on which the relay listens too.
  explicit TcpRelay(std::uint16_t port, const std::string& address = "127.0.0.1");
  ~TcpRelay();
  TcpRelay(const TcpRelay&) = delete;
  TcpRelay& operator=(const TcpRelay&) = delete;

  /// Where the relay listens.
  [[nodiscard]] std::uint16_t port() const;
  /// How many connections have been made to it.
  [[nodiscard]] int connections() const;
  /// What the programs and the server have said so far.
  [[nodiscard]] Traffic traffic() const;

  /// Holds everything back for half of `delay`, so that an answer takes that much longer.
  void SetDelay(std::chrono::microseconds delay);
  /// Ends all connections; new ones are taken.
  void Cut();
  /// Ends the connection on which the next request comes, which the server does not get.
  void CutAtNextRequest();
  /// Passes on requests until the server says something, which is kept back, and ends the
  /// connection then.
  void CutAtNextAnswer();
  /// The same, and no other connection is taken from then on.
  void GoAtNextAnswer();
  /// Passes on so many bytes of what the server says from now on, and nothing after them. Zero
  /// bytes: nothing more comes back.
  void HoldAnswersAfter(std::size_t bytes);
  /// Whether something was held back since.
  [[nodiscard]] bool HasHeld() const;
  /// Takes nothing more from the programs, so that their writes find no room in the end.
  void HoldRequests();

 private:
  class Worker;
  std::unique_ptr<Worker> worker_;
};

}  // namespace pelora::lab
