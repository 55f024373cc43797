#include "app/connections.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <stdexcept>

namespace {

using Table = CConnectionTable<QObject>;

/// What releasing an owner raises, empty for nothing.
std::string failureOfRelease(Table& table, QObject* owner)
{
    try {
        table.release(owner);
    } catch (const std::out_of_range& failure) {
        return failure.what();
    }
    return std::string();
}

/// Counts the changes of name of a sender through the table.
struct SListener
{
    QObject sender;
    int heard = 0;

    QMetaObject::Connection connection()
    {
        return QObject::connect(&sender, &QObject::objectNameChanged, &sender,
                                [this](const QString&) { ++heard; });
    }
    void speak() { sender.setObjectName(sender.objectName() + QLatin1Char('x')); }
};

} // namespace

class CConnectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void aReleasedOwnerHearsNothingMore();
    void everyConnectionOfAnOwnerIsCut();
    void anotherOwnersConnectionsStay();
    void anOwnerThatStoredNothingRaises();
    void anOwnerIsForgottenOnceReleased();
};

void CConnectionsTest::aReleasedOwnerHearsNothingMore()
{
    Table table;
    QObject owner;
    SListener listener;
    table.store(&owner, {listener.connection()});
    listener.speak();
    QCOMPARE(listener.heard, 1);
    table.release(&owner);
    listener.speak();
    QCOMPARE(listener.heard, 1);
}

void CConnectionsTest::everyConnectionOfAnOwnerIsCut()
{
    Table table;
    QObject owner;
    SListener first;
    SListener second;
    table.store(&owner, {first.connection(), second.connection()});
    table.release(&owner);
    first.speak();
    second.speak();
    QCOMPARE(first.heard + second.heard, 0);
}

void CConnectionsTest::anotherOwnersConnectionsStay()
{
    Table table;
    QObject owner;
    QObject other;
    SListener listener;
    SListener otherListener;
    table.store(&owner, {listener.connection()});
    table.store(&other, {otherListener.connection()});
    table.release(&owner);
    otherListener.speak();
    QCOMPARE(otherListener.heard, 1);
    QCOMPARE(failureOfRelease(table, &other), std::string());
}

void CConnectionsTest::anOwnerThatStoredNothingRaises()
{
    Table table;
    QObject owner;
    QCOMPARE(failureOfRelease(table, &owner), std::string("invalid map<K, T> key"));
}

void CConnectionsTest::anOwnerIsForgottenOnceReleased()
{
    Table table;
    QObject owner;
    table.store(&owner, {});
    QCOMPARE(failureOfRelease(table, &owner), std::string());
    QCOMPARE(failureOfRelease(table, &owner), std::string("invalid map<K, T> key"));
}

TARNEL_TEST_MAIN(CConnectionsTest)
#include "connections_test.moc"
