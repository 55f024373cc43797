#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class CMainWindow;
class QListWidget;
class QTreeWidgetItem;
class QWidget;

/// What a user does to the window with mouse and keyboard, by the widgets' object names. A widget
/// that isn't there or can't be reached raises std::runtime_error, which lists those that are.
class CUserHand
{
public:
    explicit CUserHand(CMainWindow& window);

    /// Presses a button, check box or radio button; returns when what it set off has ended.
    void click(const QString& name);

    /// Presses a tab of the tool bar.
    void openTab(const QString& action);

    /// Replaces the text of a line edit or the number of a spin box, and leaves the field.
    void type(const QString& name, const QString& text);

    /// Clicks the item of the Properties tree with these labels, from the top level down.
    void chooseProperty(const QStringList& labels);

    /// Clicks the row with that text.
    void chooseRow(const QString& list, const QString& text);

    /// Types a number into a column of the value table and commits it.
    void typeValue(int column, const QString& number);

    QString textOf(const QString& name) const;
    bool isEnabled(const QString& name) const;

    /// Saves a picture of the window as it stands.
    void photograph(const QString& path) const;

    /// Lets the window live for a moment.
    void pause(int milliseconds) const;

    template <class Widget>
    Widget* find(const QString& name) const
    {
        return dynamic_cast<Widget*>(widget(name));
    }

private:
    QWidget* widget(const QString& name) const;
    QWidget* reachable(const QString& name) const;
    void replaceText(QWidget* field, const QString& text) const;

    CMainWindow& m_window;
};
