// SPDX-License-Identifier: MIT
#include "qt/StatisticsPanel.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "ui/Menus.h"

#include <velaforge/scene/ModelStatistics.h>
#include <velaforge/scene/NodeProperties.h>

#include <QCoreApplication>
#include <QLocale>

namespace vfViewer {

void StatisticsPanel::fill()
{
    const ModelDocument* document = activeModel();
    osg::Node* target = document ? document->target() : nullptr;
    if (!target)
        return;
    const vfScene::ModelStatistics counted = vfScene::countModel(*target);
    const QLocale locale;
    addRow(tr("Counted"), document->getSelection() ? tr("selected part") : tr("whole model"));
    addRow(tr("Triangles"), locale.toString(counted.triangles));
    addRow(tr("Vertices"), locale.toString(counted.vertices));
    addRow(tr("Parts"), locale.toString(counted.parts));
    addRow(tr("Materials"), locale.toString(counted.materials));
    addRow(tr("Textures"), locale.toString(counted.textures));
    addRow(tr("Memory"), locale.formattedDataSize(qint64(counted.memory), 1, QLocale::DataSizeSIFormat));
    if (counted.bounds.valid()) {
        const osg::Vec3 size = counted.bounds._max - counted.bounds._min;
        addRow(tr("Width (x)"), locale.toString(double(size.x()), 'g', 6));
        addRow(tr("Depth (y)"), locale.toString(double(size.y()), 'g', 6));
        addRow(tr("Height (z)"), locale.toString(double(size.z()), 'g', 6));
    }
    const vfScene::ModelScene& scene = document->getModelScene();
    addRow(tr("Undo steps"), locale.toString(qulonglong(scene.getHistoryLength())));
    addRow(tr("Undo memory"),
           tr("%1 of %2")
               .arg(locale.formattedDataSize(qint64(scene.getHistoryMemory()), 1, QLocale::DataSizeSIFormat),
                    locale.formattedDataSize(qint64(scene.getHistoryLimit()), 1, QLocale::DataSizeSIFormat)));
}

void PropertiesPanel::fill()
{
    const ModelDocument* document = activeModel();
    osg::Node* target = document ? document->target() : nullptr;
    if (!target)
        return;
    for (const vfScene::NodeProperty& property : vfScene::propertiesOf(*target, document->getModelScene()))
        addRow(QCoreApplication::translate(translationContext, property.name),
               QString::fromStdString(property.value));
}

} // namespace vfViewer
