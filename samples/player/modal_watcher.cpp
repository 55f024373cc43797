#include "samples/player/modal_watcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMetaObject>

namespace {

constexpr int LOOK_INTERVAL_MS = 5;

SShownMessage describe(const QMessageBox& box)
{
    SShownMessage shown;
    shown.title = box.windowTitle();
    shown.text = box.text();
    shown.icon = box.icon();
    shown.hasParent = box.parentWidget() != nullptr;
    for (const QAbstractButton* button : box.buttons()) {
        shown.buttons.append(button->text().remove(QLatin1Char('&')));
    }
    return shown;
}

SShownFileDialog describe(const QFileDialog& dialog)
{
    SShownFileDialog shown;
    shown.title = dialog.windowTitle();
    shown.directory = dialog.directory().absolutePath();
    shown.nameFilters = dialog.nameFilters();
    shown.fileMode = dialog.fileMode();
    shown.directoriesOnly = dialog.testOption(QFileDialog::ShowDirsOnly);
    shown.hasParent = dialog.parentWidget() != nullptr;
    return shown;
}

// The syntax in which the dialog itself takes several names in its one line.
QString typedNames(const QStringList& paths)
{
    if (paths.size() == 1) {
        return paths.first();
    }
    return QLatin1Char('"') + paths.join(QStringLiteral("\" \"")) + QLatin1Char('"');
}

} // namespace

CModalWatcher::CModalWatcher()
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(LOOK_INTERVAL_MS);
    connect(&m_timer, &QTimer::timeout, this, &CModalWatcher::look);
    m_timer.start();
}

void CModalWatcher::answerNextFileDialog(const QStringList& paths)
{
    m_answers.push_back(paths);
}

void CModalWatcher::cancelNextFileDialog()
{
    m_answers.emplace_back();
}

QStringList CModalWatcher::texts() const
{
    QStringList all;
    for (const SShownMessage& message : m_messages) {
        all.append(message.text);
    }
    return all;
}

void CModalWatcher::clear()
{
    m_messages.clear();
    m_fileDialogs.clear();
    m_answers.clear();
}

QStringList CModalWatcher::takeAnswer()
{
    if (m_answers.empty()) {
        return {};
    }
    QStringList paths = m_answers.front();
    m_answers.pop_front();
    return paths;
}

void CModalWatcher::look()
{
    // Started again before anything else: what is pressed below may open the next modal window in
    // an event loop of its own, and a timer doesn't fire while its own slot runs.
    m_timer.start();
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        dismiss(box);
    } else if (auto* dialog = qobject_cast<QFileDialog*>(modal)) {
        answer(dialog);
    }
}

void CModalWatcher::dismiss(QMessageBox* box)
{
    m_messages.push_back(describe(*box));
    QAbstractButton* ok = box->button(QMessageBox::Ok);
    if (ok != nullptr) {
        ok->click();
    } else {
        box->reject();
    }
}

void CModalWatcher::answer(QFileDialog* dialog)
{
    m_fileDialogs.push_back(describe(*dialog));
    const QStringList paths = takeAnswer();
    auto* names = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (paths.isEmpty() || names == nullptr) {
        dialog->reject();
        return;
    }
    names->setText(typedNames(paths));
    QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
}
