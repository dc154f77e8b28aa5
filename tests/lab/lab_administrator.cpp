// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/lab_administrator.h"

#include <ldap.h>

#include <deque>
#include <stdexcept>
#include <utility>

#include "hosts/ldap/network/broken_pipe_guard.h"
#include "hosts/ldap/network/ldap_api.h"
#include "tests/lab/lab.h"

namespace pelora::lab {
namespace {

void Require(int code, const std::string& what) {
  if (code != LDAP_SUCCESS) throw std::runtime_error(what + ": " + ldap_err2string(code));
}

int AnswerNothing(LDAP* /*handle*/, unsigned /*flags*/, void* /*defaults*/, void* /*questions*/) {
  return LDAP_SUCCESS;
}

/// Changes as the library wants them.
class Changes {
 public:
  void Append(int operation, const std::string& attribute, const std::vector<std::string>& values) {
    std::vector<berval*>& list = lists_.emplace_back();
    for (const std::string& value : values) {
      values_.push_back({.bv_len = value.size(), .bv_val = const_cast<char*>(value.data())});
      list.push_back(&values_.back());
    }
    list.push_back(nullptr);
    LDAPMod change{};
    change.mod_op = operation | LDAP_MOD_BVALUES;
    change.mod_type = const_cast<char*>(attribute.c_str());
    change.mod_bvalues = values.empty() ? nullptr : list.data();
    changes_.push_back(change);
  }
  LDAPMod** get() {
    pointers_.clear();
    for (LDAPMod& change : changes_) pointers_.push_back(&change);
    pointers_.push_back(nullptr);
    return pointers_.data();
  }

 private:
  std::deque<berval> values_;
  std::deque<std::vector<berval*>> lists_;
  std::deque<LDAPMod> changes_;
  std::vector<LDAPMod*> pointers_;
};

}  // namespace

struct LabAdministrator::Impl {
  Impl() = default;
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    const ldap::BrokenPipeGuard guard;
    if (handle != nullptr) ldap_unbind_ext_s(handle, nullptr, nullptr);
  }

  LDAP* handle = nullptr;
};

LabAdministrator::LabAdministrator(std::string server)
    : server_(server.empty() ? Server() : std::move(server)), impl_(std::make_unique<Impl>()) {
  Reconnect();
}

LabAdministrator::~LabAdministrator() = default;

void LabAdministrator::Reconnect() {
  impl_ = std::make_unique<Impl>();
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kAdministrator));
  const int version = LDAP_VERSION3;
  Require(ldap_initialize(&impl_->handle, ("ldap://" + server_).c_str()), "initialize");
  ldap_set_option(impl_->handle, LDAP_OPT_PROTOCOL_VERSION, &version);
  ldap_set_option(impl_->handle, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
  ldap_set_option(impl_->handle, LDAP_OPT_X_SASL_NOCANON, LDAP_OPT_ON);
  Require(ldap_sasl_interactive_bind_s(impl_->handle, nullptr, "GSSAPI", nullptr, nullptr,
                                       LDAP_SASL_QUIET, AnswerNothing, nullptr),
          "sign in");
}

void LabAdministrator::Add(const std::string& dn, const Attributes& attributes) {
  Changes changes;
  for (const auto& [name, values] : attributes) changes.Append(LDAP_MOD_ADD, name, values);
  Require(ldap_add_ext_s(impl_->handle, dn.c_str(), changes.get(), nullptr, nullptr), "add " + dn);
}

void LabAdministrator::Remove(const std::string& dn) {
  Require(ldap_delete_ext_s(impl_->handle, dn.c_str(), nullptr, nullptr), "remove " + dn);
}

void LabAdministrator::Set(const std::string& dn, const std::string& attribute,
                           const std::vector<std::string>& values) {
  Changes changes;
  changes.Append(LDAP_MOD_REPLACE, attribute, values);
  Require(ldap_modify_ext_s(impl_->handle, dn.c_str(), changes.get(), nullptr, nullptr),
          "set " + attribute + " of " + dn);
}

Attributes LabAdministrator::Stored(const std::string& dn) {
  LDAPMessage* found = nullptr;
  const int code = ldap_search_ext_s(impl_->handle, dn.c_str(), LDAP_SCOPE_BASE, "(objectClass=*)",
                                     nullptr, 0, nullptr, nullptr, nullptr, 0, &found);
  // One that refuses leaves an answer, too.
  const ldap::LdapMessagePtr answer(found);
  Require(code, "read " + dn);
  Attributes stored;
  LDAPMessage* const entry = ldap_first_entry(impl_->handle, answer.get());
  BerElement* walk = nullptr;
  for (char* name = ldap_first_attribute(impl_->handle, entry, &walk); name != nullptr;
       name = ldap_next_attribute(impl_->handle, entry, walk)) {
    berval** const values = ldap_get_values_len(impl_->handle, entry, name);
    for (int at = 0; values != nullptr && values[at] != nullptr; ++at) {
      stored[name].emplace_back(values[at]->bv_val, values[at]->bv_len);
    }
    ldap_value_free_len(values);
    ldap_memfree(name);
  }
  ber_free(walk, 0);
  stored.erase("whenChanged");
  stored.erase("uSNChanged");
  return stored;
}

}  // namespace pelora::lab
