// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_create.h"
#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

// The wizard pages that are lists of fields and nothing else.

// Tables of the pages.
extern const WizardPageTraits kNewContactPage;
extern const WizardPageTraits kNewDistlistPage;
extern const WizardPageTraits kNewCompanyPage;
extern const WizardPageTraits kNewServerPage;
extern const WizardPageTraits kNewAddresslistPage;
extern const WizardPageTraits kNewDynamicDistlistPage;
extern const WizardPageTraits kAddresslistNamePage;
extern const WizardPageTraits kDynamicDistlistNamePage;

/// Of contacts: visibility and e-mail address, which a groupware contact needs.
using CWizardExtContact = CWizardFieldPage<CWizardExtension, kNewContactPage>;
/// Of groups, which the groupware takes for distribution lists: visibility and e-mail address.
/// Unlike a contact a group needs no address.
using CWizardExtDistlist = CWizardFieldPage<CWizardExtension, kNewDistlistPage>;
/// Of organisational units, which the groupware takes for companies: visibility, system
/// administrator and home server.
using CWizardExtCompany = CWizardFieldPage<CWizardExtension, kNewCompanyPage>;
/// Of computers: how a groupware server is reached. Ports and socket file have defaults; an address
/// and one port at least are needed.
using CWizardExtServer = CWizardFieldPage<CWizardExtension, kNewServerPage>;
/// The second page for address lists: visibility, search base and search query. The base is chosen,
/// never typed; only the query is needed.
using CWizardExtAddresslist = CWizardFieldPage<CWizardExtension, kNewAddresslistPage>;
/// The second page for dynamic distribution lists, which have an e-mail address besides.
using CWizardExtDynamicDistlist = CWizardFieldPage<CWizardExtension, kNewDynamicDistlistPage>;

/// The first pages for address lists and for dynamic distribution lists: the name.
using CWizardAddresslist = CWizardFieldPage<CWizardCreate, kAddresslistNamePage>;
using CWizardDynamicDistlist = CWizardFieldPage<CWizardCreate, kDynamicDistlistNamePage>;

}  // namespace pelora
