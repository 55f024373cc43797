#include "platform/interpreter.h"

namespace platform {

bool speaksBatch()
{
    return true;
}

} // namespace platform
