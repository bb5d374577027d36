// SPDX-License-Identifier: MIT
#include "model/LitScene.h"

#include <osg/LightModel>
#include <osg/LightSource>
#include <osg/Material>

namespace vfViewer {

namespace {

osg::ref_ptr<osg::LightSource> makeLamp(int number, const osg::Vec3& towards, float strength, float shine)
{
    const osg::ref_ptr<osg::Light> light = new osg::Light;
    light->setLightNum(number);
    light->setPosition(osg::Vec4(towards, 0));
    light->setAmbient({0, 0, 0, 1});
    light->setDiffuse({strength, strength, strength, 1});
    light->setSpecular({shine, shine, shine, 1});
    const osg::ref_ptr<osg::LightSource> source = new osg::LightSource;
    source->setReferenceFrame(osg::LightSource::ABSOLUTE_RF); // in the camera's own directions
    source->setLight(light);
    source->setCullingActive(false);
    return source;
}

} // namespace

osg::ref_ptr<osg::Group> makeLitScene(osg::Node& scene)
{
    osg::ref_ptr<osg::Group> lit = new osg::Group;
    lit->addChild(makeLamp(0, {-0.45f, 0.75f, 1.0f}, 0.70f, 0.5f));
    lit->addChild(makeLamp(1, {0.80f, 0.10f, 0.60f}, 0.22f, 0.0f));
    lit->addChild(&scene);

    osg::StateSet* state = lit->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::ON);
    state->setMode(GL_LIGHT0, osg::StateAttribute::ON);
    state->setMode(GL_LIGHT1, osg::StateAttribute::ON);
    state->setMode(GL_NORMALIZE, osg::StateAttribute::ON); // scaled models would be too bright or too dark
    const osg::ref_ptr<osg::LightModel> model = new osg::LightModel;
    model->setTwoSided(true); // files disagree about which way a triangle faces
    model->setAmbientIntensity({0.30f, 0.30f, 0.32f, 1});
    state->setAttributeAndModes(model);
    // For what has no colour of its own.
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    material->setAmbient(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
    material->setSpecular(osg::Material::FRONT_AND_BACK, {0.15f, 0.15f, 0.15f, 1});
    material->setShininess(osg::Material::FRONT_AND_BACK, 30);
    state->setAttribute(material);
    return lit;
}

} // namespace vfViewer
