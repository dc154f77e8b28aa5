// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/shown_failure.h"

#include "directory/error_text.h"

namespace pelora::session {
namespace {

using changes::Outcome;
using changes::Result;

/// A directory's words as a sentence of their own.
std::string Sentence(std::string words) {
  while (!words.empty() && (words.back() == '\n' || words.back() == '.')) words.pop_back();
  return words + ".";
}

/// What stood in the way, where the advice does not say so itself.
std::string CauseOf(const Result& result, DirectoryPlace place) {
  if (NamesTheCause(result, place)) return {};
  return result.message.empty() ? "The directory refuses it. "
                                : "The directory refuses it: " + Sentence(result.message) + " ";
}

}  // namespace

ShownFailure FailureOf(const std::string& name, const changes::Change& change, const Result& result,
                       const FieldBook& book, DirectoryPlace place) {
  ShownFailure failure;
  const bool is_open = result.outcome == Outcome::kUnknown;
  failure.summary = is_open ? "It is not known whether the changes of " + name + " were written."
                            : "The changes of " + name + " were not written.";
  failure.advice = CauseOf(result, place) + AdviceOn(result, place);
  std::string& details = failure.details;
  if (result.code) details += "Code: " + CodeText(*result.code) + "\n";
  details += "Object: " + change.dn + "\nFields: ";
  bool is_first = true;
  for (const ShownField& field : book.FieldsOf(change)) {
    details += (is_first ? "" : ", ") + field.field;
    is_first = false;
  }
  if (!result.message.empty()) details += "\nThe directory says: " + result.message;
  return failure;
}

std::string ReasonOf(const Result& result, const FieldBook& book, DirectoryPlace place) {
  if (result.outcome == Outcome::kSkipped) return "Not begun.";
  std::string reason;
  for (const changes::Conflict& conflict : result.conflicts) {
    const std::string& attribute = conflict.attribute;
    reason += (reason.empty() ? "Changed meanwhile by someone else: " : "; ") +
              book.LabelOf(attribute) + " was " + book.TextOf(attribute, conflict.seen) + ", is " +
              book.TextOf(attribute, conflict.there) + " now, and was to become " +
              book.TextOf(attribute, conflict.wanted);
  }
  if (!reason.empty()) return reason + ".";
  reason = CauseOf(result, place) + AdviceOn(result, place);
  if (result.code) reason += " (" + CodeText(*result.code) + ")";
  return reason;
}

}  // namespace pelora::session
