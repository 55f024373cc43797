#include "samples/player/user_hand.h"

#include "app/main_window.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

#include <stdexcept>

namespace {

[[noreturn]] void fail(const QString& sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

/// The names of the form; the parts that Qt makes itself have names of their own.
QStringList knownNames(const CMainWindow& window)
{
    QStringList names;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->objectName().isEmpty() &&
            !widget->objectName().startsWith(QLatin1String("qt_"))) {
            names << widget->objectName();
        }
    }
    names.sort();
    return names;
}

QString textOfWidget(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->text();
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
        return edit->text();
    }
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(widget)) {
        return spin->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        return button->text();
    }
    return {};
}

QTreeWidgetItem* childLabelled(const QTreeWidget* tree, const QTreeWidgetItem* parent,
                               const QString& label)
{
    const int count = parent != nullptr ? parent->childCount() : tree->topLevelItemCount();
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = parent != nullptr ? parent->child(i) : tree->topLevelItem(i);
        if (item->text(0) == label) {
            return item;
        }
    }
    fail(QStringLiteral("The Properties tree has no \"%1\" there.").arg(label));
}

/// A button reacts near its indicator; its middle may be empty. A group box has it in its title.
QPoint pressPoint(const QWidget* widget)
{
    if (qobject_cast<const QGroupBox*>(widget) != nullptr) {
        return {10, widget->fontMetrics().height() / 2};
    }
    return {qMin(10, widget->width() / 2), widget->height() / 2};
}

} // namespace

CUserHand::CUserHand(CMainWindow& window)
    : m_window(window)
{
}

QWidget* CUserHand::widget(const QString& name) const
{
    auto* found = m_window.findChild<QWidget*>(name);
    if (found == nullptr) {
        fail(QStringLiteral("There is no widget %1. There are: %2")
                 .arg(name, knownNames(m_window).join(QStringLiteral(", "))));
    }
    return found;
}

QWidget* CUserHand::reachable(const QString& name) const
{
    QWidget* found = widget(name);
    if (!found->isVisible() || !found->isEnabled()) {
        fail(QStringLiteral("%1 can't be reached: it is hidden or disabled.").arg(name));
    }
    return found;
}

void CUserHand::click(const QString& name)
{
    QWidget* button = reachable(name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, pressPoint(button));
}

void CUserHand::openTab(const QString& action)
{
    auto* tab = m_window.findChild<QAction*>(action);
    auto* bar = m_window.findChild<QToolBar*>();
    if (tab == nullptr || bar == nullptr || bar->widgetForAction(tab) == nullptr) {
        fail(QStringLiteral("There is no tab %1.").arg(action));
    }
    QTest::mouseClick(bar->widgetForAction(tab), Qt::LeftButton);
}

void CUserHand::replaceText(QWidget* field, const QString& text) const
{
    field->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

void CUserHand::type(const QString& name, const QString& text)
{
    replaceText(reachable(name), text);
    QTest::keyClick(widget(name), Qt::Key_Tab);
}

void CUserHand::chooseProperty(const QStringList& labels)
{
    auto* tree = find<QTreeWidget>(QStringLiteral("m_treeWidget"));
    QTreeWidgetItem* item = nullptr;
    for (const QString& label : labels) {
        if (item != nullptr && !item->isExpanded()) {
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                              tree->visualItemRect(item).center());
        }
        item = childLabelled(tree, item, label);
    }
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree->visualItemRect(item).center());
}

void CUserHand::chooseRow(const QString& list, const QString& text)
{
    auto* rows = find<QListWidget>(list);
    const QList<QListWidgetItem*> found = rows->findItems(text, Qt::MatchExactly);
    if (found.isEmpty()) {
        fail(QStringLiteral("%1 has no row \"%2\".").arg(list, text));
    }
    rows->scrollToItem(found.front());
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, Qt::NoModifier,
                      rows->visualItemRect(found.front()).center());
}

void CUserHand::typeValue(int column, const QString& number)
{
    auto* table = find<QTableWidget>(QStringLiteral("m_tableWidget"));
    QWidget* cell = table->cellWidget(0, column);
    auto* field = cell != nullptr ? cell->findChild<QAbstractSpinBox*>() : nullptr;
    if (field == nullptr) {
        fail(QStringLiteral("Column %1 of the value table takes no number.").arg(column));
    }
    replaceText(field, number);
}

QString CUserHand::textOf(const QString& name) const
{
    return textOfWidget(widget(name));
}

bool CUserHand::isEnabled(const QString& name) const
{
    return widget(name)->isEnabled();
}

void CUserHand::photograph(const QString& path) const
{
    if (!m_window.grab().save(path)) {
        fail(QStringLiteral("The picture %1 can't be written.").arg(path));
    }
}

void CUserHand::pause(int milliseconds) const
{
    QTest::qWait(milliseconds);
}
