#include "tests/support/binary_output.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

void useBinaryOutput()
{
    ::_setmode(::_fileno(stdout), _O_BINARY);
}
