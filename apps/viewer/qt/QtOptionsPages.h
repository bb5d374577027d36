// SPDX-License-Identifier: MIT
#pragma once

#include "ui/OptionsPages.h"

#include <velaforge/qt/QtOptionsContents.h>

#include <QCoreApplication>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace vfViewer {

class ColorButton;

/// The page of recent files, to be seen.
class QtRecentFilesPage : public RecentFilesPage, public vfApplication::QtOptionsContents
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtRecentFilesPage)

public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    QString getTitle() override;
    QWidget* createWidget(QWidget& parent) override;
    void applyOptions() override;

private:
    QPointer<QSpinBox> m_count;
    QPointer<QCheckBox> m_session;
};

/// The page of pictures, to be seen.
class QtPicturePage : public PicturePage, public vfApplication::QtOptionsContents
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtPicturePage)

public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    QString getTitle() override;
    QWidget* createWidget(QWidget& parent) override;

    /// Shows the open models as it is set now.
    void applyOptions() override;

private:
    QPointer<QComboBox> m_view;
    QPointer<ColorButton> m_top;
    QPointer<ColorButton> m_bottom;
    QPointer<QComboBox> m_projection;
    QPointer<QCheckBox> m_grid;
    QPointer<QCheckBox> m_axes;
    QPointer<QCheckBox> m_smooth;
    QPointer<QCheckBox> m_lamps;
};

/// The page of models, to be seen.
class QtModelPage : public ModelPage, public vfApplication::QtOptionsContents
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtModelPage)

public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    QString getTitle() override;
    QWidget* createWidget(QWidget& parent) override;

    /// The open models take them over.
    void applyOptions() override;

private:
    QPointer<QComboBox> m_unit;
    QPointer<QComboBox> m_shown;
    QPointer<QSpinBox> m_history;
};

/// The page of the mouse, to be seen.
class QtMousePage : public MousePage, public vfApplication::QtOptionsContents
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtMousePage)

public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    QString getTitle() override;
    QWidget* createWidget(QWidget& parent) override;

    /// Open models follow at once.
    void applyOptions() override;

private:
    QPointer<QComboBox> m_orbit;
    QPointer<QSpinBox> m_speed;
};

/// Announces the pages of the viewer with widgets.
void announceQtOptionsPages();

} // namespace vfViewer
