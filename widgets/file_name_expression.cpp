#include "widgets/file_name_expression.h"

QRegularExpression fileNameRegularExpression()
{
    return QRegularExpression(QStringLiteral(R"re(([^|<>&%()\[\]:^{}=;!'+,`~#$\\"/?*]*))re"));
}
