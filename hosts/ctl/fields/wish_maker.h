// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/wish.h"
#include "hosts/ctl/objects/object_finder.h"
#include "hosts/ctl/text/assignment.h"

namespace pelora::ctl {

/// What was asked of an object cannot be: it is refused, for this reason.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Works out what is to be done with the fields of one object.
class WishMaker {
 public:
  /// Both outlive the maker.
  WishMaker(FieldCatalogue& catalogue, ObjectFinder& finder)
      : catalogue_(catalogue), finder_(finder) {}

  /// What the assignments come to for the object of an entry, of which `object` is bound: one wish
  /// for each field that is not as asked, none where everything is.
  ///
  /// Throws `Refusal`, which names the field.
  [[nodiscard]] std::vector<Wish> Make(std::span<const Assignment> assignments,
                                       const session::DirectoryObject& described,
                                       const ldap::Entry& entry, IADs& object);

  /// What an assignment comes to for a field of a page on which nothing was filled in yet. False
  /// when nothing is to be done. Throws `Refusal`.
  [[nodiscard]] bool MakeForNew(const Assignment& assignment, Wish& wish) {
    return MakeSingle(assignment, {}, wish);
  }

 private:
  // Each says whether something is to be done.
  [[nodiscard]] bool MakeSingle(const Assignment& assignment, const FieldValue& current,
                                Wish& wish);
  [[nodiscard]] bool MakeChosen(const std::string& given, const std::string& printed, Wish& wish);
  // Each appends its steps and keeps `current` in step with them.
  void MakeNames(const Assignment& assignment, const ldap::AttributeValues& stored,
                 std::vector<std::string>& current, Wish& wish);
  void MakeTexts(const Assignment& assignment, std::vector<std::string>& current, Wish& wish);
  /// Takes out a stored name that no tab shows; false when `given` is none.
  [[nodiscard]] static bool RemoveHidden(const std::string& given,
                                         const ldap::AttributeValues& stored, Wish& wish);
  void MakeAddresses(const std::vector<const Assignment*>& assignments,
                     const session::DirectoryObject& described, const ldap::Entry& entry,
                     IADs& object, std::vector<Wish>& wishes);

  FieldCatalogue& catalogue_;
  ObjectFinder& finder_;
};

/// Checks what can be said of assignments without any object: each field exists somewhere, lists
/// alone are added to and removed from, and no field is given twice but to add and remove. Throws
/// `WrongUsage`.
void CheckAssignments(std::span<const Assignment> assignments, FieldCatalogue& catalogue);

}  // namespace pelora::ctl
