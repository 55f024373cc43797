#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QtTest>
#include <qtestspontaneevent.h>

/// One notch down over the middle of a widget.
inline QWheelEvent notchDown(const QWidget& widget)
{
    const QPointF middle = widget.rect().center();
    return QWheelEvent(middle, widget.mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, -120),
                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
}

/// Turns the wheel one notch down over the middle of a widget, as the window system reports it:
/// only such an event goes on to the parents. True if something took it.
inline bool turnWheel(QWidget& widget)
{
    QWheelEvent turn = notchDown(widget);
    QSpontaneKeyEvent::setSpontaneous(&turn);
    qApp->notify(&widget, &turn);
    return turn.isAccepted();
}
