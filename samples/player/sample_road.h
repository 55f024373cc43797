#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

class CModalWatcher;
class CUserHand;

/// How the cases of the sample are analysed and where they run.
enum class Road { NoAnalysis, Export, Python, Distributed };

/// A deck to play with, and what varies in it.
struct SPlayedDeck
{
    QString stem;           ///< of the deck's file
    QString additionalFile; ///< beside the deck
    QString pair;           ///< of the materials whose interaction varies
    /// Parameters with the numbers that are tried besides the deck's own.
    std::vector<std::pair<QString, QStringList>> varied;
};

/// The sample for the stand-in, and the one for a real engine.
SPlayedDeck columnSample();
SPlayedDeck heapSample();

/// A whole calibration on the sample, page by page, as a user would do it.
class CSampleRoad
{
public:
    struct SPlaces
    {
        QDir sample;       ///< the sample deck and what belongs to it
        SPlayedDeck deck;  ///< which one it is
        QString simulator; ///< what runs the cases
        QDir work;         ///< where the jobs go
        QString pictures;  ///< folder for a picture of each page, empty for none
    };

    /// `say` gets a line per step.
    CSampleRoad(CUserHand& hand, CModalWatcher& dialogs, SPlaces places,
                std::function<void(const QString&)> say);

    /// Plays all six pages. Returns the path of the combined file, or of the batch file where the
    /// cases are for another machine. Throws std::runtime_error where a step doesn't come about.
    QString play(Road road);

    /// Combines the results of cases that ran elsewhere, on the last page alone. Returns the path
    /// of the combined file. Throws as `play`.
    QString combine(const QString& folder);

private:
    void loadDeck();
    void varyParameters();
    void varyField(const QString& parameter, const QStringList& numbers);
    void chooseAnalysis(Road road);
    void setOptions();
    void generateJob();
    void runCases();
    int caseCount() const;
    void awaitAnalyses();
    QString writeDistributedFiles();
    QString collate(const QString& folder);
    /// No step of the sample: shows what a deck with a coupling server would take.
    void photographCoupling();
    void next(const QString& picture);
    QString caseRoot() const;
    void demand(bool fulfilled, const QString& otherwise) const;

    CUserHand& m_hand;
    CModalWatcher& m_dialogs;
    SPlaces m_places;
    std::function<void(const QString&)> m_say;
};
