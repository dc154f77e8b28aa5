// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/place_words.h"

#include <algorithm>
#include <array>
#include <span>

#include "directory/error_text.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::session {
namespace {

using changes::Outcome;
using changes::Result;

struct Reason {
  int code;
  std::string_view text;
  /// Whether the directory's own words say more.
  bool needs_words = false;
};

constexpr auto kReasons = std::to_array<Reason>({
    {ldap::kLdapInsufficientAccessRights,
     "You have no right to do this. Objects can be protected from deletion and moving, too: their "
     "owner takes that away first."},
    {ldap::kLdapAlreadyExists, "There is an object of this name already."},
    {ldap::kLdapNotAllowedOnNonLeaf, "Other objects lie below it."},
    {ldap::kLdapNoSuchObject,
     "The object or the container is not there any more. Refresh shows what is."},
    {ldap::kLdapInvalidDnSyntax, "The directory does not take this as a name."},
    {ldap::kLdapNamingViolation, "The directory does not take this as a name.", true},
    {ldap::kLdapConstraintViolation, "The directory does not take this as a name.", true},
    {ldap::kLdapInvalidSyntax, "The directory does not take this as a name.", true},
    {ldap::kLdapUnwillingToPerform, "The directory does not do this.", true},
});

constexpr auto kServerReasons = std::to_array<Reason>({
    {ldap::kLdapServerDown, "The connection is lost. Nothing of this was done."},
    {ldap::kLdapConnectError, "The connection is lost. Nothing of this was done."},
    {ldap::kLdapUnavailable, "The server does not work at the moment. Nothing of this was done."},
    {ldap::kLdapBusy, "The server has too much to do. Try again in a moment."},
});

constexpr auto kFileReasons = std::to_array<Reason>({
    {ldap::kLdapServerDown, "The file cannot be used. Nothing of this was done.", true},
    {ldap::kLdapUnavailable,
     "The file was removed or replaced, or a change of it did not reach the disk: start the "
     "program anew. Nothing of this was done."},
    {ldap::kLdapBusy, "Another program is writing to the directory. Try again in a moment."},
});

const Reason* KnownReason(const Result& result, DirectoryPlace place) {
  const std::span<const Reason> there = place == DirectoryPlace::kFile
                                            ? std::span<const Reason>(kFileReasons)
                                            : std::span<const Reason>(kServerReasons);
  for (const std::span<const Reason> rows : {std::span<const Reason>(kReasons), there}) {
    const auto found = std::ranges::find_if(rows, [&result](const Reason& row) {
      return result.code && ldap::HresultOfLdap(row.code) == *result.code;
    });
    if (found != rows.end()) return &*found;
  }
  return nullptr;
}

std::string Objects(std::size_t count) {
  return count == 1 ? "1 object" : std::to_string(count) + " objects";
}

/// The object, or how many there are.
std::string Who(const PlacePlan& plan) {
  return plan.names.size() == 1 ? plan.names.front()
                                : std::to_string(plan.names.size()) + " objects";
}

/// What is said of one reference, and behind the number of several.
struct ReferenceWords {
  std::string_view one;
  std::string_view several;
};

void AddReferences(const PlacePlan& plan, const ReferenceWords& words, PlaceQuestion& question) {
  if (plan.references.empty()) return;
  question.references = plan.references;
  if (plan.references.size() == 1) {
    question.about_references = words.one;
    return;
  }
  question.about_references = plan.has_more_references ? "More than " : "";
  question.about_references.append(std::to_string(plan.references.size())).append(words.several);
}

constexpr ReferenceWords kLost = {.one = "1 entry elsewhere names what is deleted:",
                                  .several = " entries elsewhere name what is deleted:"};
constexpr ReferenceWords kBroken = {
    .one =
        "1 entry elsewhere names what will be called otherwise. It stays as it is, and has to be "
        "changed by hand:",
    .several =
        " entries elsewhere name what will be called otherwise. They stay as they are, and "
        "have to be changed by hand:"};

}  // namespace

std::string CountText(const std::vector<TypeCount>& counts) {
  std::string text;
  for (std::size_t at = 0; at < counts.size(); ++at) {
    if (at > 0) text += at + 1 == counts.size() ? " and " : ", ";
    text += std::to_string(counts[at].count) + " " + counts[at].type;
  }
  return text;
}

PlaceQuestion AskOfRemoval(const PlacePlan& plan) {
  PlaceQuestion question{.title = "Delete",
                         .text = "Delete " + Who(plan) + "?",
                         .notes = {},
                         .about_references = {},
                         .references = {},
                         .to_type = {},
                         .button = "&Delete"};
  if (const std::size_t below = plan.BelowCount(); below > 0) {
    question.notes.push_back("With it goes what lies below, " + Objects(below) + ": " +
                             CountText(plan.below) + ".");
    question.to_type = plan.names.size() == 1 ? plan.names.front() : Who(plan);
  }
  question.notes.emplace_back(
      plan.is_kept ? "It can be taken back (Undo): the recycle bin of the domain is on."
                   : "This cannot be taken back: the directory keeps nothing of what is deleted.");
  AddReferences(plan, kLost, question);
  if (plan.references.empty()) question.notes.emplace_back("Nothing else refers to it.");
  return question;
}

PlaceQuestion AskOfMoving(const PlacePlan& plan, const std::string& container) {
  PlaceQuestion question{.title = "Move",
                         .text = "Move " + Who(plan) + " to " + container + "?",
                         .notes = {},
                         .about_references = {},
                         .references = {},
                         .to_type = {},
                         .button = "&Move"};
  if (const std::size_t below = plan.BelowCount(); below > 0) {
    question.notes.push_back("What lies below moves along, " + Objects(below) + ": " +
                             CountText(plan.below) + ".");
  }
  AddReferences(plan, kBroken, question);
  return question;
}

PlaceQuestion AskOfRenaming(const PlacePlan& plan, const std::string& name) {
  PlaceQuestion question{.title = "Rename",
                         .text = "Rename " + Who(plan) + " to " + name + "?",
                         .notes = {},
                         .about_references = {},
                         .references = {},
                         .to_type = {},
                         .button = "&Rename"};
  AddReferences(plan, kBroken, question);
  return question;
}

std::string PlaceReason(const Result& result, DirectoryPlace place) {
  if (result.outcome == Outcome::kSkipped) return "Not begun.";
  if (result.outcome == Outcome::kUnknown) {
    return "It may have been done or not. Refresh shows what is there.";
  }
  if (result.outcome == Outcome::kRefused) {
    return "Another object has this name by now. Refresh shows what is there.";
  }
  const Reason* const known = KnownReason(result, place);
  std::string text(known != nullptr ? known->text : "The directory refuses it.");
  const bool adds_words = (known == nullptr || known->needs_words) && !result.message.empty();
  if (adds_words) text += " It says: " + result.message;
  if (result.code) text += " (" + CodeText(*result.code) + ")";
  return text;
}

ShownFailure PlaceFailure(const std::string& name, std::string_view done, const Result& result,
                          DirectoryPlace place) {
  ShownFailure failure;
  failure.summary = result.outcome == Outcome::kUnknown
                        ? "It is not known whether " + name + " was "
                        : name + " was not ";
  failure.summary.append(done).append(".");
  failure.advice = PlaceReason(result, place);
  if (result.code) failure.details = "Code: " + CodeText(*result.code) + "\n";
  failure.details += "Object: " + result.dn;
  if (!result.message.empty()) failure.details += "\nThe directory says: " + result.message;
  return failure;
}

}  // namespace pelora::session
