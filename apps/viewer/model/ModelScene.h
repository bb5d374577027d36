// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Group>
#include <osg/Referenced>
#include <osg/ref_ptr>

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

namespace vfViewer {

class ModelDocument;
class SceneCommand;

/// The scene of a document, shared with the commands in its history: a command may outlive the document.
class ModelScene : public osg::Referenced
{
public:
    explicit ModelScene(ModelDocument& document);

    /// @return the group below which everything of the model hangs
    osg::Group& root() const { return *m_root; }

    /// Puts a newly read model in the place of what was there; null leaves the scene empty.
    void setModel(osg::Node* model);

    /// @return whether @p node hangs below the root, the root itself not included
    bool contains(const osg::Node& node) const;

    /// @return the groups of this scene in which @p node hangs; others may share it
    std::vector<osg::ref_ptr<osg::Group>> parentsOf(const osg::Node& node) const;

    /// @return the parts of the model in the order of the scene: the nodes that hold what is drawn, each once
    std::vector<osg::ref_ptr<osg::Node>> parts() const;

    /// @return the nodes that are hidden themselves
    std::vector<osg::ref_ptr<osg::Node>> hiddenNodes() const;

    /// @return what is to be hidden so that nothing but @p node is seen
    std::vector<osg::ref_ptr<osg::Node>> othersThan(osg::Node& node) const;

    /// Bounds what the commands of the history hold, in bytes. The oldest forget first; the last one never does.
    void setHistoryLimit(std::size_t limit);
    std::size_t getHistoryLimit() const { return m_historyLimit; }

    /// @return the bytes that they hold
    std::size_t getHistoryMemory() const { return m_historyMemory; }

    /// @return how many commands can be undone or done again
    std::size_t getHistoryLength() const { return m_commands.size(); }

    /// A command was done, for the first time or again.
    void noteCommand(SceneCommand& command);

    /// What a command holds has changed.
    void noteMemory(const SceneCommand& command);

    /// A command goes.
    void forgetCommand(const SceneCommand& command);

    /// Has the document count as modified and its views drawn anew.
    void changed();

    /// While it exists, commands that are run only show what they would do: the document does not count as modified.
    class Preview
    {
    public:
        explicit Preview(ModelScene& scene) : m_scene(scene) { ++m_scene.m_previews; }
        ~Preview() { --m_scene.m_previews; }

        Preview(const Preview&) = delete;
        Preview& operator=(const Preview&) = delete;

    private:
        ModelScene& m_scene;
    };

    /// While one lives, changes of a scene are told once, at its end.
    class Batch
    {
    public:
        explicit Batch(ModelScene& scene);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        osg::ref_ptr<ModelScene> m_scene;
    };

    /// @return a number that is another after each change, and never that of another scene
    unsigned long long getState() const { return m_state; }

    /// Ends notifications of the document, before it is destroyed.
    void detach() { m_document = nullptr; }

protected:
    ~ModelScene() override = default;

private:
    /// @return whether @p group is the root or hangs below it
    bool holds(const osg::Group& group) const;

    void boundHistory();

    osg::ref_ptr<osg::Group> m_root;
    ModelDocument* m_document;
    unsigned long long m_state;
    struct Known
    {
        std::list<SceneCommand*>::iterator place;
        std::size_t memory = 0;
    };

    int m_previews = 0;
    std::list<SceneCommand*> m_commands; ///< in the order in which they were done
    std::unordered_map<const SceneCommand*, Known> m_known;
    std::size_t m_historyMemory = 0;
    int m_batches = 0;
    bool m_isChanged = false; ///< and has not told
    std::size_t m_historyLimit = std::size_t(512) * 1000 * 1000;
};

} // namespace vfViewer
