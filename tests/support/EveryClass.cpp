// SPDX-License-Identifier: MIT
#include "support/EveryClass.h"

#include <velaforge/formats/internal/FlatArrays.h>

#include <osg/AlphaFunc>
#include <osg/AnimationPath>
#include <osg/AutoTransform>
#include <osg/Billboard>
#include <osg/BlendColor>
#include <osg/BlendEquation>
#include <osg/BlendFunc>
#include <osg/CameraView>
#include <osg/ClipNode>
#include <osg/ColorMask>
#include <osg/CullFace>
#include <osg/Depth>
#include <osg/Fog>
#include <osg/FrontFace>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/LOD>
#include <osg/Light>
#include <osg/LightModel>
#include <osg/LightSource>
#include <osg/LineStipple>
#include <osg/LineWidth>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/PagedLOD>
#include <osg/Point>
#include <osg/PolygonMode>
#include <osg/PolygonOffset>
#include <osg/PositionAttitudeTransform>
#include <osg/Program>
#include <osg/Sequence>
#include <osg/ShadeModel>
#include <osg/ShapeDrawable>
#include <osg/Switch>
#include <osg/TexEnv>
#include <osg/TexEnvCombine>
#include <osg/TexGen>
#include <osg/TexMat>
#include <osg/Texture1D>
#include <osg/Texture2D>
#include <osg/Texture3D>
#include <osg/TextureCubeMap>
#include <osg/TextureRectangle>
#include <osg/ValueObject>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/Bone>
#include <osgAnimation/MorphGeometry>
#include <osgAnimation/RigGeometry>
#include <osgAnimation/Skeleton>
#include <osgAnimation/StackedMatrixElement>
#include <osgAnimation/StackedQuaternionElement>
#include <osgAnimation/StackedRotateAxisElement>
#include <osgAnimation/StackedScaleElement>
#include <osgAnimation/StackedTranslateElement>
#include <osgAnimation/UpdateBone>
#include <osgAnimation/UpdateMatrixTransform>
#include <osgText/Text>

#include <string>
#include <vector>

