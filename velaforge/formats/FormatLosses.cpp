// SPDX-License-Identifier: MIT
#include <velaforge/formats/FormatLosses.h>

#include <osg/AnimationPath>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/Sequence>
#include <osg/Texture>

#include <iterator>

namespace vfFormats {

namespace {

struct FeatureName
{
    ModelFeature feature;
    const char* name;
};

constexpr FeatureName featureNames[] = {{PartNames, "names"},
                                        {SeveralParts, "the division into parts"},
                                        {Colors, "colours of materials"},
                                        {Textures, "textures"},
                                        {VertexColors, "colours of points"},
                                        {SmoothNormals, "smooth shading"},
                                        {Lines, "lines"},
                                        {Points, "points"},
                                        {HiddenParts, "what is hidden"},
                                        {Animations, "animations"}};

class Look : public osg::NodeVisitor
{
public:
    Look() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        take(node);
        traverse(node);
    }

    void apply(osg::Sequence& node) override
    {
        found |= Animations;
        apply(static_cast<osg::Node&>(node));
    }

    void apply(osg::Geometry& geometry) override
    {
        take(geometry);
        if (++geometries > 1)
            found |= SeveralParts;
        if (geometry.getColorArray() && geometry.getColorArray()->getBinding() == osg::Array::BIND_PER_VERTEX)
            found |= VertexColors;
        if (geometry.getNormalArray() &&
            geometry.getNormalArray()->getBinding() == osg::Array::BIND_PER_VERTEX && isSmooth(geometry))
            found |= SmoothNormals;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            if (primitives->getMode() == GL_POINTS)
                found |= Points;
            else if (primitives->getMode() <= GL_LINE_STRIP)
                found |= Lines;
        }
    }

    unsigned int found = 0;
    int geometries = 0;

private:
    void take(osg::Node& node)
    {
        if (node.getNodeMask() == 0)
            found |= HiddenParts;
        if (getNodePath().size() > 1 && !node.getName().empty())
            found |= PartNames; // that of the whole is the file's
        for (osg::Callback* callback = node.getUpdateCallback(); callback;
             callback = callback->getNestedCallback())
            found |= Animations;
        const osg::StateSet* state = node.getStateSet();
        if (!state)
            return;
        if (state->getAttribute(osg::StateAttribute::MATERIAL))
            found |= Colors;
        for (unsigned int unit = 0; unit < state->getNumTextureAttributeLists(); ++unit) {
            if (state->getTextureAttribute(unit, osg::StateAttribute::TEXTURE))
                found |= Textures;
        }
    }

    /// @return whether the normals of a triangle differ at its corners
    static bool isSmooth(const osg::Geometry& geometry)
    {
        const auto* normals = dynamic_cast<const osg::Vec3Array*>(geometry.getNormalArray());
        if (!normals)
            return false;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            const bool isTriangles = primitives->getMode() == GL_TRIANGLES;
            for (unsigned int i = 0; isTriangles && i + 2 < primitives->getNumIndices(); i += 3) {
                const unsigned int a = primitives->index(i);
                const unsigned int b = primitives->index(i + 1);
                if (a < normals->size() && b < normals->size() &&
                    ((*normals)[a] - (*normals)[b]).length() > 1e-3f)
                    return true;
            }
            if (!isTriangles && primitives->getMode() > GL_LINE_STRIP)
                return true; // strips and the like are not looked into
        }
        return false;
    }
};

} // namespace

unsigned int featuresOf(osg::Node& model)
{
    Look look;
    model.accept(look);
    return look.found;
}

unsigned int featuresLostBy(const std::string& extension)
{
    const Format* format = formatNamed(extension);
    return format && format->isWritten ? format->lost : allFeatures;
}

std::vector<std::string> lossesOf(osg::Node& model, const std::string& extension)
{
    const unsigned int lost = featuresOf(model) & featuresLostBy(extension);
    std::vector<std::string> losses;
    for (const FeatureName& known : featureNames) {
        if (lost & known.feature)
            losses.emplace_back(known.name);
    }
    return losses;
}

std::string describeLosses(osg::Node& model, const std::string& extension)
{
    std::string text;
    for (const std::string& loss : lossesOf(model, extension))
        text += (text.empty() ? "" : ", ") + loss;
    return text;
}

} // namespace vfFormats
