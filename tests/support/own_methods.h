#pragma once

#include <QMetaMethod>
#include <QStringList>

/// The signatures of a class's own slots or signals, in the order of their declaration.
inline QStringList ownMethods(const QMetaObject& type, QMetaMethod::MethodType kind)
{
    QStringList signatures;
    for (int index = type.methodOffset(); index < type.methodCount(); ++index) {
        if (type.method(index).methodType() == kind) {
            signatures << QString::fromLatin1(type.method(index).methodSignature());
        }
    }
    return signatures;
}
