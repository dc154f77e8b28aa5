// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/sasl_sign_in.h"

#include <string>
#include <string_view>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/kerberos_ticket.h"
#include "hosts/ldap/network/message_wait.h"

namespace pelora::ldap {
namespace {

constexpr const char* kMechanism = "GSSAPI";

/// Every field, so that nothing of the machine's settings is left: they could ask for less.
std::string SecurityProperties() {
  return "noanonymous,minssf=" + std::to_string(kMinimumStrength) +
         ",maxssf=2147483647,maxbufsize=65536";
}

/// The library may ask for names and passwords; a ticket needs none.
int AnswerNothing(LDAP* /*handle*/, unsigned /*flags*/, void* /*defaults*/, void* /*questions*/) {
  return LDAP_SUCCESS;
}

StoreStatus CheckModule(LDAP* handle) {
  char** list = nullptr;
  std::string offered;
  // The list belongs to the library.
  if (ldap_get_option(handle, LDAP_OPT_X_SASL_MECHLIST, &list) == LDAP_OPT_SUCCESS) {
    for (char** name = list; name != nullptr && *name != nullptr; ++name) {
      if (std::string_view(*name) == kMechanism) return {};
    }
  }
  return {kLdapAuthUnknown,
          "the SASL module \"GSSAPI\" is missing: install the package "
          "libsasl2-modules-gssapi-mit"};
}

StoreStatus TooWeak() {
  return {kLdapConfidentialityRequired,
          "it does not offer signing and sealing, and nothing less is accepted"};
}

std::string TextOf(LDAP* handle, int code) {
  char* text = nullptr;
  ldap_get_option(handle, LDAP_OPT_DIAGNOSTIC_MESSAGE, &text);
  const LdapMemoryPtr<char> owner(text);
  return text != nullptr && *text != '\0' ? text : ldap_err2string(code);
}

/// What became of the exchange, in the terms of `LdapConnection::Open`.
StoreStatus OutcomeOfSignIn(LDAP* handle, int code) {
  if (code == LDAP_SUCCESS) return {};
  if (code == LDAP_USER_CANCELLED) return {code, "stopped"};
  std::string text = TextOf(handle, code);
  // An alias or an address was typed.
  if (text.find("not found in Kerberos database") != std::string::npos) {
    return {code, "name it by its full DNS name, as the domain does (" + text + ")"};
  }
  // The library's only way to say that the server's offer is below what was asked for.
  if (code == LDAP_NOT_SUPPORTED || text.find("SASL(-15)") != std::string::npos) return TooWeak();
  return {code, std::move(text)};
}

StoreStatus CheckStrength(LDAP* handle) {
  ber_len_t strength = 0;
  const int code = ldap_get_option(handle, LDAP_OPT_X_SASL_SSF, &strength);
  return code == LDAP_OPT_SUCCESS && strength >= kMinimumStrength ? StoreStatus{} : TooWeak();
}

/// The steps of the exchange, each awaited no longer than `timeout`.
int Exchange(LDAP* handle, std::chrono::milliseconds timeout, const std::stop_token& stop) {
  const char* mechanism = nullptr;
  int id = 0;
  LdapMessagePtr answer;
  while (true) {
    const int code =
        ldap_sasl_interactive_bind(handle, nullptr, kMechanism, nullptr, nullptr, LDAP_SASL_QUIET,
                                   AnswerNothing, nullptr, answer.get(), &mechanism, &id);
    if (code != LDAP_SASL_BIND_IN_PROGRESS) return code;
    const int waited = AwaitMessage(handle, id, LDAP_MSG_ALL, timeout, stop, answer);
    if (waited != LDAP_SUCCESS) return waited;
  }
}

}  // namespace

StoreStatus SignInWithTicket(LDAP* handle, std::chrono::milliseconds timeout,
                             const std::stop_token& stop) {
  KerberosTicket ticket;
  StoreStatus status = CheckModule(handle);
  if (status.Ok()) status = ReadKerberosTicket(ticket);
  if (!status.Ok()) return status;
  const std::string properties = SecurityProperties();
  if (ldap_set_option(handle, LDAP_OPT_X_SASL_SECPROPS, properties.c_str()) != LDAP_OPT_SUCCESS) {
    return {kLdapLocalError, "the LDAP library does not know how to sign and seal"};
  }
  status = OutcomeOfSignIn(handle, Exchange(handle, timeout, stop));
  return status.Ok() ? CheckStrength(handle) : status;
}

}  // namespace pelora::ldap
