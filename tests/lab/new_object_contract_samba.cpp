// SPDX-License-Identifier: Apache-2.0
// Objects made on a directory server, read back with the domain's own search tool.
#include "hosts/ldap/new_store_object.h"
#include "tests/contract/headless_new_object_console.h"
#include "tests/lab/domain_bench.h"

namespace pelora::lab {
namespace {

using contract::HeadlessNewObjectConsole;
using contract::NewObjectConsole;
using contract::NewObjectContract;
using contract::TabValues;

class DomainWizards final : public DomainBench, public HeadlessNewObjectConsole {
 public:
  DomainWizards()
      : HeadlessNewObjectConsole(
            {bench.platform, bench.templates(), bench.messages, bench.choosers, faulty.plan()}) {
    static_cast<void>(DomainCompany::Shared());
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
  }
  ~DomainWizards() override {
    for (const std::string& dn : made_) {
      if (IsThere(dn)) administrator_.Remove(dn);
    }
    administrator_.Remove(container_);
  }

  [[nodiscard]] std::string Base() const override { return DomainCompany::Base(); }
  [[nodiscard]] std::optional<TabValues> Stored(const std::string& name) override {
    for (const std::string& dn : made_) {
      if (dn.find("=" + name + ",") != std::string::npos && IsThere(dn)) return StoredInDomain(dn);
    }
    return std::nullopt;
  }

 private:
  [[nodiscard]] bool IsThere(const std::string& dn) {
    Entry entry;
    const std::vector<std::string> attributes = {"cn"};
    return session->store().Read(dn, attributes, entry).Ok();
  }
  [[nodiscard]] Ref<IADs> MakeObject(const std::string& class_name,
                                     const std::string& name) override {
    const std::string dn =
        (class_name == "organizationalUnit" ? "OU=" : "CN=") + name + "," + container_;
    made_.insert(dn);
    return faulty.Wrap(
        Ref<IADs>::Adopt(new ldap::NewStoreObject(store, dn, class_name, last_failure_)));
  }

  LabAdministrator administrator_;
  std::string container_ = "OU=Wizards,OU=Contract," + lab::Base();
  std::set<std::string> made_;
  std::shared_ptr<StoreStatus> last_failure_ = std::make_shared<StoreStatus>();
};

std::unique_ptr<NewObjectConsole> MakeWizards() { return std::make_unique<DomainWizards>(); }

INSTANTIATE_TEST_SUITE_P(Samba, NewObjectContract, ::testing::Values(&MakeWizards));

}  // namespace
}  // namespace pelora::lab
