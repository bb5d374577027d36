// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/WritableScene.h>

#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/readers/UpAxis.h>
#include <velaforge/formats/writers/Appearance.h>

#include <osg/Geometry>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osgUtil/Optimizer>

#include <algorithm>
#include <string>
#include <vector>

namespace vfFormats {

namespace {

/// Tells the optimizer that nothing will move.
class MakeStatic : public osg::NodeVisitor
{
public:
    MakeStatic() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
    void apply(osg::Node& node) override
    {
        node.setDataVariance(osg::Object::STATIC);
        traverse(node);
    }
};

/// Gives each geometry the material in which it is shown, for a writer that looks nowhere else, and whose files cannot be
/// read when there is none.
class GiveMaterials : public osg::NodeVisitor
{
public:
    GiveMaterials() : NodeVisitor(TRAVERSE_ALL_CHILDREN)
    {
        m_plain->setAmbient(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
        m_plain->setDiffuse(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        const Appearance above = m_look;
        m_look.apply(node.getStateSet());
        if (node.asGeometry())
            node.getOrCreateStateSet()->setAttribute(
                m_look.material ? const_cast<osg::Material*>(m_look.material) : m_plain.get());
        traverse(node);
        m_look = above;
    }

private:
    const osg::ref_ptr<osg::Material> m_plain = new osg::Material;
    Appearance m_look;
};

/// @return a copy in which transforms are worked into the points, and materials hang at what they colour, for a writer that
/// passes them over elsewhere
osg::ref_ptr<osg::Node> flattened(osg::Node& scene)
{
    const osg::ref_ptr<osg::Group> copy = new osg::Group;
    copy->addChild(osg::clone(&scene, osg::CopyOp::DEEP_COPY_ALL & ~osg::CopyOp::DEEP_COPY_IMAGES));
    MakeStatic makeStatic;
    copy->accept(makeStatic);
    osgUtil::Optimizer optimizer;
    optimizer.optimize(copy, osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS_DUPLICATING_SHARED_SUBGRAPHS |
                                 osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS);
    GiveMaterials give;
    copy->accept(give);
    return copy;
}

/// Replaces in names what would end a line, a text or a word of a format.
class CleanNames : public osg::NodeVisitor
{
public:
    CleanNames() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        std::string name = node.getName();
        std::replace_if(
            name.begin(), name.end(),
            [](unsigned char c) { return c < 0x20 || c == 0x7f || c == '"' || c == '\\'; }, '_');
        node.setName(name);
        traverse(node);
    }
};

/// @return whether a format that loses these features has a place for such primitives
bool isKept(const osg::PrimitiveSet& primitives, unsigned int lost)
{
    const GLenum mode = primitives.getMode();
    if (mode == GL_POINTS)
        return !(lost & Points);
    return mode > GL_LINE_STRIP || !(lost & Lines);
}

/// Shows what is hidden, which writers leave out and which would be lost, and takes away what writers make broken files of.
class Fit : public osg::NodeVisitor
{
public:
    explicit Fit(unsigned int lost) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_lost(lost)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        if (node.getNodeMask() == 0 && (m_lost & HiddenParts))
            node.setNodeMask(~0u);
        traverse(node);
    }

    void apply(osg::Geometry& geometry) override
    {
        osg::Geometry::PrimitiveSetList kept;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            if (isKept(*primitives, m_lost))
                kept.push_back(primitives);
        }
        geometry.setPrimitiveSetList(kept);
        if (kept.empty())
            m_empty.emplace_back(&geometry);
        apply(static_cast<osg::Node&>(geometry));
    }

    void takeEmpty()
    {
        for (const osg::ref_ptr<osg::Node>& node : m_empty) {
            while (node->getNumParents() > 0)
                node->getParent(0)->removeChild(node);
        }
    }

private:
    unsigned int m_lost;
    std::vector<osg::ref_ptr<osg::Node>> m_empty;
};

/// @return a copy with what the format holds; the scene itself when it holds all
osg::ref_ptr<osg::Node> fitFor(osg::Node& scene, const Format& format)
{
    const unsigned int lost = format.lost & featuresOf(scene);
    if ((lost & (HiddenParts | Lines | Points)) == 0)
        return &scene;
    osg::ref_ptr<osg::Node> copy =
        osg::clone(&scene, osg::CopyOp(osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES));
    Fit fit(lost);
    copy->accept(fit);
    fit.takeEmpty();
    return copy;
}

} // namespace

osg::ref_ptr<osg::Node> writableScene(osg::Node& scene, const Format& format)
{
    const osg::ref_ptr<osg::Node> fit = fitFor(scene, format);
    osg::ref_ptr<osg::Node> turned = format.isWrittenWithYUp ? withYUp(*fit) : fit;
    if (!format.isWrittenFlat)
        return turned;
    const osg::ref_ptr<osg::Node> flat = flattened(*turned);
    CleanNames clean;
    flat->accept(clean);
    return flat;
}

} // namespace vfFormats
