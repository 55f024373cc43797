#pragma once

#include <QEvent>
#include <QObject>

/// Hands a wheel event on to the parent and returns its answer; without a parent the event is
/// ignored.
bool forwardWheel(const QObject& widget, QEvent* wheel);
