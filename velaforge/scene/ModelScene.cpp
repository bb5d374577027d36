// SPDX-License-Identifier: MIT
#include <velaforge/scene/ModelScene.h>

#include <velaforge/scene/SceneCommands.h>

#include <osg/Drawable>
#include <osg/Geode>
#include <osg/NodeVisitor>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <set>
#include <unordered_set>
#include <utility>

namespace vfScene {

namespace {

using Nodes = std::vector<osg::ref_ptr<osg::Node>>;

/// Collects the nodes of a kind, hidden ones too, each once.
class Collector : public osg::NodeVisitor
{
public:
    explicit Collector(std::function<bool(osg::Node&)> isWanted)
        : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_isWanted(std::move(isWanted))
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        if (m_isWanted(node) && m_known.insert(&node).second)
            nodes.emplace_back(&node);
        traverse(node);
    }

    Nodes nodes;

private:
    std::function<bool(osg::Node&)> m_isWanted;
    std::unordered_set<const osg::Node*> m_known;
};

unsigned long long nextState()
{
    static std::atomic<unsigned long long> last{0};
    return ++last;
}

bool isPart(osg::Node& node)
{
    if (node.asGeode())
        return true;
    const bool isInGeode = node.getNumParents() > 0 && node.getParent(0)->asGeode();
    return node.asDrawable() && !isInGeode;
}

} // namespace

ModelScene::ModelScene(Listener* listener)
    : m_root(new osg::Group), m_listener(listener), m_state(nextState())
{
    m_root->setName("model");
}

void ModelScene::setModel(osg::Node* model)
{
    const osg::ref_ptr<osg::Node> kept = model; // may be what is taken out
    m_root->removeChildren(0, m_root->getNumChildren());
    if (kept)
        m_root->addChild(kept);
}

bool ModelScene::contains(const osg::Node& node) const
{
    const osg::Node::ParentList& parents = node.getParents();
    return std::any_of(parents.begin(), parents.end(),
                       [this](const osg::Group* parent) { return holds(*parent); });
}

bool ModelScene::holds(const osg::Group& group) const
{
    return &group == m_root.get() || contains(group);
}

std::vector<osg::ref_ptr<osg::Group>> ModelScene::parentsOf(const osg::Node& node) const
{
    std::vector<osg::ref_ptr<osg::Group>> inside;
    for (osg::Group* parent : node.getParents()) {
        if (holds(*parent))
            inside.emplace_back(parent);
    }
    return inside;
}

Nodes ModelScene::parts() const
{
    Collector collector(isPart);
    m_root->accept(collector);
    return collector.nodes;
}

Nodes ModelScene::hiddenNodes() const
{
    Collector collector([](osg::Node& node) { return node.getNodeMask() == 0; });
    m_root->accept(collector);
    return collector.nodes;
}

Nodes ModelScene::othersThan(osg::Node& node) const
{
    std::set<const osg::Node*> wanted = {&node};
    for (const osg::NodePath& path : node.getParentalNodePaths(m_root))
        wanted.insert(path.begin(), path.end());
    Nodes others;
    std::unordered_set<const osg::Node*> known;
    const std::function<void(osg::Group&)> look = [&](osg::Group& group) {
        for (unsigned int i = 0; i < group.getNumChildren(); ++i) {
            osg::Node* child = group.getChild(i);
            if (child == &node)
                continue;
            if (wanted.count(child))
                look(*child->asGroup());
            else if (child->getNodeMask() != 0 && known.insert(child).second)
                others.emplace_back(child);
        }
    };
    look(*m_root);
    return others;
}

void ModelScene::setHistoryLimit(std::size_t limit)
{
    m_historyLimit = limit;
    boundHistory();
}

void ModelScene::noteCommand(SceneCommand& command)
{
    forgetCommand(command);
    m_commands.push_back(&command);
    m_known[&command] = {std::prev(m_commands.end()), command.getMemory()};
    m_historyMemory += command.getMemory();
    boundHistory();
}

void ModelScene::noteMemory(const SceneCommand& command)
{
    const auto known = m_known.find(&command);
    if (known == m_known.end())
        return;
    m_historyMemory += command.getMemory() - known->second.memory;
    known->second.memory = command.getMemory();
}

void ModelScene::forgetCommand(const SceneCommand& command)
{
    const auto known = m_known.find(&command);
    if (known == m_known.end())
        return;
    m_historyMemory -= known->second.memory;
    m_commands.erase(known->second.place);
    m_known.erase(known);
}

void ModelScene::boundHistory()
{
    while (m_historyMemory > m_historyLimit && m_commands.size() > 1) {
        SceneCommand& oldest = *m_commands.front();
        oldest.forget();
        forgetCommand(oldest);
    }
}

void ModelScene::changed()
{
    m_state = nextState();
    m_isChanged = true;
    if (m_batches > 0 || !m_listener)
        return;
    m_isChanged = false;
    m_listener->onSceneChanged(m_previews > 0);
}

ModelScene::Batch::Batch(ModelScene& scene) : m_scene(&scene)
{
    ++m_scene->m_batches;
    m_scene->m_isChanged = m_scene->m_batches > 1 && m_scene->m_isChanged;
}

ModelScene::Batch::~Batch()
{
    if (--m_scene->m_batches == 0 && m_scene->m_isChanged)
        m_scene->changed();
}

} // namespace vfScene
