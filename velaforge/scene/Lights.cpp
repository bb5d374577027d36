// SPDX-License-Identifier: MIT
#include <velaforge/scene/Lights.h>

#include <osg/Geometry>
#include <osg/LightModel>
#include <osg/LightSource>
#include <osg/NodeVisitor>

#include <algorithm>

namespace vfScene {

namespace {

constexpr auto both = osg::Material::FRONT_AND_BACK;

/// Of lines and points without a colour, on a light background.
const osg::Vec4 dark(0.12f, 0.13f, 0.16f, 1);

constexpr GLenum modeOf(int lamp)
{
    return GL_LIGHT0 + static_cast<GLenum>(lamp);
}

class RemoveSurplus : public osg::NodeVisitor
{
public:
    RemoveSurplus() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        if (osg::StateSet* state = node.getStateSet()) {
            for (int lamp = LightNumbers::ofFile; lamp < LightNumbers::end; ++lamp) {
                state->removeMode(modeOf(lamp));
                state->removeAttribute(osg::StateAttribute::LIGHT, static_cast<unsigned int>(lamp));
            }
        }
        traverse(node);
    }

    void apply(osg::LightSource& node) override
    {
        const osg::StateAttribute* light = node.getLight();
        if (light && light->getMember() >= static_cast<unsigned int>(LightNumbers::ofFile)) {
            node.setLight(nullptr);
            ++count;
        }
        apply(static_cast<osg::Node&>(node));
    }

    /// What setSelfLit() was given keeps its modes.
    void apply(osg::Geometry& geometry) override
    {
        if (!geometry.getStateSet() || !geometry.getStateSet()->getAttribute(osg::StateAttribute::LIGHTMODEL))
            apply(static_cast<osg::Node&>(geometry));
    }

    std::size_t count = 0;
};

/// @return whether it is white, which many programs write where there is no colour
bool isWhite(const osg::Vec4& color)
{
    return std::min({color.r(), color.g(), color.b()}) > 0.999f;
}

bool hasColors(const osg::Geometry& geometry)
{
    const osg::Array* colors = geometry.getColorArray();
    if (!colors || colors->getNumElements() == 0 || colors->getBinding() == osg::Array::BIND_OFF)
        return false;
    const auto* values = dynamic_cast<const osg::Vec4Array*>(colors);
    return !values || colors->getBinding() != osg::Array::BIND_OVERALL || !isWhite(values->front());
}

} // namespace

std::size_t removeSurplusLights(osg::Node& scene)
{
    RemoveSurplus visitor;
    scene.accept(visitor);
    return visitor.count;
}

void brightenShade(osg::Node& scene)
{
    struct Brighten : osg::NodeVisitor
    {
        Brighten() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Node& node) override
        {
            osg::StateSet* state = node.getStateSet();
            if (auto* material = dynamic_cast<osg::Material*>(
                    state ? state->getAttribute(osg::StateAttribute::MATERIAL) : nullptr))
            {
                osg::Vec4 ambient = material->getAmbient(osg::Material::FRONT);
                const osg::Vec4 diffuse = material->getDiffuse(osg::Material::FRONT);
                for (int part = 0; part < 3; ++part)
                    ambient[part] = std::max(ambient[part], diffuse[part]);
                material->setAmbient(both, ambient);
            }
            traverse(node);
        }
    } visitor;
    scene.accept(visitor);
}

void setSelfLit(osg::StateSet& state)
{
    constexpr auto on = osg::StateAttribute::ON | osg::StateAttribute::PROTECTED;
    constexpr auto off = osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED;
    const osg::ref_ptr<osg::LightModel> full = new osg::LightModel;
    full->setAmbientIntensity({1, 1, 1, 1});
    state.setAttributeAndModes(full, on);
    state.setMode(GL_LIGHTING, on);
    for (int lamp = 0; lamp < LightNumbers::end; ++lamp)
        state.setMode(modeOf(lamp), off);
}

void setSelfLit(osg::Geometry& geometry, const osg::Material* inherited)
{
    const osg::StateSet* before = geometry.getStateSet();
    if (before && before->getMode(modeOf(LightNumbers::contrast)) & osg::StateAttribute::ON &&
        !(before->getMode(modeOf(LightNumbers::contrast)) & osg::StateAttribute::INHERIT))
        return; // the file was saved with what this sets
    // Surfaces may share the state.
    const osg::ref_ptr<osg::StateSet> state =
        geometry.getStateSet() ? osg::clone(geometry.getStateSet(), osg::CopyOp::SHALLOW_COPY)
                               : new osg::StateSet;
    const auto* own = dynamic_cast<const osg::Material*>(state->getAttribute(osg::StateAttribute::MATERIAL));
    const osg::Material* known = own ? own : inherited;
    const bool isPlain = !known || isWhite(known->getDiffuse(osg::Material::FRONT));
    const bool isColored = hasColors(geometry);
    const osg::ref_ptr<osg::Material> material =
        known ? osg::clone(known, osg::CopyOp::SHALLOW_COPY) : new osg::Material;
    if (isColored || !isPlain) {
        material->setAmbient(both, known ? known->getDiffuse(osg::Material::FRONT) : dark);
    } else {
        material->setAmbient(both, dark);
        material->setDiffuse(both, dark);
    }
    material->setColorMode(isColored ? osg::Material::AMBIENT_AND_DIFFUSE : osg::Material::OFF);
    state->setAttribute(material);
    setSelfLit(*state);
    if (isPlain && !isColored)
        state->setMode(modeOf(LightNumbers::contrast),
                       osg::StateAttribute::ON | osg::StateAttribute::PROTECTED);
    geometry.setStateSet(state);
    // A point alone has no extent, and would be left out as too small to be seen.
    if (!(geometry.getBound().radius() > 0))
        geometry.setCullingActive(false);
}

} // namespace vfScene
