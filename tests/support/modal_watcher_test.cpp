#include "app/message_box.h"
#include "samples/player/modal_watcher.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class ModalWatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void recordsAWarningAndPressesOk();
    void recordsAPlainBox();
    void answersAFileDialog();
    void answersAFileDialogWithSeveralPaths();
    void answersAFolderDialog();
    void cancelsWithoutAnAnswer();
    void cancelsADialogThatRefusesItsAnswer();

private:
    QString makeFile(const QString& name) const;

    QTemporaryDir m_folder;
};

QString ModalWatcherTest::makeFile(const QString& name) const
{
    QFile file(m_folder.filePath(name));
    file.open(QIODevice::WriteOnly);
    return file.fileName();
}

void ModalWatcherTest::recordsAWarningAndPressesOk()
{
    CModalWatcher watcher;
    MessageBox::warning(QStringLiteral("Warning"), QStringLiteral("one"));
    MessageBox::information(QStringLiteral("Information"), QStringLiteral("two"));
    QCOMPARE(watcher.texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    QCOMPARE(watcher.messages()[0].title, QStringLiteral("Warning"));
    QCOMPARE(watcher.messages()[0].icon, QMessageBox::Warning);
    QCOMPARE(watcher.messages()[0].buttons, QStringList(QStringLiteral("OK")));
    QVERIFY(!watcher.messages()[0].hasParent);
    QCOMPARE(watcher.messages()[1].icon, QMessageBox::Information);
}

void ModalWatcherTest::recordsAPlainBox()
{
    CModalWatcher watcher;
    MessageBox::plain(QStringLiteral("plain"));
    QCOMPARE(watcher.messages().size(), std::size_t(1));
    QCOMPARE(watcher.messages()[0].icon, QMessageBox::NoIcon);
    QCOMPARE(watcher.messages()[0].buttons.size(), 1);
}

void ModalWatcherTest::answersAFileDialog()
{
    CModalWatcher watcher;
    const QString path = makeFile(QStringLiteral("with blank.zek"));
    watcher.answerNextFileDialog({path});
    QCOMPARE(QFileDialog::getOpenFileName(nullptr, QStringLiteral("Choose"), QString(),
                                          QStringLiteral("Zek file (*.zek)")),
             path);
    QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
    QCOMPARE(watcher.fileDialogs()[0].title, QStringLiteral("Choose"));
    QCOMPARE(watcher.fileDialogs()[0].nameFilters, QStringList(QStringLiteral("Zek file (*.zek)")));
}

void ModalWatcherTest::answersAFileDialogWithSeveralPaths()
{
    CModalWatcher watcher;
    const QStringList paths = {makeFile(QStringLiteral("first.txt")),
                               makeFile(QStringLiteral("second.txt"))};
    watcher.answerNextFileDialog(paths);
    QCOMPARE(QFileDialog::getOpenFileNames(), paths);
}

void ModalWatcherTest::answersAFolderDialog()
{
    CModalWatcher watcher;
    watcher.answerNextFileDialog({m_folder.path()});
    QFileDialog dialog(nullptr, QStringLiteral("Browse for folder"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(dialog.selectedFiles(), QStringList(m_folder.path()));
    QVERIFY(watcher.fileDialogs()[0].directoriesOnly);
}

void ModalWatcherTest::cancelsWithoutAnAnswer()
{
    CModalWatcher watcher;
    QCOMPARE(QFileDialog::getOpenFileName(), QString());
    watcher.cancelNextFileDialog();
    QCOMPARE(QFileDialog::getOpenFileName(), QString());
    QCOMPARE(watcher.fileDialogs().size(), std::size_t(2));
}

void ModalWatcherTest::cancelsADialogThatRefusesItsAnswer()
{
    CModalWatcher watcher;
    watcher.answerNextFileDialog(
        {m_folder.filePath(QStringLiteral("no such folder/no such file"))});
    QCOMPARE(QFileDialog::getOpenFileName(), QString());
    QCOMPARE(watcher.messages().size(), std::size_t(1));
}

TARNEL_TEST_MAIN(ModalWatcherTest)
#include "modal_watcher_test.moc"
