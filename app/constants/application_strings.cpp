#include "app/constants/application_strings.h"

#include "app/constants/build_identity.h"

#include <QCoreApplication>

namespace ApplicationStrings {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("ApplicationStrings", text);
}

QString aboutTemplate()
{
    const QString lineStart = QLatin1Char('\n') + QString(36, QLatin1Char(' '));
    return translated("<p> %1 ") + lineStart + translated("<br>Version: %2 ") + lineStart +
           translated("<br>Description: %3 </p>") + lineStart +
           translated("<p>Revision: %4 (%5) </p>") + lineStart +
           translated("<p>Copyright %6 Harnwick Labs. All rights reserved.</p>") + lineStart +
           translated("<p>Built with <a href=\"https://www.qt.io\">Qt</a> and "
                      "<a href=\"https://www.hdfgroup.org\">HDF5</a>.</p>");
}

} // namespace

QString Organisation;
QString Name;
QString InformationTitle;
QString InvalidPath;
QString NoExecutable;
QString AboutTitle;
QString Version;
QString BuildType;
QString AboutTemplate;
QString Unfinished;

void initialise()
{
    Organisation = translated("Harnwick Labs");
    Name = translated("Tarnel");
    InformationTitle = translated("Information");
    InvalidPath = translated("Invalid path. Please enter a valid path");
    NoExecutable =
        translated("No ORVA executable found, please browse for one in the associated text box");
    AboutTitle = translated("About %1").arg(Name, 0, QLatin1Char(' '));
    Version = translated("1.0");
    BuildType = translated("Release");
    AboutTemplate = aboutTemplate();
    Unfinished = translated("Not finished...");
}

QString aboutText()
{
    return AboutTemplate.arg(Name)
        .arg(Version)
        .arg(BuildType)
        .arg(BuildIdentity::Revision)
        .arg(QLatin1String(BuildIdentity::Repository))
        .arg(QString::fromLatin1(BuildIdentity::Stamp).left(4));
}

} // namespace ApplicationStrings
