#include "app/message_box.h"

#include <QMessageBox>

namespace MessageBox {

void warning(const QString& title, const QString& text)
{
    QMessageBox::warning(nullptr, title, text, QMessageBox::Ok);
}

void information(const QString& title, const QString& text)
{
    QMessageBox::information(nullptr, title, text, QMessageBox::Ok);
}

void plain(const QString& text)
{
    QMessageBox box;
    box.setText(text);
    box.exec();
}

} // namespace MessageBox
