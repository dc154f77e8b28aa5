// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/tab_scripts.h"

#include <utility>

#include "resources/resource.h"

namespace pelora::contract {
namespace {

using Names = std::vector<std::string>;
using Steps = std::vector<TabStep>;
using Writes = std::vector<TabWrite>;
using Controls = std::vector<ControlId>;

const std::string kBase(kSampleBase);
const std::string kCompany = "OU=Linden-Werke Chemnitz," + kBase;
const std::string kOtherCompany = "OU=Linden Optiki Thessaloniki," + kBase;
const std::string kThirdCompany = "OU=Linden Servis Beograd," + kBase;
const std::string kSales = "OU=Vertrieb," + kCompany;

const std::string kBirgit = "CN=Birgit Krämer," + kSales;
const std::string kStefan = "CN=Stefan Ebert," + kSales;
const std::string kUrsula = "CN=Ursula Fischer,OU=Fertigung," + kCompany;
const std::string kHelga = "CN=Helga Önder,OU=IT," + kCompany;
const std::string kTom = "CN=Tom Richter,OU=IT," + kCompany;
const std::string kBoss = "CN=Jürgen Weißflog,OU=Geschäftsleitung," + kCompany;
const std::string kInfo = "CN=Vertrieb Info," + kSales;
const std::string kAnna = "CN=Meyer\\, Anna,OU=Geschäftsleitung," + kCompany;
const std::string kEveryone = "CN=Rundschreiben,OU=Gruppen," + kCompany;
const std::string kSecondServer = "CN=mail02,OU=Groupware Servers," + kBase;

TabStep Click(ControlId control) { return {.control = control}; }
TabStep Tick(ControlId control) { return {.act = TabStep::Act::kTick, .control = control}; }
TabStep Untick(ControlId control) { return {.act = TabStep::Act::kUntick, .control = control}; }
TabStep Type(ControlId control, std::string text) {
  return {.act = TabStep::Act::kType, .control = control, .text = std::move(text)};
}
TabStep Select(ControlId control, std::string row) {
  return {.act = TabStep::Act::kSelectRow, .control = control, .text = std::move(row)};
}
TabStep ChooseRow(ControlId control, RowIndex row) {
  return {.act = TabStep::Act::kChooseComboRow, .control = control, .row = row};
}
TabStep TypeAddress(std::string address) {
  return {.act = TabStep::Act::kTypeAddress, .text = std::move(address)};
}
TabStep Pick(Names names) { return {.act = TabStep::Act::kPick, .names = std::move(names)}; }
TabStep Find(Names names) { return {.act = TabStep::Act::kFind, .names = std::move(names)}; }
TabStep Browse(const std::string& name) { return {.act = TabStep::Act::kBrowse, .names = {name}}; }

/// The lists of a person's addresses and delegates.
const Controls kPersonLists = {
    IDC_EMAIL_LIST,   IDC_SENDAS_LIST,  IDC_EMAIL_GROUP,   IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
    IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD,   IDC_SENDAS_DELETE};

TabScript User() {
  return {
      .component = "CPropPageUser",
      .objects = {kBirgit, kStefan, kUrsula},
      .steps = {Click(IDC_PELORA_ACCOUNT),
                Click(IDC_PELORA_HIDDEN),
                ChooseRow(IDC_ACCOUNT_TYPE, 2),
                Type(IDC_CAPACITY, "12"),
                Pick({"CN=mail01,OU=Groupware Servers," + kBase}),
                Click(IDC_SERVER_SELECT),
                Click(IDC_QUOTA_OVERRIDE),
                Type(IDC_QUOTA_WARN, "10"),
                Type(IDC_QUOTA_SOFT, "20"),
                Type(IDC_QUOTA_HARD, "30"),
                TypeAddress("saal@linden-werke.example"),
                Click(IDC_EMAIL_ADD),
                Select(IDC_EMAIL_LIST, "vertrieb@linden-werke.example"),
                Click(IDC_EMAIL_DELETE),
                Select(IDC_EMAIL_LIST, "saal@linden-werke.example"),
                Click(IDC_EMAIL_DEFAULT),
                Pick({kHelga}),
                Click(IDC_SENDAS_ADD),
                Select(IDC_SENDAS_LIST, kInfo),
                Click(IDC_SENDAS_DELETE)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"1"}},
                 {"peloraAdmin", {"0"}},
                 {"peloraSharedStoreOnly", {"1"}},
                 {"peloraResourceType", {"room"}},
                 {"peloraResourceCapacity", {"12"}},
                 {"peloraUserServer", {"mail01"}},
                 {"peloraQuotaOverride", {"1"}},
                 {"peloraQuotaWarn", {"10"}},
                 {"peloraQuotaSoft", {"20"}},
                 {"peloraQuotaHard", {"30"}},
                 {"mail", {"saal@linden-werke.example"}},
                 {"otherMailbox", {"b.kraemer@linden-werke.example"}},
                 {"peloraSendAsPrivilege", {kAnna, kHelga}}},
      .steps_for_three = {Tick(IDC_PELORA_ACCOUNT), ChooseRow(IDC_ACCOUNT_TYPE, 1),
                          Tick(IDC_QUOTA_OVERRIDE), Type(IDC_QUOTA_WARN, "5")},
      .writes_to_three = {{"peloraAccount", {"1"}},
                          {"peloraAdmin", {"0"}},
                          {"peloraSharedStoreOnly", {"1"}},
                          {"peloraResourceType", {}},
                          {"peloraResourceCapacity", {"0"}},
                          {"peloraQuotaOverride", {"1"}},
                          {"peloraQuotaWarn", {"5"}}},
      .always = {{"peloraResourceType", {}}, {"peloraResourceCapacity", {"0"}}},
      .of_one = kPersonLists,
  };
}

