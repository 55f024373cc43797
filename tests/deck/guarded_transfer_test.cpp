#include "deck/guarded_transfer.h"

#include "tests/deck/silent_library.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/test_environment.h"

#include <QtTest>

#include <functional>
#include <stdexcept>

using Transfer = std::function<void()>;
Q_DECLARE_METATYPE(Transfer)

class TestGuardedTransfer : public QObject
{
    Q_OBJECT

private slots:
    void failuresArePrintedWhereTheyBelong_data()
    {
        QTest::addColumn<Transfer>("transfer");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<bool>("printsStack");
        QTest::newRow("HDF5") << Transfer([] { H5::H5File("/nowhere/0.h5", H5F_ACC_RDONLY); })
                              << QByteArray() << true;
        QTest::newRow("standard") << Transfer([] { throw std::range_error("out of hand"); })
                                  << QByteArray("out of hand\n") << false;
        QTest::newRow("any other")
            << Transfer([] { throw 42; }) << QByteArray("Unknown Exception\n") << false;
    }
    void failuresArePrintedWhereTheyBelong()
    {
        QFETCH(Transfer, transfer);
        QFETCH(QByteArray, output);
        QFETCH(bool, printsStack);
        CStreamCapture standardOutput(CStreamCapture::Output);
        CStreamCapture standardError(CStreamCapture::Error);
        const bool succeeded = GuardedTransfer::run(transfer);
        const QByteArray written = standardOutput.text();
        const QByteArray errors = standardError.text();
        QVERIFY(!succeeded);
        QCOMPARE(written, output);
        QCOMPARE(errors.contains("HDF5-DIAG"), printsStack);
        QCOMPARE(errors.isEmpty(), !printsStack);
    }

    void theErrorStackIsPrintedWhereTheLibraryIsSilent()
    {
        const CSilentLibrary silence;
        CStreamCapture standardError(CStreamCapture::Error);
        GuardedTransfer::run([] { H5::H5File("/nowhere/0.h5", H5F_ACC_RDONLY); });
        QCOMPARE(standardError.text().count("HDF5-DIAG"), 1);
    }

    void aTransferThatSucceedsPrintsNothing()
    {
        CStreamCapture standardOutput(CStreamCapture::Output);
        bool ran = false;
        const bool succeeded = GuardedTransfer::run([&ran] { ran = true; });
        const QByteArray written = standardOutput.text();
        QVERIFY(succeeded && ran);
        QCOMPARE(written, QByteArray());
    }
};

TARNEL_TEST_MAIN(TestGuardedTransfer)
#include "guarded_transfer_test.moc"
