// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string.h>

#include <string>

namespace pelora::ldap {

/// Overwrites all the memory of a text, such that no optimizer leaves it out, and empties it.
template <class Letter>
void Wipe(std::basic_string<Letter>& text) {
  // The room behind its end may hold a longer one that it was before.
  text.resize(text.capacity());
  explicit_bzero(text.data(), text.size() * sizeof(Letter));
  text.clear();
}

}  // namespace pelora::ldap
