#pragma once

#include <exception>

namespace platform {

/// In a handler: lets its exception go on. Where nothing catches it, what it is stands on the
/// standard error stream as for any other; behind a plain `throw` the run-time library of mingw-w64
/// ends the process without a word.
[[noreturn]] inline void rethrow()
{
    std::rethrow_exception(std::current_exception());
}

} // namespace platform
