#pragma once

#include "jobs/case_output.h"

#include <QObject>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <string>

/// What a thread with a coupling server does on every platform; the tests of one platform derive
/// from it and run these tests with their own.
class CCouplingThreadRules : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void startsTheServerWhateverWasPrintedUntilItRuns();
    void leavesTheServerOutWhereNoClientIsAwaitedAtFirst();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse();
    void startsTheServerAgainWhileAClientIsAwaited();
    void looksAgainAfterFiveSeconds();
    void stopBeforeTheStartLeavesTheServerOut();

protected:
    /// The command of a server that writes a line into the log and then does as `script` says.
    virtual std::string command(const QByteArray& script = QByteArray()) const = 0;
    /// Within that time a server has started, however busy the machine is.
    virtual std::chrono::milliseconds longestStart() const = 0;

    QString path(const char* name) const;
    QByteArray log() const;
    int starts() const { return log().count('\n'); }

    std::shared_ptr<CCaseOutput> m_lastOutput;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};
