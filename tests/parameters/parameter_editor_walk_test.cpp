#include "parameters/parameter_editor_frame.h"

#include "deck/app_settings.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "tests/parameters/editor_page.h"
#include "tests/parameters/expected_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QSignalSpy>

#include <memory>
#include <random>

namespace {

constexpr int WALKS = 40;
constexpr int STEPS = 200;

struct SPlace
{
    std::shared_ptr<CParameterEntry> entry;
    int key;
    int field;

    const CParameterKeys& chosenKey() const { return *entry->m_keys[std::size_t(key)]; }
    const CParameterFields& chosenField() const
    {
        return *chosenKey().m_fields[std::size_t(field)];
    }
};

QString shown(const std::vector<CaseValue>& values)
{
    QStringList texts;
    for (const CaseValue& value : values) {
        const double number = value.index() == 0 ? std::get<0>(value) : double(std::get<1>(value));
        texts << (value.index() == 0 ? QString() : QStringLiteral("flag ")) +
                     QString::number(number, 'g', 17);
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

/// A user who does whatever comes to his mind, and a second hand that keeps the books.
class CParameterEditorWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyStepKeepsTheRules_data();
    void everyStepKeepsTheRules();

private:
    int below(int end) { return int(m_random() % unsigned(end)); }
    void lookAround();
    QString step();
    QString choose(const SPlace& place);
    QString add();
    QString remove();
    QString edit();
    QString clickCell();
    QString enter();
    QString difference() const;

    std::mt19937 m_random;
    std::unique_ptr<CPage> m_page;
    CExpectedPage m_expected;
    std::vector<SPlace> m_places;
    SPlace m_place{};
    int m_edits = 0;
};

void CParameterEditorWalkTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CParameterEditorWalkTest::init()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setDeckFormat(5);
}

/// All fields but those of true flags, which can't be varied, and of choices, whose cells hold
/// other values than the field.
void CParameterEditorWalkTest::lookAround()
{
    m_expected = CExpectedPage();
    m_places.clear();
    m_place = SPlace();
    for (const auto& entry : CDeckStore::instance()->parameters()) {
        for (int key = 0; key < int(entry->m_keys.size()); ++key) {
            for (int field = 0; field < int(entry->m_keys[std::size_t(key)]->m_fields.size());
                 ++field) {
                const SPlace place{entry, key, field};
                const CParameterFields& found = place.chosenField();
                m_expected.know(found);
                if (found.m_limit->kind != Choice && found.m_values[0] != CaseValue(true)) {
                    m_places.push_back(place);
                }
            }
        }
    }
}

QString CParameterEditorWalkTest::step()
{
    const int action = m_expected.field < 0 ? 0 : below(12);
    switch (action) {
    case 0:
        return choose(m_places[std::size_t(below(int(m_places.size())))]);
    case 1:
    case 2:
    case 3:
        return add();
    case 4:
    case 5:
        return remove();
    case 6:
        return clickCell();
    case 7:
        return enter();
    default:
        return edit();
    }
}

QString CParameterEditorWalkTest::choose(const SPlace& place)
{
    for (CPropertyTreeWidgetItem* item : m_page->items()) {
        if (item->entry() != place.entry) {
            continue;
        }
        for (QTreeWidgetItem* above = item->parent(); above != nullptr; above = above->parent()) {
            above->setExpanded(true);
        }
        m_page->tree()->scrollToItem(item);
        QTest::mouseClick(m_page->tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          m_page->tree()->visualItemRect(item).center());
        if (item != m_expected.item) {
            m_expected.item = item;
            m_expected.chooseNoField();
        }
    }
    CPage::clickList(m_page->materials(), place.key);
    if (m_place.entry != place.entry || m_place.key != place.key) {
        m_expected.chooseNoField();
    }
    CPage::clickList(m_page->parameters(), place.field);
    m_expected.choose(place.chosenField());
    m_place = place;
    return QStringLiteral("choose ") + QString::fromStdString(place.chosenField().m_name);
}

QString CParameterEditorWalkTest::add()
{
    if (m_expected.canAdd) {
        m_expected.add();
    }
    QTest::mouseClick(m_page->add(), Qt::LeftButton);
    return QStringLiteral("add");
}

QString CParameterEditorWalkTest::remove()
{
    if (m_expected.canRemove) {
        m_expected.remove();
    }
    QTest::mouseClick(m_page->remove(), Qt::LeftButton);
    return QStringLiteral("remove");
}

/// Types or steps, and says so by any of the ways to end an input; or ends it without any.
QString CParameterEditorWalkTest::edit()
{
    const int columns = int(m_expected.columns.size());
    if (columns < 2 || m_place.chosenField().m_limit->kind != Range) {
        return QString();
    }
    const int column = 1 + below(columns - 1);
    m_page->table()->scrollToItem(m_page->table()->item(0, column));
    auto* box = m_page->cell(column)->findChild<CDoubleSpinBox*>();
    const QSignalSpy commits(box, &CDoubleSpinBox::valueModified);
    box->setFocus();
    const int way = below(4);
    if (way == 0) {
        QTest::keyClick(box, below(2) == 0 ? Qt::Key_Up : Qt::Key_Down);
    } else {
        const QStringList numbers{"0.5", "0.5000005", "0.50001", "1",         "2",       "1e-3",
                                  "-3",  "0",         "7.25",    "1000000.5", "0.000001"};
        box->selectAll();
        QTest::keyClicks(box, numbers[below(numbers.size())]);
        QTest::keyClick(box, way == 1 ? Qt::Key_Return : Qt::Key_Tab);
        m_page->tree()->setFocus();
    }
    for (const QList<QVariant>& commit : commits) {
        m_expected.edit(column, commit.first().toDouble());
        ++m_edits;
    }
    return QStringLiteral("edit column %1").arg(column);
}

QString CParameterEditorWalkTest::clickCell()
{
    const int column = below(int(m_expected.columns.size()));
    QTableWidget* table = m_page->table();
    table->scrollToItem(table->item(0, column));
    // The margin of a cell is the item's.
    const QPoint margin = table->visualItemRect(table->item(0, column)).topLeft() + QPoint(2, 2);
    if (table->itemAt(margin) == table->item(0, column)) {
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, margin);
        m_expected.clickCell(column);
    }
    return QStringLiteral("click cell %1").arg(column);
}

