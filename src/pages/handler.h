// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pelora {

/// A handler: an object, which has to outlive it, and one of its operations.
template <class Object, class Base, class Result, class... Arguments>
auto Handler(Object* object, Result (Base::*operation)(Arguments...)) {
  return [object, operation](Arguments... arguments) { return (object->*operation)(arguments...); };
}

template <class Object, class Base, class Result, class... Arguments>
auto Handler(const Object* object, Result (Base::*operation)(Arguments...) const) {
  return [object, operation](Arguments... arguments) { return (object->*operation)(arguments...); };
}

}  // namespace pelora
