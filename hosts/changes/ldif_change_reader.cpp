// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/changes/seen_mark.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ldap/base64.h"
#include "hosts/ldap/guid_name.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldif_lines.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/tree_controls.h"

namespace pelora::changes {
namespace {

using ldap::StoreStatus;

struct Line {
  std::string name;
  std::string value;

  [[nodiscard]] bool Is(std::string_view other) const { return EqualsWithoutCase(name, other); }
};

constexpr std::string_view kEndOfModification = "-";

/// What a line says; nothing when it gives no value.
std::optional<Line> LineOf(std::string_view text) {
  if (!ldap::IsLdifValue(text)) return std::nullopt;
  const std::size_t colon = text.find(':');
  std::string_view value = text.substr(colon + 1);
  const bool is_encoded = value.starts_with(':');
  if (is_encoded) value.remove_prefix(1);
  value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
  std::optional<std::string> bytes =
      is_encoded ? ldap::DecodeBase64(value) : std::optional<std::string>(value);
  if (!bytes) return std::nullopt;
  return Line{std::string(text.substr(0, colon)), std::move(*bytes)};
}

/// The lines of one record, from front to back.
class Lines {
 public:
  explicit Lines(const ldap::LdifBlock& block) : lines_(block.lines) {}

  [[nodiscard]] bool IsAtEnd() const { return lines_.empty(); }
  /// Takes a line that ends a modification, if one is next.
  bool TakeEnd() {
    if (IsAtEnd() || lines_.front() != kEndOfModification) return false;
    lines_ = lines_.subspan(1);
    return true;
  }
  /// Takes the next line; nothing when it gives no value, or is not there.
  std::optional<Line> Take() {
    std::optional<Line> line = Peek();
    if (line) lines_ = lines_.subspan(1);
    return line;
  }
  /// Takes the value of an attribute, if one is next.
  std::optional<std::string> TakeValueOf(std::string_view attribute) {
    std::optional<Line> line = Peek();
    if (!line || !line->Is(attribute)) return std::nullopt;
    lines_ = lines_.subspan(1);
    return std::move(line->value);
  }

 private:
  [[nodiscard]] std::optional<Line> Peek() const {
    return IsAtEnd() ? std::nullopt : LineOf(lines_.front());
  }

  std::span<const std::string> lines_;
};

/// Why a record is refused; nothing when it is not.
using Refusal = std::optional<std::string_view>;

constexpr std::string_view kNoLdif = "the record that begins here is no LDIF";
constexpr std::string_view kNoGuard = "a change that does not say which object it means";
constexpr std::string_view kOddControl = "a control that is not understood";

class RecordReader {
 public:
  RecordReader(const ldap::Schema& schema, const std::vector<std::string>& comments, Change& change)
      : schema_(schema), comments_(comments), change_(change) {}

  Refusal Read(Lines lines) {
    std::optional<std::string> dn = lines.TakeValueOf("dn");
    if (!dn || dn->empty()) return kNoLdif;
    change_.dn = std::move(*dn);
    while (std::optional<std::string> control = lines.TakeValueOf("control")) {
      controls_.push_back(std::move(*control));
    }
    const std::optional<std::string> kind = lines.TakeValueOf("changetype");
    if (!kind) return "an entry, where changes are wanted";
    for (const auto& [word, read] : kKinds) {
      if (EqualsWithoutCase(*kind, word)) return (this->*read)(lines);
    }
    return "a change that is no modification, addition, renaming or deletion";
  }

 private:
  Refusal ReadModify(Lines& lines) {
    if (HasControl(ldap::kShowDeletedControl)) return ReadRestore(lines);
    if (!controls_.empty()) return kOddControl;
    change_.kind = Change::Kind::kModify;
    while (!lines.IsAtEnd()) {
      const std::optional<Line> operation = lines.Take();
      if (!operation) return kNoLdif;
      if (Refusal refusal = ReadModification(*operation, lines)) return refusal;
    }
    ReadHeld();
    return {};
  }

