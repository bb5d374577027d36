// SPDX-License-Identifier: MIT
#include "qt/ScenePanel.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "ui/Menus.h"

#include <velaforge/qt/QtApplication.h>
#include <velaforge/scene/NodeKind.h>
#include <velaforge/scene/SceneCommands.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <osg/Group>
#include <osg/NodeVisitor>

#include <algorithm>
#include <functional>
#include <utility>

namespace vfViewer {

namespace {

/// The most results of a search that are shown.
constexpr std::size_t mostFound = 500;

QString kindLabel(const osg::Node& node)
{
    return QCoreApplication::translate(translationContext, vfScene::kindOf(node));
}

QString labelOf(const osg::Node& node)
{
    const ModelDocument* document = activeModel();
    const QString name = QString::fromStdString(
        document ? vfScene::nameOf(node, document->getModelScene(), document->getTitle()) : node.getName());
    return name.isEmpty() ? kindLabel(node) : name;
}

/// @return whether there is more to be shown below a node: what is drawn for a part is the part
bool hasParts(osg::Node& node)
{
    osg::Group* group = node.asGroup();
    return group && !node.asGeode() && !vfScene::shownChildren(*group).empty();
}

/// Goes over the nodes whose names hold a text, each once.
class Search : public osg::NodeVisitor
{
public:
    explicit Search(const QString& text) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_text(text)
    {
        setNodeMaskOverride(~0u);
    }
    void apply(osg::Node& node) override
    {
        const bool isKnown = std::find(found.begin(), found.end(), &node) != found.end();
        if (!isKnown && !vfScene::TransformCommand::isPlacement(node) && found.size() < mostFound &&
            labelOf(node).contains(m_text, Qt::CaseInsensitive))
            found.push_back(&node);
        if (found.size() < mostFound && hasParts(node))
            traverse(node);
    }
    std::vector<osg::Node*> found;

private:
    QString m_text;
};

} // namespace

ScenePanel::ScenePanel(QWidget& parent)
    : QWidget(&parent), m_search(new QLineEdit(this)), m_tree(new QTreeWidget(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_search);
    layout->addWidget(m_tree);
    m_search->setObjectName(QStringLiteral("sceneSearch"));
    m_search->setClearButtonEnabled(true);
    m_tree->setObjectName(QStringLiteral("sceneTree"));
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_search, &QLineEdit::textChanged, this, [this] {
        rebuild();
        refresh();
    });
    connect(m_tree, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { unfold(*item); });
    connect(m_tree, &QTreeWidget::itemChanged, this, &ScenePanel::onItemChanged);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &ScenePanel::onCurrentItemChanged);
    connect(m_tree, &QTreeWidget::customContextMenuRequested, this, &ScenePanel::showMenu);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
    retranslate();
    refresh();
}

void ScenePanel::retranslate()
{
    m_search->setPlaceholderText(tr("Search"));
}

osg::Node* ScenePanel::nodeOf(const QTreeWidgetItem* item) const
{
    const auto found = m_nodes.find(item);
    return found == m_nodes.end() ? nullptr : found->second.get();
}

QTreeWidgetItem* ScenePanel::addItem(QTreeWidgetItem& parent, osg::Node& node)
{
    auto* item = new QTreeWidgetItem(&parent);
    m_nodes[item] = &node;
    if (hasParts(node))
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    update(*item);
    return item;
}

void ScenePanel::update(QTreeWidgetItem& item)
{
    const osg::Node* node = nodeOf(&item);
    if (!node)
        return;
    item.setText(0, labelOf(*node));
    item.setToolTip(0, kindLabel(*node));
    item.setCheckState(0, node->getNodeMask() != 0 ? Qt::Checked : Qt::Unchecked);
    for (int i = 0; i < item.childCount(); ++i)
        update(*item.child(i));
}

void ScenePanel::unfold(QTreeWidgetItem& item)
{
    osg::Node* node = nodeOf(&item);
    if (item.childCount() > 0 || !node || !hasParts(*node))
        return;
    const bool wasFilling = std::exchange(m_isFilling, true);
    for (osg::Node* child : vfScene::shownChildren(*node->asGroup()))
        addItem(item, *child);
    m_isFilling = wasFilling;
}

/// @return whether the items that are there still stand for the nodes that are there
bool ScenePanel::isCurrent() const
{
    const ModelDocument* document = activeModel();
    osg::Node* root = document ? &document->scene() : nullptr;
    if (m_root.get() != root || (root && !m_search->text().isEmpty()))
        return !root && !m_root.valid();
    const std::function<bool(const QTreeWidgetItem&, osg::Group&)> isSame = [&](const QTreeWidgetItem& item,
                                                                                osg::Group& group) {
        const std::vector<osg::Node*> children = vfScene::shownChildren(group);
        if (static_cast<std::size_t>(item.childCount()) != children.size())
            return false;
        for (int i = 0; i < item.childCount(); ++i) {
            osg::Node* node = nodeOf(item.child(i));
            if (node != children[static_cast<std::size_t>(i)])
                return false;
            if (item.child(i)->childCount() > 0 && !isSame(*item.child(i), *node->asGroup()))
                return false;
        }
        return true;
    };
    return !root || isSame(*m_tree->invisibleRootItem(), *root->asGroup());
}

