#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <vector>

/// A message box that was shown: what a user would have seen.
struct SShownMessage
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;
    bool hasParent = false;
};

/// A file dialog that was shown: what a user would have been asked.
struct SShownFileDialog
{
    QString title;
    QString directory;
    QStringList nameFilters;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    bool directoriesOnly = false;
    bool hasParent = false;
};

/// The user's hand on modal windows while it lives: every message box is recorded and its Ok
/// pressed, every file dialog is recorded and given the next answer. Other modal windows are left
/// alone. Works below any nested event loop of the GUI thread.
class CModalWatcher : public QObject
{
    Q_OBJECT

public:
    CModalWatcher();

    /// The next file dialog is accepted with these paths; answers queue up, one for each dialog.
    /// A dialog that refuses them, or that finds no answer, is cancelled.
    void answerNextFileDialog(const QStringList& paths);
    void cancelNextFileDialog();

    const std::vector<SShownMessage>& messages() const { return m_messages; }
    const std::vector<SShownFileDialog>& fileDialogs() const { return m_fileDialogs; }

    /// The texts of the message boxes alone, in the order in which they were shown.
    QStringList texts() const;

    /// Forgets what was recorded and the answers that weren't used.
    void clear();

private:
    void look();
    void dismiss(QMessageBox* box);
    void answer(QFileDialog* dialog);
    QStringList takeAnswer();

    QTimer m_timer;
    std::vector<SShownMessage> m_messages;
    std::vector<SShownFileDialog> m_fileDialogs;
    std::deque<QStringList> m_answers;
};