  Refusal ReadModification(const Line& operation, Lines& lines) {
    const bool is_delete = operation.Is("delete");
    if (!is_delete && !operation.Is("add")) {
      return "a modification that does not say what it replaces";
    }
    AttributeValues values;
    while (std::optional<std::string> value = lines.TakeValueOf(operation.value)) {
      values.push_back(std::move(*value));
    }
    if (!lines.TakeEnd() && !lines.IsAtEnd()) return kNoLdif;
    if (values.empty()) return "a modification without values";
    ValueChange* change = change_.Find(operation.value);
    if (change == nullptr) change = &Append(operation.value);
    // What is seen is deleted before what is wanted is added.
    const bool is_twice =
        is_delete ? !change->seen.empty() || !change->wanted.empty() : !change->wanted.empty();
    if (is_twice) return "an attribute is modified twice";
    (is_delete ? change->seen : change->wanted) = std::move(values);
    return {};
  }

  Refusal ReadAdd(Lines& lines) {
    if (!controls_.empty()) return kOddControl;
    change_.kind = Change::Kind::kAdd;
    while (!lines.IsAtEnd()) {
      std::optional<Line> line = lines.Take();
      if (!line) return kNoLdif;
      ValueChange* change = change_.Find(line->name);
      if (change == nullptr) change = &Append(line->name);
      change->wanted.push_back(std::move(line->value));
    }
    return change_.attributes.empty() ? Refusal(kNoLdif) : Refusal();
  }

  Refusal ReadDelete(Lines& lines) {
    change_.with_all_below = HasControl(ldap::kTreeDeleteControl);
    if (!change_.with_all_below && !controls_.empty()) return kOddControl;
    ReadSeen();
    const bool is_seen = !change_.attributes.empty();
    if (change_.with_all_below && !is_seen) return kNoGuard;
    change_.kind = is_seen ? Change::Kind::kRemove : Change::Kind::kDelete;
    return lines.IsAtEnd() ? Refusal() : Refusal(kNoLdif);
  }

  Refusal ReadRename(Lines& lines) {
    change_.kind = Change::Kind::kRename;
    if (!controls_.empty()) return kOddControl;
    const std::optional<std::string> first = lines.TakeValueOf("newrdn");
    const std::optional<std::string> takes_off = lines.TakeValueOf("deleteoldrdn");
    const std::optional<std::string> container = lines.TakeValueOf("newsuperior");
    if (!first || takes_off != "1" || !lines.IsAtEnd()) return kNoLdif;
    // Back and forth, both names have a first part.
    if (ldap::FirstPart(*first).empty() || ldap::FirstPart(change_.dn).empty()) return kNoLdif;
    change_.new_dn = *first;
    change_.new_dn.append(",").append(container ? std::string_view(*container)
                                                : ldap::ContainerOf(change_.dn));
    ReadSeen();
    return change_.attributes.empty() ? Refusal(kNoGuard) : Refusal();
  }

  Refusal ReadRestore(Lines& lines) {
    change_.kind = Change::Kind::kRestore;
    const std::optional<std::string> guid = ldap::GuidOfDeletedName(change_.dn);
    const bool comes_back = lines.TakeValueOf("delete") == "isDeleted" && lines.TakeEnd() &&
                            lines.TakeValueOf("replace") == "distinguishedName";
    std::optional<std::string> dn;
    if (comes_back) dn = lines.TakeValueOf("distinguishedName");
    if (!guid || !dn || dn->empty() || !lines.TakeEnd() || !lines.IsAtEnd()) return kNoLdif;
    change_.dn = std::move(*dn);
    Append("objectGUID").seen = {*guid};
    return {};
  }

  [[nodiscard]] bool HasControl(std::string_view identifier) const {
    constexpr std::string_view kIsCritical = " true";
    if (controls_.size() != 1) return false;
    const std::string_view control = controls_.front();
    return control.starts_with(identifier) && control.substr(identifier.size()) == kIsCritical;
  }

