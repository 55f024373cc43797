#pragma once

#include <QObject>

class QAbstractItemView;
class QEvent;

/// Lets the keyboard do on the current item of a view what the mouse does: Space and Enter click
/// it. Enter also goes into the widget that stands in the item's cell, where there is one to go
/// into. Lives as long as its view.
class CKeyboardClick : public QObject
{
    Q_OBJECT

public:
    explicit CKeyboardClick(QAbstractItemView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void click(bool enterCell);

    QAbstractItemView* m_view;
};
