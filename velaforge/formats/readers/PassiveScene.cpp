// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/PassiveScene.h>

#include <velaforge/formats/internal/FlatKinds.h>
#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/scene/MirrorCallback.h>

#include <osg/Drawable>
#include <osg/Group>
#include <osg/Image>
#include <osg/LOD>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/PagedLOD>
#include <osg/ProxyNode>
#include <osg/ShapeDrawable>
#include <osg/StateSet>
#include <osg/Texture>
#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>
#include <osgText/Text>

#include <algorithm>
#include <iterator>
#include <set>
#include <typeinfo>
#include <unordered_set>
#include <utility>

namespace vfFormats {

namespace {

constexpr unsigned int mostFiles = 100;

std::string kindOf(const osg::Object& object)
{
    return std::string(object.libraryName()) + "::" + object.className();
}

// What is kept is what can be sent to the program that shows it.

bool isKnown(const osg::Node& node)
{
    // These are sent as a group and as a geometry.
    return flatKindOf(node) < flatNodes().size() || typeid(node) == typeid(osg::Node) ||
           typeid(node) == typeid(osg::ShapeDrawable);
}

bool isKnown(const osg::Callback& callback)
{
    return flatKindOf(callback) < flatCallbacks().size();
}

bool isKnown(const osg::StateAttribute& attribute)
{
    return flatKindOf(attribute) < flatAttributes().size();
}

/// Finds what is not passive, and notes what to do about it.
class Find : public osg::NodeVisitor
{
public:
    Find() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        ++visits;
        if (visits > mostVisits || getNodePath().size() > deepestScene) {
            isTooLarge = true;
            return;
        }
        look(node);
        traverse(node);
    }

    /// Returns whether nothing was found.
    bool isEmpty() const
    {
        return nodes.empty() && callbacks.empty() && drawables.empty() && attributes.empty() &&
               images.empty() && states.empty() && !isTooLarge;
    }

    unsigned int visits = 0;
    bool isTooLarge = false;
    std::vector<osg::ref_ptr<osg::Node>> nodes;                                ///< of other kinds
    std::vector<std::pair<osg::ref_ptr<osg::Node>, osg::Callback*>> callbacks; ///< with the node of each
    std::vector<osg::ref_ptr<osg::Drawable>> drawables;                        ///< with callbacks that draw
    std::vector<std::pair<osg::ref_ptr<osg::StateSet>, osg::StateAttribute*>> attributes;
    std::vector<osg::ref_ptr<osg::Texture>> images;  ///< textures with an image of another kind
    std::vector<osg::ref_ptr<osg::StateSet>> states; ///< with callbacks

private:
    void look(osg::Node& node)
    {
        if (!isKnown(node))
            nodes.emplace_back(&node);
        for (osg::Callback* callback : {node.getEventCallback(), node.getCullCallback()}) {
            if (callback)
                callbacks.emplace_back(&node, callback);
        }
        for (osg::Callback* one = node.getUpdateCallback(); one; one = one->getNestedCallback()) {
            if (!isKnown(*one))
                callbacks.emplace_back(&node, one);
        }
        osg::Drawable* drawable = node.asDrawable();
        // The program's own one draws mirrored parts.
        if (drawable && drawable->getDrawCallback() &&
            drawable->getDrawCallback() != vfScene::mirrorCallback())
            drawables.emplace_back(drawable);
        // A text has a state of its own making, with the shader that draws its letters; it is not sent with the scene.
        osg::StateSet* state = node.getStateSet();
        if (state && !dynamic_cast<const osgText::Text*>(&node))
            look(*state);
    }

    void look(osg::StateSet& state)
    {
        if (!m_seen.insert(&state).second)
            return;
        if (state.getUpdateCallback() || state.getEventCallback())
            states.emplace_back(&state);
        look(state, state.getAttributeList());
        for (const osg::StateSet::AttributeList& list : state.getTextureAttributeList())
            look(state, list);
    }

    void look(osg::StateSet& state, const osg::StateSet::AttributeList& list)
    {
        for (const auto& [type, entry] : list) {
            osg::StateAttribute* attribute = entry.first;
            if (!isKnown(*attribute))
                attributes.emplace_back(&state, attribute);
            else if (osg::Texture* texture = attribute->asTexture())
                look(*texture);
        }
    }

    /// Images of other kinds load files while they are shown.
    void look(osg::Texture& texture)
    {
        for (unsigned int i = 0; i < texture.getNumImages(); ++i) {
            const osg::Image* image = texture.getImage(i);
            if (image && kindOf(*image) != "osg::Image") {
                images.emplace_back(&texture);
                return;
            }
        }
    }

    std::unordered_set<const osg::StateSet*> m_seen; ///< of which many nodes share one
};

class Remove
{
public:
    explicit Remove(osg::ref_ptr<osg::Node>& scene) : m_scene(scene) {}

    /// @return whether the scene is passive now
    bool run()
    {
        // A file that is read here may name others.
        for (unsigned int round = 0; round < mostFiles; ++round) {
            Find find;
            m_scene->accept(find);
            if (find.isEmpty() || find.isTooLarge)
                return !find.isTooLarge;
            removeFrom(find);
        }
        return false;
    }