namespace vfTest {

namespace {

template <class T>
osg::ref_ptr<osg::Array> arrayOf(unsigned int size)
{
    const osg::ref_ptr<T> array = new T(osg::Array::BIND_PER_VERTEX);
    array->resize(size);
    return array;
}

osg::ref_ptr<osg::Vec3Array> triangle()
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    points->push_back({0, 0, 0});
    points->push_back({1, 0, 0});
    points->push_back({0, 1, 0.5f});
    return points;
}

osg::ref_ptr<osg::Material> material()
{
    osg::ref_ptr<osg::Material> one = new osg::Material;
    one->setName("enamel");
    one->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    one->setDiffuse(osg::Material::FRONT, {0.1f, 0.2f, 0.3f, 0.4f});
    one->setDiffuse(osg::Material::BACK, {0.5f, 0.2f, 0.3f, 0.4f});
    one->setSpecular(osg::Material::FRONT_AND_BACK, {0.9f, 0.8f, 0.7f, 1});
    one->setShininess(osg::Material::FRONT_AND_BACK, 33);
    return one;
}

void addPlainState(osg::StateSet& state)
{
    state.setAttributeAndModes(new osg::AlphaFunc(osg::AlphaFunc::GREATER, 0.25f));
    state.setAttribute(new osg::BlendColor({1, 0.5f, 0.25f, 1}));
    state.setAttribute(new osg::BlendEquation(osg::BlendEquation::RGBA_MIN, osg::BlendEquation::RGBA_MAX));
    state.setAttribute(new osg::BlendFunc(GL_ONE, GL_ZERO, GL_DST_COLOR, GL_SRC_ALPHA));
    state.setAttribute(new osg::ColorMask(true, false, true, false));
    state.setAttributeAndModes(new osg::CullFace(osg::CullFace::FRONT), osg::StateAttribute::OFF);
    state.setAttribute(new osg::Depth(osg::Depth::GEQUAL, 0.1, 0.9, false));
    const osg::ref_ptr<osg::Fog> fog = new osg::Fog;
    fog->setMode(osg::Fog::LINEAR);
    fog->setEnd(7);
    state.setAttribute(fog);
    state.setAttribute(new osg::FrontFace(osg::FrontFace::CLOCKWISE));
    const osg::ref_ptr<osg::Light> light = new osg::Light(3);
    light->setSpotCutoff(30);
    state.setAttribute(light, osg::StateAttribute::OVERRIDE);
    const osg::ref_ptr<osg::LightModel> model = new osg::LightModel;
    model->setTwoSided(true);
    state.setAttribute(model);
    state.setAttribute(new osg::LineStipple(3, 0x0f0f));
    state.setAttribute(new osg::LineWidth(4));
    state.setAttribute(material(), osg::StateAttribute::PROTECTED | osg::StateAttribute::ON);
    state.setAttribute(new osg::Point(5));
    state.setAttribute(new osg::PolygonMode(osg::PolygonMode::BACK, osg::PolygonMode::LINE));
    state.setAttribute(new osg::PolygonOffset(1.5f, 2.5f));
    state.setAttribute(new osg::ShadeModel(osg::ShadeModel::FLAT));
    state.setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    state.setName("state");
    state.setDataVariance(osg::Object::STATIC);
    state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    state.setRenderBinDetails(12, "DepthSortedBin", osg::StateSet::OVERRIDE_RENDERBIN_DETAILS);
    state.setNestRenderBins(false);
}

void addTextures(osg::StateSet& state)
{
    const osg::ref_ptr<osg::Texture2D> plain = new osg::Texture2D(gradient(8, 4, 1));
    plain->setName("plain");
    plain->setFilter(osg::Texture::MIN_FILTER, osg::Texture::NEAREST);
    plain->setWrap(osg::Texture::WRAP_T, osg::Texture::MIRROR);
    plain->setBorderColor({1, 0.5, 0.25, 0.125});
    plain->setMaxAnisotropy(4);
    plain->setInternalFormat(GL_RGB8);
    state.setTextureAttributeAndModes(0, plain);
    state.setTextureAttribute(0, new osg::TexEnv(osg::TexEnv::ADD));
    state.setTextureAttribute(0, new osg::TexMat(osg::Matrix::translate(1, 2, 3)));
    state.setTextureAttributeAndModes(1, new osg::Texture1D(gradient(16, 1, 1)));
    const osg::ref_ptr<osg::TexEnvCombine> combine = new osg::TexEnvCombine;
    combine->setCombine_RGB(osg::TexEnvCombine::INTERPOLATE);
    combine->setSource2_RGB(osg::TexEnvCombine::TEXTURE0);
    combine->setOperand0_Alpha(osg::TexEnvCombine::ONE_MINUS_SRC_ALPHA);
    combine->setScale_RGB(2);
    state.setTextureAttribute(1, combine);
    state.setTextureAttributeAndModes(2, new osg::Texture3D(gradient(4, 4, 4)));
    const osg::ref_ptr<osg::TexGen> coordinates = new osg::TexGen;
    coordinates->setMode(osg::TexGen::EYE_LINEAR);
    coordinates->setPlane(osg::TexGen::R, osg::Plane(1, 2, 3, 4));
    state.setTextureAttributeAndModes(2, coordinates);
    const osg::ref_ptr<osg::TextureCubeMap> sky = new osg::TextureCubeMap;
    for (unsigned int face = 0; face < 6; ++face)
        sky->setImage(face, gradient(4, 4, 1));
    state.setTextureAttributeAndModes(4, sky, osg::StateAttribute::OFF);
    state.setTextureAttributeAndModes(5, new osg::TextureRectangle(gradient(5, 3, 1)));
}

template <class Channel, class Value>
osg::ref_ptr<osgAnimation::Channel> channel(const std::string& name, const Value& first, const Value& second)
{
    const osg::ref_ptr<Channel> one = new Channel;
    one->setName(name);
    one->setTargetName("bone");
    auto& moments = *one->getOrCreateSampler()->getOrCreateKeyframeContainer();
    using Key = typename Channel::KeyframeContainerType::KeyType;
    moments.push_back(Key(0, first));
    moments.push_back(Key(1.5, second));
    return one;
}

osg::ref_ptr<osgAnimation::Animation> motion()
{
    namespace anim = osgAnimation;
    osg::ref_ptr<anim::Animation> one = new anim::Animation;
    one->setName("walk");
    one->addChannel(channel<anim::DoubleStepChannel>("double step", 1.0, 2.0));
    one->addChannel(channel<anim::FloatStepChannel>("float step", 1.0f, 2.0f));
    one->addChannel(channel<anim::Vec2StepChannel>("vec2 step", osg::Vec2(1, 2), osg::Vec2(3, 4)));
    one->addChannel(channel<anim::Vec3StepChannel>("vec3 step", osg::Vec3(1, 2, 3), osg::Vec3(4, 5, 6)));
    one->addChannel(channel<anim::Vec4StepChannel>("vec4 step", osg::Vec4(1, 2, 3, 4), osg::Vec4()));
    one->addChannel(channel<anim::QuatStepChannel>("quat step", osg::Quat(1, osg::X_AXIS), osg::Quat()));
    one->addChannel(channel<anim::DoubleLinearChannel>("double", 1.0, 2.0));
    one->addChannel(channel<anim::FloatLinearChannel>("float", 1.0f, 2.0f));
    one->addChannel(channel<anim::Vec2LinearChannel>("vec2", osg::Vec2(1, 2), osg::Vec2(3, 4)));
    one->addChannel(channel<anim::Vec3LinearChannel>("translate", osg::Vec3(1, 2, 3), osg::Vec3(4, 5, 6)));
    one->addChannel(channel<anim::Vec4LinearChannel>("vec4", osg::Vec4(1, 2, 3, 4), osg::Vec4()));
    one->addChannel(
        channel<anim::QuatSphericalLinearChannel>("turn", osg::Quat(1, osg::X_AXIS), osg::Quat()));
    one->addChannel(
        channel<anim::MatrixLinearChannel>("matrix", osg::Matrixf::translate(1, 2, 3), osg::Matrixf()));
    one->addChannel(channel<anim::FloatCubicBezierChannel>("curve", anim::FloatCubicBezier(1, 2, 3),
                                                           anim::FloatCubicBezier(4, 5, 6)));
    one->addChannel(channel<anim::DoubleCubicBezierChannel>("double curve", anim::DoubleCubicBezier(1, 2, 3),
                                                            anim::DoubleCubicBezier(4, 5, 6)));
    one->addChannel(channel<anim::Vec2CubicBezierChannel>(
        "vec2 curve", anim::Vec2CubicBezier(osg::Vec2(1, 2)), anim::Vec2CubicBezier(osg::Vec2(3, 4))));
    one->addChannel(channel<anim::Vec3CubicBezierChannel>(
        "vec3 curve", anim::Vec3CubicBezier(osg::Vec3(1, 2, 3)), anim::Vec3CubicBezier(osg::Vec3(3, 4, 5))));
    one->addChannel(channel<anim::Vec4CubicBezierChannel>("vec4 curve", anim::Vec4CubicBezier(osg::Vec4()),
                                                          anim::Vec4CubicBezier(osg::Vec4(1, 2, 3, 4))));
    one->setDuration(3);
    one->setPlayMode(osgAnimation::Animation::PPONG);
    one->setStartTime(0.25);
    return one;
}

osg::ref_ptr<osgAnimation::Bone> bone()
{
    namespace anim = osgAnimation;
    osg::ref_ptr<anim::Bone> one = new anim::Bone("bone");
    one->setInvBindMatrixInSkeletonSpace(osg::Matrix::translate(0, 0, -1));
    const osg::ref_ptr<anim::UpdateBone> update = new anim::UpdateBone("bone");
    anim::StackedTransform& stack = update->getStackedTransforms();
    stack.push_back(new anim::StackedTranslateElement("translate", osg::Vec3(1, 2, 3)));
    stack.push_back(new anim::StackedQuaternionElement("turn", osg::Quat(0.5, osg::Y_AXIS)));
    stack.push_back(new anim::StackedRotateAxisElement("hinge", osg::Z_AXIS, 0.5));
    stack.push_back(new anim::StackedScaleElement("scale", osg::Vec3(1, 1, 2)));
    stack.push_back(new anim::StackedMatrixElement("matrix", osg::Matrix::translate(3, 2, 1)));
    one->setUpdateCallback(update);
    return one;
}

} // namespace

