#pragma once

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QStringList>
#include <QThread>

#include <vector>

/// Looks over the user's shoulder at the progress dialog: what it says, where its bar stands, how
/// often it shows itself. It can press the dialog's button as soon as the dialog is there.
class CProgressRecorder : public QObject
{
public:
    CProgressRecorder() { qApp->installEventFilter(this); }

    bool pressButtonAtOnce = false;

    QStringList labels;
    QString buttonText;
    int maximum = -1;
    std::vector<int> values;
    int shown = 0;
    bool modal = false;
    bool hasParent = false;
    bool onlyFromTheGuiThread = true;
    /// Only to tell whether it still lives.
    QPointer<QObject> dialog;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* candidate = qobject_cast<QProgressDialog*>(watched);
        if (candidate != nullptr && event->type() == QEvent::Show) {
            meet(candidate);
        }
        noteLabel();
        if (watched == dialog && event->type() == QEvent::Hide) {
            m_labelled.clear();
        }
        return false;
    }

private:
    void noteLabel()
    {
        if (m_labelled && (labels.isEmpty() || labels.last() != m_labelled->labelText())) {
            labels << m_labelled->labelText();
        }
    }

    void meet(QProgressDialog* candidate)
    {
        ++shown;
        if (dialog == candidate) {
            return;
        }
        dialog = candidate;
        m_labelled = candidate;
        maximum = candidate->maximum();
        modal = candidate->isModal();
        hasParent = candidate->parentWidget() != nullptr;
        buttonText = candidate->findChild<QPushButton*>()->text();
        connect(
            candidate->findChild<QProgressBar*>(), &QProgressBar::valueChanged, this,
            [this](int value) {
                values.push_back(value);
                onlyFromTheGuiThread = onlyFromTheGuiThread && QThread::currentThread() == thread();
            },
            Qt::DirectConnection);
        if (pressButtonAtOnce) {
            candidate->findChild<QPushButton*>()->click();
        }
    }

    // Until it hides: a dialog that is being destroyed has no label to ask.
    QPointer<QProgressDialog> m_labelled;
};
