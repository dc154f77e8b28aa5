// SPDX-License-Identifier: Apache-2.0
#ifndef PELORA_TESTS_CONTRACT_CONTRACT_IDS_H_
#define PELORA_TESTS_CONTRACT_CONTRACT_IDS_H_

/* Numbers of the dialog templates and controls of contract_dialogs.rc, which the dialog contract is
 * run on. The resource compiler reads this file too, so there is nothing in it but definitions. */

/* Of a control that nobody asks for. */
#ifndef IDC_STATIC
#define IDC_STATIC 0xFFFFFFFF
#endif

#define IDD_CONTRACT_PAGE 900
#define IDD_CONTRACT_SECOND_PAGE 901
#define IDD_CONTRACT_MODAL 902
/* No template has this number. */
#define IDD_CONTRACT_NONE 999

#define IDC_CONTRACT_GROUP 1001
#define IDC_CONTRACT_LABEL 1002
#define IDC_CONTRACT_EDIT 1003
#define IDC_CONTRACT_NUMBER_EDIT 1004
#define IDC_CONTRACT_READONLY_EDIT 1005
#define IDC_CONTRACT_DISABLED_EDIT 1006
#define IDC_CONTRACT_HIDDEN_EDIT 1007
#define IDC_CONTRACT_CHECK 1010
#define IDC_CONTRACT_THREE_STATE 1011
#define IDC_CONTRACT_DISABLED_CHECK 1012
#define IDC_CONTRACT_BUTTON 1020
#define IDC_CONTRACT_DISABLED_BUTTON 1021
#define IDC_CONTRACT_HIDDEN_BUTTON 1022
#define IDC_CONTRACT_SORTED_LIST 1030
#define IDC_CONTRACT_PLAIN_LIST 1031
#define IDC_CONTRACT_DISABLED_LIST 1032
#define IDC_CONTRACT_COMBO 1040
#define IDC_CONTRACT_DISABLED_COMBO 1041
#define IDC_CONTRACT_LIST_VIEW 1050
/* No control has this number. */
#define IDC_CONTRACT_NONE 1999

#endif
