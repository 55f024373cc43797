#pragma once

#include "tests/setup/simulator_flags.h"

#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <algorithm>

/// The options of the page as it starts, for a deck of the newer formats.
inline const QMap<QString, QString> DEFAULTS{
    {" -r ", "0.000001"}, {" -w ", "0.000000"}, {" -g ", "2.500000"}, {" -t ", "0.000000"},
    {" -p ", "1"},        {" -E ", "0"},        {" --dyn ", "0"},     {" --compress-data ", "0"}};

/// Decks before the newer formats know nothing of these.
inline const QStringList NEWER_FLAGS{" --compress-data ", " --sp ", " --acd "};

inline bool isFlag(const QString& flag)
{
    return std::find(FLAGS_IN_ORDER.begin(), FLAGS_IN_ORDER.end(), flag.toStdString()) !=
           FLAGS_IN_ORDER.end();
}

/// The default options with changes, each a flag followed by "=" and its value or by "!" for its
/// absence, several of them separated by "; ".
inline QString expectedOptions(const QString& changes, int deckFormat = 2)
{
    QMap<QString, QString> values = DEFAULTS;
    for (const QString& change : changes.split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
        const int end = change.indexOf(QRegularExpression(QStringLiteral("[=!]")));
        const QString flag = QLatin1Char(' ') + change.left(end) + QLatin1Char(' ');
        if (end < 0 || !isFlag(flag)) {
            qFatal("no such flag: %s", qPrintable(change));
        }
        if (change.at(end) == QLatin1Char('!')) {
            values.remove(flag);
        } else {
            values[flag] = change.mid(end + 1);
        }
    }
    QString options = QStringLiteral(" -c ");
    for (const std::string& word : FLAGS_IN_ORDER) {
        const QString flag = QString::fromStdString(word);
        if (values.contains(flag) && (deckFormat >= 2 || !NEWER_FLAGS.contains(flag))) {
            options += flag + values[flag];
        }
    }
    return options;
}
