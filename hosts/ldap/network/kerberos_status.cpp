// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/kerberos_status.h"

#include <gssapi/gssapi.h>
#include <gssapi/gssapi_krb5.h>

namespace pelora::ldap {
namespace {

std::string Describe(OM_uint32 code, int kind) {
  gss_buffer_desc text = GSS_C_EMPTY_BUFFER;
  OM_uint32 ignored = 0;
  OM_uint32 more = 0;
  if (GSS_ERROR(gss_display_status(&ignored, code, kind, const_cast<gss_OID>(gss_mech_krb5), &more,
                                   &text))) {
    return {};
  }
  std::string described(static_cast<const char*>(text.value), text.length);
  gss_release_buffer(&ignored, &text);
  return described;
}

}  // namespace

std::string TextOfKerberosStatus(std::uint32_t major, std::uint32_t minor) {
  std::string text = minor == 0 ? std::string() : Describe(minor, GSS_C_MECH_CODE);
  return text.empty() ? Describe(major, GSS_C_GSS_CODE) : text;
}

}  // namespace pelora::ldap
