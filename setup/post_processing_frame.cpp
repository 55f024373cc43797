#include "setup/post_processing_frame.h"

#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "deck/deck_files.h"
#include "deck/deck_store.h"
#include "platform/existence.h"
#include "widgets/file_name_expression.h"

#include <QFileDialog>
#include <QRegularExpressionValidator>

#include <filesystem>

namespace {

constexpr int NO_ANALYSIS = 0;
constexpr int SIMULATOR_EXPORT = 1;
constexpr int PYTHON_ANALYSIS = 2;

std::string textOf(const QLineEdit* edit)
{
    return edit->text().toStdString();
}

bool exists(const QLineEdit* edit)
{
    return platform::exists(std::filesystem::u8path(textOf(edit)));
}

bool endsWith(const QLineEdit* edit, const std::string& extension)
{
    return edit->text().endsWith(QString::fromStdString(extension), Qt::CaseSensitive);
}

} // namespace

CConnectionTable<CPostProcessingFrame> CPostProcessingFrame::s_connections;

CPostProcessingFrame::CPostProcessingFrame(QWidget* parent)
    : IFrame(parent)
{
    setupUi(this);
    setupConnections();
    m_argumentValidator =
        std::make_shared<QRegularExpressionValidator>(fileNameRegularExpression(), this);
    m_lePythonDeckFlag->setValidator(m_argumentValidator.get());
    m_lePythonAdditionalFlags->setValidator(m_argumentValidator.get());
}

CPostProcessingFrame::~CPostProcessingFrame()
{
    s_connections.release(this);
}

void CPostProcessingFrame::setupConnections()
{
    std::vector<QMetaObject::Connection> connections;
    const auto showMode = [&](QRadioButton* button, int mode) {
        connections.push_back(connect(button, &QRadioButton::toggled, this,
                                      [this, mode] { setPostProcessingMode(mode); }));
    };
    showMode(m_rbNoPostProcessing, NO_ANALYSIS);
    showMode(m_rbPostProcessingORVA, SIMULATOR_EXPORT);
    showMode(m_rbPythonPostProcessing, PYTHON_ANALYSIS);
    for (QPushButton* button :
         {m_pbDfgLocationSelect, m_pbQsvLocationSelect, m_pbPyLocationSelect}) {
        connections.push_back(connect(button, &QPushButton::clicked, this,
                                      &CPostProcessingFrame::browseForFile, Qt::UniqueConnection));
    }
    for (QLineEdit* edit : {m_leDfgLocation, m_leQsvLocation, m_lePythonDeckFlag,
                            m_lePythonLocation, m_lePythonAdditionalFlags}) {
        connections.push_back(connect(edit, &QLineEdit::textChanged, this,
                                      &CPostProcessingFrame::validateFields, Qt::UniqueConnection));
    }
    connections.push_back(connect(m_gbPythonDeckArgument, &QGroupBox::toggled, this,
                                  &CPostProcessingFrame::validateFields, Qt::UniqueConnection));
    s_connections.store(this, std::move(connections));
}

void CPostProcessingFrame::onPageEntered()
{
    const QString deck = CAppSettings::instance()->text(CAppSettings::ZEKPath);
    m_leDfgLocation->setText(DeckFiles::companion(deck, FileNames::DfgExtension));
    m_leQsvLocation->setText(DeckFiles::companion(deck, FileNames::QsvExtension));
    setPostProcessingMode(CDeckStore::instance()->postProcessing().first);
}

void CPostProcessingFrame::browseForFile()
{
    QLineEdit* edit = m_lePythonLocation;
    QString title = FileNames::ChoosePython;
    QString filter = FileNames::PythonFilter;
    if (sender() == m_pbDfgLocationSelect) {
        edit = m_leDfgLocation;
        title = FileNames::ChooseDfg;
        filter = FileNames::DfgFilter;
    } else if (sender() == m_pbQsvLocationSelect) {
        edit = m_leQsvLocation;
        title = FileNames::ChooseQsv;
        filter = FileNames::QsvFilter;
    }
    const QString start = CAppSettings::instance()->text(CAppSettings::RootPath);
    const QString path = QFileDialog::getOpenFileName(this, title, start, filter);
    if (!path.isEmpty()) {
        edit->setText(path);
    }
}

void CPostProcessingFrame::setPostProcessingMode(int mode)
{
    sw_PostProcessing->setCurrentIndex(mode);
    CDeckStore::instance()->setPostProcessing({mode, arguments(mode)});
}

std::vector<std::string> CPostProcessingFrame::arguments(int mode) const
{
    switch (mode) {
    case NO_ANALYSIS:
        return {std::string()};
    case SIMULATOR_EXPORT:
        return {textOf(m_leDfgLocation), textOf(m_leQsvLocation)};
    case PYTHON_ANALYSIS:
        return {textOf(m_lePythonLocation),
                m_gbPythonDeckArgument->isChecked() ? textOf(m_lePythonDeckFlag)
                                                    : FileNames::NoDeckFlag,
                textOf(m_lePythonAdditionalFlags)};
    default:
        return {};
    }
}

void CPostProcessingFrame::validateFields()
{
    const int mode = sw_PostProcessing->currentIndex();
    setPostProcessingMode(mode);
    emit stageComplete(isComplete(mode));
}

bool CPostProcessingFrame::isComplete(int mode) const
{
    switch (mode) {
    case SIMULATOR_EXPORT:
        return exists(m_leDfgLocation) && exists(m_leQsvLocation) &&
               endsWith(m_leDfgLocation, FileNames::DfgExtension) &&
               endsWith(m_leQsvLocation, FileNames::QsvExtension);
    case PYTHON_ANALYSIS:
        return exists(m_lePythonLocation) &&
               endsWith(m_lePythonLocation, FileNames::PythonExtension);
    default:
        return true;
    }
}