osg::ref_ptr<osg::Geometry> triangleGeometry()
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(triangle());
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
    return geometry;
}

osg::ref_ptr<osg::Image> gradient(int width, int height, int depth)
{
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(width, height, depth, GL_RGB, GL_UNSIGNED_BYTE);
    for (unsigned int i = 0; i < image->getTotalSizeInBytes(); ++i)
        image->data()[i] = static_cast<unsigned char>(i * 7);
    image->setFileName("gradient.png");
    return image;
}

osg::ref_ptr<osg::Group> sceneOfGeometries()
{
    osg::ref_ptr<osg::Group> group = new osg::Group;
    for (const vfFormats::FlatArrayKind& kind : vfFormats::flatArrays()) {
        const osg::ref_ptr<osg::Geometry> geometry = triangleGeometry();
        const osg::ref_ptr<osg::BufferData> data = kind.make();
        const std::vector<unsigned char> zeros(3 * kind.elementSize);
        vfFormats::FlatBytes bytes;
        bytes.here = zeros.data();
        kind.fill(*data, 3, bytes);
        if (osg::Array* array = data->asArray()) {
            array->setName("attribute");
            array->setNormalize(true);
            geometry->setVertexAttribArray(3, array, osg::Array::BIND_PER_VERTEX);
        } else {
            data->asPrimitiveSet()->setMode(GL_LINE_STRIP);
            geometry->addPrimitiveSet(data->asPrimitiveSet());
        }
        group->addChild(geometry);
    }
    const osg::ref_ptr<osg::Geometry> full = triangleGeometry();
    full->setNormalArray(arrayOf<osg::Vec3Array>(3));
    full->setColorArray(arrayOf<osg::Vec4ubArray>(3));
    full->setSecondaryColorArray(arrayOf<osg::Vec3Array>(3));
    full->setFogCoordArray(arrayOf<osg::FloatArray>(3));
    full->setTexCoordArray(0, arrayOf<osg::Vec2Array>(3));
    full->setTexCoordArray(2, arrayOf<osg::Vec2Array>(3));
    const osg::ref_ptr<osg::DrawElementsUInt> elements = new osg::DrawElementsUInt(GL_TRIANGLES);
    elements->push_back(2);
    elements->push_back(0);
    elements->push_back(1);
    full->addPrimitiveSet(elements);
    group->addChild(full);
    group->addChild(full);
    return group;
}