TabScript Contact() {
  return {
      .component = "CPropPageContact",
      .objects = {"CN=Papier Oelsnitz,OU=Kontakte," + kCompany,
                  "CN=Dr. Renate Thiel,OU=Kontakte," + kCompany,
                  "CN=Λιμάνι Α.Ε.,OU=Διοίκηση," + kOtherCompany},
      .steps = {Click(IDC_PELORA_ACCOUNT), Click(IDC_PELORA_HIDDEN),
                Select(IDC_EMAIL_LIST, "buero@papier-oelsnitz.example"), Click(IDC_EMAIL_DEFAULT),
                TypeAddress("neu@papier.example"), Click(IDC_EMAIL_ADD),
                Select(IDC_EMAIL_LIST, "neu@papier.example"), TypeAddress("größe@papier.example"),
                Click(IDC_EMAIL_MODIFY), Pick({kBirgit, kEveryone}), Click(IDC_SENDAS_ADD),
                Select(IDC_SENDAS_LIST, kBirgit), Click(IDC_SENDAS_DELETE)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"0"}},
                 {"mail", {"buero@papier-oelsnitz.example"}},
                 {"otherMailbox", {"bestellung@papier-oelsnitz.example", "größe@papier.example"}},
                 {"peloraSendAsPrivilege", {kEveryone}}},
      .steps_for_three = {Tick(IDC_PELORA_ACCOUNT), Untick(IDC_PELORA_HIDDEN)},
      .writes_to_three = {{"peloraAccount", {"1"}}, {"peloraHidden", {"0"}}},
      .of_one = kPersonLists,
  };
}