void ScenePanel::rebuild()
{
    const bool wasFilling = std::exchange(m_isFilling, true);
    m_tree->clear();
    m_nodes.clear();
    const ModelDocument* document = activeModel();
    m_root = document ? &document->scene() : nullptr;
    if (document && !m_search->text().isEmpty()) {
        showFound(m_search->text());
    } else if (document) {
        for (osg::Node* child : vfScene::shownChildren(document->scene())) {
            QTreeWidgetItem* item = addItem(*m_tree->invisibleRootItem(), *child);
            // Down to where there is something to choose from.
            for (QTreeWidgetItem* one = item; one; one = one->childCount() == 1 ? one->child(0) : nullptr) {
                unfold(*one);
                one->setExpanded(one->childCount() > 0);
            }
        }
    }
    m_isFilling = wasFilling;
}

void ScenePanel::showFound(const QString& text)
{
    Search search(text);
    for (unsigned int i = 0; i < m_root->asGroup()->getNumChildren(); ++i)
        m_root->asGroup()->getChild(i)->accept(search);
    for (osg::Node* node : search.found)
        addItem(*m_tree->invisibleRootItem(), *node)
            ->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
    if (search.found.empty()) {
        auto* item =
            new QTreeWidgetItem(m_tree->invisibleRootItem(), {tr("No part is called “%1”").arg(text)});
        item->setFlags(Qt::NoItemFlags);
    }
}

/// @return the item that stands for a node, with those above it unfolded
QTreeWidgetItem* ScenePanel::itemOf(const osg::Node& node)
{
    for (const auto& [item, shown] : m_nodes) {
        if (shown.get() == &node)
            return const_cast<QTreeWidgetItem*>(item);
    }
    const osg::NodePathList paths = node.getParentalNodePaths(m_root.get());
    if (paths.empty() || !m_search->text().isEmpty())
        return nullptr;
    QTreeWidgetItem* item = m_tree->invisibleRootItem();
    for (const osg::Node* next : paths.front()) {
        if (next == m_root.get() || vfScene::TransformCommand::isPlacement(*next))
            continue;
        unfold(*item);
        QTreeWidgetItem* below = nullptr;
        for (int i = 0; i < item->childCount() && !below; ++i)
            below = nodeOf(item->child(i)) == next ? item->child(i) : nullptr;
        if (!below)
            return nullptr;
        item = below;
    }
    return item;
}

void ScenePanel::refresh()
{
    const bool wasFilling = std::exchange(m_isFilling, true);
    if (!isCurrent())
        rebuild();
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        update(*m_tree->topLevelItem(i));
    const ModelDocument* document = activeModel();
    const osg::Node* selected = document ? document->getSelection() : nullptr;
    QTreeWidgetItem* item = selected ? itemOf(*selected) : nullptr;
    if (item != m_tree->currentItem() || (item && !item->isSelected())) {
        m_tree->setCurrentItem(item);
        if (item)
            m_tree->scrollToItem(item);
    }
    m_isFilling = wasFilling;
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
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

void ScenePanel::onCurrentItemChanged(QTreeWidgetItem* item)
{
    ModelDocument* document = activeModel();
    if (m_isFilling || !document)
        return;
    document->setSelection(nodeOf(item));
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

void ScenePanel::showMenu(const QPoint& position)
{
    auto* shell = vfApplication::QtApplication::instance();
    if (!shell || !m_tree->itemAt(position))
        return;
    m_tree->setCurrentItem(m_tree->itemAt(position));
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("sceneMenu"));
    const std::pair<QString, const char*> entries[] = {{tr("Look at it"), "vfViewer::FitSelection"},
                                                       {tr("Isolate"), "vfViewer::Isolate"},
                                                       {tr("Hide"), "vfViewer::Hide"},
                                                       {tr("Show"), "vfViewer::Show"},
                                                       {tr("Rename…"), "vfViewer::Rename"},
                                                       {tr("Remove"), "vfViewer::Remove"}};
    for (const auto& [text, command] : entries)
        connect(menu.addAction(text), &QAction::triggered, this,
                [shell, name = command] { shell->invokeCommand(name); });
    menu.exec(m_tree->viewport()->mapToGlobal(position));
}

void ScenePanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

} // namespace vfViewer
