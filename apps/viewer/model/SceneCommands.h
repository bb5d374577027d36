// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelScene.h"

#include <velaforge/commands/CommandPrivate.h>

#include <osg/Matrixd>
#include <osg/Node>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include <cstddef>
#include <string>
#include <vector>

namespace osg {
class Geometry;
class MatrixTransform;
class StateSet;
} // namespace osg

namespace vfViewer {

/// A change of one node of a scene that can be undone. Fails, and changes nothing, when the node is not in the scene.
///
/// The scene bounds what its commands hold for undoing: the oldest are told to forget it, and cannot be undone from there
/// on.
class SceneCommand : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return !m_isForgotten; }
    bool Do(const vfBase::VfVariant& argument) override;
    bool undo(const vfBase::VfVariant& argument) override;

    /// @return the bytes held for undoing, or for doing again, beside what the scene itself holds
    std::size_t getMemory() const { return m_memory; }

    /// Lets go of them. Not while it is undone.
    void forget();

    ModelScene& scene() const { return *m_scene; }

protected:
    SceneCommand(const char* name, ModelScene& scene, osg::Node& node);
    ~SceneCommand() override;

    osg::Node& node() const { return *m_node; }
    /// For a command on what is no node yet: whether it can work on the scene.
    virtual bool isPossible() const;

    virtual bool apply() = 0;
    virtual void revert() = 0;

    /// @return the bytes held once it is done, or undone
    virtual std::size_t measure(bool isDone) const;

    /// Lets go of all that undoing needs.
    virtual void release() {}

private:
    osg::ref_ptr<ModelScene> m_scene;
    osg::ref_ptr<osg::Node> m_node;
    std::size_t m_memory = 0;
    bool m_isForgotten = false;
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
    std::size_t measure(bool isDone) const override;
    void release() override { m_places.clear(); }

private:
    struct Place
    {
        osg::ref_ptr<osg::Group> parent;
        unsigned int index;
    };
    std::vector<Place> m_places;
};

/// Gives a node another name.
class RenameCommand : public SceneCommand
{
public:
    RenameCommand(ModelScene& scene, osg::Node& node, const std::string& name);

protected:
    bool apply() override;
    void revert() override;

private:
    std::string m_name;
    std::string m_before;
};

/// Moves, turns or scales a node in the coordinates of what it hangs in: by a transform put above it, or by the one that
/// another such command has put there.
class TransformCommand : public SceneCommand
{
public:
    TransformCommand(const char* name, ModelScene& scene, osg::Node& node, const osg::Matrixd& matrix);

    /// @param inScene  in the coordinates of the scene
    /// @return the same in those of what the node hangs in
    static osg::Matrixd inFrameOf(osg::Node& node, const ModelScene& scene, const osg::Matrixd& inScene);

    /// Returns whether @p node is a transform that such a command has put above a part.
    static bool isPlacement(const osg::Node& node);

    /// @return what turns and scales about the middle of the node when it is applied
    static osg::Matrixd aboutMiddle(osg::Node& node, const osg::Matrixd& matrix);

protected:
    bool apply() override;
    void revert() override;

private:
    osg::Matrixd m_matrix;
    osg::ref_ptr<osg::MatrixTransform> m_transform; ///< one for all runs, since later commands may name it
    std::vector<osg::ref_ptr<osg::Group>> m_parents;
    osg::ref_ptr<osg::MatrixTransform> m_existing; ///< that of another command, while this one is done
    osg::Matrixd m_before;
};

/// Puts further models beside what there is.
class AddCommand : public SceneCommand
{
public:
    AddCommand(const char* name, ModelScene& scene, const std::vector<osg::ref_ptr<osg::Node>>& models);

protected:
    bool isPossible() const override { return !m_models.empty(); }
    bool apply() override;
    void revert() override;
    std::size_t measure(bool isDone) const override;

private:
    std::vector<osg::ref_ptr<osg::Node>> m_models;
    osg::ref_ptr<osg::Group> m_assembly; ///< one for all runs
    bool m_isNew = false;                ///< it was put there by this command
};

/// Replaces what the geometries below a node consist of.
class GeometryCommand : public SceneCommand
{
protected:
    GeometryCommand(const char* name, ModelScene& scene, osg::Node& node);

    bool apply() override;
    void revert() override;
    std::size_t measure(bool isDone) const override;
    void release() override;

    /// Changes a geometry that shares nothing but its arrays with one of the scene: puts others in their places.
    /// @return false when there is nothing to change
    virtual bool change(osg::Geometry& geometry) = 0;

private:
    struct Change
    {
        osg::ref_ptr<osg::Geometry> geometry;
        osg::ref_ptr<osg::Geometry> before;
        osg::ref_ptr<osg::Geometry> after;
    };
    std::vector<Change> m_changes;
};

/// Turns the surfaces below a node inside out.
class FlipNormalsCommand : public GeometryCommand
{
public:
    FlipNormalsCommand(ModelScene& scene, osg::Node& node);

protected:
    bool change(osg::Geometry& geometry) override;
};

/// Works the normals below a node out anew.
class RecomputeNormalsCommand : public GeometryCommand
{
public:
    /// @param creaseAngle  in radians: what meets at less is one curved surface
    RecomputeNormalsCommand(ModelScene& scene, osg::Node& node, double creaseAngle);

protected:
    bool change(osg::Geometry& geometry) override;

private:
    double m_creaseAngle;
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
