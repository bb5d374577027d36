// SPDX-License-Identifier: MIT
#include "qt/ScenePanel.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"

#include <velaforge/qt/QtApplication.h>

#include <QEvent>
#include <QHeaderView>

#include <osg/Group>

namespace vfViewer {

namespace {

/// A tree that is deeper tells a person nothing, and may never end.
constexpr int depthLimit = 64;

QString labelOf(const osg::Node& node)
{
    const QString name = QString::fromStdString(node.getName());
    return name.isEmpty() ? QString::fromLatin1(node.className()) : name;
}

} // namespace

ScenePanel::ScenePanel(QWidget& parent) : QTreeWidget(&parent)
{
    setObjectName(QStringLiteral("sceneTree"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemChanged, this, &ScenePanel::onItemChanged);
    connect(this, &QTreeWidget::currentItemChanged, this, &ScenePanel::onCurrentItemChanged);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
    refresh();
}

void ScenePanel::fill(QTreeWidgetItem& parent, osg::Node& node, int depth)
{
    auto* item = new QTreeWidgetItem(&parent, {labelOf(node)});
    item->setToolTip(0, QString::fromLatin1(node.className()));
    item->setCheckState(0, node.getNodeMask() != 0 ? Qt::Checked : Qt::Unchecked);
    m_nodes[item] = &node;
    osg::Group* group = node.asGroup();
    for (unsigned int i = 0; group && depth < depthLimit && i < group->getNumChildren(); ++i)
        fill(*item, *group->getChild(i), depth + 1);
}

void ScenePanel::refresh()
{
    m_isFilling = true;
    clear();
    m_nodes.clear();
    if (const ModelDocument* document = activeModel()) {
        for (unsigned int i = 0; i < document->scene().getNumChildren(); ++i)
            fill(*invisibleRootItem(), *document->scene().getChild(i), 0);
        expandToDepth(1);
        for (const auto& [item, node] : m_nodes) {
            if (node.get() == document->getSelection())
                setCurrentItem(const_cast<QTreeWidgetItem*>(item));
        }
    }
    m_isFilling = false;
}

osg::Node* ScenePanel::nodeOf(const QTreeWidgetItem* item) const
{
    const auto found = m_nodes.find(item);
    return found == m_nodes.end() ? nullptr : found->second.get();
}

void ScenePanel::onItemChanged(QTreeWidgetItem* item)
{
    osg::Node* node = nodeOf(item);
    ModelDocument* document = activeModel();
    if (m_isFilling || !node || !document)
        return;
    if (item->checkState(0) == Qt::Checked)
        document->show(*node);
    else
        document->hide(*node);
}

void ScenePanel::onCurrentItemChanged(QTreeWidgetItem* item)
{
    ModelDocument* document = activeModel();
    if (m_isFilling || !document)
        return;
    document->setSelection(nodeOf(item));
    document->updateAllViews(nullptr);
}

void ScenePanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        refresh();
    QTreeWidget::changeEvent(event);
}

} // namespace vfViewer
