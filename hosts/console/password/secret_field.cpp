// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/password/secret_field.h"

#include <string.h>

#include <QLineEdit>
#include <string>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/wipe.h"

namespace pelora::console {

session::Secret SecretOf(const QLineEdit& field) {
  std::string text = ToUtf8(field.text());
  session::Secret taken(text);
  ldap::Wipe(text);
  return taken;
}

void WipeField(const QLineEdit& field) {
  // The text shares the field's own memory, which is written over before it is given back.
  const QString text = field.text();
  explicit_bzero(const_cast<QChar*>(text.constData()),
                 static_cast<std::size_t>(text.size()) * sizeof(QChar));
}

}  // namespace pelora::console
