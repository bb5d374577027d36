// SPDX-License-Identifier: MIT
#include <velaforge/scene/ShownScene.h>

#include <velaforge/scene/Lights.h>
#include <velaforge/scene/ModelScene.h>
#include <velaforge/scene/Overlays.h>

#include <osg/ClipPlane>
#include <osg/ComputeBoundsVisitor>
#include <osg/CopyOp>
#include <osg/CullFace>
#include <osg/Fog>
#include <osg/Geometry>
#include <osg/LightModel>
#include <osg/LightSource>
#include <osg/LineWidth>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/Point>
#include <osg/PolygonMode>
#include <osg/ShadeModel>

#include <algorithm>
#include <set>

namespace vfScene {

namespace {

constexpr osg::StateAttribute::OverrideValue overriding =
    osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE;
constexpr osg::StateAttribute::OverrideValue switchedOff =
    osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE;

/// Of points and lines for which the file sets no other, in pixels.
constexpr float usualPointSize = 4;
constexpr float usualLineWidth = 2;

/// Backgrounds darker than this count as dark.
constexpr float darkBackground = 0.3f;

/// Copies nodes, each once, and remembers what each is a copy of. What is large is shared.
class RememberingCopy : public osg::CopyOp
{
public:
    explicit RememberingCopy(std::unordered_map<const osg::Node*, osg::Node*>& originals)
        : CopyOp(DEEP_COPY_NODES | DEEP_COPY_DRAWABLES | DEEP_COPY_STATESETS | DEEP_COPY_STATEATTRIBUTES),
          m_originals(originals)
    {}

    osg::Node* operator()(const osg::Node* node) const override
    {
        return copyOnce(node, [this](const osg::Node* original) { return CopyOp::operator()(original); });
    }

    osg::Drawable* operator()(const osg::Drawable* drawable) const override
    {
        return static_cast<osg::Drawable*>(copyOnce(drawable, [this](const osg::Node* original) {
            return CopyOp::operator()(static_cast<const osg::Drawable*>(original));
        }));
    }

private:
    template <class Copy>
    osg::Node* copyOnce(const osg::Node* node, Copy copy) const
    {
        if (!node)
            return nullptr;
        const auto known = m_copies.find(node);
        if (known != m_copies.end())
            return known->second;
        osg::Node* made = copy(node);
        m_copies[node] = made;
        m_originals[made] = const_cast<osg::Node*>(node);
        return made;
    }

    mutable std::unordered_map<const osg::Node*, osg::Node*> m_copies;
    std::unordered_map<const osg::Node*, osg::Node*>& m_originals;
};

/// Has everything drawn in the colours of its materials.
class TakeVertexColors : public osg::NodeVisitor
{
public:
    TakeVertexColors() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        if (osg::StateSet* state = node.getStateSet()) {
            if (auto* material =
                    dynamic_cast<osg::Material*>(state->getAttribute(osg::StateAttribute::MATERIAL)))
                material->setColorMode(osg::Material::OFF);
        }
        traverse(node);
    }

    void apply(osg::Geometry& geometry) override
    {
        geometry.setColorArray(nullptr);
        apply(static_cast<osg::Node&>(geometry));
    }
};

osg::ref_ptr<osg::LightSource> makeLamp(int number, const osg::Vec3& towards, float strength, float shine,
                                        bool followsCamera)
{
    const osg::ref_ptr<osg::Light> light = new osg::Light;
    light->setLightNum(number);
    light->setPosition(osg::Vec4(towards, 0));
    light->setAmbient({0, 0, 0, 1});
    light->setDiffuse({strength, strength, strength, 1});
    light->setSpecular({shine, shine, shine, 1});
    osg::ref_ptr<osg::LightSource> source = new osg::LightSource;
    source->setReferenceFrame(followsCamera ? osg::LightSource::ABSOLUTE_RF : osg::LightSource::RELATIVE_RF);
    source->setLight(light);
    source->setCullingActive(false);
    return source;
}

/// Finds the numbers of the lamps that a model brings.
class FindLamps : public osg::NodeVisitor
{
public:
    FindLamps() : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::LightSource& node) override
    {
        if (node.getLight())
            numbers.insert(static_cast<int>(node.getLight()->getMember()));
        traverse(node);
    }

    std::set<int> numbers;
};

/// Keeps those who draw from moving what moves by itself: that goes by the clock of the document.
class StandStill : public osg::NodeCallback
{
public:
    void operator()(osg::Node*, osg::NodeVisitor*) override {}
};

osg::BoundingBox boundsOf(osg::Node& node)
{
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    return visitor.getBoundingBox();
}

} // namespace

