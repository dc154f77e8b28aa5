// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sasl/sasl.h>

#include <string>

namespace pelora::lab {

/// The server's side of a GSSAPI exchange, and of what is signed and sealed after it.
class SaslLayer {
 public:
  /// What of it is offered: 0 neither, 1 signing, more sealing too. `host` is the server's name.
  SaslLayer(unsigned most_strength, const std::string& host);
  ~SaslLayer();
  SaslLayer(const SaslLayer&) = delete;
  SaslLayer& operator=(const SaslLayer&) = delete;

  enum class Step { kGoesOn, kDone, kFailed };
  /// Takes the client's next token and gives the server's.
  Step Take(const std::string& token, std::string& answer);

  /// What goes over the wire for `plain`, and the other way round; as it is before the exchange is
  /// done, or when no strength was agreed on.
  [[nodiscard]] std::string Encode(const std::string& plain);
  [[nodiscard]] std::string Decode(const std::string& coded);
  /// From the next byte on.
  void Begin() { is_on_ = true; }

 private:
  sasl_conn_t* connection_ = nullptr;
  bool has_started_ = false;
  bool is_on_ = false;
};

}  // namespace pelora::lab
