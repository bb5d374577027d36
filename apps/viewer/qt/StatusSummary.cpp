// SPDX-License-Identifier: MIT
#include "qt/StatusSummary.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "ui/Menus.h"

#include <velaforge/application/Application.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/scene/ModelStatistics.h>
#include <velaforge/scene/NodeKind.h>
#include <velaforge/shell/StatusBar.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

namespace vfViewer {

namespace {

using vfApplication::StatusBarTextEnum;

/// The field of the status bar for the model; those of the framework have smaller numbers.
constexpr auto statusBarModel = static_cast<StatusBarTextEnum>(vfApplication::StatusBarPosition + 1);

void show(StatusBarTextEnum field, const QString& text)
{
    if (auto* application = vfApplication::Application::instance(false))
        application->getStatusBar().updateStatus(field, text.toUtf8(), 0);
}

QString selectionOf(const ModelDocument& document)
{
    const osg::Node* selected = document.getSelection();
    if (!selected)
        return QString();
    const QString name =
        QString::fromStdString(vfScene::nameOf(*selected, document.getModelScene(), document.getTitle()));
    return name.isEmpty() ? QCoreApplication::translate(translationContext, vfScene::kindOf(*selected))
                          : name;
}

} // namespace

StatusSummary::StatusSummary()
{
    vfApplication::QtApplication::instance()->addListener(*this, [this] { refresh(); });
    refresh();
}

StatusSummary::~StatusSummary() = default;

void StatusSummary::refresh()
{
    const ModelDocument* document = activeModel();
    show(vfApplication::StatusBarSelection, document ? selectionOf(*document) : QString());
    show(statusBarModel, document ? describe(*document) : QString());
}

QString StatusSummary::describe(const ModelDocument& document)
{
    // Listeners are called after each click; the model is counted after a change only.
    const unsigned long long state = document.getModelScene().getState();
    if (state == m_state && !m_text.isNull())
        return m_text;
    m_state = state;
    const vfScene::ModelStatistics counted = vfScene::countModel(document.scene());
    const QLocale locale;
    QStringList parts;
    if (counted.triangles > 0)
        parts << (counted.triangles == 1 ? tr("1 triangle")
                                         : tr("%1 triangles").arg(locale.toString(counted.triangles)));
    else if (counted.vertices > 0)
        parts << (counted.vertices == 1 ? tr("1 point")
                                        : tr("%1 points").arg(locale.toString(counted.vertices)));
    if (counted.bounds.valid()) {
        const osg::Vec3d size(counted.bounds._max - counted.bounds._min);
        const vfScene::Units& units = document.getUnits();
        const QString times = QStringLiteral(" × ");
        parts << QString::fromStdString(vfScene::describeLength(size.x(), units)) + times +
                     QString::fromStdString(vfScene::describeLength(size.y(), units)) + times +
                     QString::fromStdString(vfScene::describeLength(size.z(), units));
    }
    if (!document.getAnimation().isEmpty())
        parts << tr("animated: Space plays it");
    m_text = parts.join(QStringLiteral("  ·  "));
    if (m_text.isNull())
        m_text = QStringLiteral("");
    return m_text;
}

} // namespace vfViewer
