// SPDX-License-Identifier: Apache-2.0
#include "server/class_table.h"

#include <algorithm>
#include <array>

#include "features/prop_page_features.h"
#include "pages/objects/prop_page_addresslist.h"
#include "pages/objects/prop_page_company.h"
#include "pages/objects/prop_page_company_quota.h"
#include "pages/objects/prop_page_company_rights.h"
#include "pages/objects/prop_page_dynamic_distlist.h"
#include "pages/objects/prop_page_general.h"
#include "pages/objects/prop_page_recipient.h"
#include "pages/objects/prop_page_server.h"
#include "pages/objects/prop_page_user.h"
#include "wizards/wizard_component.h"
#include "wizards/wizard_ext_user.h"
#include "wizards/wizard_pages.h"

namespace pelora {
namespace {

template <class Page>
IUnknown* Create(const Platform& platform) {
  return static_cast<IShellExtInit*>(new Page(platform));
}

template <class Wizard>
IUnknown* CreateWizard(const Platform& platform) {
  return static_cast<IDsAdminNewObjExt*>(new CWizardComponent<Wizard>(platform));
}

// Program identifiers repeat on purpose: they came with the first registration of each class and
// installed systems know them. The class identifier alone tells classes apart.
constexpr std::array<ComponentClass, 21> kClasses = {{
    {"CPropPageAddresslist",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageDistlist",
     {0x87641283, 0xEF54, 0x4AA6, {0x85, 0x38, 0x95, 0xE9, 0x4E, 0x1B, 0x52, 0xAB}},
     &Create<CPropPageAddresslist>},
    {"CPropPageAddresslistGeneral",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageDistlist",
     {0xB5DF1403, 0x8A56, 0x48C8, {0xBA, 0xE7, 0xA4, 0xDF, 0x8D, 0xDC, 0x6D, 0x31}},
     &Create<CPropPageAddresslistGeneral>},
    {"CPropPageCompany",
     "PeloraProp.PropPageCompany.1",
     "PeloraProp.PropPageCompany",
     {0xB948A8A2, 0x1A3F, 0x4B06, {0x8C, 0x18, 0x6A, 0xF1, 0x3E, 0xBB, 0xB6, 0x5A}},
     &Create<CPropPageCompany>},
    {"CPropPageCompanyQuota",
     "PeloraProp.PropPageCompanyQuota.1",
     "PeloraProp.PropPageCompanyQuota",
     {0x76EC110C, 0xE197, 0x4708, {0x8C, 0xAF, 0x21, 0x7D, 0x68, 0x48, 0x54, 0xDC}},
     &Create<CPropPageCompanyQuota>},
    {"CPropPageCompanyRights",
     "PeloraProp.PropPageCompanyRights.1",
     "PeloraProp.PropPageCompanyRights",
     {0xD22A3C8F, 0x3E04, 0x4290, {0x9F, 0x20, 0x4F, 0xD8, 0xB7, 0x74, 0x3B, 0x48}},
     &Create<CPropPageCompanyRights>},
    {"CPropPageContact",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageContact",
     {0x05AF43B9, 0xA906, 0x45D0, {0x82, 0x40, 0x06, 0x5E, 0x99, 0x9C, 0x31, 0x8E}},
     &Create<CPropPageContact>},
    {"CPropPageDistlist",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageDistlist",
     {0x93868DB2, 0xF4E1, 0x40C9, {0x87, 0xE7, 0xD7, 0xE3, 0x9A, 0xC3, 0xB7, 0xD6}},
     &Create<CPropPageDistlist>},
    {"CPropPageDynamicDistlist",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageDistlist",
     {0x0F2263E9, 0x82E7, 0x481B, {0xAB, 0x0E, 0xA8, 0xEE, 0x20, 0x9B, 0x17, 0x3B}},
     &Create<CPropPageDynamicDistlist>},
    {"CPropPageDynamicDistlistGeneral",
     "PeloraProp.PropPageDistlist.1",
     "PeloraProp.PropPageDistlist",
     {0xE2CE6CEC, 0xBB89, 0x48C9, {0x9C, 0x5B, 0x25, 0x2E, 0x1A, 0x28, 0x55, 0x35}},
     &Create<CPropPageDynamicDistlistGeneral>},
    {"CPropPageFeatures",
     "PeloraProp.PropPageFeatures.1",
     "PeloraProp.PropPageFeatures",
     {0xB66B5E34, 0xBE8D, 0x4972, {0x9C, 0xB1, 0xF8, 0x17, 0xB9, 0x21, 0x1B, 0x92}},
     &Create<CPropPageFeatures>},
    {"CPropPageServer",
     "PeloraProp.PropPageServer.1",
     "PeloraProp.PropPageServer",
     {0xD9C5938A, 0x4CE0, 0x478B, {0xAE, 0xB3, 0xD3, 0x20, 0x60, 0x56, 0xAF, 0xF5}},
     &Create<CPropPageServer>},
    {"CPropPageUser",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0x2D0E605C, 0xE382, 0x47AC, {0x8B, 0xC6, 0x90, 0x8A, 0xD3, 0x24, 0x0D, 0x95}},
     &Create<CPropPageUser>},
    {"CWizardExtAddresslist",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0x41324062, 0x11E2, 0x421D, {0x9E, 0x64, 0x46, 0xE8, 0x1C, 0x7B, 0x65, 0xE2}},
     &CreateWizard<CWizardExtAddresslist>,
     ComponentKind::kWizardPage},
    {"CWizardAddresslist",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xE3A0FDA0, 0xD416, 0x40D6, {0x8C, 0x37, 0x70, 0x56, 0x7D, 0x5F, 0xDA, 0x20}},
     &CreateWizard<CWizardAddresslist>,
     ComponentKind::kWizardPage},
    {"CWizardExtDynamicDistlist",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0x84B0CF55, 0x86CF, 0x4923, {0x84, 0x20, 0xE6, 0xC6, 0x8B, 0x08, 0xB1, 0x44}},
     &CreateWizard<CWizardExtDynamicDistlist>,
     ComponentKind::kWizardPage},
    {"CWizardDynamicDistlist",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xEC14F8B3, 0x7DA6, 0x432B, {0xB2, 0xE5, 0xE8, 0x79, 0x8E, 0xAD, 0x75, 0xE9}},
     &CreateWizard<CWizardDynamicDistlist>,
     ComponentKind::kWizardPage},
    {"CWizardExtCompany",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xF3AC54F4, 0xFE03, 0x4A8B, {0xA5, 0x53, 0xB5, 0x7E, 0xF7, 0x92, 0xC7, 0xFB}},
     &CreateWizard<CWizardExtCompany>,
     ComponentKind::kWizardPage},
    {"CWizardExtContact",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0x3E1FBBD8, 0x3D2C, 0x4261, {0xB1, 0xDF, 0x0A, 0x56, 0xD9, 0x8C, 0x59, 0x40}},
     &CreateWizard<CWizardExtContact>,
     ComponentKind::kWizardPage},
    {"CWizardExtDistlist",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xD6AA6D76, 0x3E7F, 0x45B3, {0x92, 0x9C, 0xBA, 0x4E, 0xAF, 0x0F, 0xAC, 0xB1}},
     &CreateWizard<CWizardExtDistlist>,
     ComponentKind::kWizardPage},
    {"CWizardExtServer",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xAEE63A9A, 0x74C4, 0x4AF1, {0xB1, 0x1A, 0x84, 0x6D, 0x57, 0x3F, 0x59, 0x10}},
     &CreateWizard<CWizardExtServer>,
     ComponentKind::kWizardPage},
    {"CWizardExtUser",
     "PeloraProp.PropPage.1",
     "PeloraProp.PropPage",
     {0xD05E3BBF, 0x5B96, 0x4C0C, {0x99, 0x1E, 0x96, 0xA7, 0x66, 0x6D, 0x10, 0xC2}},
     &CreateWizard<CWizardExtUser>,
     ComponentKind::kWizardPage},
}};

}  // namespace

std::span<const ComponentClass> ClassTable() { return kClasses; }

const ComponentClass* FindClass(const Guid& class_id) {
  const auto found = std::ranges::find(kClasses, class_id, &ComponentClass::class_id);
  return found == kClasses.end() ? nullptr : &*found;
}

const ComponentClass* FindClass(std::string_view name) {
  const auto found = std::ranges::find(kClasses, name, &ComponentClass::name);
  return found == kClasses.end() ? nullptr : &*found;
}

}  // namespace pelora
