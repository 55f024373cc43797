#pragma once

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

/// A page that is too high for its scroll area, with one widget of the given class on it.
template <class Widget>
struct SScrollPage
{
    QScrollArea area;
    QWidget* page = new QWidget;
    Widget* widget = new Widget(page);
    QWidget* other = new Widget(page);

    SScrollPage()
    {
        other->move(0, 40);
        page->resize(200, 2000);
        area.setWidget(page);
        area.resize(220, 200);
        area.show();
        QApplication::setActiveWindow(&area);
    }

    int scrolled() const { return area.verticalScrollBar()->value(); }
};
