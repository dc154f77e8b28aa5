// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/check/check_bench.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "hosts/changes/guarded_request.h"
#include "platform/shell_extension.h"
#include "server/class_table.h"
#include "server/component_server.h"
#include "server/console_registration.h"

namespace pelora::session {
namespace {

/// Whether a template has the control of a field: a group of fields may stand on a page that has
/// only some of its controls.
bool HasControl(const resources::DialogTemplate& page, ControlId control) {
  return std::ranges::any_of(page.items, [control](const resources::DialogItem& item) {
    return static_cast<ControlId>(item.id) == control;
  });
}

DialogId TemplateOf(IUnknown& component) {
  DialogId dialog = 0;
  const HRESULT status = Query<IShellPropSheetExt>(component)->AddPages(
      [&dialog](std::unique_ptr<PropSheetPage> page) {
        dialog = page->Template();
        return true;
      });
  EXPECT_EQ(status, S_OK);
  return dialog;
}

}  // namespace

TabFields::TabFields() : fields_(ReadRows()) {}

CheckFields::RowsByClass TabFields::ReadRows() {
  CheckFields::RowsByClass rows;
  for (const std::string_view class_name : RegisteredObjectClasses()) {
    std::vector<FieldRow>& of_class = rows[std::string(class_name)];
    for (const Guid& tab : DefaultRegistrations(class_name, ConsoleRole::kPropertyPage)) {
      Ref<IUnknown> component;
      EXPECT_EQ(CreateComponent(tab, host_.platform, IID_IUnknown,
                                reinterpret_cast<void**>(component.Put())),
                S_OK);
      const auto page = host_.templates().Dialog(TemplateOf(*component));
      for (FieldRow& row : Query<IFieldRows>(*component)->Fields()) {
        if (HasControl(*page.value, row.control)) of_class.push_back(std::move(row));
      }
      components_.push_back(std::move(component));
    }
  }
  return rows;
}

CheckBench::CheckBench() : store_(Open()) {
  Put("CN=Sofie Albrecht,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
      "peloraDisabledFeatures", {});
  Put("CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
      "peloraSendAsPrivilege", {});
  Put("CN=Kleiner Saal,OU=Räume und Geräte,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
      "peloraSharedStoreOnly", {"1"});
}

void CheckBench::Put(const std::string& dn, const std::string& attribute,
                     const ldap::AttributeValues& values) {
  const ldap::StoreStatus status = Replace(*store_, dn, attribute, values);
  ASSERT_TRUE(status.Ok()) << dn << " " << attribute << ": " << status.text;
}

ldap::AttributeValues CheckBench::Get(const std::string& dn, const std::string& attribute) {
  return Read(*store_, dn, attribute);
}

std::vector<Finding> CheckBench::Findings(const std::string& rule, const std::string& base) {
  std::vector<Finding> findings;
  const ldap::StoreStatus status =
      RunCheck(*store_, {.base = base, .rules = {FindCheckRule(rule)}}, fields(),
               [&findings](Finding finding) { findings.push_back(std::move(finding)); });
  EXPECT_TRUE(status.Ok()) << status.text;
  for (const Finding& finding : findings) EXPECT_EQ(finding.rule, rule);
  return findings;
}

std::vector<std::string> CheckBench::Lines(const std::string& rule, const std::string& base) {
  std::vector<std::string> lines;
  for (const Finding& finding : Findings(rule, base)) {
    lines.push_back(CommonName(finding.dn) + "\t" + finding.message);
  }
  return lines;
}

void CheckBench::Mend(const std::string& rule) {
  for (const changes::Change& mend : MendsOf(Findings(rule))) {
    const ldap::StoreStatus status =
        store_->Modify(mend.dn, changes::GuardedRequest(store_->schema(), mend));
    EXPECT_TRUE(status.Ok()) << mend.dn << ": " << status.text;
  }
}

std::string CommonName(const std::string& dn) {
  const std::size_t begin = dn.find('=') + 1;
  return dn.substr(begin, dn.find(',') - begin);
}

}  // namespace pelora::session
