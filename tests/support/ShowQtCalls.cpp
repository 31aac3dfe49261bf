// Qt is not built with the thread sanitizer, which so does not see that a call handed to another thread comes after
// what was done before it was handed over. In builds with it, the calls of our own code pass here and tell.
#include <QMetaObject>
#include <QObject>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

class CShownCall : public QtPrivate::QSlotObjectBase {
public:
    explicit CShownCall(QSlotObjectBase* call) : QSlotObjectBase(&CShownCall::Do), m_call(call) {}

private:
    static void Do(int what, QSlotObjectBase* base, QObject* receiver, void** arguments, bool* /*equal*/)
    {
        __tsan_acquire(base);
        auto* self = static_cast<CShownCall*>(base);
        if (what == Call)
            self->m_call->call(receiver, arguments);
        // The thread that handed it over may be the one that deletes it.
        __tsan_release(base);
        if (what != Destroy)
            return;
        self->m_call->destroyIfLastRef();
        delete self;
    }

    QSlotObjectBase* m_call;
};

}  // namespace

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot, Qt::ConnectionType type,
                                   void* answer)
{
    using Function = bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
    static const auto qt = reinterpret_cast<Function>(
        dlsym(RTLD_NEXT,
              "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv"));
    auto* shown = new CShownCall(slot);
    __tsan_release(shown);
    return qt(object, shown, type, answer);
}
