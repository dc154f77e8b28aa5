// SPDX-License-Identifier: Apache-2.0
// The directory schema in deploy/, held to the catalogue of attributes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/ldif_lines.h"

namespace pelora {
namespace {

using Values = std::vector<std::string>;

/// One change of an LDIF file: its fields, in the order of the file.
struct Change {
  std::string dn;
  std::map<std::string, Values> fields;

  [[nodiscard]] std::string One(const std::string& name) const {
    const auto found = fields.find(name);
    return found == fields.end() || found->second.size() != 1 ? "none" : found->second.front();
  }
  [[nodiscard]] Values All(const std::string& name) const {
    const auto found = fields.find(name);
    return found == fields.end() ? Values() : found->second;
  }
  [[nodiscard]] bool IsOf(const std::string& object_class) const {
    return std::ranges::count(All("objectClass"), object_class) == 1;
  }
};

std::string ReadDeployed(const std::string& name) {
  const char* const root = std::getenv("PELORA_SOURCE_DIR");
  if (root == nullptr) throw std::runtime_error("PELORA_SOURCE_DIR is not set");
  std::ifstream file(std::string(root) + "/deploy/" + name);
  if (!file) throw std::runtime_error("cannot read " + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Change> ReadChanges(const std::string& name) {
  std::vector<Change> changes;
  for (const ldap::LdifBlock& block : ldap::SplitLdif(ReadDeployed(name))) {
    Change change;
    for (const std::string& line : block.lines) {
      const std::size_t colon = line.find(':');
      const std::size_t value = line.find_first_not_of(": ", colon);
      const std::string text = value == std::string::npos ? "" : line.substr(value);
      if (line.substr(0, colon) == "dn") {
        change.dn = text;
      } else if (line != "-") {
        change.fields[line.substr(0, colon)].push_back(text);
      }
    }
    changes.push_back(std::move(change));
  }
  return changes;
}

class PeloraSchema : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<Change> Of(const std::string& object_class) const {
    std::vector<Change> found;
    std::ranges::copy_if(changes_, std::back_inserter(found),
                         [&](const Change& change) { return change.IsOf(object_class); });
    return found;
  }
  [[nodiscard]] Change Named(const std::string& name) const {
    for (const Change& change : changes_) {
      if (change.One("lDAPDisplayName") == name) return change;
    }
    return {};
  }

  std::vector<Change> changes_ = ReadChanges("schema.ldif");
};

/// What a server has to know of an attribute that is read and written in this way.
std::string ExpectedForm(const Attribute& attribute) {
  // Archive servers are named by their cn, which is no distinguished name.
  const bool holds_names =
      attribute.encoding == Encoding::kNameList && attribute.name != "peloraUserArchiveServers";
  const bool is_number =
      attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger;
  const std::string form = holds_names ? "2.5.5.1 127 KwwCh3McAIVK"
                           : is_number ? "2.5.5.9 2 none"
                                       : "2.5.5.12 64 none";
  return std::string(attribute.name) + " " + form +
         (attribute.is_multi_valued ? " FALSE" : " TRUE");
}

TEST_F(PeloraSchema, HasEveryAttributeOfTheCatalogueInItsForm) {
  std::vector<std::string> expected;
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (attribute.name.starts_with("pelora")) expected.push_back(ExpectedForm(attribute));
  }
  std::vector<std::string> actual;
  for (const Change& change : Of("attributeSchema")) {
    actual.push_back(change.One("lDAPDisplayName") + " " + change.One("attributeSyntax") + " " +
                     change.One("oMSyntax") + " " + change.One("oMObjectClass") + " " +
                     change.One("isSingleValued"));
  }
  EXPECT_EQ(actual, expected);
}

TEST_F(PeloraSchema, AgreesWithTheEmbeddedDirectorys) {
  std::size_t count = 0;
  for (const Change& sample : ReadChanges("sample-schema.ldif")) {
    const std::string name = sample.One("lDAPDisplayName");
    if (!name.starts_with("pelora")) continue;
    ++count;
    for (const char* const field : {"attributeSyntax", "oMSyntax", "isSingleValued"}) {
      EXPECT_EQ(Named(name).One(field), sample.One(field)) << name << " " << field;
    }
  }
  EXPECT_EQ(count, Of("attributeSchema").size());
}

TEST_F(PeloraSchema, GivesEverythingItsOwnIdentifiers) {
  constexpr const char* kArc =
      "1.2.840.113556.1.8000.2554.2073.62674.1350.18411.37845.7736857.2960252";
  constexpr std::size_t kGuidInBase64 = 24;
  std::set<std::string> seen;
  std::size_t count = 0;
  for (const Change& change : changes_) {
    if (change.One("changetype") != "add") continue;
    ++count;
    const bool is_class = change.IsOf("classSchema");
    const std::string identifier = change.One(is_class ? "governsID" : "attributeID");
    EXPECT_TRUE(identifier.starts_with(std::string(kArc) + (is_class ? ".2." : ".1.")))
        << change.dn;
    EXPECT_TRUE(seen.insert(identifier).second) << identifier;
    EXPECT_TRUE(seen.insert(change.One("schemaIDGUID")).second) << change.dn;
    EXPECT_EQ(change.One("schemaIDGUID").size(), kGuidInBase64) << change.dn;
    EXPECT_TRUE(seen.insert(change.One("lDAPDisplayName")).second) << change.dn;
    EXPECT_EQ(change.One("showInAdvancedViewOnly"), "TRUE") << change.dn;
    EXPECT_EQ(change.dn, "CN=" + change.One("cn") + ",@SCHEMA@");
  }
  EXPECT_EQ(count, 39U);
}

/// One of these stands for each class that a tab is there for.
struct Allowed {
  const char* object_class;
  /// The class that carries the attributes, when that is not the class itself.
  const char* carrier;
  Values attributes;
};

const std::vector<Allowed>& AllowedAttributes() {
  static const std::vector<Allowed> kAllowed = {
      {"User",
       "peloraUserSettings",
       {"mail", "otherMailbox", "peloraAccount", "peloraAdmin", "peloraDisabledFeatures",
        "peloraEnabledFeatures", "peloraHidden", "peloraQuotaHard", "peloraQuotaOverride",
        "peloraQuotaSoft", "peloraQuotaWarn", "peloraResourceCapacity", "peloraResourceType",
        "peloraSendAsPrivilege", "peloraSharedStoreOnly", "peloraUserArchiveServers",
        "peloraUserServer"}},
      {"Contact",
       "peloraContactSettings",
       {"mail", "otherMailbox", "peloraAccount", "peloraHidden", "peloraSendAsPrivilege"}},
      {"Group",
       "peloraGroupSettings",
       {"mail", "otherMailbox", "peloraAccount", "peloraHidden", "peloraSendAsPrivilege"}},
      {"Organizational-Unit",
       "peloraCompanySettings",
       {"mail", "otherMailbox", "peloraAccount", "peloraAdminPrivilege", "peloraCompanyServer",
        "peloraHidden", "peloraQuotaCompanyWarningRecipients", "peloraQuotaHard",
        "peloraQuotaOverride", "peloraQuotaSoft", "peloraQuotaUserWarningRecipients",
        "peloraQuotaWarn", "peloraSendAsPrivilege", "peloraSystemAdmin",
        "peloraUserDefaultQuotaHard", "peloraUserDefaultQuotaOverride",
        "peloraUserDefaultQuotaSoft", "peloraUserDefaultQuotaWarn", "peloraViewPrivilege"}},
      {"Computer",
       "peloraServerSettings",
       {"peloraAccount", "peloraContainsPublic", "peloraFilePath", "peloraHostAddress",
        "peloraHttpPort", "peloraSslPort"}},
      {nullptr,
       "peloraAddresslist",
       {"description", "peloraAccount", "peloraBase", "peloraFilter", "peloraHidden"}},
      {nullptr,
       "peloraDynamicDistlist",
       {"description", "mail", "otherMailbox", "peloraAccount", "peloraBase", "peloraFilter",
        "peloraHidden"}},
  };
  return kAllowed;
}

TEST_F(PeloraSchema, AllowsOnEachClassWhatItsTabsEdit) {
  std::set<std::string> used;
  for (const Allowed& allowed : AllowedAttributes()) {
    const Change carrier = Named(allowed.carrier);
    Values attributes = carrier.All("mayContain");
    std::ranges::sort(attributes);
    EXPECT_EQ(attributes, allowed.attributes) << allowed.carrier;
    used.insert(attributes.begin(), attributes.end());
    EXPECT_EQ(carrier.One("objectClassCategory"), allowed.object_class == nullptr ? "1" : "3");
    EXPECT_EQ(carrier.One("subClassOf"), "top");
    if (allowed.object_class == nullptr) continue;
    const std::string dn = "CN=" + std::string(allowed.object_class) + ",@SCHEMA@";
    const auto link = std::ranges::find(changes_, dn, &Change::dn);
    ASSERT_NE(link, changes_.end()) << dn;
    EXPECT_EQ(link->One("add"), "auxiliaryClass");
    EXPECT_EQ(link->One("auxiliaryClass"), allowed.carrier);
  }
  EXPECT_EQ(Of("classSchema").size(), AllowedAttributes().size());
  for (const Change& attribute : Of("attributeSchema")) {
    EXPECT_TRUE(used.contains(attribute.One("lDAPDisplayName"))) << attribute.dn;
  }
}

TEST_F(PeloraSchema, OwnClassesCanBeMadeWhereAdministratorsWouldMakeThem) {
  for (const char* const name : {"peloraAddresslist", "peloraDynamicDistlist"}) {
    const Change own = Named(name);
    EXPECT_EQ(own.All("possSuperiors"), (Values{"organizationalUnit", "container", "domainDNS"}));
    EXPECT_EQ(own.One("rDNAttID"), "cn");
    EXPECT_EQ(own.One("mustContain"), "cn");
    EXPECT_EQ(own.One("defaultHidingValue"), "FALSE");
  }
}

TEST_F(PeloraSchema, BuildsEachPartOnWhatTheServerHasTakenIn) {
  std::string order;
  for (const Change& change : changes_) {
    const std::string kind = change.IsOf("attributeSchema") ? "attributes "
                             : change.IsOf("classSchema")   ? "classes "
                             : change.dn.empty() && change.One("schemaUpdateNow") == "1" ? "update "
                                                                                         : "links ";
    if (!order.ends_with(kind)) order += kind;
  }
  EXPECT_EQ(order, "attributes update classes update links update ");
}

}  // namespace
}  // namespace pelora
