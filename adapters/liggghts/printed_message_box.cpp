#include "app/message_box.h"

#include <iostream>

// Stands in for the boxes of the program: nobody is there to press Ok.
namespace MessageBox {
namespace {

void print(const QString& text)
{
    std::cerr << text.toStdString() << std::endl;
}

} // namespace

void warning(const QString& /*title*/, const QString& text)
{
    print(text);
}

void information(const QString& /*title*/, const QString& text)
{
    print(text);
}

void plain(const QString& text)
{
    print(text);
}

} // namespace MessageBox
