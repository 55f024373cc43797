#include "deck/deck_loader_frame.h"

#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "platform/existence.h"

#include <QBitmap>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPixmap>

#include <algorithm>

namespace {

const QLatin1Char pathSeparator(';');

bool exists(const QString& path)
{
    return platform::exists(path.toStdString());
}

bool allExist(const QStringList& paths)
{
    return std::all_of(paths.begin(), paths.end(), exists);
}

} // namespace

CConnectionTable<CDeckLoaderFrame> CDeckLoaderFrame::s_connections;

CDeckLoaderFrame::CDeckLoaderFrame(QWidget* parent)
    : IFrame(parent)
    , m_serializer(std::make_unique<CDeckSerializer>())
{
    setupUi(this);
    setupConnections();
    showLogo();
    show();
}

CDeckLoaderFrame::~CDeckLoaderFrame()
{
    s_connections.release(this);
}

void CDeckLoaderFrame::setupConnections()
{
    const Qt::ConnectionType unique = Qt::UniqueConnection;
    s_connections.store(this, {
                                  connect(m_pbZekFilesSelect, &QPushButton::clicked, this,
                                          &CDeckLoaderFrame::browseForFile, unique),
                                  connect(m_pbAdditionalFilesSelect, &QPushButton::clicked, this,
                                          &CDeckLoaderFrame::browseForAdditionalFiles, unique),
                                  connect(m_leDeckFilePath, &QLineEdit::textChanged, this,
                                          &CDeckLoaderFrame::validateFileSelections, unique),
                                  connect(m_leAdditionalFilesPath, &QLineEdit::textChanged, this,
                                          &CDeckLoaderFrame::validateFileSelections, unique),
                              });
}

void CDeckLoaderFrame::showLogo()
{
    const int side = std::min(m_Logo->width(), 64);
    const QSize size = Icons::MainWindow.actualSize(QSize(side, side), QIcon::Normal, QIcon::Off);
    const QPixmap logo = Icons::MainWindow.pixmap(size);
    m_Logo->setPixmap(logo);
    m_Logo->setMask(logo.mask());
}

void CDeckLoaderFrame::onPageEntered() {}

void CDeckLoaderFrame::browseForFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, FileNames::ChooseDeck, CAppSettings::instance()->text(CAppSettings::RootPath),
        FileNames::DeckFilter);
    if (!path.isEmpty()) {
        m_leDeckFilePath->setText(path);
    }
}

void CDeckLoaderFrame::browseForAdditionalFiles()
{
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, FileNames::ChooseAdditionalFiles,
                                      CAppSettings::instance()->text(CAppSettings::RootPath));
    if (!paths.isEmpty()) {
        m_leAdditionalFilesPath->setText(paths.join(pathSeparator));
    }
}

bool CDeckLoaderFrame::selectionsAreValid() const
{
    const QString deck = m_leDeckFilePath->text();
    const bool deckExists = exists(deck);
    if (!deckExists || !deck.endsWith(QString::fromStdString(FileNames::DeckExtension))) {
        return false;
    }
    const QString additional = m_leAdditionalFilesPath->text();
    return additional.isEmpty() || allExist(additional.split(pathSeparator));
}

void CDeckLoaderFrame::validateFileSelections()
{
    const bool valid = selectionsAreValid();
    if (valid) {
        saveSelections();
        reloadDeck();
    }
    emit stageComplete(valid);
}

void CDeckLoaderFrame::saveSelections() const
{
    const QString deck = m_leDeckFilePath->text();
    CAppSettings* settings = CAppSettings::instance();
    settings->setValue(CAppSettings::RootPath, QFileInfo(deck).dir().path() + QLatin1Char('/'));
    settings->setValue(CAppSettings::ZEKPath, deck);
    settings->setValue(CAppSettings::AdditionalFilesPath, m_leAdditionalFilesPath->text());
}

void CDeckLoaderFrame::reloadDeck()
{
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    records.clear();
    records.push_back(DeckLoading::loadDeck(*m_serializer, m_leDeckFilePath->text()));
}
