// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeWidget>

#include <osg/Node>
#include <osg/observer_ptr>

#include <map>

namespace vfViewer {

class ModelDocument;

/// The active model as a tree: its check marks hide and show, its selection is that of the model.
class ScenePanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit ScenePanel(QWidget& parent);

    /// Shows the active model as it is now.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;

private:
    void fill(QTreeWidgetItem& parent, osg::Node& node, int depth);
    void onItemChanged(QTreeWidgetItem* item);
    void onCurrentItemChanged(QTreeWidgetItem* item);
    osg::Node* nodeOf(const QTreeWidgetItem* item) const;

    std::map<const QTreeWidgetItem*, osg::observer_ptr<osg::Node>> m_nodes;
    bool m_isFilling = false;
};

} // namespace vfViewer
