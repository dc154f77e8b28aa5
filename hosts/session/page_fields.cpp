// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/page_fields.h"

namespace pelora::session {

void SetBack(PageFields& fields, std::size_t field) {
  const FieldRow& row = fields.touched.Row(field);
  if (!fields.touched.CanSetBack(field)) return;
  fields.touched.SetBack(field, *fields.dialog, *fields.page);
  // A page stages its other fields as they are by then; a list that was not edited it leaves alone.
  if (!row.take_down || !row.entry.empty() || !fields.drop) return;
  for (const DirectoryObject& object : fields.selection) {
    for (const std::string_view attribute : row.attributes) fields.drop(object, attribute);
  }
}

}  // namespace pelora::session
