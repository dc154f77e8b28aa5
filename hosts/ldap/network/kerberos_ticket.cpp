// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/kerberos_ticket.h"

#include <gssapi/gssapi.h>
#include <gssapi/gssapi_krb5.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/kerberos_status.h"

namespace pelora::ldap {
namespace {

class Credential {
 public:
  Credential() = default;
  Credential(const Credential&) = delete;
  Credential& operator=(const Credential&) = delete;
  ~Credential() {
    OM_uint32 minor = 0;
    gss_release_cred(&minor, &handle_);
    gss_release_name(&minor, &name_);
  }

  /// The user's own, to begin with as a client.
  OM_uint32 Acquire(OM_uint32& minor) {
    gss_OID_set_desc kerberos{.count = 1, .elements = const_cast<gss_OID>(gss_mech_krb5)};
    return gss_acquire_cred(&minor, GSS_C_NO_NAME, GSS_C_INDEFINITE, &kerberos, GSS_C_INITIATE,
                            &handle_, nullptr, nullptr);
  }
  OM_uint32 InquireTime(OM_uint32& minor, OM_uint32& seconds_left) {
    return gss_inquire_cred(&minor, handle_, nullptr, &seconds_left, nullptr, nullptr);
  }
  /// Not of one that has expired: the library loses the name then.
  OM_uint32 InquireName(OM_uint32& minor) {
    return gss_inquire_cred(&minor, handle_, &name_, nullptr, nullptr, nullptr);
  }
  [[nodiscard]] gss_name_t name() const { return name_; }

 private:
  gss_cred_id_t handle_ = GSS_C_NO_CREDENTIAL;
  gss_name_t name_ = GSS_C_NO_NAME;
};

std::string TakeText(gss_buffer_desc& buffer) {
  std::string text(static_cast<const char*>(buffer.value), buffer.length);
  OM_uint32 minor = 0;
  gss_release_buffer(&minor, &buffer);
  return text;
}

std::string NameOf(const Credential& credential) {
  gss_buffer_desc text = GSS_C_EMPTY_BUFFER;
  OM_uint32 minor = 0;
  if (GSS_ERROR(gss_display_name(&minor, credential.name(), &text, nullptr))) return {};
  return TakeText(text);
}

StoreStatus NoTicket(const std::string& reason) {
  std::string text = "no Kerberos ticket: get one with \"kinit\", or \"kinit name@REALM\"";
  if (!reason.empty()) text += " (" + reason + ")";
  return {kLdapInvalidCredentials, std::move(text)};
}

StoreStatus Expired() {
  return {kLdapInvalidCredentials, "the Kerberos ticket has expired: get a new one with \"kinit\""};
}

}  // namespace

std::string KerberosTicket::Realm() const {
  const std::size_t at = principal.rfind('@');
  return at == std::string::npos ? std::string() : principal.substr(at + 1);
}

StoreStatus ReadKerberosTicket(KerberosTicket& ticket) {
  ticket = {};
  Credential credential;
  OM_uint32 minor = 0;
  OM_uint32 major = credential.Acquire(minor);
  if (GSS_ROUTINE_ERROR(major) == GSS_S_CREDENTIALS_EXPIRED) return Expired();
  if (GSS_ERROR(major)) return NoTicket(TextOfKerberosStatus(major, minor));

  OM_uint32 seconds_left = 0;
  major = credential.InquireTime(minor, seconds_left);
  const bool is_expired = GSS_ROUTINE_ERROR(major) == GSS_S_CREDENTIALS_EXPIRED ||
                          (!GSS_ERROR(major) && seconds_left == 0);
  if (is_expired) return Expired();
  if (!GSS_ERROR(major)) major = credential.InquireName(minor);
  if (GSS_ERROR(major)) return NoTicket(TextOfKerberosStatus(major, minor));
  ticket.principal = NameOf(credential);
  if (seconds_left != GSS_C_INDEFINITE) {
    ticket.end = std::chrono::system_clock::now() + std::chrono::seconds(seconds_left);
  }
  return {};
}

}  // namespace pelora::ldap