osg::ref_ptr<osg::Group> sceneOfNodes()
{
    osg::ref_ptr<osg::Group> group = new osg::Group;
    group->setNodeMask(0xff00ff);
    group->setCullingActive(false);
    group->addDescription("a line");
    group->setUserValue("whole", 5);
    group->setUserValue("real", 2.5);
    group->setUserValue("text", std::string("words"));
    group->setUserValue("place", osg::Vec3d(1, 2, 3));
    group->setUserValue("is", true);
    group->addChild(withTriangle<osg::Geode>());
    const auto moved = withTriangle<osg::MatrixTransform>();
    moved->setMatrix(osg::Matrix::translate(1, 2, 3));
    moved->setDataVariance(osg::Object::DYNAMIC);
    group->addChild(moved);
    const auto placed = withTriangle<osg::PositionAttitudeTransform>();
    placed->setAttitude(osg::Quat(0.5, osg::Z_AXIS));
    placed->setPivotPoint({1, 1, 1});
    placed->setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    group->addChild(placed);
    const auto facing = withTriangle<osg::AutoTransform>();
    facing->setAutoRotateMode(osg::AutoTransform::ROTATE_TO_SCREEN);
    facing->setAutoScaleToScreen(true);
    facing->setMinimumScale(0.5);
    facing->setMaximumScale(2);
    group->addChild(facing);
    const osg::ref_ptr<osg::CameraView> view = new osg::CameraView;
    view->setFieldOfView(50);
    view->setFieldOfViewMode(osg::CameraView::HORIZONTAL);
    view->setFocalLength(3);
    view->setPosition({1, 2, 3});
    group->addChild(view);
    const auto choice = withTriangle<osg::Switch>();
    choice->addChild(triangleGeometry(), false);
    group->addChild(choice);
    const auto levels = withTriangle<osg::LOD>();
    levels->setRange(0, 0, 100);
    levels->addChild(triangleGeometry(), 100, 1e6f);
    levels->setCenter({1, 1, 1});
    levels->setRadius(5);
    group->addChild(levels);
    const osg::ref_ptr<osg::Sequence> sequence = new osg::Sequence;
    sequence->addChild(triangleGeometry(), 0.5);
    sequence->addChild(triangleGeometry(), 0.25);
    sequence->setInterval(osg::Sequence::SWING, 0, 1);
    sequence->setDuration(2, 3);
    sequence->setMode(osg::Sequence::START);
    group->addChild(sequence);
    const osg::ref_ptr<osg::Billboard> billboard = new osg::Billboard;
    billboard->setMode(osg::Billboard::AXIAL_ROT);
    billboard->setAxis({0, 1, 0});
    billboard->addDrawable(triangleGeometry(), {1, 2, 3});
    billboard->addDrawable(triangleGeometry(), {4, 5, 6});
    group->addChild(billboard);
    const auto lamp = withTriangle<osg::LightSource>();
    lamp->getLight()->setLightNum(2);
    lamp->getLight()->setPosition({1, 2, 3, 1});
    lamp->setReferenceFrame(osg::LightSource::ABSOLUTE_RF);
    group->addChild(lamp);
    const osg::ref_ptr<osgText::Text> text = new osgText::Text;
    text->setText("Words\nand more");
    text->setCharacterSize(2.5f, 0.75f);
    text->setPosition({1, 2, 3});
    text->setAlignment(osgText::Text::CENTER_CENTER);
    text->setAxisAlignment(osgText::Text::XZ_PLANE);
    text->setColor({1, 0, 0, 1});
    text->setBackdropType(osgText::Text::OUTLINE);
    group->addChild(text);
    return group;
}

