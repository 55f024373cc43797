#include "platform/executable_filter.h"

#include <QCoreApplication>

namespace platform {

QString executableFilter(const QString& executables)
{
    return executables + QStringLiteral(";;") +
           QCoreApplication::translate("Filesystem", "All files (*)");
}

} // namespace platform
