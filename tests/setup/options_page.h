#pragma once

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "setup/processing_options_frame.h"
#include "tests/support/named_child.h"
#include "widgets/double_spin_box.h"
#include "widgets/integer_spin_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QVariant>

/// The options page with a deck in the store and a folder in which the deck would lie.
class COptionsPage
{
public:
    explicit COptionsPage(int deckFormat = 0)
    {
        setFormat(deckFormat);
        CAppSettings::instance()->setValue(CAppSettings::ZEKPath,
                                           m_folder.filePath(QStringLiteral("deck.zek")));
        CDeckStore::instance()->creatorData().resize(1);
        CDeckStore::instance()->creatorData().front().m_sName = "deck";
    }

    CProcessingOptionsFrame& page() { return m_page; }
    void enter() { m_page.onPageEntered(); }
    static void setFormat(int format) { CAppSettings::instance()->setDeckFormat(format); }

    template <class Child = QWidget>
    Child& child(const QString& name) const
    {
        return named<Child>(m_page, name);
    }

    bool isEnabled(const char* name) const { return child<>(QString(name)).isEnabled(); }

    /// Gives a widget a value as a user's choice would: state, index, number or text.
    void set(const QString& name, const QVariant& value) const
    {
        auto& widget = child<>(name);
        if (auto* checkBox = qobject_cast<QCheckBox*>(&widget)) {
            checkBox->setChecked(value.toBool());
        } else if (auto* group = qobject_cast<QGroupBox*>(&widget)) {
            group->setChecked(value.toBool());
        } else if (auto* comboBox = qobject_cast<QComboBox*>(&widget)) {
            comboBox->setCurrentIndex(value.toInt());
        } else if (auto* integerBox = qobject_cast<CIntegerSpinBox*>(&widget)) {
            integerBox->setValue(value.toInt());
        } else if (auto* doubleBox = qobject_cast<CDoubleSpinBox*>(&widget)) {
            doubleBox->setValue(value.toDouble());
        } else {
            child<QLineEdit>(name).setText(value.toString());
        }
    }

    /// Writes the .dfg file beside the deck, its header before `body`.
    void writeDfg(const QByteArray& body) const
    {
        QFile file(m_folder.filePath(QStringLiteral("deck.dfg")));
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("the .dfg file can't be written");
        }
        file.write("!format=KEYPATHVALUE\n!format-version=1.0.0.0\n!file-version=1.0.0\n" + body);
    }

    static QString options()
    {
        return QString::fromStdString(CDeckStore::instance()->simulatorOptions());
    }

    static CDeckStore::Coupling coupling() { return CDeckStore::instance()->coupling(); }

private:
    QTemporaryDir m_folder;
    CProcessingOptionsFrame m_page{nullptr};
};