TabScript Distlist() {
  return {
      .component = "CPropPageDistlist",
      .objects = {"CN=Entwicklung Alle,OU=Gruppen," + kCompany,
                  "CN=Vertrieb Alle,OU=Gruppen," + kCompany,
                  "CN=Fertigung Schicht 2,OU=Gruppen," + kCompany},
      .steps = {Click(IDC_PELORA_ACCOUNT), Click(IDC_PELORA_HIDDEN),
                Select(IDC_EMAIL_LIST, "ENTWICKLUNG-ALLE@LINDEN-WERKE.EXAMPLE"),
                Click(IDC_EMAIL_DELETE), TypeAddress("rd2@linden-werke.example"),
                Click(IDC_EMAIL_ADD), Pick({kHelga}), Click(IDC_SENDAS_ADD)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"1"}},
                 {"mail", {"rd@linden-werke.example"}},
                 {"otherMailbox", {"rd2@linden-werke.example"}},
                 {"peloraSendAsPrivilege", {kHelga}}},
      .steps_for_three = {Untick(IDC_PELORA_ACCOUNT), Tick(IDC_PELORA_HIDDEN)},
      .writes_to_three = {{"peloraAccount", {"0"}}, {"peloraHidden", {"1"}}},
      .of_one = kPersonLists,
  };
}

TabScript Addresslist() {
  const std::string contacts = "OU=Kontakte," + kCompany;
  return {
      .component = "CPropPageAddresslist",
      .objects = {"CN=Alle Personen,OU=Adresslisten," + kCompany,
                  "CN=Räume,OU=Adresslisten," + kCompany,
                  "CN=Partner/Lieferanten,OU=Adresslisten," + kCompany},
      .steps = {Click(IDC_PELORA_HIDDEN), Browse(contacts), Click(IDC_SEARCH_BASE_SELECT),
                Type(IDC_SEARCH_QUERY, "(mail=*größe*)"), Click(IDC_PELORA_ACCOUNT)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"1"}},
                 {"peloraBase", {contacts}},
                 {"peloraFilter", {"(mail=*größe*)"}}},
      .steps_for_three = {Browse(contacts), Click(IDC_SEARCH_BASE_SELECT),
                          Type(IDC_SEARCH_QUERY, "(cn=a*)")},
      .writes_to_three = {{"peloraBase", {contacts}}, {"peloraFilter", {"(cn=a*)"}}},
  };
}

TabScript DynamicDistlist() {
  return {
      .component = "CPropPageDynamicDistlist",
      .objects = {"CN=Alle in Chemnitz,OU=Adresslisten," + kCompany,
                  "CN=Administratoren,OU=Adresslisten," + kCompany,
                  "CN=Ohne Suche,OU=Adresslisten," + kCompany},
      .steps = {Click(IDC_PELORA_HIDDEN), Browse(kSales), Click(IDC_SEARCH_BASE_SELECT),
                Type(IDC_SEARCH_QUERY, "(sn=*)"), TypeAddress("sales@linden-werke.example"),
                Click(IDC_EMAIL_ADD), Select(IDC_EMAIL_LIST, "sales@linden-werke.example"),
                TypeAddress("sell@linden-werke.example"), Click(IDC_EMAIL_MODIFY),
                Select(IDC_EMAIL_LIST, "alle@linden-werke.example"), Click(IDC_EMAIL_DELETE),
                Select(IDC_EMAIL_LIST, "sell@linden-werke.example"), Click(IDC_EMAIL_DEFAULT),
                Click(IDC_PELORA_ACCOUNT)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"1"}},
                 {"peloraBase", {kSales}},
                 {"peloraFilter", {"(sn=*)"}},
                 {"mail", {"sell@linden-werke.example"}},
                 {"otherMailbox", {"chemnitz@linden-werke.example"}}},
      .steps_for_three = {TypeAddress("nobody@linden-werke.example"), Click(IDC_EMAIL_ADD),
                          Type(IDC_SEARCH_QUERY, "(sn=*)"), Untick(IDC_PELORA_HIDDEN)},
      .writes_to_three = {{"peloraFilter", {"(sn=*)"}}, {"peloraHidden", {"0"}}},
  };
}

