// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/new_object_kind.h"

#include <array>

#include "hosts/resources/mnemonic.h"

namespace pelora::session {
namespace {

constexpr bool kIsPerson = true;

// The longest names of accounts are those of the directory's own rules.
constexpr std::array kKinds = {
    NewObjectKind{"user", "user", "&User", ObjectIcon::kUser, "F&ull name:", kIsPerson,
                  AccountForm::kUser, "User lo&gon name:", 20},
    NewObjectKind{"contact", "contact", "&Contact", ObjectIcon::kContact, "F&ull name:", kIsPerson},
    NewObjectKind{"group", "group", "&Group", ObjectIcon::kGroup, "Group na&me:", false,
                  AccountForm::kGroup, "Group name (&pre-Windows 2000):", 256},
    NewObjectKind{"organizationalUnit", "company", "&Organizational Unit",
                  ObjectIcon::kOrganizationalUnit, "Na&me:"},
    NewObjectKind{"computer", "server", "Co&mputer", ObjectIcon::kComputer, "Computer na&me:",
                  false, AccountForm::kComputer, "Computer name (&pre-Windows 2000):", 15},
    NewObjectKind{"peloraAddresslist", "addresslist", "&Address List", ObjectIcon::kAddressList},
    NewObjectKind{"peloraDynamicDistlist", "dynamiclist", "&Dynamic Distribution List",
                  ObjectIcon::kDynamicGroup},
};

}  // namespace

std::span<const NewObjectKind> NewObjectKinds() { return kKinds; }

std::string TextOf(const NewObjectKind& kind) { return resources::WithoutMnemonic(kind.menu_text); }

}  // namespace pelora::session
