#pragma once

/// From now on the standard output stream takes bytes as they are, without a CR for each LF.
void useBinaryOutput();
