// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <variant>

namespace pelora {

/// A `std::variant` that may be copied while memory runs out. The copy that libstdc++ 12 makes of
/// one with nothing but types that it takes for safe to be moved (texts, lists, numbers) ends
/// wrongly when it ends in the middle: it destroys what was never made. Here a copy begins as the
/// first type, which is made without memory, and is assigned to, which ends well.
template <typename First, typename... Others>
class OneOf : public std::variant<First, Others...> {
  using Base = std::variant<First, Others...>;

 public:
  using Base::Base;
  OneOf() = default;
  OneOf(const OneOf& other) : Base() { *this = other; }
  OneOf(OneOf&&) noexcept = default;
  OneOf& operator=(const OneOf&) = default;
  OneOf& operator=(OneOf&&) noexcept = default;
  ~OneOf() = default;
};

}  // namespace pelora
