#include "app/constants/icons.h"
#include "jobs/running_rows.h"
#include "jobs/simulation_list_item.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QListWidget>
#include <QSet>
#include <QStyledItemDelegate>
#include <QTest>

#include <memory>

namespace {

constexpr int rowCount = 1000;

/// Counts how often a row is measured, and remembers which rows were painted.
class CountingDelegate : public QStyledItemDelegate
{
public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        ++m_measured;
        return QStyledItemDelegate::sizeHint(option, index);
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        m_painted.insert(index.row());
        QStyledItemDelegate::paint(painter, option, index);
    }

    void forget()
    {
        m_measured = 0;
        m_painted.clear();
    }

    mutable int m_measured = 0;
    mutable QSet<int> m_painted;
};

} // namespace

class RunningRowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void iconOfOneRowIsPaintedAtACostThatDoesNotGrow();
    void iconOfARowOutOfSightCostsNoPainting();
    void rowKnowsItsSizeWhenItIsAdded();
    void rowsKeepTheirPlacesWhenAnIconChanges();
    void rowIsFoundByItsNumberWhereverItStands();
    void numberWithoutARowIsNotFound();

private:
    CSimulationListItem* row(int place) const
    {
        return static_cast<CSimulationListItem*>(m_list->item(place));
    }
    /// Lays out and paints what is to be, and forgets what that took.
    void settle();

    std::unique_ptr<QListWidget> m_list;
    std::unique_ptr<CRunningRows> m_rows;
    CountingDelegate m_delegate;
};

void RunningRowsTest::init()
{
    m_list = std::make_unique<QListWidget>();
    m_list->setItemDelegate(&m_delegate);
    m_rows = std::make_unique<CRunningRows>(m_list.get());
    for (int number = 0; number < rowCount; ++number) {
        m_rows->add(
            new CSimulationListItem(Icons::PreSim, QStringLiteral("deck%1").arg(number), number));
    }
    m_list->resize(300, 200);
    m_list->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_list.get()));
    settle();
}

void RunningRowsTest::cleanup()
{
    m_rows.reset();
    m_list.reset();
}

void RunningRowsTest::settle()
{
    QTest::qWait(50);
    m_delegate.forget();
}

void RunningRowsTest::iconOfOneRowIsPaintedAtACostThatDoesNotGrow()
{
    m_rows->setIcon(row(2), Icons::PostSimSuccess);
    QTRY_VERIFY(m_delegate.m_painted.contains(2));
    QTest::qWait(50);
    QCOMPARE(row(2)->icon().cacheKey(), Icons::PostSimSuccess.cacheKey());
    QCOMPARE(m_delegate.m_painted, QSet<int>{2});
    QVERIFY2(m_delegate.m_measured < 20, qPrintable(QString::number(m_delegate.m_measured)));
}

void RunningRowsTest::iconOfARowOutOfSightCostsNoPainting()
{
    m_rows->setIcon(row(rowCount - 1), Icons::PostSimFailure);
    QTest::qWait(50);
    QCOMPARE(row(rowCount - 1)->icon().cacheKey(), Icons::PostSimFailure.cacheKey());
    QVERIFY(m_delegate.m_painted.isEmpty());
    m_list->scrollToBottom();
    QTRY_VERIFY(m_delegate.m_painted.contains(rowCount - 1));
}

void RunningRowsTest::rowKnowsItsSizeWhenItIsAdded()
{
    QCOMPARE(row(rowCount - 1)->sizeHint().height(), m_list->visualItemRect(row(0)).height());
    QVERIFY(row(rowCount - 1)->sizeHint().width() > m_list->iconSize().width());
}

void RunningRowsTest::rowsKeepTheirPlacesWhenAnIconChanges()
{
    const QRect second = m_list->visualItemRect(row(1));
    const QRect third = m_list->visualItemRect(row(2));
    m_rows->setIcon(row(1), Icons::PostSimSuccess);
    // Now it is told of a change, and lays out anew.
    row(0)->setIcon(Icons::PostSimSuccess);
    QTest::qWait(50);
    QCOMPARE(m_list->visualItemRect(row(1)), second);
    QCOMPARE(m_list->visualItemRect(row(2)), third);
}

void RunningRowsTest::rowIsFoundByItsNumberWhereverItStands()
{
    QCOMPARE(m_rows->find(7), row(7));
    m_rows->add(new CSimulationListItem(Icons::PreSim, QStringLiteral("other"), rowCount + 5));
    QCOMPARE(m_rows->find(rowCount + 5), row(rowCount));
    delete m_list->takeItem(0);
    QCOMPARE(m_rows->find(7), row(6));
}

void RunningRowsTest::numberWithoutARowIsNotFound()
{
    QVERIFY(m_rows->find(rowCount) == nullptr);
    QVERIFY(m_rows->find(-1) == nullptr);
    delete m_list->takeItem(3);
    QVERIFY(m_rows->find(3) == nullptr);
}

TARNEL_TEST_MAIN(RunningRowsTest)
#include "running_rows_test.moc"
