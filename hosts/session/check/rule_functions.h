// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/session/check/check_fields.h"
#include "hosts/session/check/check_notes.h"
#include "hosts/session/check/checked_object.h"

namespace pelora::session::rules {

// Each looks at one object for the rule of its name (`CheckRules`).

void AddressDuplicate(const CheckedObject& object, CheckNotes& notes);
void AddressMissing(const CheckedObject& object, CheckNotes& notes);
void AddressSyntax(const CheckedObject& object, CheckNotes& notes);
void DefaultInOthers(const CheckedObject& object, CheckNotes& notes);

void ServerUnknown(const CheckedObject& object, CheckNotes& notes);
void ReferenceDangling(const CheckedObject& object, CheckNotes& notes);
void BaseUnknown(const CheckedObject& object, CheckNotes& notes);
void CompanyAdmin(const CheckedObject& object, CheckNotes& notes);

void QuotaOrder(const CheckedObject& object, CheckNotes& notes);
void FilterSyntax(const CheckedObject& object, CheckNotes& notes);
void FeatureConflict(const CheckedObject& object, CheckNotes& notes);
void ResourceType(const CheckedObject& object, CheckNotes& notes);
void ServerIncomplete(const CheckedObject& object, CheckNotes& notes);
void ValueRange(const CheckedObject& object, CheckNotes& notes);

// What some of them look at.

[[nodiscard]] std::vector<std::string> ServerAttributes(const CheckFields& fields);
[[nodiscard]] std::vector<std::string> NameAttributes(const CheckFields& fields);
[[nodiscard]] std::vector<std::string> QuotaAttributes(const CheckFields& fields);
[[nodiscard]] std::vector<std::string> NumberAttributes(const CheckFields& fields);

}  // namespace pelora::session::rules
