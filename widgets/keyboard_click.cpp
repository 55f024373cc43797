#include "widgets/keyboard_click.h"

#include <QAbstractItemView>
#include <QKeyEvent>

namespace {

bool isEnter(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool clicks(const QKeyEvent& key)
{
    const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return plain && (isEnter(key) || key.key() == Qt::Key_Space);
}

void focusEditorIn(const QWidget* cell)
{
    if (cell == nullptr) {
        return;
    }
    for (QWidget* editor : cell->findChildren<QWidget*>()) {
        if (editor->isEnabled() && (editor->focusPolicy() & Qt::ClickFocus) != 0) {
            editor->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

} // namespace

CKeyboardClick::CKeyboardClick(QAbstractItemView* view)
    : QObject(view)
    , m_view(view)
{
    m_view->installEventFilter(this);
}

bool CKeyboardClick::eventFilter(QObject* watched, QEvent* event)
{
    // A key that an editor in a cell has left over comes by here, too: the view has no focus then.
    if (event->type() == QEvent::KeyPress && m_view->hasFocus()) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (clicks(key)) {
            if (!key.isAutoRepeat()) {
                click(isEnter(key));
            }
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void CKeyboardClick::click(bool enterCell)
{
    const QPersistentModelIndex current = m_view->currentIndex();
    if (!current.isValid()) {
        return;
    }
    emit m_view->clicked(current);
    if (enterCell && current.isValid()) {
        focusEditorIn(m_view->indexWidget(current));
    }
}
