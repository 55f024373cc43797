#include "tests/jobs/page_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>

#include <vector>

namespace {

/// A widget of the form, and what one of its properties reads at the start.
struct FormWidget
{
    const char* name;
    const char* kind;
    const char* property = nullptr;
    const char* text = nullptr;
};

/// In the order of the form.
const std::vector<FormWidget> FORM{
    {"frame_2", "QFrame"},
    {"m_pbJobSaveLocationSelect", "QPushButton", "text", "..."},
    {"m_leJobSaveLocation", "QLineEdit", "text", ""},
    {"m_lblJobSaveLocation", "QLabel", "text", "Job Save Location:"},
    {"m_pbGenerateJob", "QPushButton", "text", "Generate Job Specification"},
    {"horizontalFrame1", "QFrame"},
    {"m_pbJobLoadLocationSelect", "QPushButton", "text", "..."},
    {"m_leJobLoadLocation", "QLineEdit", "text", ""},
    {"m_lblJobLoadLocation", "QLabel", "text", "Job Load Location:"},
    {"m_pbJobLoad", "QPushButton", "text", "Load Job Specification"},
    {"m_lblORVAExeLocation", "QLabel", "text", "ORVA Executable Location:"},
    {"m_leORVAExeLocation", "QLineEdit"},
    {"m_pbORVAExeLocationSelect", "QPushButton", "text", "..."},
    {"gridFrame_4", "QFrame"},
    {"m_gbSimulationExecutionOptions", "QGroupBox", "title", "Simulation Execution Options"},
    {"m_rbSimulationLocal", "QRadioButton", "text", "Generate files and Simulate Locally"},
    {"m_rbSimulationDistributed", "QRadioButton", "text",
     "Generate Files for Distributed Simulation"},
    {"sw_SimExecution", "QStackedWidget"},
    {"m_pageLocalSimulations", "QWidget"},
    {"m_lblConcurrentSims", "QLabel", "text", "Number of Concurrent Simulations:"},
    {"m_sbConcurrentSimulations", "CIntegerSpinBox", "value", "1"},
    {"m_gbOngoingSimulations", "QGroupBox", "title", "Ongoing Simulations"},
    {"m_listOngoingSimulations", "QListWidget"},
    {"m_gbInspector", "QGroupBox", "title", "Inspector"},
    {"horizontalFrame_5", "QFrame"},
    {"m_lblJobName", "QLabel", "text", "Select a finished Job to view it's output"},
    {"m_inspectorDetails", "QTextEdit", "plainText", ""},
    {"m_pbStartSimulating", "QPushButton", "text", "Start Simulating"},
    {"m_pbCancelSimulating", "QPushButton", "text", "Cancel Queued Simulations"},
    {"m_progBarCompletedSimulations", "QProgressBar", "value", "0"},
    {"m_pageDistributedFiles", "QWidget"},
    {"horizontalFrame_4", "QFrame"},
    {"m_pbGenerateDistributedFiles", "QPushButton", "text", "Generate Distributed Files"},
    {"m_distributedFileProgress", "QProgressBar", "value", "0"},
};

QList<QWidget*> childrenOf(const QWidget& parent)
{
    const auto* const stack = qobject_cast<const QStackedWidget*>(&parent);
    if (stack == nullptr) {
        return parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    }
    // A stack moves its current page behind the others.
    QList<QWidget*> pages;
    for (int index = 0; index < stack->count(); ++index) {
        pages << stack->widget(index);
    }
    return pages;
}

/// The names below `parent` in order, as far as they are among the known ones.
void appendNames(const QWidget& parent, const QStringList& known, QStringList& names)
{
    for (const QWidget* child : childrenOf(parent)) {
        if (known.contains(child->objectName())) {
            names << child->objectName();
        }
        appendNames(*child, known, names);
    }
}

} // namespace

Q_DECLARE_METATYPE(FormWidget)

class SubmitJobFormTest : public QObject
{
    Q_OBJECT

private slots:
    void bearsTheTextsOfItsForm_data();
    void bearsTheTextsOfItsForm();
    void keepsTheSizesOfItsForm();
    void alignsItsLocations();
    void standsInTheOrderOfItsForm();
};

void SubmitJobFormTest::bearsTheTextsOfItsForm_data()
{
    QTest::addColumn<FormWidget>("entry");
    for (const FormWidget& entry : FORM) {
        QTest::newRow(entry.name) << entry;
    }
}

void SubmitJobFormTest::bearsTheTextsOfItsForm()
{
    QFETCH(FormWidget, entry);
    const CPageFixture fixture;
    const auto* const widget = fixture.widget<QWidget>(entry.name);
    QCOMPARE(widget->metaObject()->className(), entry.kind);
    if (entry.property != nullptr) {
        QCOMPARE(widget->property(entry.property).toString(), QString::fromLatin1(entry.text));
    }
}

void SubmitJobFormTest::keepsTheSizesOfItsForm()
{
    CPageFixture fixture;
    QCOMPARE(fixture.page().windowTitle(), QStringLiteral("SubmitJobFrameUI"));
    for (const char* name :
         {"m_pbJobSaveLocationSelect", "m_pbJobLoadLocationSelect", "m_pbORVAExeLocationSelect"}) {
        QCOMPARE(fixture.widget<QPushButton>(name)->minimumSize(), QSize(22, 22));
        QCOMPARE(fixture.widget<QPushButton>(name)->maximumSize(), QSize(22, 22));
    }
    for (const char* name : {"m_leJobSaveLocation", "m_leJobLoadLocation"}) {
        QCOMPARE(fixture.widget<QLineEdit>(name)->height(), 22);
    }
    for (const char* name : {"m_lblJobSaveLocation", "m_lblJobLoadLocation"}) {
        QCOMPARE(fixture.widget<QLabel>(name)->minimumWidth(), 100);
    }
    for (const char* name : {"m_pbGenerateJob", "m_pbJobLoad"}) {
        QCOMPARE(fixture.widget<QPushButton>(name)->minimumWidth(), 150);
    }
    QCOMPARE(fixture.widget<QFrame>("frame_2")->frameShape(), QFrame::NoFrame);
    QCOMPARE(fixture.widget<QWidget>("m_sbConcurrentSimulations")->minimumWidth(), 100);
    QCOMPARE(fixture.widget<QTextEdit>("m_inspectorDetails")->lineWrapMode(), QTextEdit::NoWrap);
    QVERIFY(fixture.widget<QProgressBar>("m_progBarCompletedSimulations")->isTextVisible());
}

void SubmitJobFormTest::alignsItsLocations()
{
    CPageFixture fixture;
    fixture.page().resize(1000, 600);
    QTest::qWait(1);
    const auto* const save = fixture.widget<QLineEdit>("m_leJobSaveLocation");
    for (const char* name : {"m_leJobLoadLocation", "m_leORVAExeLocation"}) {
        const auto* const edit = fixture.widget<QLineEdit>(name);
        QCOMPARE(edit->mapTo(&fixture.page(), QPoint()).x(),
                 save->mapTo(&fixture.page(), QPoint()).x());
        QCOMPARE(edit->width(), save->width());
    }
}

void SubmitJobFormTest::standsInTheOrderOfItsForm()
{
    QStringList names;
    for (const FormWidget& entry : FORM) {
        names << entry.name;
    }
    CPageFixture fixture;
    QStringList found;
    appendNames(fixture.page(), names, found);
    QCOMPARE(found, names);
}

TARNEL_TEST_MAIN(SubmitJobFormTest)

#include "submit_job_form_test.moc"
