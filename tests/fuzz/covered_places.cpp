// SPDX-License-Identifier: Apache-2.0
// Tells libFuzzer which places of the pages an input has come to. gcc, which compiles them, calls
// one function at each place; libFuzzer reads an array of counters, and has an
// empty function of that name itself, so the linker puts ours in its place. A place is known by its
// distance from that function, which is the same wherever the program is loaded.
#include <array>
#include <cstddef>
#include <cstdint>

extern "C" {
void __wrap___sanitizer_cov_trace_pc();
void __sanitizer_cov_8bit_counters_init(std::uint8_t* begin, std::uint8_t* end);
void __sanitizer_cov_pcs_init(const std::uintptr_t* begin, const std::uintptr_t* end);
}

namespace {

constexpr unsigned kBits = 18;
constexpr std::size_t kPlaces = std::size_t{1} << kBits;

std::array<std::uint8_t, kPlaces> counters;

/// A number and no flags for each counter, by which libFuzzer counts those that were ever met.
struct Place {
  std::uintptr_t number;
  std::uintptr_t flags;
};
std::array<Place, kPlaces> places;

const bool are_known = [] {
  for (std::size_t place = 0; place < kPlaces; ++place) places[place].number = place + 1;
  __sanitizer_cov_8bit_counters_init(counters.data(), counters.data() + kPlaces);
  const auto* const first = reinterpret_cast<const std::uintptr_t*>(places.data());
  __sanitizer_cov_pcs_init(first, first + 2 * kPlaces);
  return true;
}();

}  // namespace

void __wrap___sanitizer_cov_trace_pc() {
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
  const std::uint64_t distance =
      here - reinterpret_cast<std::uintptr_t>(&__wrap___sanitizer_cov_trace_pc);
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  std::uint8_t& counter = counters[(distance * kGoldenRatio) >> (64U - kBits)];
  if (counter < UINT8_MAX) ++counter;
}
