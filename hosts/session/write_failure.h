// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "hosts/changes/change.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"
#include "platform/hresult.h"
#include "platform/message_box.h"

namespace pelora::session {

/// What a page calls its fields, by the attributes that they edit (in any case).
using FieldLabels = std::map<std::string, std::string, ldap::AttributeNameLess>;

/// Where a directory is: what stood in the way there, and what helps, depends on it.
enum class DirectoryPlace : std::uint8_t { kServer, kFile };

/// Only on their way to a server requests can be sealed.
[[nodiscard]] DirectoryPlace PlaceOf(const ldap::IDirectoryStore& store);

/// The error box of a change that was not written. The text of every failed write comes first, with
/// its code; then the details: the object, the fields that were to be written, the directory's own
/// words, and what to do about it.
///
/// A change that was refused since somebody else changed the object says so instead, with what each
/// field was, is now, and was to become; that is a warning.
[[nodiscard]] Message WriteFailureMessage(const changes::Change& change,
                                          const changes::Result& result, const FieldLabels& labels,
                                          DirectoryPlace place);

/// What can be done about a change that was not written, as one or more sentences.
[[nodiscard]] std::string AdviceOn(const changes::Result& result, DirectoryPlace place);

/// Whether `AdviceOn` says what stood in the way, too; otherwise only the directory's words do.
[[nodiscard]] bool NamesTheCause(const changes::Result& result, DirectoryPlace place);

/// What can be done about objects that could not be read.
[[nodiscard]] std::string AdviceOnReading(HRESULT status, DirectoryPlace place);

}  // namespace pelora::session
