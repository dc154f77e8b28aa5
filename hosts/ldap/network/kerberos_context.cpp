// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/kerberos_context.h"

#include <gssapi/gssapi.h>
#include <gssapi/gssapi_ext.h>
#include <gssapi/gssapi_krb5.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/kerberos_status.h"

namespace pelora::ldap {
namespace {

/// Both sides prove who they are, and what is sent later can be signed and sealed.
constexpr OM_uint32 kWanted = GSS_C_MUTUAL_FLAG | GSS_C_INTEG_FLAG | GSS_C_CONF_FLAG |
                              GSS_C_SEQUENCE_FLAG | GSS_C_REPLAY_FLAG;

/// Bytes of somebody else's; the library asks for them without `const`.
gss_buffer_desc Borrowed(std::string_view bytes) {
  return {.length = bytes.size(), .value = const_cast<char*>(bytes.data())};
}

/// Bytes that the library made.
class Buffer {
 public:
  Buffer() = default;
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  ~Buffer() {
    OM_uint32 minor = 0;
    gss_release_buffer(&minor, &buffer_);
  }

  [[nodiscard]] gss_buffer_t get() { return &buffer_; }
  [[nodiscard]] std::string Text() const {
    return {static_cast<const char*>(buffer_.value), buffer_.length};
  }

 private:
  gss_buffer_desc buffer_ = GSS_C_EMPTY_BUFFER;
};

class Name {
 public:
  Name() = default;
  Name(const Name&) = delete;
  Name& operator=(const Name&) = delete;
  ~Name() {
    OM_uint32 minor = 0;
    gss_release_name(&minor, &name_);
  }

  [[nodiscard]] gss_name_t* out() { return &name_; }
  [[nodiscard]] gss_name_t get() const { return name_; }
  [[nodiscard]] std::string Text() const {
    Buffer text;
    OM_uint32 minor = 0;
    return GSS_ERROR(gss_display_name(&minor, name_, text.get(), nullptr)) ? "" : text.Text();
  }

