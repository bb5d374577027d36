// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <osg/Node>
#include <osg/observer_ptr>

#include <map>
#include <vector>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace vfViewer {

class ModelDocument;

/// The active model as a tree that can be searched: its check marks hide and show, its selection is that of the model.
///
/// The children of a node are added when it is expanded, so that a model of many parts costs nothing before.
class ScenePanel : public QWidget
{
    Q_OBJECT

public:
    explicit ScenePanel(QWidget& parent);

    /// Shows the active model as it is now.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    bool isCurrent() const;
    void rebuild();
    void showFound(const QString& text);
    void unfold(QTreeWidgetItem& item);
    QTreeWidgetItem* addItem(QTreeWidgetItem& parent, osg::Node& node);
    void update(QTreeWidgetItem& item);
    QTreeWidgetItem* itemOf(const osg::Node& node);
    osg::Node* nodeOf(const QTreeWidgetItem* item) const;

    void onItemChanged(QTreeWidgetItem* item);
    void onCurrentItemChanged(QTreeWidgetItem* item);
    void showMenu(const QPoint& position);

    QLineEdit* m_search;
    QTreeWidget* m_tree;
    osg::observer_ptr<osg::Node> m_root; ///< of the model that is shown
    std::map<const QTreeWidgetItem*, osg::observer_ptr<osg::Node>> m_nodes;
    bool m_isFilling = false;
};

} // namespace vfViewer
