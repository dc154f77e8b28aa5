// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/sasl_sign_in.h"

#include <array>
#include <memory>
#include <string_view>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/kerberos_context.h"
#include "hosts/ldap/network/kerberos_ticket.h"
#include "hosts/ldap/network/message_wait.h"
#include "hosts/ldap/network/sealed_wire.h"

namespace pelora::ldap {
namespace {

using Protection = KerberosContext::Protection;

constexpr const char* kMechanism = "GSSAPI";

/// What the server offers to do with everything that follows: a bit for each way, and in three more
/// bytes the longest packet that it takes. The answer has the same form.
constexpr std::size_t kOfferSize = 4;
constexpr unsigned char kSealing = 4;

StoreStatus TooWeak() {
  return {kLdapConfidentialityRequired,
          "it does not offer signing and sealing, and nothing less is accepted"};
}

StoreStatus NotUnderstood() {
  return {kLdapDecodingError, "it does not answer as a directory server does"};
}

std::string TextOf(LDAP* handle, int code) {
  char* text = nullptr;
  ldap_get_option(handle, LDAP_OPT_DIAGNOSTIC_MESSAGE, &text);
  const LdapMemoryPtr<char> owner(text);
  return text != nullptr && *text != '\0' ? text : ldap_err2string(code);
}

struct ValueFree {
  void operator()(berval* value) const { ber_bvfree(value); }
};

/// The exchange of tokens with one server, each answer awaited no longer than `timeout`.
class Exchange {
 public:
  Exchange(LDAP* handle, std::chrono::milliseconds timeout, std::stop_token stop)
      : handle_(handle), timeout_(timeout), stop_(std::move(stop)) {}

  /// Sends one token and waits for the next. `is_over`: the server takes the exchange for done.
  StoreStatus Say(const std::string& token, std::string& answer, bool& is_over) {
    berval credentials = BorrowedValue(token.data(), token.size());
    int id = 0;
    int code = ldap_sasl_bind(handle_, nullptr, kMechanism, &credentials, nullptr, nullptr, &id);
    LdapMessagePtr message;
    if (code == LDAP_SUCCESS) {
      code = AwaitMessage(handle_, id, LDAP_MSG_ALL, timeout_, stop_, message);
    }
    if (code == LDAP_USER_CANCELLED) return {code, "stopped"};
    if (code != LDAP_SUCCESS) return {code, ldap_err2string(code)};
    berval* received = nullptr;
    code = ldap_parse_sasl_bind_result(handle_, message.get(), &received, 0);
    const std::unique_ptr<berval, ValueFree> owner(received);
    // That it could be read says nothing of what it says.
    if (code == LDAP_SUCCESS) ldap_get_option(handle_, LDAP_OPT_RESULT_CODE, &code);
    if (code != LDAP_SUCCESS && code != LDAP_SASL_BIND_IN_PROGRESS) {
      return {code, TextOf(handle_, code)};
    }
    is_over = code == LDAP_SUCCESS;
    answer.assign(received == nullptr ? "" : received->bv_val,
                  received == nullptr ? 0 : received->bv_len);
    return {};
  }

 private:
  LDAP* handle_;
  std::chrono::milliseconds timeout_;
  std::stop_token stop_;
};

/// What is behind words of the Kerberos library's that do not say it.
struct Explanation {
  std::string_view words;
  const char* reason;
};
constexpr const char* kClock =
    "the clocks of this machine and of the domain differ by more than Kerberos takes, mostly five "
    "minutes: set this machine's clock";
constexpr auto kExplanations = std::to_array<Explanation>({
    // An alias or an address was typed.
    {"not found in Kerberos database", "name it by its full DNS name, as the domain does"},
    {"Clock skew too great", kClock},
    // So it is with a clock that is behind.
    {"Ticket not yet valid", kClock},
    // No other ticket is asked for with one that ends as soon as that.
    {"Ticket expired",
     "the Kerberos ticket ends within two minutes, or has ended: get a new one with \"kinit\""},
});

StoreStatus Explain(StoreStatus failure) {
  for (const Explanation& explanation : kExplanations) {
    if (failure.text.find(explanation.words) == std::string::npos) continue;
    failure.text = explanation.reason + (" (" + failure.text + ")");
    break;
  }
  return failure;
}

/// Until both sides know each other; `token` is then what the server offers.
StoreStatus Establish(Exchange& exchange, KerberosContext& context, std::string& token) {
  token.clear();
  bool is_over = false;
  do {
    std::string next;
    StoreStatus status = context.Step(token, next);
    if (!status.Ok()) return Explain(std::move(status));
    status = exchange.Say(next, token, is_over);
    if (!status.Ok()) return status;
    // Nothing has been agreed on.
    if (is_over) return TooWeak();
  } while (!context.is_established());
  return context.Check(kMinimumStrength);
}

/// Takes the offer of sealing, and no other; `most_sent` is what the server takes at a time.
StoreStatus AgreeOnSealing(Exchange& exchange, KerberosContext& context, const std::string& offer,
                           std::size_t& most_sent) {
  std::string bytes;
  if (!context.Unwrap(offer, Protection::kSigned, bytes) || bytes.size() != kOfferSize) {
    return NotUnderstood();
  }
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  if ((byte(0) & kSealing) == 0) return TooWeak();
  most_sent =
      static_cast<std::size_t>(byte(1)) << 16U | static_cast<std::size_t>(byte(2)) << 8U | byte(3);
  if (context.MostPlain(most_sent) == 0) return NotUnderstood();
  constexpr std::size_t kMost = SealedWire::kMostReceived;
  constexpr std::array<char, kOfferSize> kChoice = {kSealing, kMost >> 16U & 0xFFU,
                                                    kMost >> 8U & 0xFFU, kMost & 0xFFU};
  std::string choice;
  if (!context.Wrap({kChoice.data(), kChoice.size()}, Protection::kSigned, choice)) {
    return {kLdapLocalError, "the Kerberos library cannot sign"};
  }
  bool is_over = false;
  StoreStatus status = exchange.Say(choice, bytes, is_over);
  if (status.Ok() && !is_over) return NotUnderstood();
  return status;
}

}  // namespace

StoreStatus SignInWithTicket(LDAP* handle, const WantedServer& server,
                             std::chrono::milliseconds timeout, const std::stop_token& stop,
                             SignedIn& signed_in) {
  signed_in = {};
  KerberosTicket ticket;
  StoreStatus status = ReadKerberosTicket(ticket);
  if (!status.Ok()) return status;
  auto context = std::make_unique<KerberosContext>(server.host, server.realm);
  Exchange exchange(handle, timeout, stop);
  std::string token;
  std::size_t most_sent = 0;
  status = Establish(exchange, *context, token);
  if (status.code == kLdapLocalError && !server.realm.empty()) {
    status.text = "nobody vouches for it in the realm '" + server.realm + "': " + status.text;
  }
  if (status.Ok()) status = AgreeOnSealing(exchange, *context, token, most_sent);
  if (!status.Ok()) return status;
  signed_in = {.sealed_bits = context->Strength()};
  Sockbuf* socket = nullptr;
  const bool is_installed =
      ldap_get_option(handle, LDAP_OPT_SOCKBUF, &socket) == LDAP_OPT_SUCCESS &&
      InstallWire(socket, std::make_unique<SealedWire>(std::move(context), most_sent));
  return is_installed ? StoreStatus{}
                      : StoreStatus{kLdapLocalError, "the LDAP library does not take the sealing"};
}

}  // namespace pelora::ldap
