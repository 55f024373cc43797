#include "widgets/text_keeper.h"

#include <QLineEdit>
#include <QSignalBlocker>

CTextKeeper::CTextKeeper(QLineEdit& edit)
    : m_edit(edit)
    , m_text(edit.text())
    , m_caret(edit.cursorPosition())
    , m_selectionStart(edit.selectionStart())
    , m_selectionLength(edit.selectionLength())
{
}

CTextKeeper::~CTextKeeper()
{
    if (m_edit.text() == m_text) {
        return;
    }
    const QSignalBlocker blocker(m_edit);
    m_edit.setText(m_text);
    restoreSelection();
}

void CTextKeeper::restoreSelection() const
{
    if (m_selectionStart < 0) {
        m_edit.setCursorPosition(m_caret);
    } else if (m_caret == m_selectionStart) {
        m_edit.setSelection(m_selectionStart + m_selectionLength, -m_selectionLength);
    } else {
        m_edit.setSelection(m_selectionStart, m_selectionLength);
    }
}
