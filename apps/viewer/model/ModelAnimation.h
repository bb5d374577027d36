// SPDX-License-Identifier: MIT
#pragma once

#include <osg/ref_ptr>

#include <cstddef>
#include <string>
#include <vector>

namespace osg {
class AnimationPathCallback;
class Node;
class Sequence;
} // namespace osg

namespace osgAnimation {
class Animation;
class BasicAnimationManager;
class RigGeometry;
} // namespace osgAnimation

namespace vfViewer {

class ModelScene;

/// What of a model moves by itself, and the clock that it follows: nothing moves unless the clock is set here. A model
/// that was just read stands as its file has it, which need not be how it stands at time 0.
class ModelAnimation
{
public:
    explicit ModelAnimation(ModelScene& scene);
    ~ModelAnimation();

    ModelAnimation(const ModelAnimation&) = delete;
    ModelAnimation& operator=(const ModelAnimation&) = delete;

    /// Begins anew with the model that is in the scene now.
    void reset();

    /// @return whether nothing moves
    bool isEmpty();

    /// @return the animations of which one is played at a time; those without a name by their number. None where the
    /// parts of the model just move.
    const std::vector<std::string>& getNames();

    /// @return which of them is played
    std::size_t getCurrent() const { return m_current; }

    /// Has another played, from its beginning. @return false when there is none of that number
    bool setCurrent(std::size_t number);

    /// @return how long it takes until everything comes again, in seconds; 0 when that never happens
    double getDuration();

    double getTime() const { return m_time; }

    /// Moves what moves to where it is then. @param seconds  beyond the end it begins again; not before 0
    void setTime(double seconds);

    bool isPlaying() const { return m_isPlaying; }
    void setPlaying(bool isPlaying) { m_isPlaying = isPlaying; }

private:
    using Manager = osgAnimation::BasicAnimationManager;

    void find();
    void findIfChanged();
    osgAnimation::Animation* current(Manager& manager) const;
    void play();
    void move();

    ModelScene& m_scene; ///< which is the document's, as this is
    unsigned long long m_state = 0;
    bool m_movesOtherwise = false; ///< in ways of which nothing more is known
    std::vector<osg::ref_ptr<osg::AnimationPathCallback>> m_paths;
    std::vector<osg::ref_ptr<osg::Node>> m_travellers; ///< that go along the paths
    std::vector<osg::ref_ptr<osgAnimation::RigGeometry>> m_skins;
    std::vector<osg::ref_ptr<osg::Sequence>> m_sequences;
    std::vector<osg::ref_ptr<Manager>> m_managers;
    std::vector<std::string> m_names;
    std::size_t m_current = 0;
    double m_time = 0;
    unsigned int m_step = 0;
    bool m_isPlaying = false;
};

} // namespace vfViewer
