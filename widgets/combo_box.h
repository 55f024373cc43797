#pragma once

#include <QComboBox>

/// A combo box that leaves the wheel to its surroundings while it doesn't have the focus, so that
/// scrolling a page changes no choice.
class CComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBox(QWidget* parent = nullptr);

protected:
    bool event(QEvent* e) override;
};
