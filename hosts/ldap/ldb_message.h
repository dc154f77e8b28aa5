// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"

struct ldb_context;
struct ldb_message;
struct ldb_val;

namespace pelora::ldap {

[[nodiscard]] std::string ToBytes(const ldb_val& value);
[[nodiscard]] Entry ToEntry(const ldb_message& message);
/// Of its attributes only those that the modifications are about.
[[nodiscard]] Entry ToEntry(const ldb_message& message,
                            std::span<const Modification> modifications);

/// A message without elements, in the memory of `scope`; null when `dn` is no name.
[[nodiscard]] ldb_message* MakeLdbMessage(void* scope, ldb_context* context, const std::string& dn);
/// Appends an element; `flags` says what a modify does with it. Memory that runs out throws
/// `std::bad_alloc`.
void AddElement(ldb_message& message, int flags, const std::string& name,
                const AttributeValues& values);

}  // namespace pelora::ldap
