#pragma once

#include <QIcon>
#include <QString>

/// The icons of the resource set ":/Tarnel/".
namespace Icons {

extern QIcon OpenFile;
extern QIcon Creator;
extern QIcon Analyst;
extern QIcon Simulator;
extern QIcon Checkmark;
extern QIcon Results;
extern QIcon PreSim;
extern QIcon PostSimSuccess;
extern QIcon PostSimFailure;
extern QIcon MainWindow;

/// Resource path of the animation of a running case, for a QMovie.
extern QString PeriSimPath;

/// Registers the resource set and builds the icons; needs the application object.
void initialise();

} // namespace Icons
