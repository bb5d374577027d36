// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelScene.h"

#include <velaforge/commands/CommandPrivate.h>

#include <osg/MatrixTransform>
#include <osg/Node>
#include <osg/StateSet>
#include <osg/Vec3d>
#include <osg/Vec4>

#include <vector>

namespace vfViewer {

/// A change of one node of a scene that can be undone. Fails, and changes nothing, when the node is not in the scene.
class SceneCommand : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return true; }
    bool Do(const vfBase::VfVariant& argument) override;
    bool undo(const vfBase::VfVariant& argument) override;

protected:
    SceneCommand(const char* name, ModelScene& scene, osg::Node& node);
    ~SceneCommand() override = default;

    osg::Node& node() const { return *m_node; }
    ModelScene& scene() const { return *m_scene; }

    virtual bool apply() = 0;
    virtual void revert() = 0;

private:
    osg::ref_ptr<ModelScene> m_scene;
    osg::ref_ptr<osg::Node> m_node;
};

/// Hides a node, or shows it again.
class ShowCommand : public SceneCommand
{
public:
    ShowCommand(ModelScene& scene, osg::Node& node, bool show);

protected:
    bool apply() override;
    void revert() override;

private:
    bool m_show;
    osg::Node::NodeMask m_before = 0;
};

/// Takes a node out of the scene, wherever it hangs in it.
class RemoveCommand : public SceneCommand
{
public:
    RemoveCommand(ModelScene& scene, osg::Node& node);

protected:
    bool apply() override;
    void revert() override;

private:
    struct Place
    {
        osg::ref_ptr<osg::Group> parent;
        unsigned int index;
    };
    std::vector<Place> m_places;
};

/// Moves a node in the coordinates of its parent, by a transform put above it.
class MoveCommand : public SceneCommand
{
public:
    MoveCommand(ModelScene& scene, osg::Node& node, const osg::Vec3d& offset);

protected:
    bool apply() override;
    void revert() override;

private:
    osg::ref_ptr<osg::MatrixTransform> m_transform; ///< one for all runs, since later commands may name it
    std::vector<osg::ref_ptr<osg::Group>> m_parents;
};

/// Gives a node and everything below it one colour, with the alpha value it has; textures stay.
class ColorCommand : public SceneCommand
{
public:
    ColorCommand(ModelScene& scene, osg::Node& node, const osg::Vec4& color);

protected:
    bool apply() override;
    void revert() override;

private:
    osg::Vec4 m_color;
    osg::ref_ptr<osg::StateSet> m_before;
    osg::ref_ptr<osg::StateSet> m_after;
};

} // namespace vfViewer
