// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/fields/wish_maker.h"

#include <algorithm>
#include <map>

#include "directory/ascii_case.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/address_list.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/typed/typed_number.h"
#include "hosts/session/utf8_check.h"

namespace pelora::ctl {
namespace {

using Operation = Assignment::Operation;

[[noreturn]] void Refuse(const Field& field, const std::string& reason) {
  throw Refusal(field.row.name + ": " + reason);
}

/// Whether a field is one of a list of texts with a default one.
bool IsAddress(const Field& field) { return field.row.make_default != 0; }

std::vector<std::string> GivenValues(const Field& field, const std::string& text) {
  std::vector<std::string> values = SplitList(text);
  if (std::ranges::any_of(values, &std::string::empty)) Refuse(field, "an empty value in the list");
  return values;
}

}  // namespace

std::vector<Wish> WishMaker::Make(std::span<const Assignment> assignments,
                                  const session::DirectoryObject& described,
                                  const ldap::Entry& entry, IADs& object) {
  std::vector<Wish> wishes;
  // What is asked of one list together is worked out together: the default one comes first.
  std::vector<const Assignment*> addresses;
  std::map<const Field*, std::vector<const Assignment*>> lists;
  std::vector<const Field*> order;
  for (const Assignment& assignment : assignments) {
    const Field* field = catalogue_.Find(described.kind.class_name, assignment.field);
    if (field == nullptr) {
      throw Refusal(assignment.field + ": objects of the class " +
                    std::string(WordOf(described.kind)) + " have no such field");
    }
    if (session::FirstInvalidByte(assignment.value)) Refuse(*field, "the value is not UTF-8");
    if (IsAddress(*field)) {
      addresses.push_back(&assignment);
    } else if (field->IsList()) {
      if (!lists.contains(field)) order.push_back(field);
      lists[field].push_back(&assignment);
    } else {
      Wish wish{.field = field};
      if (MakeSingle(assignment, ReadField(*field, entry, object), wish)) {
        wishes.push_back(std::move(wish));
      }
    }
  }
  for (const Field* field : order) {
    Wish wish{.field = field};
    auto current = std::get<std::vector<std::string>>(ReadField(*field, entry, object));
    for (const Assignment* assignment : lists[field]) {
      if (field->row.kind == FieldKind::kNameList) {
        MakeNames(*assignment, ldap::ValuesOf(entry, field->row.attributes.front()), current, wish);
      } else {
        MakeTexts(*assignment, current, wish);
      }
    }
    const bool is_something = !wish.steps.empty() || !wish.hidden_removals.empty();
    if (is_something) wishes.push_back(std::move(wish));
  }
  if (!addresses.empty()) {
    MakeAddresses(addresses, described, entry, object, wishes);
  }
  return wishes;
}

void WishMaker::MakeAddresses(const std::vector<const Assignment*>& assignments,
                              const session::DirectoryObject& described, const ldap::Entry& entry,
                              IADs& object, std::vector<Wish>& wishes) {
  const auto field_of = [&](const Assignment* assignment) {
    return catalogue_.Find(described.kind.class_name, assignment->field);
  };
  std::string default_value;
  std::vector<std::string> others;
  for (const Field& field : catalogue_.FieldsOf(described.kind.class_name)) {
    if (!IsAddress(field)) continue;
    const FieldValue value = ReadField(field, entry, object);
    if (field.IsList()) {
      others = std::get<std::vector<std::string>>(value);
    } else {
      default_value = PrintedText(value);
    }
  }
  AddressList list(default_value, others);
  for (const Assignment* assignment : assignments) {
    const Field& field = *field_of(assignment);
    if (field.IsList()) continue;
    if (!assignment->value.empty()) {
      list.MakeDefault(assignment->value);
    } else if (!default_value.empty()) {
      Refuse(field, "the default address is replaced, not removed");
    }
  }
  for (const Assignment* assignment : assignments) {
    const Field& field = *field_of(assignment);
    if (!field.IsList()) continue;
    list.Change(assignment->operation, GivenValues(field, assignment->value));
  }
  if (list.IsEmpty() && !default_value.empty()) {
    Refuse(*field_of(assignments.back()),
           "the last address cannot be removed: the default address is replaced, not removed");
  }
  for (const Assignment* assignment : assignments) {
    const Field& field = *field_of(assignment);
    if (field.IsList() || assignment->value.empty()) continue;
    if (IsSameText(list.default_value(), assignment->value)) continue;
    Refuse(field, "the same command removes " + assignment->value);
  }
  Wish wish{.field = field_of(assignments.front()), .steps = list.TakeSteps()};
  if (!wish.steps.empty()) wishes.push_back(std::move(wish));
}

bool WishMaker::MakeSingle(const Assignment& assignment, const FieldValue& current, Wish& wish) {
  const Field& field = *wish.field;
  const std::string& given = assignment.value;
  const std::string printed = PrintedText(current);
  if (given == printed) return false;
  if (field.row.is_read_only) Refuse(field, "it can only be read");
  const bool is_emptied = given.empty();
  switch (field.row.kind) {
    case FieldKind::kFlag: {
      const std::optional<bool> flag = FlagOfWord(given);
      if (!flag)
        Refuse(field, is_emptied ? "a flag cannot be emptied" : "neither yes nor no: " + given);
      wish.flag = *flag;
      return printed != PrintedText(*flag);
    }
    case FieldKind::kNumber: {
      if (is_emptied) return true;
      const std::optional<std::int64_t> number = session::NumberOfDigits(given);
      if (!number) Refuse(field, "no number from 0 to 2147483647: " + given);
      wish.text = std::to_string(*number);
      return wish.text != printed;
    }
    case FieldKind::kChoice: {
      const std::optional<std::size_t> choice = ChoiceOfWord(field, given);
      if (!choice) {
        Refuse(field, is_emptied ? "it cannot be emptied" : "this cannot be chosen: " + given);
      }
      wish.choice = *choice;
      return ChoiceWord(field.row.choices.at(*choice)) != printed;
    }
    case FieldKind::kName:
    case FieldKind::kServer:
      return MakeChosen(given, printed, wish);
    default:
      wish.text = given;
      return true;
  }
}

bool WishMaker::MakeChosen(const std::string& given, const std::string& printed, Wish& wish) {
  const Field& field = *wish.field;
  if (given.empty()) Refuse(field, "it can only be chosen anew, not emptied");
  session::DirectoryObject object;
  if (field.row.kind == FieldKind::kServer) {
    if (IsSameText(given, printed)) return false;
    const std::string problem = finder_.ReadComputer(given, object);
    if (!problem.empty()) Refuse(field, given + ": " + problem);
  } else {
    if (ldap::NameKey(given) == ldap::NameKey(printed)) return false;
    const std::string problem = finder_.Read(given, object);
    if (!problem.empty()) Refuse(field, given + ": " + problem);
    if (ldap::NameKey(object.dn) == ldap::NameKey(printed)) return false;
  }
  wish.chosen = {std::move(object)};
  return true;
}

void WishMaker::MakeNames(const Assignment& assignment, const ldap::AttributeValues& stored,
                          std::vector<std::string>& current, Wish& wish) {
  const Field& field = *wish.field;
  std::vector<std::string> wanted;
  const auto place_of = [&current](const std::string& name) {
    return std::ranges::find_if(current, [key = ldap::NameKey(name)](const std::string& known) {
      return ldap::NameKey(known) == key;
    });
  };
  const auto remove = [&](std::vector<std::string>::iterator place) {
    if (place == current.end()) return;
    wish.steps.push_back({ListStep::Action::kRemove, *place});
    current.erase(place);
  };
  for (const std::string& given : GivenValues(field, assignment.value)) {
    if (assignment.operation == Operation::kRemove && place_of(given) != current.end()) {
      remove(place_of(given));
      continue;
    }
    if (assignment.operation == Operation::kRemove && RemoveHidden(given, stored, wish)) continue;
    session::DirectoryObject object;
    const bool is_there = place_of(given) != current.end();
    const std::string problem = is_there ? std::string() : finder_.Read(given, object);
    // What nothing is called by is in no list; which of several is meant nobody can know.
    const bool is_nobody = problem == kNobodyOfThisName;
    const bool removes = assignment.operation == Operation::kRemove;
    if (!problem.empty() && !(removes && is_nobody)) Refuse(field, given + ": " + problem);
    if (removes) {
      if (!is_nobody) remove(place_of(object.dn));
      continue;
    }
    const std::string name = is_there ? *place_of(given) : object.dn;
    wanted.push_back(name);
    if (place_of(name) != current.end()) continue;
    wish.steps.push_back({ListStep::Action::kAdd, name});
    wish.chosen.push_back(object);
    current.push_back(name);
  }
  if (assignment.operation != Operation::kSet) return;
  const std::vector<std::string> before = current;
  for (const std::string& name : before) {
    const auto is_same = [key = ldap::NameKey(name)](const std::string& kept) {
      return ldap::NameKey(kept) == key;
    };
    if (std::ranges::none_of(wanted, is_same)) remove(place_of(name));
  }
}

bool WishMaker::RemoveHidden(const std::string& given, const ldap::AttributeValues& stored,
                             Wish& wish) {
  const auto is_given = [key = ldap::NameKey(given)](const std::string& value) {
    return IsHiddenName(value) && ldap::NameKey(value) == key;
  };
  const auto found = std::ranges::find_if(stored, is_given);
  if (found == stored.end()) return false;
  if (std::ranges::none_of(wish.hidden_removals, is_given)) wish.hidden_removals.push_back(*found);
  return true;
}

void WishMaker::MakeTexts(const Assignment& assignment, std::vector<std::string>& current,
                          Wish& wish) {
  const std::vector<std::string> given = GivenValues(*wish.field, assignment.value);
  const auto remove = [&](const std::string& value) {
    const auto place = FindText(current, value);
    if (place == current.end()) return;
    wish.steps.push_back({ListStep::Action::kRemove, *place});
    current.erase(place);
  };
  if (assignment.operation == Operation::kSet) {
    std::vector<std::string> wanted = given;
    const std::vector<std::string> before = current;
    for (const std::string& value : before) {
      if (FindText(wanted, value) == wanted.end()) remove(value);
    }
  }
  for (const std::string& value : given) {
    if (assignment.operation == Operation::kRemove) {
      remove(value);
    } else if (FindText(current, value) == current.end()) {
      wish.steps.push_back({ListStep::Action::kAdd, value});
      current.push_back(value);
    }
  }
}

void CheckAssignments(std::span<const Assignment> assignments, FieldCatalogue& catalogue) {
  const Assignment* before = nullptr;
  for (std::size_t index = 0; index < assignments.size(); ++index) {
    const Assignment& assignment = assignments[index];
    const Field* field = catalogue.FindAnywhere(assignment.field);
    if (field == nullptr) throw WrongUsage("there is no field \"" + assignment.field + "\"");
    if (assignment.operation != Operation::kSet && !field->IsList()) {
      throw WrongUsage(field->row.name + " is no list: it is set, not added to or removed from");
    }
    for (std::size_t other = 0; other < index; ++other) {
      before = &assignments[other];
      if (!EqualsWithoutCase(before->field, assignment.field)) continue;
      if (before->operation == Operation::kSet || assignment.operation == Operation::kSet) {
        throw WrongUsage(field->row.name + " is given twice");
      }
    }
  }
}

}  // namespace pelora::ctl
