// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>

#if defined(__SANITIZE_THREAD__)
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>
#endif

// For the one source of a program that has its main function.
//
// The toolkit is not built for the thread sanitizer, which does not see that a call that is posted
// to a thread is posted before it is made there. Here it is told.

#if defined(__SANITIZE_THREAD__)

// Stands before the toolkit's own, which it calls.
bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot,
                                   Qt::ConnectionType type, void* result) {
  using Original = bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
  static const auto original = reinterpret_cast<Original>(
      dlsym(RTLD_NEXT,
            "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14"
            "ConnectionTypeEPv"));
  __tsan_release(object);
  return original(object, slot, type, result);
}

#endif

namespace pelora::contract {

#if defined(__SANITIZE_THREAD__)

class OrderedApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    __tsan_acquire(receiver);
    return QApplication::notify(receiver, event);
  }
};

#else

using OrderedApplication = QApplication;

#endif

}  // namespace pelora::contract
