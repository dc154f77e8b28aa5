// SPDX-License-Identifier: Apache-2.0
#include "tests/support/module_dialogs.h"

#include <array>

namespace pelora::testing {
namespace {

constexpr std::array kDialogs = {
    ModuleDialog{101, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Company Info"
214 check box "Pelora Company"
243 check box "Hide from addressbook"
270 label "Sysadmin"
272 edit, read-only
227 button "&Select"
266 label "Home server"
242 edit, read-only
271 button "&Select"
)"},
    ModuleDialog{102, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Quota"
202 check box "Use user &quota"
277 label "Warning at"
203 edit
label "Mb"
278 label "Soft limit"
204 edit
label "Mb"
279 label "Hard limit"
205 edit
label "Mb"
group box "Other"
214 check box "Pelora Account"
284 drop-down list
243 check box "Hide from addressbook"
297 label "Capacity"
298 edit, digits only
266 group box "Home Server"
242 edit, read-only
271 button, first of a group "&Select"
247 group box "E-mail addresses"
206 list box, notifies, sorted, tab stops
207 button, first of a group "&Add"
209 button, disabled "&Modify"
208 button, disabled "&Delete"
213 button, disabled "Set as default"
248 group box "Send as"
237 list box, notifies, sorted
238 button, first of a group "Add"
239 button, disabled "Delete"
)"},
    ModuleDialog{106, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Server Info"
214 check box "Enable Pelora Server"
280 label "Address"
245 edit
274 label "HTTP port"
246 edit, digits only
275 label "SSL port"
247 edit, digits only
276 label "File path"
249 edit
243 check box "Contains public store"
)"},
    ModuleDialog{107, R"(
modal "EmailAddress", 187 x 63, 8 "MS Shell Dlg"
label "Emailaddress:"
203 edit
1 default button "OK"
2 button "Cancel"
)"},
    ModuleDialog{204, R"(
page "Pelora Quota", 271 x 228, 8 "MS Shell Dlg"
group box "Company quota"
202 check box "Use company &quota"
label "Warning at"
203 edit
label "Mb"
label "Soft limit"
label "Hard Limit"
group box "Userdefault quota"
218 check box "Use user &quota"
label "Warning at"
220 edit
label "Mb"
label "Soft limit"
222 edit
label "Mb"
label "Hard Limit"
223 edit
label "Mb"
251 group box "Quota warning recipients"
216 list box, notifies, sorted
224 button, first of a group "&Add"
225 button "&Delete"
252 group box "Quota user warning recipients"
234 list box, notifies, sorted
232 button, first of a group "&Add"
233 button "&Delete"
)"},
    ModuleDialog{205, R"(
page "New object: User", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Account"
284 drop-down list, disabled
243 check box, disabled "Hide from addressbook"
297 label, disabled "Capacity"
298 edit, disabled, digits only
265 label, disabled "E-mail Address"
268 edit, disabled
266 label, disabled "Home Server"
242 edit, disabled, read-only
271 button, disabled "Select"
)"},
    ModuleDialog{212, R"(
page "New object: Organizational Unit", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Company"
243 check box, disabled "Hide from addressbook"
270 label, disabled "System Administrator"
272 edit, disabled, read-only
227 button, disabled "Select"
266 label, disabled "Home Server"
242 edit, disabled, read-only
271 button, disabled "Select"
)"},
    ModuleDialog{213, R"(
page "New object: Computer", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Server"
280 label, disabled "Address"
245 edit, disabled
274 label, disabled "HTTP port"
246 edit, disabled, digits only
275 label, disabled "SSL port"
247 edit, disabled, digits only
276 label, disabled "File path"
249 edit, disabled
243 check box, disabled "Contains public store"
)"},
    ModuleDialog{214, R"(
page "New object: distlist", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora group"
243 check box, disabled "Hide from addressbook"
265 label, disabled "E-mail Address"
268 edit, disabled
)"},
    ModuleDialog{215, R"(
page "New object: contact", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Contact"
243 check box, disabled "Hide from addressbook"
265 label, disabled "E-mail Address"
268 edit, disabled
)"},
    ModuleDialog{216, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Pelora group info"
214 check box "Enable Pelora group"
243 check box "Hide from addressbook"
247 group box "E-mail addresses"
206 list box, notifies, sorted, tab stops
207 button, first of a group "&Add"
209 button, disabled "&Modify"
208 button, disabled "&Delete"
213 button, disabled "Set as default"
248 group box "Send as"
237 list box, notifies, sorted
238 button, first of a group "Add"
239 button, disabled "Delete"
)"},
    ModuleDialog{217, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Contact Info"
214 check box "Pelora Contact"
243 check box "Hide from addressbook"
247 group box "E-mail addresses"
206 list box, notifies, sorted, tab stops
207 button, first of a group "&Add"
209 button, disabled "&Modify"
208 button, disabled "&Delete"
213 button, disabled "Set as default"
248 group box "Send as"
237 list box, notifies, sorted
238 button, first of a group "Add"
239 button, disabled "Delete"
)"},
    ModuleDialog{218, R"(
page "New object: dynamic distlist", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Dynamic Distribution list"
243 check box, disabled "Hide from addressbook"
265 label, disabled "E-mail Address"
268 edit, disabled
288 label, disabled "Search base"
258 edit, disabled
293 button, disabled "Select"
289 label, disabled "Search query"
287 edit, disabled
)"},
    ModuleDialog{219, R"(
page "New object: peloraAddresslist", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
254 check box "Create Pelora Addresslist"
243 check box, disabled "Hide from addressbook"
288 label, disabled "Search base"
258 edit, disabled
293 button, disabled "Select"
289 label, disabled "Search query"
287 edit, disabled
)"},
    ModuleDialog{220, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Distribution list Info"
214 check box "Pelora Dynamic Distribution list"
243 check box "Hide from addressbook"
288 label "Search base"
258 edit, disabled
293 button "Select"
289 label "Search query"
287 edit
247 group box "E-mail addresses"
206 list box, notifies, sorted, tab stops
207 button, first of a group "&Add"
209 button, disabled "&Modify"
208 button, disabled "&Delete"
213 button, disabled "Set as default"
)"},
    ModuleDialog{221, R"(
page "Pelora", 271 x 228, 8 "MS Shell Dlg"
group box "Distribution list Info"
214 check box "Pelora Addresslist"
243 check box "Hide from addressbook"
288 label "Search base"
258 edit, disabled
293 button "Select"
289 label "Search query"
287 edit
)"},
    ModuleDialog{222, R"(
page "New object: peloraAddresslist", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
label "Pelora Addresslist name:"
292 edit
)"},
    ModuleDialog{223, R"(
page "New object: dynamic distlist", 262 x 157, 8 "MS Shell Dlg"
icon 230
label "Create in:"
291 label, no mnemonic "Unknown Path"
line
label "Pelora Dynamic Distributionlist name:"
292 edit
)"},
    ModuleDialog{224, R"(
page "General", 271 x 228, 8 "MS Shell Dlg"
icon 230
294 label, no mnemonic, ends in dots "Unknown CN"
line
label "Name:"
292 edit, disabled
label "Description:"
295 edit
)"},
    ModuleDialog{225, R"(
page "General", 271 x 228, 8 "MS Shell Dlg"
icon 230
294 label, no mnemonic, ends in dots "Unknown CN"
line
label "Name:"
292 edit, disabled
label "Description:"
295 edit
)"},
    ModuleDialog{226, R"(
page "Pelora Rights", 271 x 228, 8 "MS Shell Dlg"
249 group box "Remote view"
219 list box, notifies, sorted
231 button, first of a group "&Add"
228 button, disabled "&Delete"
250 group box "Remote administrators"
221 list box, notifies, sorted
226 button, first of a group "&Add"
230 button, disabled "&Delete"
)"},
    ModuleDialog{227, R"(
page "Pelora Features", 271 x 228, 8 "MS Shell Dlg"
311 list view, selection always shown, heads do not sort
312 default button, disabled "Properties"
308 button, disabled "Enable"
309 button, disabled "Disable"
)"},
    ModuleDialog{229, R"(
modal "Archive Servers", 220 x 154, 8 "MS Shell Dlg"
1043 group box "Archive Servers"
105 button "Search"
1002 edit
1008 button, disabled "Add"
1007 list box, notifies
1009 button, disabled "Remove"
1 default button "OK"
2 button "Cancel"
)"},
};

}  // namespace

std::span<const ModuleDialog> ModuleDialogs() { return kDialogs; }

}  // namespace pelora::testing