TabScript General(const std::string& component, const Names& objects) {
  Names names;
  for (const std::string& object : objects) {
    names.push_back("CN=" + object + ",OU=Adresslisten," + kCompany);
  }
  return {
      .component = component,
      .objects = names,
      .steps = {Type(IDC_DESCRIPTION, "Größe & Güte")},
      .writes = {{"description", {"Größe & Güte"}}},
      .steps_for_three = {Type(IDC_DESCRIPTION, "one of three")},
      .writes_to_three = {{"description", {"one of three"}}},
  };
}

TabScript Company() {
  return {
      .component = "CPropPageCompany",
      .objects = {kCompany, kOtherCompany, kThirdCompany},
      .steps = {Pick({kHelga}), Click(IDC_SYSTEM_ADMIN_SELECT), Pick({kSecondServer}),
                Click(IDC_SERVER_SELECT), Click(IDC_PELORA_HIDDEN), Click(IDC_PELORA_ACCOUNT)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHidden", {"1"}},
                 {"peloraSystemAdmin", {kHelga}},
                 {"peloraCompanyServer", {"mail02"}}},
      .steps_for_three = {Pick({kSecondServer}), Click(IDC_SERVER_SELECT), Tick(IDC_PELORA_HIDDEN)},
      .writes_to_three = {{"peloraHidden", {"1"}}, {"peloraCompanyServer", {"mail02"}}},
  };
}

TabScript CompanyQuota() {
  return {
      .component = "CPropPageCompanyQuota",
      .objects = {kCompany, kOtherCompany, kThirdCompany},
      .steps = {Type(IDC_QUOTA_WARN, "41000"), Type(IDC_USER_QUOTA_WARN, "81"),
                Type(IDC_USER_QUOTA_SOFT, "91"), Type(IDC_USER_QUOTA_HARD, "101"),
                Pick({kTom, kAnna}), Click(IDC_QUOTA_RECIPIENTS_ADD),
                Select(IDC_QUOTA_RECIPIENTS, kHelga), Click(IDC_QUOTA_RECIPIENTS_DELETE),
                Pick({kBoss}), Click(IDC_USER_QUOTA_RECIPIENTS_ADD),
                Select(IDC_USER_QUOTA_RECIPIENTS, kHelga), Click(IDC_USER_QUOTA_RECIPIENTS_DELETE),
                Click(IDC_QUOTA_OVERRIDE), Click(IDC_USER_QUOTA_OVERRIDE)},
      .writes = {{"peloraQuotaWarn", {"41000"}},
                 {"peloraQuotaOverride", {"0"}},
                 {"peloraQuotaCompanyWarningRecipients", {kBoss, kTom, kAnna}},
                 {"peloraUserDefaultQuotaWarn", {"81"}},
                 {"peloraUserDefaultQuotaSoft", {"91"}},
                 {"peloraUserDefaultQuotaHard", {"101"}},
                 {"peloraUserDefaultQuotaOverride", {"0"}},
                 {"peloraQuotaUserWarningRecipients", {kBoss}}},
      .steps_for_three = {Tick(IDC_USER_QUOTA_OVERRIDE), Type(IDC_USER_QUOTA_HARD, "7")},
      .writes_to_three = {{"peloraUserDefaultQuotaOverride", {"1"}},
                          {"peloraUserDefaultQuotaHard", {"7"}}},
      .of_one = {IDC_QUOTA_RECIPIENTS_GROUP, IDC_USER_QUOTA_RECIPIENTS_GROUP, IDC_QUOTA_RECIPIENTS,
                 IDC_QUOTA_RECIPIENTS_ADD, IDC_QUOTA_RECIPIENTS_DELETE, IDC_USER_QUOTA_RECIPIENTS,
                 IDC_USER_QUOTA_RECIPIENTS_ADD, IDC_USER_QUOTA_RECIPIENTS_DELETE},
  };
}