ShownScene::ShownScene(ModelScene& model)
    : m_model(&model),
      m_root(new osg::Group),
      m_lamps(new osg::Group),
      m_contrast(makeLamp(LightNumbers::contrast, {0, 0, 1}, 0, 0, true)),
      m_content(new osg::ClipNode),
      m_decorations(new osg::Group),
      m_measurements(new osg::Group)
{
    m_root->setName("shown");
    m_root->addChild(m_lamps);
    m_root->addChild(m_content);
    m_root->addChild(m_decorations);
    m_root->addChild(m_measurements);
    m_content->setName("content");
    m_content->setUpdateCallback(new StandStill);
    m_decorations->setName("decorations");
    m_measurements->setName("measurements");

    osg::StateSet* state = m_root->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::ON);
    state->setMode(GL_NORMALIZE, osg::StateAttribute::ON); // scaled models would be too bright or too dark
    // For what has no colour of its own.
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    material->setAmbient(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
    material->setSpecular(osg::Material::FRONT_AND_BACK, {0.15f, 0.15f, 0.15f, 1});
    material->setShininess(osg::Material::FRONT_AND_BACK, 30);
    state->setAttribute(material);
    setStyle(ViewStyle());
}

void ShownScene::setStyle(const ViewStyle& style)
{
    m_style = style;
    updateLamps();
    updateContrast();
    updateState();
    update();
}

void ShownScene::update()
{
    updateModel();
    updateFileLamps();
    updateSections();
    updateDecorations();
}

void ShownScene::follow()
{
    if (!m_style.showsVertexColors)
        updateModel();
    if (m_style.showsBoxes)
        updateDecorations();
}

void ShownScene::setSelection(osg::Node* node)
{
    if (m_mark)
        m_root->removeChild(m_mark);
    m_mark = node ? makeBox(*node, m_model->root(), {1.0f, 0.55f, 0.0f, 1.0f}, 2) : nullptr;
    if (!m_mark)
        return;
    m_mark->setName("selection");
    m_root->addChild(m_mark);
}

void ShownScene::setMeasurements(const std::vector<Measurement>& measurements,
                                 const std::vector<osg::Vec3d>& picked)
{
    m_measurements->removeChildren(0, m_measurements->getNumChildren());
    for (const Measurement& measurement : measurements)
        m_measurements->addChild(
            makeMarks(measurement.points, lineOf(measurement), {0.80f, 0.0f, 0.45f, 1.0f}));
    if (!picked.empty())
        m_measurements->addChild(makeMarks(picked, picked, {1.0f, 0.55f, 0.0f, 1.0f}));
}

void ShownScene::updateLamps()
{
    m_lamps->removeChildren(0, m_lamps->getNumChildren());
    m_lamps->addChild(m_contrast);
    if (m_style.lightFollowsCamera) {
        m_lamps->addChild(makeLamp(LightNumbers::key, {-0.45f, 0.75f, 1.0f}, 0.60f, 0.5f, true));
        m_lamps->addChild(makeLamp(LightNumbers::side, {0.80f, 0.10f, 0.60f}, 0.16f, 0.0f, true));
        // From below and behind the camera: every face that is seen gets some of it.
        m_lamps->addChild(makeLamp(LightNumbers::fill, {-0.10f, -0.60f, 1.0f}, 0.16f, 0.0f, true));
    } else {
        // As seen from the upper right corner in front, where models are looked at first.
        m_lamps->addChild(makeLamp(LightNumbers::key, {0.35f, -1.0f, 1.0f}, 0.60f, 0.5f, false));
        m_lamps->addChild(makeLamp(LightNumbers::side, {1.0f, 0.2f, 0.5f}, 0.18f, 0.0f, false));
        m_lamps->addChild(makeLamp(LightNumbers::fill, {-0.6f, 1.0f, -0.7f}, 0.22f, 0.0f, false));
    }
}

/// What a file says of lamps, the light around and fog holds only where the style asks for it and the file has lamps: files
/// were made for other lights, and half of the model would be black.
void ShownScene::updateFileLamps()
{
    FindLamps found;
    if (m_style.usesFileLamps)
        m_model->root().accept(found);
    const bool isFromFile = !found.numbers.empty();
    osg::StateSet& state = *m_root->getOrCreateStateSet();
    for (const int lamp : {LightNumbers::key, LightNumbers::side, LightNumbers::fill})
        state.setMode(GL_LIGHT0 + static_cast<GLenum>(lamp), isFromFile ? switchedOff : overriding);
    for (int lamp = 0; lamp < LightNumbers::ofFile; ++lamp) {
        const GLenum mode = GL_LIGHT0 + static_cast<GLenum>(lamp);
        if (found.numbers.count(lamp))
            state.setMode(mode, osg::StateAttribute::ON);
        else
            state.setMode(mode, switchedOff);
    }
    const osg::ref_ptr<osg::LightModel> around = new osg::LightModel;
    around->setTwoSided(true); // files disagree about which way a triangle faces
    around->setAmbientIntensity(isFromFile ? osg::Vec4(0.20f, 0.20f, 0.20f, 1)
                                           : osg::Vec4(0.21f, 0.21f, 0.23f, 1));
    state.setAttributeAndModes(
        around, isFromFile ? osg::StateAttribute::OverrideValue(osg::StateAttribute::ON) : overriding);
    if (isFromFile)
        state.removeMode(GL_FOG);
    else
        state.setMode(GL_FOG, switchedOff);
}

void ShownScene::setBackground(const Background& background)
{
    m_background = background;
    updateContrast();
}

