// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <string>
#include <vector>

#include "directory/ads_base.h"
#include "pages/command.h"
#include "platform/field_rows.h"

namespace pelora {

// What a page takes its fields from: a few controls, the attributes they stand for, and all that is
// done with them. A group may be made of smaller ones; the page knows the one that it adds.

/// Every group shows attributes (`Load`), says what is to be written (`Collect`), hears its
/// controls
/// (`Commands`) and tells of its fields (`Rows`, in the order of loading).
template <class Group>
concept FieldGroup = requires(Group& group, const BoundObjects& objects, ChangeList& changes) {
  { group.Load(objects) } -> std::same_as<HRESULT>;
  { group.Collect(changes) } -> std::same_as<HRESULT>;
  { group.Commands() } -> std::same_as<std::vector<Command>>;
  { group.Rows() } -> std::same_as<std::vector<FieldRow>>;
};

/// Some groups say whether anything on the page is to be validated: `kSkipValidation` or
/// `kValidate`.
template <class Group>
concept SkipsValidation = requires(Group& group) {
  { group.SkipValidation() } -> std::same_as<int>;
};

/// Some groups refuse what cannot be written: `E_FAIL`, and a message when one is wanted.
template <class Group>
concept Validates = requires(Group& group, std::string* message) {
  { group.Validate(message) } -> std::same_as<HRESULT>;
};

}  // namespace pelora
