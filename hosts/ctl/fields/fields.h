// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/session/fields/csv_writer.h"
#include "hosts/session/fields/entry_object.h"
#include "hosts/session/fields/field_catalogue.h"
#include "hosts/session/fields/field_value.h"
#include "hosts/session/fields/list_text.h"

namespace pelora::ctl {

// What every face knows of fields and their values.
using session::ChoiceOfWord;
using session::ChoiceWord;
using session::ComponentMaker;
using session::CsvRow;
using session::EntryObject;
using session::Field;
using session::FieldCatalogue;
using session::FieldPlace;
using session::FieldValue;
using session::FlagOfWord;
using session::IsHiddenName;
using session::JoinList;
using session::PrintedLines;
using session::PrintedText;
using session::ReadField;
using session::SplitList;

}  // namespace pelora::ctl
