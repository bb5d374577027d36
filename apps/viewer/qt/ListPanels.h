// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QListWidget;
class QPushButton;

namespace vfViewer {

/// A list and a button below it that acts on the whole of it.
class ListPanel : public QWidget
{
    Q_OBJECT

protected:
    ListPanel(QWidget& parent, const char* name);

    virtual void fill(QListWidget& list) = 0;
    virtual void clearAll() = 0;
    virtual QString clearText() const = 0;

    /// Fills the list for the first time. For the constructors.
    void start();
    void changeEvent(QEvent* event) override;

private:
    void refresh();

    QListWidget* m_list;
    QPushButton* m_clear;
};

/// What readers and writers complained about, the latest at the end.
class MessagesPanel : public ListPanel
{
    Q_OBJECT

public:
    explicit MessagesPanel(QWidget& parent);

protected:
    void fill(QListWidget& list) override;
    void clearAll() override;
    QString clearText() const override;
};

/// What was measured in the active model.
class MeasurementsPanel : public ListPanel
{
    Q_OBJECT

public:
    explicit MeasurementsPanel(QWidget& parent);

protected:
    void fill(QListWidget& list) override;
    void clearAll() override;
    QString clearText() const override;
};

} // namespace vfViewer
