// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/same_edits.h"

#include <algorithm>

#include "directory/ascii_case.h"
#include "hosts/ldap/ldif_lines.h"
#include "hosts/ldap/sample_company.h"
#include "resources/resource.h"

namespace pelora::contract {
namespace {

using Names = std::vector<std::string>;
using Act = TabStep::Act;

const std::string kBase(kSampleBase);
const std::string kCompany = "OU=Linden-Werke Chemnitz," + kBase;

const TabScript& ScriptOf(std::string_view component) {
  return *std::ranges::find(TabScripts(), component, &TabScript::component);
}

/// The steps of the script of a tab, on its first object.
SameEdit AsScripted(const std::string& component, std::vector<Names> commands) {
  const TabScript& script = ScriptOf(component);
  return {.component = component,
          .objects = {script.objects.front()},
          .steps = script.steps,
          .commands = std::move(commands)};
}

SameEdit OneUser() {
  return AsScripted(
      "CPropPageUser",
      {{"peloraAccount=no", "peloraHidden=yes", "accountType=room", "peloraResourceCapacity=12",
        "peloraUserServer=mail01", "peloraQuotaOverride=yes", "peloraQuotaWarn=10",
        "peloraQuotaSoft=20", "peloraQuotaHard=30", "mail=saal@linden-werke.example",
        "otherMailbox-=vertrieb@linden-werke.example", "peloraSendAsPrivilege+=h.oender",
        "peloraSendAsPrivilege-=Vertrieb Info"}});
}

SameEdit SeveralUsers() {
  const std::string people = "," + kCompany;
  return {
      .component = "CPropPageUser",
      .objects = {"CN=Stefan Ebert,OU=Vertrieb" + people, "CN=Ursula Fischer,OU=Fertigung" + people,
                  "CN=Tom Richter,OU=IT" + people},
      .steps = {{.act = Act::kChooseComboRow, .control = IDC_ACCOUNT_TYPE, .row = 2},
                {.act = Act::kType, .control = IDC_CAPACITY, .text = "7"},
                {.act = Act::kPick, .names = {"CN=mail02,OU=Groupware Servers," + kBase}},
                {.control = IDC_SERVER_SELECT}},
      .commands = {{"accountType=room", "peloraResourceCapacity=7", "peloraUserServer=mail02"}}};
}

SameEdit Group() {
  return AsScripted("CPropPageDistlist", {{"peloraAccount=no", "peloraHidden=yes",
                                           "otherMailbox-=entwicklung-alle@linden-werke.example",
                                           "otherMailbox+=rd2@linden-werke.example",
                                           "peloraSendAsPrivilege+=h.oender"}});
}

std::vector<SameEdit> Company() {
  return {
      AsScripted("CPropPageCompany", {{"peloraSystemAdmin=h.oender", "peloraCompanyServer=mail02",
                                       "peloraHidden=yes", "peloraAccount=no"}}),
      AsScripted("CPropPageCompanyQuota",
                 {{"peloraQuotaWarn=41000", "peloraUserDefaultQuotaWarn=81",
                   "peloraUserDefaultQuotaSoft=91", "peloraUserDefaultQuotaHard=101",
                   "peloraQuotaCompanyWarningRecipients+=t.richter;Meyer, Anna",
                   "peloraQuotaCompanyWarningRecipients-=h.oender",
                   "peloraQuotaUserWarningRecipients+=j.weissflog",
                   "peloraQuotaUserWarningRecipients-=h.oender"},
                  {"peloraQuotaOverride=no", "peloraUserDefaultQuotaOverride=no"}}),
      AsScripted(
          "CPropPageCompanyRights",
          {{"peloraViewPrivilege+=OU=Vertrieb," + kCompany,
            "peloraViewPrivilege-=OU=Linden Optiki Thessaloniki," + kBase,
            "peloraAdminPrivilege+=t.richter;Meyer, Anna", "peloraAdminPrivilege-=j.weissflog"}})};
}

/// The catalogue's spelling of an attribute whose changes are dumped; empty for another one.
std::string_view DumpedAttribute(std::string_view name) {
  const auto* const found = std::ranges::find_if(kAttributeCatalogue, [&](const Attribute& known) {
    return EqualsWithoutCase(known.name, name);
  });
  const bool is_dumped = found != kAttributeCatalogue.end() &&
                         found->multi_selection != MultiSelectionRule::kNeverWritten;
  return is_dumped ? found->name : std::string_view();
}

DumpedValues ValuesIn(const ldap::LdifBlock& block, std::string& name) {
  DumpedValues values;
  for (const std::string& line : block.lines) {
    const std::size_t colon = line.find(": ");
    const std::string attribute = line.substr(0, colon);
    if (attribute == "dn") name = line.substr(colon + 2);
    const std::string_view dumped = DumpedAttribute(attribute);
    if (!dumped.empty()) values[std::string(dumped)].push_back(line.substr(colon + 2));
  }
  return values;
}

/// The values of `values` that `others` has not, each on a line.
void AppendOthers(char mark, const std::string& attribute, Names values, const Names& others,
                  std::string& text) {
  std::ranges::sort(values);
  for (const std::string& value : values) {
    if (std::ranges::find(others, value) != others.end()) continue;
    text += mark + (" " + attribute) + ": " + value + "\n";
  }
}

}  // namespace

const std::vector<SameEdit>& SameEdits() {
  static const std::vector<SameEdit> kEdits = [] {
    std::vector<SameEdit> edits = {OneUser(), SeveralUsers(), Group()};
    std::ranges::move(Company(), std::back_inserter(edits));
    return edits;
  }();
  return kEdits;
}

std::string DumpOf(const DumpedObject& stored) {
  std::string dump;
  for (const ldap::LdifBlock& block : ldap::SplitLdif(ldap::SampleCompanyLdif())) {
    std::string name;
    DumpedValues before = ValuesIn(block, name);
    DumpedValues after = stored(name);
    std::string changes;
    for (const Attribute& attribute : kAttributeCatalogue) {
      const std::string key(attribute.name);
      if (DumpedAttribute(key).empty()) continue;
      AppendOthers('-', key, before[key], after[key], changes);
      AppendOthers('+', key, after[key], before[key], changes);
    }
    if (!changes.empty()) dump += "dn: " + name + "\n" + changes;
  }
  return dump;
}

std::string_view SameEditsDump() {
  return R"(dn: OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraAccount: 1
+ peloraAccount: 0
+ peloraHidden: 1
- peloraQuotaOverride: 1
+ peloraQuotaOverride: 0
- peloraQuotaWarn: 40000
+ peloraQuotaWarn: 41000
- peloraUserDefaultQuotaOverride: 1
+ peloraUserDefaultQuotaOverride: 0
- peloraUserDefaultQuotaWarn: 800
+ peloraUserDefaultQuotaWarn: 81
- peloraUserDefaultQuotaSoft: 900
+ peloraUserDefaultQuotaSoft: 91
- peloraUserDefaultQuotaHard: 1000
+ peloraUserDefaultQuotaHard: 101
- peloraQuotaUserWarningRecipients: CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraQuotaUserWarningRecipients: CN=Jürgen Weißflog,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraQuotaCompanyWarningRecipients: CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraQuotaCompanyWarningRecipients: CN=Meyer\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraQuotaCompanyWarningRecipients: CN=Tom Richter,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraCompanyServer: mail01
+ peloraCompanyServer: mail02
- peloraSystemAdmin: CN=Jürgen Weißflog,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraSystemAdmin: CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraViewPrivilege: OU=Linden Optiki Thessaloniki,DC=linden-werke,DC=example
+ peloraViewPrivilege: OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraAdminPrivilege: CN=Jürgen Weißflog,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraAdminPrivilege: CN=Meyer\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraAdminPrivilege: CN=Tom Richter,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
dn: CN=Tom Richter,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraAdmin: 1
+ peloraAdmin: 0
+ peloraSharedStoreOnly: 1
+ peloraResourceType: room
+ peloraResourceCapacity: 7
dn: CN=Birgit Krämer,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraAccount: 1
+ peloraAccount: 0
+ peloraHidden: 1
- mail: b.kraemer@linden-werke.example
+ mail: saal@linden-werke.example
- otherMailbox: vertrieb@linden-werke.example
+ otherMailbox: b.kraemer@linden-werke.example
- peloraSendAsPrivilege: CN=Vertrieb Info,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraSendAsPrivilege: CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraQuotaOverride: 1
+ peloraQuotaWarn: 10
+ peloraQuotaSoft: 20
+ peloraQuotaHard: 30
+ peloraAdmin: 0
+ peloraSharedStoreOnly: 1
+ peloraResourceType: room
+ peloraResourceCapacity: 12
- peloraUserServer: mail02
+ peloraUserServer: mail01
dn: CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraAdmin: 0
+ peloraSharedStoreOnly: 1
+ peloraResourceType: room
+ peloraResourceCapacity: 7
dn: CN=Ursula Fischer,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
+ peloraAdmin: 0
+ peloraSharedStoreOnly: 1
+ peloraResourceType: room
+ peloraResourceCapacity: 7
+ peloraUserServer: mail02
dn: CN=Entwicklung Alle,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
- peloraAccount: 1
+ peloraAccount: 0
+ peloraHidden: 1
- mail: entwicklung-alle@linden-werke.example
+ mail: rd@linden-werke.example
- otherMailbox: rd@linden-werke.example
+ otherMailbox: rd2@linden-werke.example
+ peloraSendAsPrivilege: CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example
)";
}

}  // namespace pelora::contract
