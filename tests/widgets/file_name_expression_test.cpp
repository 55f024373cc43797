#include "tests/support/test_environment.h"
#include "widgets/file_name_expression.h"

#include <QApplication>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QtTest>

class FileNameExpressionTest : public QObject
{
    Q_OBJECT

private slots:
    void patternStandsAsItIs();
    void refusedCharactersCannotBeTyped();
    void wordsCanBeTyped();
};

void FileNameExpressionTest::patternStandsAsItIs()
{
    const QString pattern = fileNameRegularExpression().pattern();
    QVERIFY(fileNameRegularExpression().isValid());
    QCOMPARE(pattern.length(), 37);
    QCOMPARE(pattern, QStringLiteral("([^|<>&%()\\[\\]:^{}=;!'+,`~#$\\\\\"/?*]*)"));
}

void FileNameExpressionTest::refusedCharactersCannotBeTyped()
{
    QLineEdit edit;
    edit.setValidator(new QRegularExpressionValidator(fileNameRegularExpression(), &edit));
    QTest::keyClicks(&edit, QStringLiteral("|<>&%()[]:^{}=;!'+,`~#$\\\"/?*"));
    QCOMPARE(edit.text(), QString());
}

void FileNameExpressionTest::wordsCanBeTyped()
{
    QLineEdit edit;
    edit.setValidator(new QRegularExpressionValidator(fileNameRegularExpression(), &edit));
    QTest::keyClicks(&edit, QStringLiteral("my env_3.8-b @x"));
    QCOMPARE(edit.text(), QStringLiteral("my env_3.8-b @x"));
}

TARNEL_TEST_MAIN(FileNameExpressionTest)
#include "file_name_expression_test.moc"
