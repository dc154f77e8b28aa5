// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/result.h"
#include "hosts/session/field_book.h"
#include "platform/dialog.h"

namespace pelora::session {

/// One object's change, before it is written.
struct ReviewedChange {
  std::string dn;
  /// What the object is called.
  std::string name;
  std::vector<ShownField> fields;
  /// False: taken out.
  bool is_wanted = true;
};

/// What is to be looked at before it is written.
struct Review {
  std::vector<ReviewedChange> changes;
  /// One of them as LDIF.
  std::function<std::string(std::size_t at)> ldif_of;
};

/// A field that somebody else changed while it was edited.
struct ShownConflict {
  enum class Choice : std::uint8_t {
    /// What is there stays.
    kTheirs,
    /// What was typed is written over it.
    kMine,
    /// Of a list: what both have put in or taken out.
    kBoth,
  };

  std::string dn;
  std::string name;
  std::string attribute;
  std::string field;
  std::string seen;
  std::string there;
  std::string wanted;
  bool is_list = false;
  Choice choice = Choice::kTheirs;
};

/// What became of one object's change.
struct WrittenChange {
  std::string name;
  changes::Result result;
  /// Why it was not done and what can be done about it; empty when there is nothing to say.
  std::string reason;
};

/// What went wrong with one object.
struct ShownFailure {
  /// What was tried, for whom, and that it was not done: one sentence.
  std::string summary;
  /// Why, and what can be done about it.
  std::string advice;
  /// For whoever helps: the code, the server's words, the object's whole name, the fields.
  std::string details;
};

/// Where a person is asked and told around the writing of a sheet. Each of these comes back when
/// the person is through with it. `owner` is the page that the person sees; may be null.
class IWritingDesk {
 public:
  virtual ~IWritingDesk() = default;

  /// Whether even the change of a single object is to be looked at first.
  [[nodiscard]] virtual bool ReviewsEverything() const = 0;
  /// Shows what is about to be written; objects may be taken out of it. False: nothing is written.
  [[nodiscard]] virtual bool ShowReview(IDialog* owner, Review& review) = 0;
  /// Asks for each conflict what is to become of it. False: it stays open.
  [[nodiscard]] virtual bool ShowConflicts(IDialog* owner,
                                           std::vector<ShownConflict>& conflicts) = 0;
  /// Shows what became of many objects. Whether those that are not done are to be tried again.
  [[nodiscard]] virtual bool ShowResults(IDialog* owner,
                                         std::span<const WrittenChange> results) = 0;
  virtual void ShowFailure(IDialog* owner, const ShownFailure& failure) = 0;
};

}  // namespace pelora::session
