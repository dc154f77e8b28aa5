// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/commands/address_pattern.h"
#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// What is to be done to the addresses, or to one list of names, of each of many objects.
struct ValueCommand {
  enum class Kind : std::uint8_t {
    kAddAddress,
    kReplaceAddress,
    kRemoveAddress,
    kAddNames,
    kRemoveNames,
  };

  Kind kind = Kind::kAddAddress;
  /// The address that is put in, by adding and replacing.
  AddressPattern address{""};
  /// Which addresses go, by replacing and removing.
  AddressPattern gone{""};
  /// The address that is added becomes the default one; what was it before stays as a further one.
  bool as_default = false;
  /// The list of names, and the distinguished names that are put in or taken out.
  std::string attribute{};
  std::vector<std::string> names{};

  /// Why it cannot be done to anything, as a sentence; empty when it can.
  [[nodiscard]] std::string WhyWrong() const;
  [[nodiscard]] bool IsAboutAddresses() const {
    return kind != Kind::kAddNames && kind != Kind::kRemoveNames;
  }
  /// What has to be read of an object before it is known what becomes of it.
  [[nodiscard]] std::vector<std::string> Attributes() const;
};

/// What a command comes to with one object.
struct PlannedValues {
  /// Attributes with the values that are wanted; none: nothing is to be written.
  std::vector<ldap::Modification> modifications{};
  /// As a person reads them.
  std::string before{};
  std::string after{};
  /// An address that the object gets.
  std::string new_address{};
  /// Wrong: it is left out; odd: it can be done and is seldom meant. The sentence says why, or why
  /// nothing is to be done.
  Judgement judgement{};

  [[nodiscard]] bool IsChange() const { return !modifications.empty(); }
};

/// Works out what a command that can be done comes to with an object of which `Attributes` were
/// read. Nothing is asked of a directory.
///
/// Addresses keep the tabs' rules: the first one of an object is its default one; when that is
/// removed the next one takes its place, and the last one is only replaced.
[[nodiscard]] PlannedValues Plan(const ValueCommand& command, const ldap::Entry& entry);

}  // namespace pelora::session