    /// Returns what was removed, a line for each kind.
    std::vector<std::string> lines() const
    {
        std::vector<std::string> lines;
        for (const std::string& kind : m_kinds)
            lines.push_back(kind + " is left out");
        return lines;
    }

private:
    void removeFrom(const Find& find)
    {
        for (const auto& [state, attribute] : find.attributes) {
            m_kinds.insert(kindOf(*attribute));
            removeAttribute(*state, attribute);
        }
        for (const osg::ref_ptr<osg::StateSet>& state : find.states) {
            m_kinds.insert("what changes state by itself");
            state->setUpdateCallback(nullptr);
            state->setEventCallback(nullptr);
        }
        for (const osg::ref_ptr<osg::Texture>& texture : find.images) {
            for (unsigned int i = 0; i < texture->getNumImages(); ++i) {
                osg::Image* image = texture->getImage(i);
                if (!image || kindOf(*image) == "osg::Image")
                    continue;
                m_kinds.insert(kindOf(*image));
                texture->setImage(i, nullptr);
            }
        }
        for (const auto& [node, callback] : find.callbacks) {
            m_kinds.insert(kindOf(*callback));
            removeCallback(*node, callback);
        }
        for (const osg::ref_ptr<osg::Drawable>& drawable : find.drawables) {
            m_kinds.insert(kindOf(*drawable->getDrawCallback()));
            drawable->setDrawCallback(nullptr);
        }
        for (const osg::ref_ptr<osg::Node>& node : find.nodes)
            replace(*node);
    }

    static void removeAttribute(osg::StateSet& state, osg::StateAttribute* attribute)
    {
        for (unsigned int unit = 0; unit < state.getNumTextureAttributeLists(); ++unit)
            state.removeTextureAttribute(unit, attribute);
        state.removeAttribute(attribute);
    }

    static void removeCallback(osg::Node& node, osg::Callback* callback)
    {
        node.removeEventCallback(callback);
        node.removeCullCallback(callback);
        node.removeUpdateCallback(callback);
    }

    void replace(osg::Node& node)
    {
        osg::ref_ptr<osg::Node> other;
        if (auto* paged = dynamic_cast<osg::PagedLOD*>(&node))
            other = withAllLevels(*paged);
        else if (auto* proxy = dynamic_cast<osg::ProxyNode*>(&node))
            other = withItsFiles(*proxy);
        else
            other = plain(node);
        if (other) {
            other->setName(node.getName());
            other->setStateSet(node.getStateSet());
            other->setNodeMask(node.getNodeMask());
        }
        if (&node == m_scene.get()) {
            m_scene = other ? other : osg::ref_ptr<osg::Node>(new osg::Group);
            return;
        }
        const osg::Node::ParentList parents = node.getParents();
        for (osg::Group* parent : parents) {
            if (other)
                parent->replaceChild(&node, other);
            else
                parent->removeChild(&node);
        }
    }

    /// @return null for a node that is no group
    osg::ref_ptr<osg::Node> plain(osg::Node& node)
    {
        m_kinds.insert(kindOf(node));
        const osg::Group* group = node.asGroup();
        if (!group)
            return nullptr;
        osg::Matrix matrix;
        osg::ref_ptr<osg::Group> other = new osg::Group;
        if (osg::Transform* transform = node.asTransform()) {
            transform->computeLocalToWorldMatrix(matrix, nullptr);
            other = new osg::MatrixTransform(matrix);
        }
        takeChildren(*group, *other);
        return other;
    }

    static void takeChildren(const osg::Group& from, osg::Group& to)
    {
        for (unsigned int i = 0; i < from.getNumChildren(); ++i)
            to.addChild(const_cast<osg::Node*>(from.getChild(i)));
    }

    osg::ref_ptr<osg::Node> withAllLevels(osg::PagedLOD& paged)
    {
        osg::ref_ptr<osg::LOD> other = new osg::LOD;
        other->setCenterMode(paged.getCenterMode());
        other->setCenter(paged.getCenter());
        other->setRadius(paged.getRadius());
        other->setRangeMode(paged.getRangeMode());
        const unsigned int levels = std::max(paged.getNumChildren(), paged.getNumFileNames());
        for (unsigned int i = 0; i < levels; ++i) {
            osg::ref_ptr<osg::Node> child = i < paged.getNumChildren() ? paged.getChild(i) : nullptr;
            if (!child && i < paged.getNumFileNames())
                child = read(paged.getDatabasePath(), paged.getFileName(i));
            if (child && i < paged.getNumRanges())
                other->addChild(child, paged.getMinRange(i), paged.getMaxRange(i));
        }
        return other;
    }

    osg::ref_ptr<osg::Node> withItsFiles(osg::ProxyNode& proxy)
    {
        osg::ref_ptr<osg::Group> other = new osg::Group;
        takeChildren(proxy, *other);
        for (unsigned int i = proxy.getNumChildren(); i < proxy.getNumFileNames(); ++i) {
            if (const osg::ref_ptr<osg::Node> child = read(proxy.getDatabasePath(), proxy.getFileName(i)))
                other->addChild(child);
        }
        return other;
    }

    /// @return null when the file is not there or not admitted, which the gate notes
    osg::ref_ptr<osg::Node> read(const std::string& directory, const std::string& name)
    {
        if (name.empty())
            return nullptr;
        if (++m_files > mostFiles) {
            m_kinds.insert("what the scene has in more than " + std::to_string(mostFiles) + " files");
            return nullptr;
        }
        const std::string path =
            osgDB::isAbsolutePath(name) || directory.empty() ? name : osgDB::concatPaths(directory, name);
        return osgDB::readRefNodeFile(path);
    }

    osg::ref_ptr<osg::Node>& m_scene;
    std::set<std::string> m_kinds;
    unsigned int m_files = 0;
};

} // namespace

bool makePassive(osg::ref_ptr<osg::Node>& scene, std::vector<std::string>& warnings)
{
    Remove remove(scene);
    const bool isDone = remove.run();
    const std::vector<std::string> lines = remove.lines();
    warnings.insert(warnings.end(), lines.begin(), lines.end());
    return isDone;
}

bool isPassive(osg::Node& scene)
{
    Find find;
    scene.accept(find);
    return find.isEmpty();
}

} // namespace vfFormats
