// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/sasl_layer.h"

#include <ldap.h>

#include <stdexcept>

namespace pelora::lab {
namespace {

void Require(int code, const char* what) {
  if (code != SASL_OK) {
    throw std::runtime_error(std::string(what) + ": " + sasl_errstring(code, nullptr, nullptr));
  }
}

bool HasStrength(sasl_conn_t* connection) {
  const void* strength = nullptr;
  return sasl_getprop(connection, SASL_SSF, &strength) == SASL_OK &&
         *static_cast<const sasl_ssf_t*>(strength) > 0;
}

}  // namespace

SaslLayer::SaslLayer(unsigned most_strength, const std::string& host) {
  // The LDAP library gives SASL its own locks when it is used first. What SASL has made before that
  // it would hand to the wrong ones: a client on another thread must not be the first.
  int version = 0;
  ldap_get_option(nullptr, LDAP_OPT_PROTOCOL_VERSION, &version);
  // For the whole process; the library counts.
  Require(sasl_server_init(nullptr, "pelora-lab"), "sasl_server_init");
  Require(
      sasl_server_new("ldap", host.c_str(), nullptr, nullptr, nullptr, nullptr, 0, &connection_),
      "sasl_server_new");
  sasl_security_properties_t properties{};
  properties.max_ssf = most_strength;
  properties.maxbufsize = 65'536;
  Require(sasl_setprop(connection_, SASL_SEC_PROPS, &properties), "sasl_setprop");
}

SaslLayer::~SaslLayer() { sasl_dispose(&connection_); }

SaslLayer::Step SaslLayer::Take(const std::string& token, std::string& answer) {
  const char* output = nullptr;
  unsigned size = 0;
  const auto length = static_cast<unsigned>(token.size());
  const int code =
      has_started_ ? sasl_server_step(connection_, token.data(), length, &output, &size)
                   : sasl_server_start(connection_, "GSSAPI", token.data(), length, &output, &size);
  has_started_ = true;
  answer.assign(output == nullptr ? "" : output, output == nullptr ? 0 : size);
  if (code == SASL_CONTINUE) return Step::kGoesOn;
  return code == SASL_OK ? Step::kDone : Step::kFailed;
}

std::string SaslLayer::Encode(const std::string& plain) {
  if (!is_on_ || !HasStrength(connection_)) return plain;
  const char* output = nullptr;
  unsigned size = 0;
  Require(
      sasl_encode(connection_, plain.data(), static_cast<unsigned>(plain.size()), &output, &size),
      "sasl_encode");
  return {output, size};
}

std::string SaslLayer::Decode(const std::string& coded) {
  if (!is_on_ || !HasStrength(connection_)) return coded;
  const char* output = nullptr;
  unsigned size = 0;
  Require(
      sasl_decode(connection_, coded.data(), static_cast<unsigned>(coded.size()), &output, &size),
      "sasl_decode");
  return {output, size};
}

}  // namespace pelora::lab
