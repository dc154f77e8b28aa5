// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/object_classes.h"

#include <algorithm>

#include "directory/ascii_case.h"
#include "hosts/ctl/ctl_error.h"

namespace pelora::ctl {
namespace {

std::string HasClass(std::string_view class_name) {
  return "(objectClass=" + std::string(class_name) + ")";
}

}  // namespace

const session::NewObjectKind& KindOfWord(std::string_view word) {
  std::string words;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    if (EqualsWithoutCase(kind.word, word)) return kind;
    words += (words.empty() ? "" : ", ") + std::string(kind.word);
  }
  throw WrongUsage("there is no class \"" + std::string(word) + "\", only " + words);
}

std::string_view WordOf(const session::ObjectKind& kind) {
  for (const session::NewObjectKind& known : session::NewObjectKinds()) {
    if (known.icon == kind.icon) return known.word;
  }
  return {};
}

std::string FilterOf(const session::NewObjectKind& kind) {
  // A computer is a user to the directory.
  if (kind.account == session::AccountForm::kUser) {
    return "(&" + HasClass(kind.class_name) + "(!(objectClass=computer)))";
  }
  return HasClass(kind.class_name);
}

std::string FilterOfEveryKind() {
  std::string filters;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    filters += HasClass(kind.class_name);
  }
  return "(|" + filters + ")";
}

}  // namespace pelora::ctl
