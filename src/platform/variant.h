// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace pelora {

/// Type code of a directory value, with the platform's numbers.
using VarType = std::uint16_t;

inline constexpr VarType VT_EMPTY = 0;
inline constexpr VarType VT_I4 = 3;
inline constexpr VarType VT_DATE = 7;
inline constexpr VarType VT_BSTR = 8;
inline constexpr VarType VT_DISPATCH = 9;
inline constexpr VarType VT_BOOL = 11;
inline constexpr VarType VT_VARIANT = 12;
inline constexpr VarType VT_UI1 = 17;
inline constexpr VarType VT_ARRAY = 0x2000;
/// An array of variants: what a multi-valued attribute reads and writes as.
inline constexpr VarType kVariantArray = VT_ARRAY | VT_VARIANT;

/// One directory value: nothing, a 32-bit integer, a string in UTF-8, or an array of values. A
/// value of any other type is kept as its type code alone, since nothing here reads it.
class Variant {
 public:
  Variant() = default;
  static Variant Integer(std::int32_t value) { return Variant(VT_I4, value); }
  static Variant String(std::string value) { return Variant(VT_BSTR, std::move(value)); }
  /// An array with lower bound 0.
  static Variant Array(std::vector<Variant> elements) {
    return Variant(kVariantArray, Elements{std::move(elements)});
  }
  static Variant StringArray(const std::vector<std::string>& values) {
    std::vector<Variant> elements;
    elements.reserve(values.size());
    for (const std::string& value : values) elements.push_back(String(value));
    return Array(std::move(elements));
  }
  static Variant OtherType(VarType type) { return Variant(type, std::monostate{}); }

  VarType type() const { return type_; }
  bool IsEmpty() const { return type_ == VT_EMPTY; }
  /// The value; each may be asked only of a variant of that type.
  std::int32_t integer() const { return std::get<std::int32_t>(value_); }
  const std::string& string() const { return std::get<std::string>(value_); }
  const std::vector<Variant>& array() const { return std::get<Elements>(value_).values; }

  friend bool operator==(const Variant& left, const Variant& right) {
    return left.type_ == right.type_ && left.value_ == right.value_;
  }

 private:
  /// Not the vector itself: a copy of a std::variant that holds nothing but what the library takes
  /// for safe to be moved is ended wrongly by libstdc++ 12 when memory runs out in the middle of
  /// it.
  struct Elements {
    std::vector<Variant> values;
    friend bool operator==(const Elements& left, const Elements& right) {
      return left.values == right.values;
    }
  };
  using Value = std::variant<std::monostate, std::int32_t, std::string, Elements>;
  Variant(VarType type, Value value) : type_(type), value_(std::move(value)) {}

  VarType type_ = VT_EMPTY;
  Value value_;
};

}  // namespace pelora
