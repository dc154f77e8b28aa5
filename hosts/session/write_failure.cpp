// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/write_failure.h"

#include <algorithm>
#include <array>
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
constexpr std::string_view kExtendSchema =
    "The directory's schema lacks Pelora's attributes: its administrator adds them with "
    "\"pelora-deploy schema\".";

/// What helps against a result code.
constexpr auto kAdvice = std::to_array<Advice>({
    {ldap::kLdapInsufficientAccessRights,
     "You may not change this. What you typed is kept here: get the right to change it and apply "
     "again."},
    {ldap::kLdapNoSuchObject,
     "The object has been deleted or moved. Close its properties and look for it anew."},
    {ldap::kLdapServerDown,
     "The connection is lost. What you typed is kept here: apply again once the server can be "
     "reached."},
    {ldap::kLdapConnectError,
     "The connection is lost. What you typed is kept here: apply again once the server can be "
     "reached."},
    {ldap::kLdapUnavailable,
     "The server does not work at the moment. What you typed is kept here: apply again later."},
    {ldap::kLdapBusy,
     "Another program is writing to the directory. What you typed is kept here: apply again in a "
     "moment."},
    {kUndefinedAttributeType, kExtendSchema},
    {ldap::kLdapNoSuchAttribute, kExtendSchema},
    {ldap::kLdapObjectClassViolation,
     "The directory's schema does not let objects of this class have such a value: its "
     "administrator brings it up to date with \"pelora-deploy schema\"."},
    {ldap::kLdapConstraintViolation, "Type another value and apply again.", false},
    {ldap::kLdapInvalidSyntax, "Type another value and apply again.", false},
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

const Advice* KnownAdvice(const Result& result) {
  const auto* const advice = std::ranges::find_if(kAdvice, [&result](const Advice& row) {
    return result.code && HresultOfLdap(row.code) == *result.code;
  });
  return advice == kAdvice.end() ? nullptr : advice;
}

Message ConflictMessage(const Result& result, const FieldLabels& labels) {
  std::string text =
      "Somebody else has changed this object since it was read. Nothing of it was "
      "written.";
  text.append(kParagraph).append("Object: ").append(result.dn);
  for (Conflict conflict : result.conflicts) {
    conflict.attribute = LabelOf(conflict.attribute, labels);
    text.append(kLine).append(changes::TextOf(conflict)).append(".");
  }
  text.append(kParagraph).append(AdviceOn(result));
  return MakeErrorMessage(S_OK, text);
}

}  // namespace

std::string AdviceOn(const Result& result) {
  if (!result.conflicts.empty()) {
    return "Apply again to write what you typed all the same, or cancel and open the properties "
           "anew to see what is there.";
  }
  if (result.outcome == Outcome::kUnknown) {
    return "It may have been done or not: open the object anew, or apply again.";
  }
  if (const Advice* const advice = KnownAdvice(result)) return std::string(advice->text);
  return "What you typed is kept here: apply again when the cause is gone.";
}

bool NamesTheCause(const Result& result) {
  if (!result.conflicts.empty()) return true;
  const Advice* const advice = KnownAdvice(result);
  return advice != nullptr && advice->names_the_cause;
}

std::string AdviceOnReading(HRESULT status) {
  if (status == HresultOfLdap(ldap::kLdapNoSuchObject)) {
    return "The object has been deleted or moved. Close its properties and look for it anew.";
  }
  if (status == HresultOfLdap(ldap::kLdapInsufficientAccessRights)) {
    return "You may not read this.";
  }
  return "Try again when the directory can be reached.";
}

Message WriteFailureMessage(const changes::Change& change, const Result& result,
                            const FieldLabels& labels) {
  if (!result.conflicts.empty()) return ConflictMessage(result, labels);
  Message message = MakeErrorMessage(result.code.value_or(E_FAIL), "");
  std::string& text = message.text;
  text.append(kParagraph).append("Object: ").append(change.dn);
  text.append(kLine).append("Fields: ").append(FieldsOf(change, labels));
  if (!result.message.empty()) {
    text.append(kLine).append("The directory says: ").append(result.message);
  }
  text.append(kParagraph).append(AdviceOn(result));
  return message;
}

}  // namespace pelora::session
