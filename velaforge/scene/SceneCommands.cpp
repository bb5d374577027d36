// SPDX-License-Identifier: MIT
#include <velaforge/scene/SceneCommands.h>

#include <velaforge/scene/ModelStatistics.h>
#include <velaforge/scene/Normals.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Transform>
#include <osg/TriangleIndexFunctor>

#include <algorithm>
#include <set>

namespace vfScene {

SceneCommand::SceneCommand(const char* name, ModelScene& scene, osg::Node& node)
    : m_scene(&scene), m_node(&node)
{
    setName(name);
}

SceneCommand::~SceneCommand()
{
    m_scene->forgetCommand(*this);
}

bool SceneCommand::isPossible() const
{
    return m_scene->contains(*m_node);
}

std::size_t SceneCommand::measure(bool) const
{
    return sizeof(*this);
}

bool SceneCommand::Do(const vfBase::VfVariant&)
{
    if (!isPossible() || !apply())
        return false;
    m_isForgotten = false;
    m_memory = measure(true);
    m_scene->noteCommand(*this);
    m_scene->changed();
    return true;
}

bool SceneCommand::undo(const vfBase::VfVariant&)
{
    if (m_isForgotten)
        return false;
    revert();
    m_memory = measure(false);
    m_scene->noteMemory(*this);
    m_scene->changed();
    return true;
}

void SceneCommand::forget()
{
    release();
    m_isForgotten = true;
    m_memory = 0;
}

ShowCommand::ShowCommand(ModelScene& scene, osg::Node& node, bool show)
    : SceneCommand(show ? "Show" : "Hide", scene, node), m_show(show)
{}

bool ShowCommand::apply()
{
    m_before = node().getNodeMask();
    node().setNodeMask(m_show ? ~0u : 0u);
    return true;
}

void ShowCommand::revert()
{
    node().setNodeMask(m_before);
}

RemoveCommand::RemoveCommand(ModelScene& scene, osg::Node& node) : SceneCommand("Remove", scene, node) {}

bool RemoveCommand::apply()
{
    m_places.clear();
    for (const osg::ref_ptr<osg::Group>& parent : scene().parentsOf(node())) {
        const unsigned int index = parent->getChildIndex(&node());
        m_places.push_back({parent, index});
        parent->removeChild(index);
    }
    return true;
}

void RemoveCommand::revert()
{
    for (auto place = m_places.rbegin(); place != m_places.rend(); ++place)
        place->parent->insertChild(place->index, &node());
}

std::size_t RemoveCommand::measure(bool isDone) const
{
    return isDone ? measureMemory(node()) : sizeof(*this);
}

RenameCommand::RenameCommand(ModelScene& scene, osg::Node& node, const std::string& name)
    : SceneCommand("Rename", scene, node), m_name(name)
{}

bool RenameCommand::apply()
{
    m_before = node().getName();
    node().setName(m_name);
    return true;
}

void RenameCommand::revert()
{
    node().setName(m_before);
}

namespace {

/// Hangs on transforms that stand for what was done to a node, and on groups that stand for what was added.
struct MadeHere : osg::Referenced
{
    static void mark(osg::Node& node) { node.setUserData(new MadeHere); }
    static bool isMarked(const osg::Node& node)
    {
        return dynamic_cast<const MadeHere*>(node.getUserData()) != nullptr;
    }
};

} // namespace

TransformCommand::TransformCommand(const char* name, ModelScene& scene, osg::Node& node,
                                   const osg::Matrixd& matrix)
    : SceneCommand(name, scene, node), m_matrix(matrix), m_transform(new osg::MatrixTransform)
{
    MadeHere::mark(*m_transform);
}

bool TransformCommand::isPlacement(const osg::Node& node)
{
    return node.asTransform() && MadeHere::isMarked(node);
}

osg::Matrixd TransformCommand::aboutMiddle(osg::Node& node, const osg::Matrixd& matrix)
{
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    osg::Vec3d middle = visitor.getBoundingBox().valid() ? visitor.getBoundingBox().center() : osg::Vec3();
    const osg::MatrixTransform* above =
        node.getNumParents() == 1 ? dynamic_cast<osg::MatrixTransform*>(node.getParent(0)) : nullptr;
    if (above && MadeHere::isMarked(*above))
        middle = middle * above->getMatrix();
    return osg::Matrixd::translate(-middle) * matrix * osg::Matrixd::translate(middle);
}

osg::Matrixd TransformCommand::inFrameOf(osg::Node& node, const ModelScene& scene,
                                         const osg::Matrixd& inScene)
{
    const osg::NodePathList paths = node.getParentalNodePaths(&scene.root());
    osg::NodePath above;
    if (!paths.empty())
        above.assign(paths[0].begin(), paths[0].end() - 1);
    // A transform that stands for what was done to the node takes the change itself.
    if (node.getNumParents() == 1 && !above.empty() && above.back()->asTransform() &&
        MadeHere::isMarked(*above.back()))
        above.pop_back();
    const osg::Matrixd frame = osg::computeLocalToWorld(above);
    return frame * inScene * osg::Matrixd::inverse(frame);
}

bool TransformCommand::apply()
{
    m_parents = scene().parentsOf(node());
    auto* above = m_parents.size() == 1 ? dynamic_cast<osg::MatrixTransform*>(m_parents[0].get()) : nullptr;
    m_existing = above && MadeHere::isMarked(*above) && above->getNumChildren() == 1 ? above : nullptr;
    if (m_existing) {
        m_before = m_existing->getMatrix();
        m_existing->setMatrix(m_before * m_matrix);
        return true;
    }
    m_transform->setMatrix(m_matrix);
    m_transform->addChild(&node());
    for (const osg::ref_ptr<osg::Group>& parent : m_parents)
        parent->replaceChild(&node(), m_transform);
    return true;
}

void TransformCommand::revert()
{
    if (m_existing) {
        m_existing->setMatrix(m_before);
        m_existing = nullptr;
        return;
    }
    for (const osg::ref_ptr<osg::Group>& parent : m_parents)
        parent->replaceChild(m_transform, &node());
    m_transform->removeChild(&node());
}

AddCommand::AddCommand(const char* name, ModelScene& scene,
                       const std::vector<osg::ref_ptr<osg::Node>>& models)
    : SceneCommand(name, scene, scene.root()), m_models(models), m_assembly(new osg::Group)
{
    MadeHere::mark(*m_assembly);
    m_assembly->setName("assembly");
}

bool AddCommand::apply()
{
    osg::Group& root = scene().root();
    osg::Group* there = root.getNumChildren() > 0 ? root.getChild(0)->asGroup() : nullptr;
    m_isNew = !there || there->asTransform() || !MadeHere::isMarked(*there);
    if (m_isNew) {
        if (root.getNumChildren() > 0)
            m_assembly->addChild(root.getChild(0));
        root.removeChildren(0, root.getNumChildren());
        root.addChild(m_assembly);
        there = m_assembly;
    }
    for (const osg::ref_ptr<osg::Node>& model : m_models)
        there->addChild(model);
    return true;
}

void AddCommand::revert()
{
    osg::Group& root = scene().root();
    osg::Group* there = root.getChild(0)->asGroup();
    for (const osg::ref_ptr<osg::Node>& model : m_models)
        there->removeChild(model);
    if (!m_isNew)
        return;
    root.removeChild(m_assembly);
    for (unsigned int i = 0; i < m_assembly->getNumChildren(); ++i)
        root.addChild(m_assembly->getChild(i));
    m_assembly->removeChildren(0, m_assembly->getNumChildren());
}

std::size_t AddCommand::measure(bool isDone) const
{
    std::size_t memory = sizeof(*this);
    for (const osg::ref_ptr<osg::Node>& model : m_models)
        memory += isDone ? 0 : measureMemory(*model);
    return memory;
}

namespace {

/// Has one geometry consist of what another consists of.
void assign(osg::Geometry& to, const osg::Geometry& from)
{
    // Each is const here only as far as the geometry goes that it comes from.
    auto& source = const_cast<osg::Geometry&>(from);
    to.setVertexArray(source.getVertexArray());
    to.setNormalArray(source.getNormalArray());
    to.setColorArray(source.getColorArray());
    to.setSecondaryColorArray(source.getSecondaryColorArray());
    to.setFogCoordArray(source.getFogCoordArray());
    to.setTexCoordArrayList(source.getTexCoordArrayList());
    to.setVertexAttribArrayList(source.getVertexAttribArrayList());
    to.setPrimitiveSetList(source.getPrimitiveSetList());
    to.dirtyBound();
    to.dirtyGLObjects();
}

osg::ref_ptr<osg::Geometry> contentsOf(const osg::Geometry& geometry)
{
    osg::ref_ptr<osg::Geometry> contents = new osg::Geometry;
    assign(*contents, geometry);
    return contents;
}

class CollectGeometries : public osg::NodeVisitor
{
public:
    CollectGeometries() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
    void apply(osg::Geometry& geometry) override { found.insert(&geometry); }
    std::set<osg::ref_ptr<osg::Geometry>> found;
};

struct CollectTriangles
{
    osg::DrawElementsUInt* triangles = nullptr;
    void operator()(unsigned int a, unsigned int b, unsigned int c) const
    {
        for (const unsigned int index : {a, c, b})
            triangles->push_back(index);
    }
};

bool hasSurface(const osg::PrimitiveSet& primitives)
{
    return primitives.getMode() >= GL_TRIANGLES && primitives.getMode() <= GL_POLYGON;
}

template <class Array>
osg::ref_ptr<osg::Array> negated(const Array& array)
{
    osg::ref_ptr<Array> turned = new Array(array);
    for (auto& normal : *turned)
        normal = -normal;
    return turned;
}

} // namespace

GeometryCommand::GeometryCommand(const char* name, ModelScene& scene, osg::Node& node)
    : SceneCommand(name, scene, node)
{}

bool GeometryCommand::apply()
{
    if (m_changes.empty()) {
        CollectGeometries collect;
        node().accept(collect);
        for (const osg::ref_ptr<osg::Geometry>& geometry : collect.found) {
            const osg::ref_ptr<osg::Geometry> after = contentsOf(*geometry);
            if (change(*after))
                m_changes.push_back({geometry, contentsOf(*geometry), after});
        }
    }
    for (const Change& one : m_changes)
        assign(*one.geometry, *one.after);
    return !m_changes.empty();
}

void GeometryCommand::revert()
{
    for (const Change& one : m_changes)
        assign(*one.geometry, *one.before);
}

void GeometryCommand::release()
{
    m_changes.clear();
}

std::size_t GeometryCommand::measure(bool isDone) const
{
    std::size_t memory = sizeof(*this);
    for (const Change& one : m_changes)
        memory += measureMemory(isDone ? *one.before : *one.after);
    return memory;
}

FlipNormalsCommand::FlipNormalsCommand(ModelScene& scene, osg::Node& node)
    : GeometryCommand("Flip normals", scene, node)
{}

bool FlipNormalsCommand::change(osg::Geometry& geometry)
{
    osg::Geometry::PrimitiveSetList turned;
    bool isChanged = false;
    for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
        if (!hasSurface(*primitives)) {
            turned.push_back(primitives);
            continue;
        }
        const osg::ref_ptr<osg::DrawElementsUInt> triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
        osg::TriangleIndexFunctor<CollectTriangles> collect;
        collect.triangles = triangles;
        primitives->accept(collect);
        turned.emplace_back(triangles);
        isChanged = true;
    }
    if (!isChanged)
        return false;
    geometry.setPrimitiveSetList(turned);
    const osg::Array* normals = geometry.getNormalArray();
    osg::ref_ptr<osg::Array> other;
    if (const auto* plain = dynamic_cast<const osg::Vec3Array*>(normals))
        other = negated(*plain);
    else if (const auto* precise = dynamic_cast<const osg::Vec3dArray*>(normals))
        other = negated(*precise);
    if (other)
        geometry.setNormalArray(other);
    return true;
}