 private:
  gss_name_t name_ = GSS_C_NO_NAME;
};

/// A key's strength as the mechanism rates it; 0 when it does not say.
unsigned StrengthOf(gss_ctx_id_t context) {
  gss_buffer_set_t answers = GSS_C_NO_BUFFER_SET;
  OM_uint32 minor = 0;
  unsigned strength = 0;
  const OM_uint32 major =
      gss_inquire_sec_context_by_oid(&minor, context, GSS_C_SEC_CONTEXT_SASL_SSF, &answers);
  if (!GSS_ERROR(major) && answers != nullptr && answers->count == 1 &&
      answers->elements[0].length == sizeof(std::uint32_t)) {
    const auto* const bytes = static_cast<const unsigned char*>(answers->elements[0].value);
    for (std::size_t at = 0; at < sizeof(std::uint32_t); ++at)
      strength = strength << 8U | bytes[at];
  }
  gss_release_buffer_set(&minor, &answers);
  return strength;
}

/// Whom the context is with, as `ldap/host@REALM`; empty when that is not known.
std::string PeerOf(gss_ctx_id_t context) {
  Name peer;
  OM_uint32 minor = 0;
  const OM_uint32 major = gss_inquire_context(&minor, context, nullptr, peer.out(), nullptr,
                                              nullptr, nullptr, nullptr, nullptr);
  return GSS_ERROR(major) ? "" : peer.Text();
}

}  // namespace

struct KerberosContext::Impl {
  /// `ldap/host`, and its realm.
  std::string service;
  std::string realm;
  Name target;
  gss_ctx_id_t context = GSS_C_NO_CONTEXT;
  OM_uint32 flags = 0;
  bool is_established = false;
};

KerberosContext::KerberosContext(std::string host, std::string realm)
    : impl_(std::make_unique<Impl>()) {
  impl_->service = "ldap/" + std::move(host);
  impl_->realm = std::move(realm);
}

KerberosContext::~KerberosContext() {
  OM_uint32 minor = 0;
  gss_delete_sec_context(&minor, &impl_->context, GSS_C_NO_BUFFER);
}

bool KerberosContext::is_established() const { return impl_->is_established; }

StoreStatus KerberosContext::Step(std::string_view token, std::string& answer) {
  OM_uint32 minor = 0;
  OM_uint32 major = GSS_S_COMPLETE;
  if (impl_->target.get() == GSS_C_NO_NAME) {
    // A principal's own name is taken as it stands; that of a service on a host would be looked up.
    const std::string principal = impl_->service + '@' + impl_->realm;
    gss_buffer_desc text = Borrowed(principal);
    major = gss_import_name(&minor, &text, GSS_KRB5_NT_PRINCIPAL_NAME, impl_->target.out());
  }
  Buffer output;
  if (!GSS_ERROR(major)) {
    gss_buffer_desc input = Borrowed(token);
    major = gss_init_sec_context(&minor, GSS_C_NO_CREDENTIAL, &impl_->context, impl_->target.get(),
                                 const_cast<gss_OID>(gss_mech_krb5), kWanted, 0,
                                 GSS_C_NO_CHANNEL_BINDINGS, &input, nullptr, output.get(),
                                 &impl_->flags, nullptr);
  }
  if (GSS_ERROR(major)) return {kLdapLocalError, TextOfKerberosStatus(major, minor)};
  impl_->is_established = (major & GSS_S_CONTINUE_NEEDED) == 0;
  answer = output.Text();
  return {};
}

unsigned KerberosContext::Strength() const { return StrengthOf(impl_->context); }

StoreStatus KerberosContext::Check(unsigned least_bits) const {
  const std::string name = PeerOf(impl_->context);
  const bool is_named = EqualsWithoutCase(name.substr(0, name.rfind('@')), impl_->service);
  if (!is_named || (impl_->flags & GSS_C_MUTUAL_FLAG) == 0) {
    return {kLdapInvalidCredentials, "it has not proved to be the server of this name"};
  }
  constexpr OM_uint32 kProtected = GSS_C_INTEG_FLAG | GSS_C_CONF_FLAG;
  if ((impl_->flags & kProtected) != kProtected || StrengthOf(impl_->context) < least_bits) {
    return {kLdapConfidentialityRequired, "the ticket's key is too weak"};
  }
  return {};
}

bool KerberosContext::Wrap(std::string_view plain, Protection protection, std::string& wrapped) {
  const int wants_sealing = protection == Protection::kSealed ? 1 : 0;
  gss_buffer_desc input = Borrowed(plain);
  Buffer output;
  int is_sealed = 0;
  OM_uint32 minor = 0;
  const OM_uint32 major = gss_wrap(&minor, impl_->context, wants_sealing, GSS_C_QOP_DEFAULT, &input,
                                   &is_sealed, output.get());
  if (GSS_ERROR(major) || (wants_sealing != 0 && is_sealed == 0)) return false;
  wrapped = output.Text();
  return true;
}

bool KerberosContext::Unwrap(std::string_view wrapped, Protection protection, std::string& plain) {
  gss_buffer_desc input = Borrowed(wrapped);
  Buffer output;
  int is_sealed = 0;
  OM_uint32 minor = 0;
  const OM_uint32 major =
      gss_unwrap(&minor, impl_->context, &input, output.get(), &is_sealed, nullptr);
  // Anything but plain success tells of messages that are old, missing or out of their order.
  if (major != GSS_S_COMPLETE) return false;
  if (protection == Protection::kSealed && is_sealed == 0) return false;
  plain = output.Text();
  return true;
}

std::size_t KerberosContext::MostPlain(std::size_t most) const {
  const auto limit =
      static_cast<OM_uint32>(std::min<std::size_t>(most, std::numeric_limits<OM_uint32>::max()));
  OM_uint32 minor = 0;
  OM_uint32 plain = 0;
  const OM_uint32 major =
      gss_wrap_size_limit(&minor, impl_->context, 1, GSS_C_QOP_DEFAULT, limit, &plain);
  return GSS_ERROR(major) ? 0 : plain;
}

}  // namespace pelora::ldap
