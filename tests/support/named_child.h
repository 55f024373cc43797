#pragma once

#include <QStringList>
#include <QWidget>

/// The child of `page` with that object name and of that kind. Where there is none the test program
/// ends with a list of the names that are there.
template <class Child = QWidget>
Child& named(const QWidget& page, const QString& name)
{
    auto* child = page.findChild<Child*>(name);
    if (child == nullptr) {
        QStringList names;
        for (const QObject* other : page.findChildren<QObject*>()) {
            names.append(QLatin1String(other->metaObject()->className()) + QLatin1Char(' ') +
                         other->objectName());
        }
        names.removeDuplicates();
        qFatal("no %s \"%s\" among: %s", Child::staticMetaObject.className(), qPrintable(name),
               qPrintable(names.join(QStringLiteral(", "))));
    }
    return *child;
}
