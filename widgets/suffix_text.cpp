#include "widgets/suffix_text.h"

#include <QLineEdit>

namespace SuffixText {

QString without(const QString& text, const QString& suffix)
{
    return text.endsWith(suffix) ? text.chopped(suffix.length()) : text;
}

int limit(const QLineEdit& edit, const QString& suffix)
{
    return edit.displayText().length() - suffix.length();
}

void cutSelection(QLineEdit& edit, const QString& suffix)
{
    const int end = limit(edit, suffix);
    if (!edit.hasSelectedText() || edit.selectionEnd() <= end) {
        return;
    }
    const int start = edit.selectionStart();
    if (start >= end) {
        edit.setSelection(end, 0);
    } else if (edit.cursorPosition() == start) {
        // A drag that began behind the number goes on with its moving end on the left.
        edit.setSelection(end, start - end);
    } else {
        edit.setSelection(start, end - start);
    }
}

void keepCaretOut(QLineEdit& edit, const QString& suffix, int newPos)
{
    const int end = limit(edit, suffix);
    if (newPos > end) {
        edit.setCursorPosition(end);
    }
}

void restore(QLineEdit& edit, const QString& suffix, const QString& text)
{
    if (!text.endsWith(suffix)) {
        edit.setText(text.left(text.length() - suffix.length() + 1) + suffix);
    }
}

} // namespace SuffixText
