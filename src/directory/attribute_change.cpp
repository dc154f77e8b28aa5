// SPDX-License-Identifier: Apache-2.0
#include "directory/attribute_change.h"

#include <utility>

namespace pelora {
namespace {

bool IsSkipped(const Attribute& attribute, bool changed, bool is_multi_select) {
  switch (attribute.multi_selection) {
    case MultiSelectionRule::kNo:
      return is_multi_select || !changed;
    case MultiSelectionRule::kWhenChanged:
    case MultiSelectionRule::kPerObject:
      return !changed;
    case MultiSelectionRule::kAlways:
      return false;
    case MultiSelectionRule::kNeverWritten:
      return true;
  }
  return true;
}

ChangeType TypeOf(Encoding encoding) {
  switch (encoding) {
    case Encoding::kFlag:
    case Encoding::kInteger:
      return ChangeType::kInteger;
    case Encoding::kString:
      return ChangeType::kString;
    case Encoding::kList:
    case Encoding::kNameList:
      return ChangeType::kMultiValued;
  }
  return ChangeType::kString;
}

}  // namespace

AttributeChange MakeChange(const Attribute& attribute, std::string value, bool changed,
                           bool is_multi_select) {
  return {.value = std::move(value),
          .name = std::string(attribute.name),
          .skip = IsSkipped(attribute, changed, is_multi_select),
          .type = TypeOf(attribute.encoding),
          .variant = {}};
}

AttributeChange MakeListChange(const Attribute& attribute, Variant values, bool is_multi_select) {
  return {.value = {},
          .name = std::string(attribute.name),
          .skip = IsSkipped(attribute, true, is_multi_select),
          .type = TypeOf(attribute.encoding),
          .variant = std::move(values)};
}

}  // namespace pelora
