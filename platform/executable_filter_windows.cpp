#include "platform/executable_filter.h"

namespace platform {

QString executableFilter(const QString& executables)
{
    return executables;
}

} // namespace platform