  /// What our own comments say.
  [[nodiscard]] std::vector<Line> Marks() const {
    constexpr std::string_view kMark = kSeenMark.substr(1);
    std::vector<Line> marks;
    for (const std::string& comment : comments_) {
      if (!comment.starts_with(kMark)) continue;
      std::optional<Line> line = LineOf(std::string_view(comment).substr(kMark.size()));
      if (line) marks.push_back(std::move(*line));
    }
    return marks;
  }

  /// What says which object is meant.
  void ReadSeen() {
    for (Line& mark : Marks()) {
      ValueChange* seen = change_.Find(mark.name);
      if (seen == nullptr) seen = &Append(mark.name);
      seen->seen.push_back(std::move(mark.value));
    }
  }

  /// What the lists hold, of those that say so.
  void ReadHeld() {
    const std::vector<Line> marks = Marks();
    for (ValueChange& value : change_.attributes) {
      AttributeValues held;
      for (const Line& mark : marks) {
        if (!value.is_list || !mark.Is(value.attribute)) continue;
        value.is_whole = true;
        if (!mark.value.empty()) held.push_back(mark.value);
      }
      if (value.is_whole) CompleteList(SyntaxOf(schema_, value.attribute), held, value);
    }
  }

  ValueChange& Append(const std::string& attribute) {
    const std::optional<ldap::AttributeType> type = schema_.Find(attribute);
    return change_.attributes.emplace_back(
        ValueChange{.attribute = attribute, .is_list = type && !type->is_single_valued});
  }

  struct Kind {
    std::string_view word;
    Refusal (RecordReader::*read)(Lines& lines);
  };
  static constexpr std::array<Kind, 5> kKinds{{{"modify", &RecordReader::ReadModify},
                                               {"add", &RecordReader::ReadAdd},
                                               {"delete", &RecordReader::ReadDelete},
                                               {"modrdn", &RecordReader::ReadRename},
                                               {"moddn", &RecordReader::ReadRename}}};

  const ldap::Schema& schema_;
  const std::vector<std::string>& comments_;
  std::vector<std::string> controls_;
  Change& change_;
};

/// Whether a record only says what is there.
bool IsGuard(const Change& change) {
  return change.kind == Change::Kind::kModify &&
         std::ranges::all_of(change.attributes,
                             [](const ValueChange& value) { return value.seen == value.wanted; });
}

/// A deletion takes the record in front of it that guards it.
void TakeGuard(std::vector<Change>& changes, Change& change) {
  const bool is_guarded = change.kind == Change::Kind::kDelete && !changes.empty() &&
                          changes.back().dn == change.dn && IsGuard(changes.back());
  if (!is_guarded) return;
  change.attributes = std::move(changes.back().attributes);
  for (ValueChange& value : change.attributes) value.wanted.clear();
  changes.pop_back();
}

/// A text may begin with the number of the format, with or without an empty line behind it.
void DropVersion(std::vector<ldap::LdifBlock>& blocks) {
  if (blocks.empty() || blocks.front().lines.front() != "version: 1") return;
  std::vector<std::string>& lines = blocks.front().lines;
  lines.erase(lines.begin());
  if (lines.empty()) blocks.erase(blocks.begin());
}

}  // namespace

StoreStatus ReadChanges(const ldap::Schema& schema, std::string_view text,
                        std::vector<Change>& changes, std::size_t first_line) {
  changes.clear();
  std::vector<Change> read;
  std::vector<ldap::LdifBlock> blocks = ldap::SplitLdif(text);
  DropVersion(blocks);
  for (const ldap::LdifBlock& block : blocks) {
    Change change;
    if (const Refusal refusal = RecordReader(schema, block.comments, change).Read(Lines(block))) {
      return {ldap::kLdapOther,
              "line " + std::to_string(first_line + block.line - 1) + ": " + std::string(*refusal)};
    }
    TakeGuard(read, change);
    read.push_back(std::move(change));
  }
  changes = std::move(read);
  return {};
}

}  // namespace pelora::changes