RecomputeNormalsCommand::RecomputeNormalsCommand(ModelScene& scene, osg::Node& node, double creaseAngle)
    : GeometryCommand("Recompute normals", scene, node), m_creaseAngle(creaseAngle)
{}

bool RecomputeNormalsCommand::change(osg::Geometry& geometry)
{
    const bool isSurface =
        std::any_of(geometry.getPrimitiveSetList().begin(), geometry.getPrimitiveSetList().end(),
                    [](const auto& primitives) { return hasSurface(*primitives); });
    if (!isSurface || !dynamic_cast<osg::Vec3Array*>(geometry.getVertexArray()))
        return false;
    makeNormals(geometry, m_creaseAngle);
    return true;
}

ColorCommand::ColorCommand(ModelScene& scene, osg::Node& node, const osg::Vec4& color)
    : SceneCommand("Set colour", scene, node), m_color(color)
{}

bool ColorCommand::apply()
{
    m_before = node().getStateSet();
    if (!m_after) {
        m_after = m_before ? osg::clone(m_before.get(), osg::CopyOp::SHALLOW_COPY) : new osg::StateSet;
        const osg::ref_ptr<osg::Material> material = new osg::Material;
        material->setColorMode(osg::Material::OFF);
        material->setAmbient(osg::Material::FRONT_AND_BACK, m_color);
        material->setDiffuse(osg::Material::FRONT_AND_BACK, m_color);
        material->setSpecular(osg::Material::FRONT_AND_BACK, {0.15f, 0.15f, 0.15f, m_color.a()});
        material->setShininess(osg::Material::FRONT_AND_BACK, 30);
        m_after->setAttributeAndModes(material, osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
        if (m_color.a() < 1) {
            m_after->setMode(GL_BLEND, osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
            m_after->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
        }
    }
    node().setStateSet(m_after);
    return true;
}

void ColorCommand::revert()
{
    node().setStateSet(m_before);
}

} // namespace vfScene
