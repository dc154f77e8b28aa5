// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "hosts/session/own_pages/own_field.h"

namespace pelora::session {

/// The fields of users' accounts: whether and until when somebody can log on, and what holds for
/// his password. Several of them are bits of one number, of which an edit changes its own bit
/// alone.
[[nodiscard]] std::span<const OwnField> AccountFields();
/// What is read beside their attributes.
[[nodiscard]] std::span<const std::string_view> AccountAlsoRead();
/// Their attributes in words.
[[nodiscard]] std::span<const AttributeWords> AccountWords();

}  // namespace pelora::session
