// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pelora::lab {

/// A request as a directory server reads it.
struct StandInRequest {
  enum class Kind { kBind, kSearch, kModify, kAdd, kDelete, kUnbind, kOther };
  Kind kind = Kind::kOther;
  int id = 0;
  std::string dn;
  /// Of a search: what is asked for, and the names that its filter lists.
  std::vector<std::string> attributes;
  std::vector<std::string> names;
  bool goes_below = false;
  /// It asks for a page of a longer one.
  bool is_page = false;
  /// Of a bind.
  std::string mechanism;
  std::string token;
};

/// One found entry: its name, and its attributes in the order in which they are sent.
struct StandInEntry {
  std::string dn;
  std::vector<std::pair<std::string, std::vector<std::string>>> attributes;
};

/// Takes the first whole message off `bytes`; nothing when there is none yet.
[[nodiscard]] std::optional<StandInRequest> TakeRequest(std::string& bytes);

/// Messages of a server.
[[nodiscard]] std::string EntryMessage(int id, const StandInEntry& entry);
[[nodiscard]] std::string ReferenceMessage(int id, const std::string& uri);
/// `page` is the mark at which the next page of a search begins; `referral` are addresses of
/// servers to ask instead.
[[nodiscard]] std::string ResultMessage(const StandInRequest& request, int code,
                                        const std::string& text, const std::string& page = {},
                                        const std::vector<std::string>& referral = {});
/// A server's word, unasked, that it is about to end the connection, and why.
[[nodiscard]] std::string GoodByeMessage(int code, const std::string& text);
/// The result of a bind, or of a step of one (code 14).
[[nodiscard]] std::string BindMessage(int id, int code, const std::string& token);

}  // namespace pelora::lab
