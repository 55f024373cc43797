#include "widgets/caret_step.h"

#include <QRegularExpression>

#include <cmath>

namespace {

double withoutExponent(const QString& text, int pos, int point)
{
    if (point < 0) {
        return std::pow(10.0, text.length() - pos - 1);
    }
    const int left = point - pos;
    return left > 0 ? std::pow(10.0, left - 1) : 1.0 / std::pow(10.0, -left);
}

double withExponent(const QString& text, int pos, int point, int e)
{
    if (pos >= e) {
        return 0.0;
    }
    const int exponent = text.mid(e + 1).toInt();
    if (point < 0) {
        return std::pow(10.0, e - 1 + exponent - pos);
    }
    return std::pow(10.0, exponent - pos + point - (pos < point ? 1 : 0));
}

} // namespace

namespace CaretStep {

double atPosition(const QString& text, int pos, QChar decimalPoint)
{
    const int e = text.indexOf(QLatin1Char('e'), 0, Qt::CaseInsensitive);
    const int point = text.indexOf(decimalPoint);
    return e < 0 ? withoutExponent(text, pos, point) : withExponent(text, pos, point, e);
}

int entryPosition(const QString& text, QChar decimalPoint)
{
    const int point = text.indexOf(decimalPoint);
    if (point < 0) {
        return text.startsWith(QLatin1Char('-')) ? 1 : 0;
    }
    const int last = text.lastIndexOf(QRegularExpression(QStringLiteral("[1-9]")));
    return last <= point && point >= 1 ? point - 1 : last;
}

double ofWholeNumber(const QString& rest)
{
    return std::pow(10.0, rest.length() - rest.count(QLatin1Char(',')) - 1);
}

} // namespace CaretStep