osg::ref_ptr<osg::Group> movingScene()
{
    namespace anim = osgAnimation;
    osg::ref_ptr<osg::Group> group = new osg::Group;
    const osg::ref_ptr<anim::BasicAnimationManager> manager = new anim::BasicAnimationManager;
    manager->registerAnimation(motion());
    group->setUpdateCallback(manager);
    const osg::ref_ptr<anim::Skeleton> skeleton = new anim::Skeleton;
    skeleton->setDefaultUpdateCallback();
    skeleton->addChild(bone());
    const osg::ref_ptr<anim::RigGeometry> skin = new anim::RigGeometry;
    skin->setSourceGeometry(triangleGeometry());
    skin->copyFrom(*skin->getSourceGeometry());
    const osg::ref_ptr<anim::VertexInfluenceMap> map = new anim::VertexInfluenceMap;
    (*map)["bone"].setName("bone");
    (*map)["bone"].emplace_back(0, 0.25f);
    (*map)["bone"].emplace_back(2, 0.75f);
    skin->setInfluenceMap(map);
    skin->setComputeBoundingBoxCallback(nullptr);
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(skin);
    skeleton->addChild(geode);
    group->addChild(skeleton);
    const osg::ref_ptr<anim::MorphGeometry> shape = new anim::MorphGeometry(*triangleGeometry());
    shape->setMethod(anim::MorphGeometry::RELATIVE);
    shape->addMorphTarget(triangleGeometry(), 0.5f);
    const osg::ref_ptr<osg::Geode> face = new osg::Geode;
    face->addDrawable(shape);
    const osg::ref_ptr<anim::UpdateMorph> morph = new anim::UpdateMorph("face");
    morph->addTarget("smile");
    face->setUpdateCallback(morph);
    group->addChild(face);
    const osg::ref_ptr<osg::AnimationPath> path = new osg::AnimationPath;
    path->setLoopMode(osg::AnimationPath::SWING);
    path->insert(0, osg::AnimationPath::ControlPoint({0, 0, 0}));
    path->insert(2, osg::AnimationPath::ControlPoint({1, 2, 3}, osg::Quat(1, osg::X_AXIS), {1, 2, 1}));
    const auto carried = withTriangle<osg::MatrixTransform>();
    carried->setUpdateCallback(new osg::AnimationPathCallback(path, 0.5, 2));
    carried->addUpdateCallback(new anim::UpdateMatrixTransform("carried"));
    group->addChild(carried);
    return group;
}

osg::ref_ptr<osg::Group> sceneOfStates()
{
    osg::ref_ptr<osg::Group> scene = new osg::Group;
    addPlainState(*scene->getOrCreateStateSet());
    const auto textured = withTriangle<osg::Geode>();
    addTextures(*textured->getOrCreateStateSet());
    scene->addChild(textured);
    return scene;
}

osg::ref_ptr<osg::Group> sceneOfEverything()
{
    osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(sceneOfGeometries());
    scene->addChild(sceneOfNodes());
    scene->addChild(sceneOfStates());
    scene->addChild(movingScene());
    return scene;
}
} // namespace vfTest
