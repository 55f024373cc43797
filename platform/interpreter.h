#pragma once

namespace platform {

/// Whether the system's command interpreter speaks the language of Windows batch files.
bool speaksBatch();

} // namespace platform
