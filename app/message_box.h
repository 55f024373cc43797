#pragma once

#include <QString>

/// The modal boxes of the program: one button Ok and no parent, so that a box stands before the
/// window whichever page asks for it.
namespace MessageBox {

void warning(const QString& title, const QString& text);
void information(const QString& title, const QString& text);

/// A box that has neither title nor icon.
void plain(const QString& text);

} // namespace MessageBox
