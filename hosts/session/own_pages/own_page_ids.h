// SPDX-License-Identifier: Apache-2.0
#ifndef PELORA_SESSION_OWN_PAGES_OWN_PAGE_IDS_H_
#define PELORA_SESSION_OWN_PAGES_OWN_PAGE_IDS_H_

/* Numbers of the dialog templates and controls of own_pages.rc, beyond those of the module. The
 * resource compiler reads this file too, so there is nothing in it but definitions. */

/* Of a control that nobody asks for. */
#ifndef IDC_STATIC
#define IDC_STATIC 0xFFFFFFFF
#endif

#define IDD_OWN_PERSON 401
#define IDD_OWN_PERSONS 402
#define IDD_OWN_GROUP 403
#define IDD_OWN_ACCOUNT 404
#define IDD_OWN_MEMBERS 405
#define IDD_OWN_MEMBER_OF 406

/* What somebody is called, and where he is found. */
#define IDC_OWN_FIRST_NAME 2001
#define IDC_OWN_INITIALS 2002
#define IDC_OWN_LAST_NAME 2003
#define IDC_OWN_DISPLAY_NAME 2004
#define IDC_OWN_DESCRIPTION 2005
#define IDC_OWN_OFFICE 2006
#define IDC_OWN_TELEPHONE 2007
#define IDC_OWN_NOTES 2008

/* Who looks after a group. */
#define IDC_OWN_MANAGER 2010
#define IDC_OWN_MANAGER_SELECT 2011
#define IDC_OWN_MANAGER_CLEAR 2012

/* Whether and how somebody can log on. */
#define IDC_OWN_ENABLED 2020
#define IDC_OWN_LOCKED 2021
#define IDC_OWN_MUST_CHANGE 2022
#define IDC_OWN_NEVER_EXPIRES 2023
#define IDC_OWN_LAST_DAY 2024
#define IDC_OWN_RESET_PASSWORD 2025
#define IDC_OWN_RESET_NOTE 2026

/* Who is in a group, and which groups somebody is in. */
#define IDC_OWN_MEMBERS_LABEL 2030
#define IDC_OWN_MEMBERS 2031
#define IDC_OWN_MEMBERS_ADD 2032
#define IDC_OWN_MEMBERS_REMOVE 2033
#define IDC_OWN_MEMBERS_PASTED 2034
#define IDC_OWN_MEMBERS_ADD_PASTED 2035
#define IDC_OWN_MEMBERS_NOTE 2036

#endif
