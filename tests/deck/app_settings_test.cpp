#include "deck/app_settings.h"

#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QtTest>

class TestAppSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_formatAtFirst = CAppSettings::instance()->deckFormat(); }
    void init() { CTestEnvironment::reset(); }

    void storeIsTheUsersOwn()
    {
        const QSettings& settings = CAppSettings::instance()->settings();
        QCOMPARE(settings.organizationName(), QStringLiteral("Harnwick Labs"));
        QCOMPARE(settings.applicationName(), QStringLiteral("Tarnel"));
        QCOMPARE(settings.scope(), QSettings::UserScope);
        QVERIFY(!settings.fallbacksEnabled());
    }

    void selectorsNameTheirKeys_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<QString>("key");
        QTest::newRow("0") << 0 << "/Saving/RootPath";
        QTest::newRow("1") << 1 << "/Saving/ZEKPath";
        QTest::newRow("2") << 2 << "/Saving/AdditionalFilesPath";
        QTest::newRow("3") << 3 << "/Saving/OrvaExeLocation";
    }
    void selectorsNameTheirKeys()
    {
        QFETCH(int, selector);
        QFETCH(QString, key);
        CAppSettings* settings = CAppSettings::instance();
        QVERIFY(settings->setValue(selector, QStringLiteral("a text")));
        QCOMPARE(settings->settings().allKeys(), QStringList{key.mid(1)});
        QCOMPARE(settings->value(selector), QVariant(QStringLiteral("a text")));
        QCOMPARE(settings->text(selector), QStringLiteral("a text"));
    }

    void keyNeverWrittenIsAnEmptyText()
    {
        const QVariant value = CAppSettings::instance()->value(CAppSettings::ZEKPath);
        QVERIFY(value.isValid() && !value.isNull());
        QCOMPARE(value.type(), QVariant::String);
        QCOMPARE(value.toString(), QString());
    }

    void storedNullIsAnEmptyText()
    {
        CAppSettings* settings = CAppSettings::instance();
        settings->settings().setValue(QStringLiteral("/Saving/ZEKPath"), QVariant());
        QCOMPARE(settings->value(CAppSettings::ZEKPath), QVariant(QStringLiteral("")));
    }

    void integerComesBackAsItsText()
    {
        CAppSettings* settings = CAppSettings::instance();
        settings->settings().setValue(QStringLiteral("/Saving/ZEKPath"), 42);
        QCOMPARE(settings->text(CAppSettings::ZEKPath), QStringLiteral("42"));
        QCOMPARE(settings->value(CAppSettings::ZEKPath).toString(), QStringLiteral("42"));
    }

    void otherSelectorsAreNoOperation_data()
    {
        QTest::addColumn<int>("selector");
        QTest::newRow("below") << -1;
        QTest::newRow("above") << 4;
    }
    void otherSelectorsAreNoOperation()
    {
        QFETCH(int, selector);
        CAppSettings* settings = CAppSettings::instance();
        QVERIFY(settings->value(selector).isNull());
        QVERIFY(!settings->setValue(selector, QStringLiteral("a text")));
        QVERIFY(settings->settings().allKeys().isEmpty());
    }

    void writesAreOnDiskAtOnce()
    {
        CAppSettings* settings = CAppSettings::instance();
        settings->setValue(CAppSettings::RootPath, QStringLiteral("/decks/"));
        // What another program sees, whatever the store of the platform is.
        QVERIFY(Native::storedSettings().contains("RootPath=/decks/"));
    }

    void formatStartsAtZeroAndStays()
    {
        QCOMPARE(m_formatAtFirst, 0);
        CAppSettings::instance()->setDeckFormat(11);
        QCOMPARE(CAppSettings::instance()->deckFormat(), 11);
    }

private:
    int m_formatAtFirst = -1;
};

TARNEL_TEST_MAIN(TestAppSettings)
#include "app_settings_test.moc"
