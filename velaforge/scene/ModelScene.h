// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Group>
#include <osg/Referenced>
#include <osg/ref_ptr>

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

namespace vfScene {

class SceneCommand;

/// A model that can be edited, with what its commands hold for undoing. Commands share it: one may outlive the document that
/// shows the scene.
class VFSCENE_EXPORT ModelScene : public osg::Referenced
{
public:
    /// Gets notice of changes, usually the document of the scene.
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /// Called after a change, or once after a Batch of changes.
        /// @param isPreview  the change only shows what a command would do, see Preview
        virtual void onSceneChanged(bool isPreview) = 0;
    };

    /// @param listener  must outlive the scene, or be taken away by detach(); null for none
    explicit ModelScene(Listener* listener = nullptr);

    /// Returns the group whose child is the model; the same during the scene's life.
    osg::Group& root() const { return *m_root; }

    /// Replaces the model by one that was just read. Does not notify the listener.
    /// @param model  null leaves the scene empty
    void setModel(osg::Node* model);

    /// Returns whether a node is a descendant of the root.
    bool contains(const osg::Node& node) const;

    /// Returns the parents of a node that belong to this scene.
    std::vector<osg::ref_ptr<osg::Group>> parentsOf(const osg::Node& node) const;

    /// Returns the parts of the model in the order of the scene: the nodes that draw something, each once.
    std::vector<osg::ref_ptr<osg::Node>> parts() const;

    /// Returns the nodes that are hidden themselves, not only by an ancestor.
    std::vector<osg::ref_ptr<osg::Node>> hiddenNodes() const;

    /// Returns the nodes to hide so that only @p node is visible.
    std::vector<osg::ref_ptr<osg::Node>> othersThan(osg::Node& node) const;

    /// Limits the memory that the commands of the undo history hold. Above it the oldest ones release theirs and can no
    /// longer be undone; the newest one never does.
    /// @param limit  in bytes
    void setHistoryLimit(std::size_t limit);
    /// Returns that limit in bytes.
    std::size_t getHistoryLimit() const { return m_historyLimit; }

    /// Returns the bytes that the commands of the undo history hold.
    std::size_t getHistoryMemory() const { return m_historyMemory; }

    /// Returns the number of commands that can be undone or redone.
    std::size_t getHistoryLength() const { return m_commands.size(); }

    /// Called by a command when it was done or redone.
    void noteCommand(SceneCommand& command);
    /// Called by a command when the memory that it holds has changed.
    void noteMemory(const SceneCommand& command);
    /// Called by a command when it is destroyed.
    void forgetCommand(const SceneCommand& command);

    /// Notifies the listener of a change.
    void changed();

    /// While an object of this class lives, changes only show what a command would do, and the listener is told so.
    class Preview
    {
    public:
        /// @param scene  must outlive this object
        explicit Preview(ModelScene& scene) : m_scene(scene) { ++m_scene.m_previews; }
        ~Preview() { --m_scene.m_previews; }
        Preview(const Preview&) = delete;
        Preview& operator=(const Preview&) = delete;

    private:
        ModelScene& m_scene;
    };

    /// While an object of this class lives, changes are collected; the listener is notified once, at its end.
    class VFSCENE_EXPORT Batch
    {
    public:
        /// @param scene  kept alive by this object
        explicit Batch(ModelScene& scene);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        osg::ref_ptr<ModelScene> m_scene;
    };

    /// Returns a number that differs after each change, and differs from that of any other scene.
    unsigned long long getState() const { return m_state; }

    /// Takes the listener away. Call it before the listener is destroyed.
    void detach() { m_listener = nullptr; }

protected:
    ~ModelScene() override = default;

private:
    /// @return whether @p group is the root or hangs below it
    bool holds(const osg::Group& group) const;

    void boundHistory();

    osg::ref_ptr<osg::Group> m_root;
    Listener* m_listener;
    unsigned long long m_state;
    struct Known
    {
        std::list<SceneCommand*>::iterator place;
        std::size_t memory = 0;
    };

    int m_previews = 0;
    std::list<SceneCommand*> m_commands; ///< oldest first
    std::unordered_map<const SceneCommand*, Known> m_known;
    std::size_t m_historyMemory = 0;
    int m_batches = 0;
    bool m_isChanged = false; ///< since the batch began
    std::size_t m_historyLimit = std::size_t(512) * 1000 * 1000;
};

} // namespace vfScene
