// SPDX-License-Identifier: MIT
#include <velaforge/scene/NodeProperties.h>

#include <velaforge/scene/ModelScene.h>
#include <velaforge/scene/ModelStatistics.h>
#include <velaforge/scene/NodeKind.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Image>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/Texture>
#include <osg/Transform>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <locale>
#include <sstream>

namespace vfScene {

namespace {

/// More of a kind are counted, not named.
constexpr std::size_t mostNamed = 5;

template <class... Parts>
std::string join(const Parts&... parts)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(6);
    (text << ... << parts);
    return text.str();
}

std::string triple(const osg::Vec3d& value)
{
    return join(value.x(), ", ", value.y(), ", ", value.z());
}

/// Goes over the state that is drawn below a node.
class Collect : public osg::NodeVisitor
{
public:
    Collect() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        if (const osg::StateSet* state = node.getStateSet())
            add(*state);
        traverse(node);
    }
    void add(const osg::StateSet& state)
    {
        const auto* material =
            dynamic_cast<const osg::Material*>(state.getAttribute(osg::StateAttribute::MATERIAL));
        if (material)
            addOnce(materials, describe(*material));
        for (unsigned int unit = 0; unit < state.getNumTextureAttributeLists(); ++unit) {
            const auto* texture = dynamic_cast<const osg::Texture*>(
                state.getTextureAttribute(unit, osg::StateAttribute::TEXTURE));
            const osg::Image* image = texture && texture->getNumImages() > 0 ? texture->getImage(0) : nullptr;
            if (image)
                addOnce(textures, describe(*image));
        }
    }

    std::vector<std::string> materials;
    std::vector<std::string> textures;

private:
    static void addOnce(std::vector<std::string>& list, const std::string& text)
    {
        if (std::find(list.begin(), list.end(), text) == list.end())
            list.push_back(text);
    }
    static std::string describe(const osg::Material& material)
    {
        const osg::Vec4& color = material.getDiffuse(osg::Material::FRONT);
        const std::string parts = triple(osg::Vec3d(color.r(), color.g(), color.b())) +
                                  (color.a() < 1 ? join(", ", color.a()) : std::string());
        return material.getName().empty() ? parts : material.getName() + " (" + parts + ")";
    }
    static std::string describe(const osg::Image& image)
    {
        const std::string size = join(image.s(), "×", image.t());
        const std::string name = osgDB::getSimpleFileName(image.getFileName());
        return name.empty() ? size : name + " (" + size + ")";
    }
};

void addList(std::vector<NodeProperty>& properties, const char* name, const std::vector<std::string>& values)
{
    for (std::size_t i = 0; i < std::min(values.size(), mostNamed); ++i)
        properties.push_back({name, values[i]});
    if (values.size() > mostNamed)
        properties.push_back({name, join("+ ", values.size() - mostNamed)});
}

} // namespace

std::vector<NodeProperty> propertiesOf(osg::Node& node, const ModelScene& scene)
{
    std::vector<NodeProperty> properties;
    properties.push_back({"Name", node.getName()});
    properties.push_back({"Kind", kindOf(node)});
    const osg::NodePathList paths = node.getParentalNodePaths(&scene.root());
    const bool isShown = std::any_of(paths.begin(), paths.end(), [](const osg::NodePath& path) {
        return std::all_of(path.begin(), path.end(),
                           [](const osg::Node* one) { return one->getNodeMask() != 0; });
    });
    properties.push_back({"Shown", isShown ? "yes" : "no"});
    if (paths.size() > 1)
        properties.push_back({"Places", join(paths.size())});
    const ModelStatistics counted = countModel(node);
    properties.push_back({"Triangles", join(counted.triangles)});
    properties.push_back({"Vertices", join(counted.vertices)});
    if (counted.bounds.valid()) {
        const osg::Vec3d size = counted.bounds._max - counted.bounds._min;
        properties.push_back({"Width (x)", join(size.x())});
        properties.push_back({"Depth (y)", join(size.y())});
        properties.push_back({"Height (z)", join(size.z())});
        osg::Matrixd place;
        if (!paths.empty())
            place = osg::computeLocalToWorld({paths[0].begin(), paths[0].end() - 1});
        properties.push_back({"Middle", triple(osg::Vec3d(counted.bounds.center()) * place)});
    }
    Collect collect;
    node.accept(collect);
    if (collect.materials.empty() && !paths.empty()) {
        // What hangs below has it from above.
        for (auto above = paths[0].rbegin(); above != paths[0].rend() && collect.materials.empty(); ++above) {
            if ((*above)->getStateSet())
                collect.add(*(*above)->getStateSet());
        }
    }
    addList(properties, "Material", collect.materials);
    addList(properties, "Texture", collect.textures);
    properties.push_back({"Memory", describeMemory(counted.memory)});
    return properties;
}

} // namespace vfScene
