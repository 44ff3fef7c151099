#include "QueuedCalls.h"

#ifdef __SANITIZE_THREAD__

#include <QtCore/qnamespace.h>
#include <QtCore/qobjectdefs.h>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

char queue; // stands for the mutex of the queued calls

template <typename Function> Function next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool aboutToReceive(void**)
{
    __tsan_acquire(&queue);
    return false;
}

} // namespace

void showQueuedCalls()
{
    QInternal::registerCallback(QInternal::EventNotifyCallback, aboutToReceive);
}

// Both stand before those of the toolkit's library and call them.
bool QMetaObject::invokeMethodImpl(QObject* object,
                                   QtPrivate::QSlotObjectBase* slot,
                                   Qt::ConnectionType type,
                                   void* result)
{
    using Invoke = bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
    static const auto invoke = next<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    __tsan_release(&queue);
    return invoke(object, slot, type, result);
}

void QMetaObject::activate(QObject* sender, const QMetaObject* type, int signal, void** arguments)
{
    using Activate = void (*)(QObject*, const QMetaObject*, int, void**);
    static const auto activate = next<Activate>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_release(&queue);
    activate(sender, type, signal, arguments);
}

#else

void showQueuedCalls() {}

#endif