QString CParameterEditorWalkTest::enter()
{
    m_page->page.onPageEntered();
    m_expected.enter();
    return QStringLiteral("enter");
}

/// Empty where page and store are as expected.
QString CParameterEditorWalkTest::difference() const
{
    std::vector<CaseValue> columns;
    for (int column = 0; column < m_page->table()->columnCount(); ++column) {
        columns.push_back(m_page->cell(column)->value());
    }
    if (columns != m_expected.columns) {
        return shown(columns) + QStringLiteral(" for ") + shown(m_expected.columns);
    }
    if (m_page->table()->currentColumn() != m_expected.current) {
        return QStringLiteral("current column");
    }
    if (m_page->caseCount() != m_expected.caseCount) {
        return m_page->caseCount() + QStringLiteral(" cases for ") + m_expected.caseCount;
    }
    if (m_page->add()->isEnabled() != m_expected.canAdd ||
        m_page->remove()->isEnabled() != m_expected.canRemove) {
        return QStringLiteral("buttons");
    }
    for (const SPlace& place : m_places) {
        const CParameterFields& field = place.chosenField();
        const auto& values = m_expected.fields.at(field.m_index).values;
        if (field.m_values != values) {
            return shown(field.m_values) + QStringLiteral(" stored for ") + shown(values);
        }
    }
    for (CPropertyTreeWidgetItem* item : m_page->items()) {
        const auto number = m_expected.numbers.find(item);
        if (item->text(1).toInt() != (number != m_expected.numbers.end() ? number->second : 0)) {
            return item->text(0) + QLatin1Char(' ') + item->text(1);
        }
    }
    return QString();
}

void CParameterEditorWalkTest::everyStepKeepsTheRules_data()
{
    QTest::addColumn<int>("walk");
    for (int walk = 0; walk < WALKS; ++walk) {
        QTest::addRow("walk %d", walk) << walk;
    }
}

void CParameterEditorWalkTest::everyStepKeepsTheRules()
{
    QFETCH(int, walk);
    m_random.seed(unsigned(walk));
    m_edits = 0;
    m_page = std::make_unique<CPage>();
    QApplication::setActiveWindow(&m_page->page);
    lookAround();
    QStringList steps;
    for (int count = 0; count < STEPS; ++count) {
        steps << step();
        const QString found = difference();
        QVERIFY2(found.isEmpty(), qPrintable(found + " after " + steps.join(", ")));
    }
    QVERIFY2(m_edits > 0, "the walk has edited nothing");
    m_page.reset();
}

TARNEL_TEST_MAIN(CParameterEditorWalkTest)
#include "parameter_editor_walk_test.moc"
