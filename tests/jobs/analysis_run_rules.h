#pragma once

#include "tests/jobs/page_fixture.h"

#include <QObject>

/// What a local run with a Python analysis does on every platform; the tests of one platform derive
/// from it and run these tests with their own.
class CAnalysisRunRules : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qputenv("PATH", m_path); }

    void analysesACancelledCase();
    void refusesToRunWithoutPython();
    void refusesToRunWithoutConda();
    void refusesToRunWithoutBothNamingPythonAlone();
    void looksForNoToolsWithNoConcurrentSimulations();

protected:
    /// A new folder with a python that writes analysis.txt and interpreter.pid into the folder of
    /// its case, a conda that tells what it was asked, both or neither.
    virtual QString toolFolder(CPageFixture& fixture, bool python, bool conda) const = 0;
    /// Lets programs be found in `front` and where the system has its own.
    virtual void setPath(const QString& front) const = 0;

    static JobDescription pythonJob(CPageFixture& fixture, int cases);
    /// The lines of a file of a case.
    static QByteArray ofCase(const QString& job, int caseNumber, const char* name);
    QByteArray formerPath() const { return m_path; }

private:
    const QByteArray m_path = qgetenv("PATH");
};
