#include "tests/support/binary_output.h"

void useBinaryOutput() {}