TabScript CompanyRights() {
  return {
      .component = "CPropPageCompanyRights",
      .objects = {kCompany, kOtherCompany, kThirdCompany},
      .steps = {Find({kSales}), Click(IDC_VIEW_ADD), Select(IDC_VIEW_LIST, kOtherCompany),
                Click(IDC_VIEW_DELETE), Pick({kTom, kAnna}), Click(IDC_ADMIN_ADD),
                Select(IDC_ADMIN_LIST, kBoss), Click(IDC_ADMIN_DELETE)},
      .writes = {{"peloraViewPrivilege", {kThirdCompany, kSales}},
                 {"peloraAdminPrivilege", {kHelga, kTom, kAnna}}},
      .steps_for_three = {Pick({kTom}), Click(IDC_ADMIN_ADD)},
      .writes_to_three = {},
      .of_one = {IDC_ADMIN_LIST, IDC_VIEW_LIST},
  };
}

TabScript Server() {
  const std::string servers = ",OU=Groupware Servers," + kBase;
  return {
      .component = "CPropPageServer",
      .objects = {"CN=mail01" + servers, "CN=mail02" + servers, "CN=mail-thess" + servers},
      .steps = {Click(IDC_PELORA_ACCOUNT), Type(IDC_HOST_ADDRESS, "mail.größe.example"),
                Type(IDC_HTTP_PORT, "80"), Type(IDC_SSL_PORT, "443"),
                Type(IDC_FILE_PATH, "/run/pelora"), Click(IDC_CONTAINS_PUBLIC)},
      .writes = {{"peloraAccount", {"0"}},
                 {"peloraHostAddress", {"mail.größe.example"}},
                 {"peloraHttpPort", {"80"}},
                 {"peloraSslPort", {"443"}},
                 {"peloraFilePath", {"/run/pelora"}},
                 {"peloraContainsPublic", {"0"}}},
      .steps_for_three = {Type(IDC_HTTP_PORT, "80")},
      .writes_to_three = {},
      .refusal_of_three = "Validation of input fields failed: Missing Server Address",
      .always = {{"peloraHostAddress", {"192.0.2.11"}}, {"peloraContainsPublic", {"1"}}},
      .of_one = {IDC_HOST_ADDRESS_LABEL, IDC_HOST_ADDRESS, IDC_CONTAINS_PUBLIC},
  };
}

void Rebase(Names& names, std::string_view base) {
  for (std::string& name : names) name = Rebased(std::move(name), base);
}

void Rebase(Steps& steps, std::string_view base) {
  for (TabStep& step : steps) {
    step.text = Rebased(std::move(step.text), base);
    Rebase(step.names, base);
  }
}

void Rebase(Writes& writes, std::string_view base) {
  for (TabWrite& write : writes) Rebase(write.values, base);
}

}  // namespace

std::string Rebased(std::string text, std::string_view base) {
  const std::size_t place = text.find(kSampleBase);
  if (place != std::string::npos) text.replace(place, kSampleBase.size(), base);
  return text;
}

TabScript Rebased(TabScript script, std::string_view base) {
  Rebase(script.objects, base);
  for (Steps* const steps : {&script.steps, &script.steps_for_three}) Rebase(*steps, base);
  for (Writes* const writes : {&script.writes, &script.writes_to_three, &script.always}) {
    Rebase(*writes, base);
  }
  return script;
}

const std::vector<TabScript>& TabScripts() {
  static const std::vector<TabScript> scripts = {
      User(),
      Contact(),
      Distlist(),
      General("CPropPageAddresslistGeneral", {"Alle Personen", "Räume", "Partner/Lieferanten"}),
      Addresslist(),
      General("CPropPageDynamicDistlistGeneral",
              {"Alle in Chemnitz", "Administratoren", "Ohne Suche"}),
      DynamicDistlist(),
      Company(),
      CompanyQuota(),
      CompanyRights(),
      Server(),
  };
  return scripts;
}

}  // namespace pelora::contract
