#pragma once

#include <QWidget>

/// A page of the wizard. The window calls `onPageEntered` each time the page becomes current; the
/// page says through `stageComplete` whether the user may go on.
class IFrame : public QWidget
{
    Q_OBJECT

public:
    explicit IFrame(QWidget* parent = nullptr);
    ~IFrame() override;

    virtual void onPageEntered() = 0;

signals:
    void stageComplete(bool complete);
};
