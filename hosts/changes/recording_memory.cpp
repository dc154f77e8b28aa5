// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/recording_memory.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"

namespace pelora::changes {
namespace {

using Operation = ldap::Modification::Operation;

/// What a staged operation makes of the values that were seen.
AttributeValues Wanted(ldap::Syntax syntax, const ldap::Modification& staged,
                       const AttributeValues& seen) {
  switch (staged.operation) {
    case Operation::kReplace:
      return staged.values;
    case Operation::kAdd: {
      AttributeValues wanted = seen;
      std::ranges::move(Without(syntax, staged.values, seen), std::back_inserter(wanted));
      return wanted;
    }
    case Operation::kDelete:
      return staged.values.empty() ? AttributeValues() : Without(syntax, seen, staged.values);
  }
  return staged.values;
}

void EraseNamed(std::vector<ValueChange>& changes, std::string_view attribute) {
  std::erase_if(changes, [&](const ValueChange& change) {
    return EqualsWithoutCase(change.attribute, attribute);
  });
}

}  // namespace

RecordingMemory::RecordingMemory(const ldap::Schema& schema, std::vector<std::string> bound,
                                 Keeps keeps)
    : schema_(schema), bindings_{.attributes = std::move(bound)}, keeps_(std::move(keeps)) {}

bool RecordingMemory::AreBound(std::span<const std::string> attributes) const {
  if (attributes.empty()) return bindings_.attributes.empty();
  // Mostly they are the very ones, in the same order.
  const auto [left, bound] = std::ranges::mismatch(attributes, bindings_.attributes);
  return std::all_of(left, attributes.end(),
                     [this](const std::string& name) { return IsBound(name); });
}

bool RecordingMemory::IncludesBound(std::span<const std::string> attributes) const {
  if (attributes.empty()) return true;
  if (bindings_.attributes.empty() || attributes.size() < bindings_.attributes.size()) return false;
  const auto [asked, left] = std::ranges::mismatch(attributes, bindings_.attributes);
  return std::all_of(left, bindings_.attributes.end(), [attributes](std::string_view bound) {
    return std::ranges::any_of(
        attributes, [bound](std::string_view name) { return EqualsWithoutCase(name, bound); });
  });
}

bool RecordingMemory::AreThoseOfBindings(std::span<const std::string> attributes) const {
  const std::vector<std::string>& bound = bindings_.attributes;
  return !bound.empty() && attributes.size() == bound.size() + 1 &&
         attributes.back() == "objectClass" &&
         std::equal(bound.begin(), bound.end(), attributes.begin());
}

void RecordingMemory::NoteBound(const std::string& dn, std::shared_ptr<const ldap::Entry> entry,
                                bool is_whole) {
  Object& object = At(dn);
  object.bound = std::move(entry);
  object.is_read_whole = is_whole;
  std::erase_if(object.read, [&](const auto& single) { return is_whole || IsBound(single.first); });
}

void RecordingMemory::NoteRead(const std::string& dn, std::span<const std::string> attributes,
                               const ldap::AttributeMap& values) {
  Object& object = At(dn);
  for (const std::string& name : attributes) {
    const auto found = values.find(name);
    object.read.insert_or_assign(name, found == values.end() ? AttributeValues() : found->second);
  }
}

void RecordingMemory::NoteTold(const std::string& dn, std::string_view attribute,
                               const AttributeValues& values) {
  At(dn).told.Set(attribute, values);
}

std::vector<std::string> RecordingMemory::Unknown(
    const std::string& dn, std::span<const ldap::Modification> staged) const {
  const Object* const object = Find(dn);
  std::vector<std::string> names;
  if (object != nullptr && (object->is_read_whole || object->added)) return names;
  for (const ldap::Modification& change : staged) {
    const bool is_known = object != nullptr && (object->told.Find(change.attribute) != nullptr ||
                                                object->read.contains(change.attribute) ||
                                                (object->bound && IsBound(change.attribute)));
    if (!is_known && IsKept(change.attribute)) names.push_back(change.attribute);
  }
  return names;
}

void RecordingMemory::Record(const std::string& dn, std::span<const ldap::Modification> staged) {
  Object& object = At(dn);
  for (const ldap::Modification& modification : staged) {
    if (!IsKept(modification.attribute)) continue;
    ValueChange change = ChangeOf(object, modification);
    if (object.added) {
      object.added->attributes.insert_or_assign(change.attribute, std::move(change.wanted));
      continue;
    }
    const ldap::Syntax syntax = SyntaxOf(schema_, change.attribute);
    const bool changes_something =
        !AreSameValues(syntax, change.seen, change.wanted) && !IsLeftOut(object, change);
    Stage(object, std::move(change), changes_something);
  }
  Enlist(object);
}

void RecordingMemory::Record(const Change& change) {
  Object& object = At(change.dn);
  for (const ValueChange& value : change.attributes) {
    const ldap::Syntax syntax = SyntaxOf(schema_, value.attribute);
    Stage(object, value, !AreSameValues(syntax, value.seen, value.wanted));
  }
  Enlist(object);
}

void RecordingMemory::RecordAdd(const ldap::Entry& entry) {
  Object& object = At(entry.dn);
  object.added = entry;
  object.unwritten.clear();
  Enlist(object);
}

const ldap::Entry* RecordingMemory::Added(const std::string& dn) const {
  const Object* const object = Find(dn);
  return object != nullptr && object->added ? &*object->added : nullptr;
}

std::vector<Change> RecordingMemory::Unwritten(const std::function<void()>& breathe) const {
  std::vector<Change> changes;
  for (const auto& [place, key] : unwritten_) {
    if (breathe) breathe();
    const Object& object = objects_.at(key);
    changes.push_back(object.added ? AdditionOf(*object.added)
                                   : Change{.kind = Change::Kind::kModify,
                                            .dn = object.dn,
                                            .attributes = object.unwritten});
  }
  return changes;
}

void RecordingMemory::Settle(const Change& change, const Result& result) {
  if (!result.IsDone()) return;
  Object& object = At(change.dn);
  if (change.kind == Change::Kind::kAdd) object.added.reset();
  for (const ValueChange& value : change.attributes) {
    object.told.Set(value.attribute, value.wanted);
    const auto left = std::ranges::find_if(object.unwritten, [&](const ValueChange& unwritten) {
      return EqualsWithoutCase(unwritten.attribute, value.attribute);
    });
    if (left == object.unwritten.end()) continue;
    // Staged again while the change was under way, it starts from what was written.
    const ldap::Syntax syntax = SyntaxOf(schema_, value.attribute);
    left->seen = value.wanted;
    if (AreSameValues(syntax, left->seen, left->wanted)) object.unwritten.erase(left);
  }
  Enlist(object);
}

void RecordingMemory::AcceptAsSeen(const Result& result) {
  Object& object = At(result.dn);
  for (const Conflict& conflict : result.conflicts) {
    object.told.Set(conflict.attribute, conflict.there);
    for (ValueChange& value : object.unwritten) {
      if (EqualsWithoutCase(value.attribute, conflict.attribute)) value.seen = conflict.there;
    }
  }
}

void RecordingMemory::Drop(const std::string& dn, std::string_view attribute) {
  Object& object = At(dn);
  EraseNamed(object.unwritten, attribute);
  Enlist(object);
}

void RecordingMemory::Forget(const std::string& dn) {
  const auto found = objects_.find(ldap::FoldCase(dn));
  if (found == objects_.end()) return;
  if (found->second.place) unwritten_.erase(*found->second.place);
  last_ = nullptr;
  objects_.erase(found);
}

std::shared_ptr<void> RecordingMemory::ForgetAll() {
  last_ = nullptr;
  left_out_.clear();
  unwritten_.clear();
  return std::make_shared<std::map<std::string, Object>>(std::exchange(objects_, {}));
}

void RecordingMemory::LeaveOut(const std::string& dn) {
  if (const Object* const object = Find(dn)) {
    ldap::AttributeMap& left_out = left_out_[ldap::FoldCase(dn)];
    for (const ValueChange& value : object->unwritten) {
      left_out.insert_or_assign(value.attribute, value.wanted);
    }
  }
  Forget(dn);
}

void RecordingMemory::TakeInAgain(std::span<const std::string_view> attributes) {
  if (left_out_.empty()) return;
  for (auto& [key, left_out] : left_out_) {
    for (const std::string_view attribute : attributes) {
      const auto found = left_out.find(attribute);
      if (found != left_out.end()) left_out.erase(found);
    }
  }
  std::erase_if(left_out_, [](const auto& object) { return object.second.empty(); });
}

bool RecordingMemory::IsLeftOut(const Object& object, const ValueChange& change) {
  if (left_out_.empty()) return false;
  const auto known = left_out_.find(ldap::FoldCase(object.dn));
  if (known == left_out_.end()) return false;
  const auto wanted = known->second.find(change.attribute);
  if (wanted == known->second.end()) return false;
  if (AreSameValues(SyntaxOf(schema_, change.attribute), wanted->second, change.wanted)) {
    return true;
  }
  known->second.erase(wanted);
  return false;
}

const RecordingMemory::Object* RecordingMemory::Find(const std::string& dn) const {
  if (objects_.empty()) return nullptr;
  if (last_ != nullptr && last_->dn == dn) return last_;
  const auto found = objects_.find(ldap::FoldCase(dn));
  return found == objects_.end() ? nullptr : &found->second;
}

RecordingMemory::Object& RecordingMemory::At(const std::string& dn) {
  if (last_ != nullptr && last_->dn == dn) return *last_;
  Object& object = objects_[ldap::FoldCase(dn)];
  if (object.dn.empty()) object.dn = dn;
  last_ = &object;
  return object;
}

bool RecordingMemory::IsKept(std::string_view attribute) const {
  return !keeps_ || keeps_(attribute);
}

AttributeValues RecordingMemory::SeenOf(const Object& object, std::string_view attribute) {
  const auto value_in = [attribute](const ldap::AttributeMap& values) -> const AttributeValues* {
    const auto found = values.find(attribute);
    return found == values.end() ? nullptr : &found->second;
  };
  const AttributeValues* seen =
      object.added ? value_in(object.added->attributes) : object.told.Find(attribute);
  if (seen == nullptr && !object.added) seen = value_in(object.read);
  if (seen == nullptr && !object.added && object.bound) seen = value_in(object.bound->attributes);
  return seen != nullptr ? *seen : AttributeValues();
}

AttributeValues RecordingMemory::Seen(const std::string& dn, std::string_view attribute) const {
  const Object* const object = Find(dn);
  return object != nullptr ? SeenOf(*object, attribute) : AttributeValues();
}

ValueChange RecordingMemory::ChangeOf(const Object& object,
                                      const ldap::Modification& staged) const {
  ValueChange change{.attribute = schema_.SpellingOf(staged.attribute)};
  const std::optional<ldap::AttributeType> type = schema_.Find(staged.attribute);
  change.is_list = type && !type->is_single_valued;
  change.is_whole = change.is_list;
  change.seen = SeenOf(object, staged.attribute);
  change.wanted = Wanted(SyntaxOf(schema_, staged.attribute), staged, change.seen);
  return change;
}

void RecordingMemory::Stage(Object& object, ValueChange change, bool changes_something) {
  EraseNamed(object.unwritten, change.attribute);
  if (changes_something) object.unwritten.push_back(std::move(change));
}

void RecordingMemory::Enlist(Object& object) {
  const bool is_unwritten = object.added || !object.unwritten.empty();
  if (is_unwritten == object.place.has_value()) return;
  if (is_unwritten) {
    // It has no place before it is listed: without memory for that it is listed the next time.
    unwritten_.emplace(next_place_, ldap::FoldCase(object.dn));
    object.place = next_place_++;
  } else {
    unwritten_.erase(*object.place);
    object.place.reset();
  }
}

}  // namespace pelora::changes
