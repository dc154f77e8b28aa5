// SPDX-License-Identifier: Apache-2.0
#include "directory/value_summary.h"

namespace pelora {
namespace {

std::int32_t ReadInteger(IADs& object, std::string_view attribute) {
  Variant value;
  const HRESULT status = object.Get(attribute, value);
  return status == S_OK && value.type() == VT_I4 ? value.integer() : 0;
}

std::string ReadString(IADs& object, std::string_view attribute) {
  Variant value;
  const HRESULT status = object.Get(attribute, value);
  return status == S_OK && value.type() == VT_BSTR ? value.string() : std::string();
}

}  // namespace

ValueSummary<std::int32_t> SummarizeInteger(const BoundObjects& objects,
                                            std::string_view attribute) {
  ValueSummary<std::int32_t> summary;
  for (const Ref<IADs>& object : objects) summary.Enter(ReadInteger(*object, attribute));
  return summary;
}

ValueSummary<bool> SummarizeFlag(const BoundObjects& objects, std::string_view attribute) {
  ValueSummary<bool> summary;
  for (const Ref<IADs>& object : objects) summary.Enter(ReadInteger(*object, attribute) != 0);
  return summary;
}

ValueSummary<std::string> SummarizeString(const BoundObjects& objects, std::string_view attribute) {
  ValueSummary<std::string> summary;
  for (const Ref<IADs>& object : objects) summary.Enter(ReadString(*object, attribute));
  return summary;
}

}  // namespace pelora
