// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// What somebody typed or pasted to find objects by.
///
/// One line is words, each of which has to stand somewhere in an object's names, description or
/// addresses. A distinguished name is the object of that name. Several lines, and what `;` or `,`
/// divide, are a list of which each item is the whole of a name, a logon name or an address, or a
/// distinguished name; `Ada Meyer <ada@example.org>` is the address. "Meyer, Ada" is two items of a
/// list, and finds the object that is called so, or "Ada Meyer", as well.
class FindText {
 public:
  /// Items beyond these are left out.
  static constexpr std::size_t kMostItems = 5000;

  explicit FindText(std::string_view text);

  /// Nothing is asked for: everything is meant.
  [[nodiscard]] bool IsEmpty() const { return words_.empty() && items_.empty(); }
  /// Words that all have to be there; none in a list.
  [[nodiscard]] const std::vector<std::string>& words() const { return words_; }

  /// One item of a list.
  struct Item {
    /// As it was given.
    std::string given;
    /// It is a distinguished name.
    bool is_dn = false;
    /// What an object may be called, in full.
    std::vector<std::string> names{};
  };
  [[nodiscard]] const std::vector<Item>& items() const { return items_; }
  /// How many items of the list are left out.
  [[nodiscard]] std::size_t left_out() const { return left_out_; }

 private:
  void TakeList(const std::vector<std::string_view>& pieces);
  void TakePieces(std::string_view piece);
  void TakeItem(std::string_view text, std::vector<std::string> other_names = {});

  std::vector<std::string> words_;
  std::vector<Item> items_;
  std::size_t left_out_ = 0;
};

/// The attributes that a text is looked for in.
[[nodiscard]] const std::vector<std::string>& FindAttributes();

/// The filter of objects in which each of the words stands; empty for none.
[[nodiscard]] std::string FilterOfWords(const std::vector<std::string>& words);
/// The filter of objects that have one of the names of an item, written one after the other: the
/// inside of an "or".
[[nodiscard]] std::string FilterOfNames(const FindText::Item& item);

/// What an entry is called, in full and without case, each once.
[[nodiscard]] std::vector<std::string> NamesOf(const ldap::Entry& entry);

}  // namespace pelora::session
