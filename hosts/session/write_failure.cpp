// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/write_failure.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "directory/error_text.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::session {
namespace {

using changes::Conflict;
using changes::Outcome;
using changes::Result;
using ldap::HresultOfLdap;

constexpr std::string_view kLine = "\r\n";
constexpr std::string_view kParagraph = "\r\n\r\n";

struct Advice {
  int code;
  std::string_view text;
  /// Whether it says what stood in the way.
  bool names_the_cause = true;
};

/// A server's word for an attribute that its schema lacks; a file says "no such attribute".
constexpr int kUndefinedAttributeType = 17;
constexpr std::string_view kGoneAdvice =
    "The object has been deleted or moved. Close its properties and look for it anew.";
constexpr std::string_view kConnectionLost =
    "The connection is lost. What you typed is kept here: apply again once the server can be "
    "reached.";
constexpr std::string_view kExtendSchema =
    "The directory's schema lacks Pelora's attributes: its administrator adds them with "
    "\"pelora-deploy schema\".";
constexpr std::string_view kOlderFile =
    "The file's own schema lacks this setting: a file that is made anew has it.";
constexpr std::string_view kOpenAnew =
    "The file was removed or replaced, or a change of it did not reach the disk. Nothing of it is "
    "read or written any more as it is open here: note what you typed and start the program anew.";

/// What helps against a result code, wherever it comes from.
constexpr auto kAdvice = std::to_array<Advice>({
    {ldap::kLdapInsufficientAccessRights,
     "You may not change this. What you typed is kept here: get the right to change it and apply "
     "again."},
    {ldap::kLdapNoSuchObject, kGoneAdvice},
    {ldap::kLdapConstraintViolation, "Type another value and apply again.", false},
    {ldap::kLdapInvalidSyntax, "Type another value and apply again.", false},
});

constexpr auto kServerAdvice = std::to_array<Advice>({
    {ldap::kLdapServerDown, kConnectionLost},
    {ldap::kLdapConnectError, kConnectionLost},
    {ldap::kLdapUnavailable,
     "The server does not work at the moment. What you typed is kept here: apply again later."},
    {ldap::kLdapBusy,
     "The server has too much to do. What you typed is kept here: apply again in a moment."},
    {kUndefinedAttributeType, kExtendSchema},
    {ldap::kLdapNoSuchAttribute, kExtendSchema},
    {ldap::kLdapObjectClassViolation,
     "The directory's schema does not let objects of this class have such a value: its "
     "administrator brings it up to date with \"pelora-deploy schema\"."},
});

constexpr auto kFileAdvice = std::to_array<Advice>({
    {ldap::kLdapServerDown,
     "The file cannot be used at the moment. What you typed is kept here: apply again once it can "
     "be."},
    {ldap::kLdapUnavailable, kOpenAnew},
    {ldap::kLdapBusy,
     "Another program is writing to the directory. What you typed is kept here: apply again in a "
     "moment."},
    {kUndefinedAttributeType, kOlderFile},
    {ldap::kLdapNoSuchAttribute, kOlderFile},
    {ldap::kLdapObjectClassViolation,
     "The file's own schema does not let objects of this class have such a value: a file that is "
     "made anew may."},
});

std::string LabelOf(const std::string& attribute, const FieldLabels& labels) {
  const auto found = labels.find(attribute);
  return found == labels.end() || found->second.empty() ? attribute : found->second;
}

/// The fields of a change, each once, in the change's order.
std::string FieldsOf(const changes::Change& change, const FieldLabels& labels) {
  std::vector<std::string> fields;
  for (const changes::ValueChange& value : change.attributes) {
    std::string label = LabelOf(value.attribute, labels);
    if (std::ranges::find(fields, label) == fields.end()) fields.push_back(std::move(label));
  }
  std::string text;
  for (const std::string& field : fields) text += (text.empty() ? "" : ", ") + field;
  return text;
}

const Advice* FindAdvice(std::span<const Advice> rows, HRESULT status) {
  const auto found = std::ranges::find_if(
      rows, [status](const Advice& row) { return HresultOfLdap(row.code) == status; });
  return found == rows.end() ? nullptr : &*found;
}

const Advice* KnownAdvice(const Result& result, DirectoryPlace place) {
  if (!result.code) return nullptr;
  const Advice* const anywhere = FindAdvice(kAdvice, *result.code);
  if (anywhere != nullptr) return anywhere;
  const std::span<const Advice> there = place == DirectoryPlace::kFile
                                            ? std::span<const Advice>(kFileAdvice)
                                            : std::span<const Advice>(kServerAdvice);
  return FindAdvice(there, *result.code);
}

Message ConflictMessage(const Result& result, const FieldLabels& labels, DirectoryPlace place) {
  std::string text =
      "Somebody else has changed this object since it was read. Nothing of it was "
      "written.";
  text.append(kParagraph).append("Object: ").append(result.dn);
  for (Conflict conflict : result.conflicts) {
    conflict.attribute = LabelOf(conflict.attribute, labels);
    text.append(kLine).append(changes::TextOf(conflict)).append(".");
  }
  text.append(kParagraph).append(AdviceOn(result, place));
  return MakeErrorMessage(S_OK, text);
}

}  // namespace

DirectoryPlace PlaceOf(const ldap::IDirectoryStore& store) {
  return store.IsSealed() ? DirectoryPlace::kServer : DirectoryPlace::kFile;
}

std::string AdviceOn(const Result& result, DirectoryPlace place) {
  if (!result.conflicts.empty()) {
    return "Apply again to write what you typed all the same, or cancel and open the properties "
           "anew to see what is there.";
  }
  if (result.outcome == Outcome::kUnknown) {
    return "It may have been done or not: open the object anew, or apply again.";
  }
  if (const Advice* const advice = KnownAdvice(result, place)) return std::string(advice->text);
  return "What you typed is kept here: apply again when the cause is gone.";
}

bool NamesTheCause(const Result& result, DirectoryPlace place) {
  if (!result.conflicts.empty()) return true;
  const Advice* const advice = KnownAdvice(result, place);
  return advice != nullptr && advice->names_the_cause;
}

std::string AdviceOnReading(HRESULT status, DirectoryPlace place) {
  if (status == HresultOfLdap(ldap::kLdapNoSuchObject)) return std::string(kGoneAdvice);
  if (status == HresultOfLdap(ldap::kLdapInsufficientAccessRights)) {
    return "You may not read this.";
  }
  if (place == DirectoryPlace::kFile && status == HresultOfLdap(ldap::kLdapUnavailable)) {
    return std::string(kOpenAnew);
  }
  return "Try again when the directory can be reached.";
}

Message WriteFailureMessage(const changes::Change& change, const Result& result,
                            const FieldLabels& labels, DirectoryPlace place) {
  if (!result.conflicts.empty()) return ConflictMessage(result, labels, place);
  Message message = MakeErrorMessage(result.code.value_or(E_FAIL), "");
  std::string& text = message.text;
  text.append(kParagraph).append("Object: ").append(change.dn);
  text.append(kLine).append("Fields: ").append(FieldsOf(change, labels));
  if (!result.message.empty()) {
    text.append(kLine).append("The directory says: ").append(result.message);
  }
  text.append(kParagraph).append(AdviceOn(result, place));
  return message;
}

}  // namespace pelora::session
