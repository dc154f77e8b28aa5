// SPDX-License-Identifier: Apache-2.0
#ifndef PELORA_RESOURCES_RESOURCE_H_
#define PELORA_RESOURCES_RESOURCE_H_

/* Numbers of the module's resources and of the controls in its dialog templates. The resource
 * compiler reads this file too, so there is nothing in it but definitions. A control that means the
 * same on several templates has the same number on each; the same number may mean something else
 * on another template. */

/* Of a control that nobody asks for: a group box, a label, a unit. */
#ifndef IDC_STATIC
#define IDC_STATIC 0xFFFFFFFF
#endif

/* Dialog templates. */
#define IDD_PROPPAGE_COMPANY 101
#define IDD_PROPPAGE_USER 102
#define IDD_PROPPAGE_SERVER 106
#define IDD_EMAIL_ADDRESS 107
#define IDD_PROPPAGE_COMPANY_QUOTA 204
#define IDD_PROPPAGE_DISTLIST 216
#define IDD_PROPPAGE_CONTACT 217
#define IDD_PROPPAGE_DYNAMIC_DISTLIST 220
#define IDD_PROPPAGE_ADDRESSLIST 221
#define IDD_PROPPAGE_ADDRESSLIST_GENERAL 224
#define IDD_PROPPAGE_DYNAMIC_DISTLIST_GENERAL 225
#define IDD_PROPPAGE_COMPANY_RIGHTS 226
#define IDD_WIZARD_EXT_USER 205
#define IDD_WIZARD_EXT_COMPANY 212
#define IDD_WIZARD_EXT_SERVER 213
#define IDD_WIZARD_EXT_DISTLIST 214
#define IDD_WIZARD_EXT_CONTACT 215
#define IDD_WIZARD_EXT_DYNAMIC_DISTLIST 218
#define IDD_WIZARD_EXT_ADDRESSLIST 219
#define IDD_WIZARD_ADDRESSLIST 222
#define IDD_WIZARD_DYNAMIC_DISTLIST 223
#define IDD_PROPPAGE_FEATURES 227
#define IDD_ARCHIVE_SERVERS 229

/* Strings of the string table. */
#define IDS_PROPPAGE_FEATURES 113

/* The picture of an object of the groupware's own classes. */
#define IDI_OBJECT 230

/* The account and visibility boxes. */
#define IDC_PELORA_ACCOUNT 214
#define IDC_PELORA_HIDDEN 243

/* An object's own quota. */
#define IDC_QUOTA_OVERRIDE 202
#define IDC_QUOTA_WARN 203
#define IDC_QUOTA_SOFT 204
#define IDC_QUOTA_HARD 205
#define IDC_QUOTA_WARN_LABEL 277
#define IDC_QUOTA_SOFT_LABEL 278
#define IDC_QUOTA_HARD_LABEL 279

/* Who is warned when an object's own quota is exceeded. */
#define IDC_QUOTA_RECIPIENTS 216
#define IDC_QUOTA_RECIPIENTS_ADD 224
#define IDC_QUOTA_RECIPIENTS_DELETE 225

/* The default quota that a company gives its users, and who is warned when it is exceeded. */
#define IDC_USER_QUOTA_OVERRIDE 218
#define IDC_USER_QUOTA_WARN 220
#define IDC_USER_QUOTA_SOFT 222
#define IDC_USER_QUOTA_HARD 223
#define IDC_USER_QUOTA_RECIPIENTS 234
#define IDC_USER_QUOTA_RECIPIENTS_ADD 232
#define IDC_USER_QUOTA_RECIPIENTS_DELETE 233
#define IDC_QUOTA_RECIPIENTS_GROUP 251
#define IDC_USER_QUOTA_RECIPIENTS_GROUP 252

/* The e-mail addresses. */
#define IDC_EMAIL_LIST 206
#define IDC_EMAIL_ADD 207
#define IDC_EMAIL_DELETE 208
#define IDC_EMAIL_MODIFY 209
#define IDC_EMAIL_DEFAULT 213
#define IDC_EMAIL_GROUP 247

/* The dialog in which one address is typed. */
#define IDC_EMAIL_ADDRESS 203

/* Those who may send in the object's name. */
#define IDC_SENDAS_LIST 237
#define IDC_SENDAS_ADD 238
#define IDC_SENDAS_DELETE 239
#define IDC_SENDAS_GROUP 248

/* The account type, the resource capacity and the home server. */
#define IDC_ACCOUNT_TYPE 284
#define IDC_CAPACITY_LABEL 297
#define IDC_CAPACITY 298
#define IDC_SERVER_GROUP 266
#define IDC_SERVER_LABEL 266
#define IDC_SERVER 242
#define IDC_SERVER_SELECT 271

/* The head of a wizard page, its check box, the name of a list and the address of what is made. */
#define IDC_CONTAINER_NAME 291
#define IDC_CREATE_PELORA 254
#define IDC_OBJECT_NAME 292
#define IDC_NEW_ADDRESS_LABEL 265
#define IDC_NEW_ADDRESS 268

/* An object's common name and its description; its name is that above. */
#define IDC_NAME_CN 294
#define IDC_DESCRIPTION 295

/* Where and for what a list searches its members. */
#define IDC_SEARCH_BASE_LABEL 288
#define IDC_SEARCH_BASE 258
#define IDC_SEARCH_BASE_SELECT 293
#define IDC_SEARCH_QUERY_LABEL 289
#define IDC_SEARCH_QUERY 287

/* A company's system administrator. */
#define IDC_SYSTEM_ADMIN_LABEL 270
#define IDC_SYSTEM_ADMIN 272
#define IDC_SYSTEM_ADMIN_SELECT 227

/* The companies that may view a company, and those who may administer it. */
#define IDC_VIEW_GROUP 249
#define IDC_VIEW_LIST 219
#define IDC_VIEW_ADD 231
#define IDC_VIEW_DELETE 228
#define IDC_ADMIN_GROUP 250
#define IDC_ADMIN_LIST 221
#define IDC_ADMIN_ADD 226
#define IDC_ADMIN_DELETE 230

/* How a server is reached. */
#define IDC_HOST_ADDRESS_LABEL 280
#define IDC_HOST_ADDRESS 245
#define IDC_HTTP_PORT_LABEL 274
#define IDC_HTTP_PORT 246
#define IDC_SSL_PORT_LABEL 275
#define IDC_SSL_PORT 247
#define IDC_FILE_PATH_LABEL 276
#define IDC_FILE_PATH 249
#define IDC_CONTAINS_PUBLIC 243

/* The list of features and what is done with them. */
#define IDC_FEATURE_ENABLE 308
#define IDC_FEATURE_DISABLE 309
#define IDC_FEATURE_LIST 311
#define IDC_FEATURE_PROPERTIES 312

/* The dialog in which archive servers are edited. */
#define IDC_ARCHIVER_GROUP 1043
#define IDC_ARCHIVER_SEARCH 105
#define IDC_ARCHIVER_NAME 1002
#define IDC_ARCHIVER_ADD 1008
#define IDC_ARCHIVER_LIST 1007
#define IDC_ARCHIVER_REMOVE 1009

#endif
