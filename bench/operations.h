#pragma once

#include <QStringList>

/// Each prepares untimed what it needs, does the operation through the libraries of the program and
/// prints its figures. The arguments are told in `operations.cpp`.
namespace Operations {

void makeTableDeck(const QStringList& arguments);
void readDeck(const QStringList& arguments);
void readPlainly(const QStringList& arguments);
void enterParameters(const QStringList& arguments);

void makeJob(const QStringList& arguments);
void writeMatrixText(const QStringList& arguments);
void writeMatrix(const QStringList& arguments);
void loadJob(const QStringList& arguments);
void prepareFolders(const QStringList& arguments);
void prepareDistributed(const QStringList& arguments);
void collate(const QStringList& arguments);

void runCases(const QStringList& arguments);
void cancelCases(const QStringList& arguments);

} // namespace Operations
