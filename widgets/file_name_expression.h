#pragma once

#include <QRegularExpression>

/// What may stand in a command-line word: any text without the characters that a shell or a file
/// system takes for itself.
QRegularExpression fileNameRegularExpression();
