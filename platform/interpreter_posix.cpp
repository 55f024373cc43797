#include "platform/interpreter.h"

namespace platform {

bool speaksBatch()
{
    return false;
}

} // namespace platform
