// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "platform/choosers.h"

namespace pelora::session {

/// What a chooser looks for, as LDAP filters. Each is complete in itself and well-formed whatever
/// it is made from.

/// The objects that a picker's scope admits, by its filter bits for up-level domains: users (no
/// computers), groups by kind, contacts, computers; objects for an advanced view only by a bit of
/// their own. Bits that admit nothing here are passed over; no bit at all admits nothing.
[[nodiscard]] std::string TypeFilter(const ObjectPickerScope& scope);

/// Domains, organisational units and other containers.
[[nodiscard]] std::string ContainerFilter();

/// The objects of a filter without those that the directory keeps for an advanced view.
[[nodiscard]] std::string WithoutHidden(const std::string& filter);

/// A value as a filter takes it literally: the filter's own characters and 0 as `\xx`.
[[nodiscard]] std::string EscapeFilterValue(std::string_view value);

}  // namespace pelora::session
