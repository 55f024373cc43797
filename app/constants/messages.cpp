#include "app/constants/messages.h"

#include "app/constants/deck_keys.h"

#include <QCoreApplication>

#include <string>

namespace Messages {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Messages", text);
}

} // namespace

QString Warning;
QString DeckIncompatible;
QString MaterialToken;
QString EnterDirectory;
QString DirectoryMissing;
QString JobspecNoH5;
QString JobspecNoCsv;
QString EnterNumeric;
QString BondCreationTime;
QString MistypedValues;
QString PythonNotOnPath;
QString CondaNotOnPath;
const char* UnknownException = nullptr;

void initialise()
{
    Warning = translated("Warning");
    DeckIncompatible = translated("Deck Incompatible");
    const std::string materialToken = "Material name contains \"" + DeckKeys::Separator +
                                      "\", remove this token before attempting to calibrate";
    MaterialToken = translated(materialToken.c_str());
    EnterDirectory = translated("Please enter a directory");
    DirectoryMissing = translated("The directory entered does not exist");
    JobspecNoH5 = translated("Jobspec does not contain valid h5 file");
    JobspecNoCsv = translated("Jobspec does not contain valid csv file");
    EnterNumeric = translated("Please enter numeric characters");
    BondCreationTime =
        translated("BondCreationTime Particle Custom Property is currently unsupported");
    MistypedValues = translated("Internal values are mistyped when generating jobs, data is "
                                "corrupted - contact Quillon ORVA if you receive this message.");
    PythonNotOnPath = translated("To perform Python analysis, the python executable's directory "
                                 "is required to be on the PATH environment variable");
    CondaNotOnPath =
        translated("To perform Python analysis, the Anaconda 'conda' executable's directory is "
                   "required to be on the PATH environment variable");
    UnknownException = "Unknown Exception";
}

} // namespace Messages
