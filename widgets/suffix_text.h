#pragma once

#include <QString>

class QLineEdit;

/// What keeps the user's hands off the suffix in the line edit of a spin box.
namespace SuffixText {

/// `text` without the suffix at its end; as it stands where it has none.
QString without(const QString& text, const QString& suffix);

/// Index behind the last character that isn't the suffix.
int limit(const QLineEdit& edit, const QString& suffix);

void cutSelection(QLineEdit& edit, const QString& suffix);
void keepCaretOut(QLineEdit& edit, const QString& suffix, int newPos);
void restore(QLineEdit& edit, const QString& suffix, const QString& text);

} // namespace SuffixText
