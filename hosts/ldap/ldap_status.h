// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/hresult.h"

namespace pelora::ldap {

/// Result codes that are given or looked at here, as a server numbers them.
enum LdapResult : int {
  kLdapSuccess = 0,
  kLdapTimeLimitExceeded = 3,
  kLdapSizeLimitExceeded = 4,
  kLdapReferral = 10,
  kLdapAdminLimitExceeded = 11,
  kLdapConfidentialityRequired = 13,
  kLdapNoSuchAttribute = 16,
  kLdapUndefinedType = 17,
  kLdapConstraintViolation = 19,
  kLdapValueExists = 20,
  kLdapInvalidSyntax = 21,
  kLdapNoSuchObject = 32,
  kLdapInvalidDnSyntax = 34,
  kLdapInvalidCredentials = 49,
  kLdapInsufficientAccessRights = 50,
  kLdapBusy = 51,
  kLdapUnavailable = 52,
  kLdapUnwillingToPerform = 53,
  kLdapNamingViolation = 64,
  kLdapObjectClassViolation = 65,
  kLdapNotAllowedOnNonLeaf = 66,
  kLdapNotAllowedOnRdn = 67,
  kLdapAlreadyExists = 68,
  kLdapOther = 80,
  /// What a request takes for granted is not so.
  kLdapAssertionFailed = 122,
  /// The client's own failures, as libldap numbers them.
  kLdapServerDown = -1,
  kLdapLocalError = -2,
  kLdapDecodingError = -4,
  kLdapTimeout = -5,
  kLdapAuthUnknown = -6,
  kLdapFilterError = -7,
  kLdapUserCancelled = -8,
  kLdapParamError = -9,
  kLdapConnectError = -11,
};

/// One result code, in both numberings, and the system error that stands for it.
struct LdapStatus {
  /// As a server sends it and as the system's own LDAP library numbers the client's failures.
  int code = 0;
  /// As libldap numbers it: the same, but for the client's failures, which are negative.
  int libldap_code = 0;
  std::string_view name;
  HRESULT status = S_OK;
};

namespace detail {

/// The status of a system error.
constexpr HRESULT OfSystemError(std::uint32_t error) {
  return static_cast<HRESULT>(0x80070000U | error);
}

}  // namespace detail

/// Every result code that has a system error of its own.
inline constexpr auto kLdapStatusTable = [] {
  using detail::OfSystemError;
  return std::to_array<LdapStatus>({
      {0, 0, "success", S_OK},
      {1, 1, "operationsError", OfSystemError(0x2020)},
      {2, 2, "protocolError", OfSystemError(0x2021)},
      {3, 3, "timeLimitExceeded", OfSystemError(0x2022)},
      {4, 4, "sizeLimitExceeded", OfSystemError(0x2023)},
      {5, 5, "compareFalse", OfSystemError(0x2025)},
      {6, 6, "compareTrue", OfSystemError(0x2026)},
      {7, 7, "authMethodNotSupported", OfSystemError(0x2027)},
      {8, 8, "strongerAuthRequired", OfSystemError(0x2028)},
      {9, 9, "partialResults", OfSystemError(0x00EA)},
      {10, 10, "referral", OfSystemError(0x202B)},
      {11, 11, "adminLimitExceeded", OfSystemError(0x2024)},
      {12, 12, "unavailableCriticalExtension", OfSystemError(0x202C)},
      {13, 13, "confidentialityRequired", OfSystemError(0x202D)},
      {16, 16, "noSuchAttribute", OfSystemError(0x200A)},
      {17, 17, "undefinedAttributeType", OfSystemError(0x200C)},
      {18, 18, "inappropriateMatching", OfSystemError(0x202E)},
      {19, 19, "constraintViolation", OfSystemError(0x202F)},
      {20, 20, "attributeOrValueExists", OfSystemError(0x200D)},
      {21, 21, "invalidAttributeSyntax", OfSystemError(0x200B)},
      {32, 32, "noSuchObject", OfSystemError(0x2030)},
      {33, 33, "aliasProblem", OfSystemError(0x2031)},
      {34, 34, "invalidDNSyntax", OfSystemError(0x2032)},
      {35, 35, "isLeaf", OfSystemError(0x2033)},
      {36, 36, "aliasDereferencingProblem", OfSystemError(0x2034)},
      {48, 48, "inappropriateAuthentication", OfSystemError(0x2029)},
      {49, 49, "invalidCredentials", OfSystemError(0x052E)},
      {50, 50, "insufficientAccessRights", OfSystemError(0x0005)},
      {51, 51, "busy", OfSystemError(0x200E)},
      {52, 52, "unavailable", OfSystemError(0x200F)},
      {53, 53, "unwillingToPerform", OfSystemError(0x2035)},
      {54, 54, "loopDetect", OfSystemError(0x2036)},
      {64, 64, "namingViolation", OfSystemError(0x2037)},
      {65, 65, "objectClassViolation", OfSystemError(0x2014)},
      {66, 66, "notAllowedOnNonLeaf", OfSystemError(0x2015)},
      {67, 67, "notAllowedOnRDN", OfSystemError(0x2016)},
      {68, 68, "entryAlreadyExists", OfSystemError(0x1392)},
      {69, 69, "objectClassModsProhibited", OfSystemError(0x2017)},
      {70, 70, "resultsTooLarge", OfSystemError(0x2038)},
      {71, 71, "affectsMultipleDSAs", OfSystemError(0x2039)},
      {80, 80, "other", OfSystemError(0x001F)},
      {81, -1, "serverDown", OfSystemError(0x203A)},
      {82, -2, "localError", OfSystemError(0x203B)},
      {83, -3, "encodingError", OfSystemError(0x203C)},
      {84, -4, "decodingError", OfSystemError(0x203D)},
      {85, -5, "timeout", OfSystemError(0x05B4)},
      {86, -6, "authUnknown", OfSystemError(0x202A)},
      {87, -7, "filterError", OfSystemError(0x203E)},
      {88, -8, "userCancelled", OfSystemError(0x04C7)},
      {89, -9, "paramError", OfSystemError(0x203F)},
      {90, -10, "noMemory", OfSystemError(0x0008)},
      {91, -11, "connectError", OfSystemError(0x04C9)},
      {92, -12, "notSupported", OfSystemError(0x2040)},
      {93, -13, "controlNotFound", OfSystemError(0x2042)},
      {94, -14, "noResultsReturned", OfSystemError(0x2041)},
      {95, -15, "moreResultsToReturn", OfSystemError(0x00EA)},
      {96, -16, "clientLoop", OfSystemError(0x2043)},
      {97, -17, "referralLimitExceeded", OfSystemError(0x2044)},
  });
}();

/// The status of a result code in either numbering. A code that has no system error of its own is a
/// "local error" (0x8007203B): it never reads as success.
[[nodiscard]] constexpr HRESULT HresultOfLdap(int code) {
  for (const LdapStatus& row : kLdapStatusTable) {
    if (row.code == code || row.libldap_code == code) return row.status;
  }
  return detail::OfSystemError(0x203B);
}

}  // namespace pelora::ldap
