#pragma once

#include <QString>

class QLineEdit;

/// Puts text, caret and selection of a line edit back when it goes out of scope, without a signal:
/// some setters of a spin box write the number anew under the user's hands.
class CTextKeeper
{
public:
    explicit CTextKeeper(QLineEdit& edit);
    ~CTextKeeper();
    CTextKeeper(const CTextKeeper&) = delete;
    CTextKeeper& operator=(const CTextKeeper&) = delete;

private:
    void restoreSelection() const;

    QLineEdit& m_edit;
    QString m_text;
    int m_caret;
    int m_selectionStart;
    int m_selectionLength;
};
