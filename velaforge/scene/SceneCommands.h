// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/scene/Export.h>
#include <velaforge/scene/ModelScene.h>

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

namespace vfScene {

/// A change of one node of a scene that can be undone. Do() fails and changes nothing when the node is not in the scene.
///
/// Make a command with `new`, and submit it to a vfApplication::CommandProcessor, which owns it from then on. The scene limits
/// the memory that its commands hold, see ModelScene::setHistoryLimit().
class VFSCENE_EXPORT SceneCommand : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return !m_isForgotten; }
    bool Do(const vfBase::VfVariant& argument) override;
    bool undo(const vfBase::VfVariant& argument) override;

    /// Returns the bytes held for undo or redo, in addition to the scene's own.
    std::size_t getMemory() const { return m_memory; }

    /// Releases them; the command cannot be undone any more. Must not be called while it is undone.
    void forget();

    /// Returns the scene that the command changes.
    ModelScene& scene() const { return *m_scene; }

protected:
    /// @param name   the text of the command for users, in English, a literal
    /// @param scene  shared with the command
    /// @param node   shared with the command
    SceneCommand(const char* name, ModelScene& scene, osg::Node& node);
    ~SceneCommand() override;

    /// Returns the node.
    osg::Node& node() const { return *m_node; }

    /// Returns whether the command can change the scene: by default, whether the node is in it.
    virtual bool isPossible() const;
    /// Makes the change. Returns false, with the scene unchanged, when there is nothing to change.
    virtual bool apply() = 0;
    /// Takes the change back.
    virtual void revert() = 0;
    /// Returns the bytes held when the command is done, or when it is undone.
    virtual std::size_t measure(bool isDone) const;
    /// Releases what undo needs.
    virtual void release() {}

private:
    osg::ref_ptr<ModelScene> m_scene;
    osg::ref_ptr<osg::Node> m_node;
    std::size_t m_memory = 0;
    bool m_isForgotten = false;
};

/// Hides a node, or shows it again.
class VFSCENE_EXPORT ShowCommand : public SceneCommand
{
public:
    /// @param scene  the scene
    /// @param node   the node
    /// @param show   false to hide it
    ShowCommand(ModelScene& scene, osg::Node& node, bool show);

protected:
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.

private:
    bool m_show;
    osg::Node::NodeMask m_before = 0;
};

/// Removes a node from all its parents in the scene.
class VFSCENE_EXPORT RemoveCommand : public SceneCommand
{
public:
    /// @param scene  the scene
    /// @param node   the node
    RemoveCommand(ModelScene& scene, osg::Node& node);

protected:
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.
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

/// Changes the name of a node.
class VFSCENE_EXPORT RenameCommand : public SceneCommand
{
public:
    /// @param scene  the scene
    /// @param node   the node
    /// @param name   the new name
    RenameCommand(ModelScene& scene, osg::Node& node, const std::string& name);

protected:
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.

private:
    std::string m_name;
    std::string m_before;
};

/// Moves, rotates or scales a node in the coordinates of its parents: with a transform inserted above it, or with the one that
/// another such command has inserted.
class VFSCENE_EXPORT TransformCommand : public SceneCommand
{
public:
    /// @param name    the text of the command for users, in English, a literal
    /// @param scene   the scene
    /// @param node    the node
    /// @param matrix  in the coordinates of the parents of @p node
    TransformCommand(const char* name, ModelScene& scene, osg::Node& node, const osg::Matrixd& matrix);

    /// Converts a matrix from the coordinates of the scene to those of the parents of a node.
    /// @param node     the node
    /// @param scene    the scene
    /// @param inScene  the matrix
    static osg::Matrixd inFrameOf(osg::Node& node, const ModelScene& scene, const osg::Matrixd& inScene);

    /// Returns whether @p node is a transform that such a command has inserted above a part.
    static bool isPlacement(const osg::Node& node);

    /// Returns a matrix that does the same about the centre of a node.
    /// @param node    the node
    /// @param matrix  rotates or scales about the origin
    static osg::Matrixd aboutMiddle(osg::Node& node, const osg::Matrixd& matrix);

protected:
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.

private:
    osg::Matrixd m_matrix;
    osg::ref_ptr<osg::MatrixTransform> m_transform; ///< one for all runs, since later commands may name it
    std::vector<osg::ref_ptr<osg::Group>> m_parents;
    osg::ref_ptr<osg::MatrixTransform> m_existing; ///< that of another command, while this one is done
    osg::Matrixd m_before;
};

/// Adds further models to a scene.
class VFSCENE_EXPORT AddCommand : public SceneCommand
{
public:
    /// @param name    the text of the command for users, in English, a literal
    /// @param scene   the scene
    /// @param models  the models, shared with the command
    AddCommand(const char* name, ModelScene& scene, const std::vector<osg::ref_ptr<osg::Node>>& models);

protected:
    bool isPossible() const override { return !m_models.empty(); }
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.
    std::size_t measure(bool isDone) const override;

private:
    std::vector<osg::ref_ptr<osg::Node>> m_models;
    osg::ref_ptr<osg::Group> m_assembly; ///< one for all runs
    bool m_isNew = false;                ///< it was put there by this command
};

/// Replaces the arrays of the geometries of a node and its descendants.
class VFSCENE_EXPORT GeometryCommand : public SceneCommand
{
protected:
    /// @param name   the text of the command for users, in English, a literal
    /// @param scene  the scene
    /// @param node   the node
    GeometryCommand(const char* name, ModelScene& scene, osg::Node& node);

    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.
    std::size_t measure(bool isDone) const override;
    void release() override;

    /// Changes a copy of a geometry, which shares only its arrays with the original: replaces arrays by others.
    /// @param geometry  the copy
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

/// Flips the faces of a node and its descendants.
class VFSCENE_EXPORT FlipNormalsCommand : public GeometryCommand
{
public:
    /// @param scene  the scene
    /// @param node   the node
    FlipNormalsCommand(ModelScene& scene, osg::Node& node);

protected:
    bool change(osg::Geometry& geometry) override;
};

/// Computes the normals of a node and its descendants, see makeNormals().
class VFSCENE_EXPORT RecomputeNormalsCommand : public GeometryCommand
{
public:
    /// @param scene        the scene
    /// @param node         the node
    /// @param creaseAngle  in radians
    RecomputeNormalsCommand(ModelScene& scene, osg::Node& node, double creaseAngle);

protected:
    bool change(osg::Geometry& geometry) override;

private:
    double m_creaseAngle;
};

/// Gives a node and its descendants one colour, with the alpha value they have; textures stay.
class VFSCENE_EXPORT ColorCommand : public SceneCommand
{
public:
    /// @param scene  the scene
    /// @param node   the node
    /// @param color  red, green and blue from 0 to 1
    ColorCommand(ModelScene& scene, osg::Node& node, const osg::Vec4& color);

protected:
    bool apply() override;  ///< Makes the change.
    void revert() override; ///< Takes it back.

private:
    osg::Vec4 m_color;
    osg::ref_ptr<osg::StateSet> m_before;
    osg::ref_ptr<osg::StateSet> m_after;
};

} // namespace vfScene
