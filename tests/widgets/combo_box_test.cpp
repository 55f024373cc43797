#include "tests/support/test_environment.h"
#include "tests/widgets/scroll_page.h"
#include "tests/widgets/wheel.h"
#include "widgets/combo_box.h"

#include <QApplication>
#include <QtTest>

namespace {

const QStringList CHOICES = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};

} // namespace

class ComboBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void focusComesByTabAndClickOnly();
    void wheelChangesTheChoiceWithFocus();
    void wheelScrollsTheParentWithoutFocus();
    void wheelWithoutParentIsIgnored();
};

void ComboBoxTest::focusComesByTabAndClickOnly()
{
    QCOMPARE(CComboBox().focusPolicy(), Qt::StrongFocus);
}

void ComboBoxTest::wheelChangesTheChoiceWithFocus()
{
    SScrollPage<CComboBox> scene;
    scene.widget->addItems(CHOICES);
    scene.widget->setFocus();
    QVERIFY(scene.widget->hasFocus());
    QVERIFY(turnWheel(*scene.widget));
    QCOMPARE(scene.widget->currentIndex(), 1);
    QCOMPARE(scene.scrolled(), 0);
}

void ComboBoxTest::wheelScrollsTheParentWithoutFocus()
{
    SScrollPage<CComboBox> scene;
    scene.widget->addItems(CHOICES);
    scene.other->setFocus();
    QVERIFY(!scene.widget->hasFocus());
    turnWheel(*scene.widget);
    QCOMPARE(scene.widget->currentIndex(), 0);
    QVERIFY(scene.scrolled() > 0);
}

void ComboBoxTest::wheelWithoutParentIsIgnored()
{
    CComboBox box;
    box.addItems(CHOICES);
    QVERIFY(!turnWheel(box));
    QCOMPARE(box.currentIndex(), 0);
}

TARNEL_TEST_MAIN(ComboBoxTest)
#include "combo_box_test.moc"
