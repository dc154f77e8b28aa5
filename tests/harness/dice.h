// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <span>

namespace pelora::testing {

/// Gives a number below the one asked for. All copies throw the same dice: who asks one takes the
/// number from the others.
using Dice = std::function<std::size_t(std::size_t sides)>;

/// Dice that fall the same for the same seed.
[[nodiscard]] inline Dice DiceOf(unsigned seed) {
  return [random = std::make_shared<std::mt19937>(seed)](std::size_t sides) {
    return (*random)() % sides;
  };
}

/// Dice that fall as bytes say, a byte for each number of up to 256 sides, and on 0 when there are
/// none left.
class ByteDice {
 public:
  /// The bytes outlive it and its copies.
  explicit ByteDice(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] bool IsUsedUp() const { return next_ == bytes_.size(); }
  [[nodiscard]] std::size_t Roll(std::size_t sides) {
    std::size_t number = 0;
    for (std::size_t range = 1; range < sides; range <<= 8U) {
      number = number << 8U | (IsUsedUp() ? 0U : bytes_[next_++]);
    }
    return number % sides;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t next_ = 0;
};

}  // namespace pelora::testing
