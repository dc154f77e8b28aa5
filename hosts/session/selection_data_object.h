// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "directory/ds_selection_list.h"
#include "hosts/session/directory_browser.h"
#include "platform/data_object.h"

namespace pelora::session {

/// The selection as a console hands it to extensions: one reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeSelectionDataObject(std::span<const DirectoryObject> selection);

/// Objects as an object picker hands them over: one reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeChosenDataObject(std::span<const DirectoryObject> objects);

}  // namespace pelora::session