/// Lines and points without a colour are dark; on a dark background this lamp makes them light.
void ShownScene::updateContrast()
{
    const Background background = getBackground();
    const osg::Vec3f sum = background.top + background.bottom;
    const float brightness = (0.3f * sum.x() + 0.6f * sum.y() + 0.1f * sum.z()) / 2;
    const float strength = brightness < darkBackground ? 7 : 0;
    m_contrast->getLight()->setAmbient({strength, strength, strength, 1});
}

void ShownScene::updateState()
{
    const osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    state->setAttribute(new osg::Point(usualPointSize));
    state->setAttribute(new osg::LineWidth(usualLineWidth));
    if (m_style.drawMode != DrawMode::Surfaces) {
        const bool isPoints = m_style.drawMode == DrawMode::Points;
        state->setAttributeAndModes(
            new osg::PolygonMode(osg::PolygonMode::FRONT_AND_BACK,
                                 isPoints ? osg::PolygonMode::POINT : osg::PolygonMode::LINE),
            overriding);
        state->setAttribute(new osg::Point(3), overriding);
        state->setAttribute(new osg::LineWidth(1), overriding);
    }
    if (m_style.isFlat)
        state->setAttributeAndModes(new osg::ShadeModel(osg::ShadeModel::FLAT), overriding);
    // Files disagree about which way a triangle faces, so what they say of leaving out back faces is not followed.
    if (m_style.cullsBackFaces)
        state->setAttributeAndModes(new osg::CullFace(osg::CullFace::BACK), overriding);
    else
        state->setMode(GL_CULL_FACE, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    if (!m_style.showsTextures) {
        for (unsigned int unit = 0; unit < 8; ++unit) {
            for (const GLenum kind : {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP})
                state->setTextureMode(unit, kind, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
        }
    }
    m_content->setStateSet(state);
    m_root->getOrCreateStateSet()->setMode(GL_MULTISAMPLE, m_style.isAntialiased ? osg::StateAttribute::ON
                                                                                 : osg::StateAttribute::OFF);
}

void ShownScene::updateModel()
{
    m_originals.clear();
    osg::Node* shown = &m_model->root();
    osg::ref_ptr<osg::Node> copy;
    if (!m_style.showsVertexColors) {
        copy = RememberingCopy(m_originals)(&m_model->root());
        TakeVertexColors take;
        copy->accept(take);
        shown = copy;
    }
    if (m_content->getNumChildren() == 1 && m_content->getChild(0) == shown)
        return;
    m_content->removeChildren(0, m_content->getNumChildren());
    m_content->addChild(shown);
}

void ShownScene::updateSections()
{
    while (m_content->getNumClipPlanes() > 0)
        m_content->removeClipPlane(0u);
    m_planes.clear();
    const bool isCut = std::any_of(m_style.sections.begin(), m_style.sections.end(),
                                   [](const SectionPlane& section) { return section.isOn; });
    const osg::BoundingBox box = isCut ? boundsOf(m_model->root()) : osg::BoundingBox();
    for (unsigned int axis = 0; box.valid() && axis < 3; ++axis) {
        const SectionPlane& section = m_style.sections[axis];
        if (!section.isOn)
            continue;
        const auto at = static_cast<int>(axis);
        const double place = box._min[at] + section.position * (box._max[at] - box._min[at]);
        osg::Vec3d normal;
        normal[at] = section.isFlipped ? 1 : -1;
        m_planes.emplace_back(normal, -normal[at] * place);
        m_content->addClipPlane(new osg::ClipPlane(axis, m_planes.back()));
    }
    m_content->setLocalStateSetModes();
    // What the section planes had switched on stays in the state otherwise.
    for (unsigned int axis = 0; axis < 3; ++axis) {
        if (!m_style.sections[axis].isOn)
            m_content->getOrCreateStateSet()->removeMode(GL_CLIP_PLANE0 + axis);
    }
}

void ShownScene::updateDecorations()
{
    m_decorations->removeChildren(0, m_decorations->getNumChildren());
    const auto add = [this](const osg::ref_ptr<osg::Node>& node) {
        if (node)
            m_decorations->addChild(node);
    };
    if (m_style.showsGrid)
        add(makeGrid(boundsOf(m_model->root())));
    if (m_style.showsAxes)
        add(makeAxes());
    if (m_style.showsBoxes) {
        for (const osg::ref_ptr<osg::Node>& part : m_model->parts())
            add(makeBox(*part, m_model->root(), {0.10f, 0.35f, 0.60f, 1.0f}, 1));
    }
}

osg::Node* ShownScene::modelNode(osg::Node& node) const
{
    const auto copied = m_originals.find(&node);
    if (copied != m_originals.end())
        return copied->second;
    return &node == &m_model->root() || m_model->contains(node) ? &node : nullptr;
}

bool ShownScene::isCutAway(const osg::Vec3d& point) const
{
    return std::any_of(m_planes.begin(), m_planes.end(),
                       [&point](const osg::Plane& plane) { return plane.distance(point) < 0; });
}

} // namespace vfScene
