// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pelora::deploy {

/// The LDIF that enters the module's component classes into the display specifiers of one language:
/// change records, to be applied by pelora-deploy, which puts in
///   @LANGUAGE@       the language's folder, such as 409
///   @CONFIGURATION@  the distinguished name of the directory's configuration
///   @NEXT@           the order number: the highest that stands in the attribute, and one more for
///                    each value
/// Directory classes that come with the directory get values added to their specifiers; the
/// groupware's own classes get specifiers.
[[nodiscard]] std::string DisplaySpecifiersLdif();

}  // namespace pelora::deploy
