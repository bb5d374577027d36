// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

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

namespace vfScene {

class ModelScene;

/// The animations of a model and their clock. Nothing moves unless the clock is set here: a model that was just read stands as
/// its file has it, which need not be its pose at time 0.
class VFSCENE_EXPORT ModelAnimation
{
public:
    /// @param scene  must outlive this object
    explicit ModelAnimation(ModelScene& scene);
    ~ModelAnimation();

    ModelAnimation(const ModelAnimation&) = delete;
    ModelAnimation& operator=(const ModelAnimation&) = delete;

    /// Starts again with the model that is in the scene now.
    void reset();

    /// Returns whether the model has no animation.
    bool isEmpty();

    /// Returns the names of the animations of which one plays at a time; a number for one without a name. Empty for a model
    /// whose parts move without such animations.
    const std::vector<std::string>& getNames();

    /// Returns the index of the one that plays.
    std::size_t getCurrent() const { return m_current; }

    /// Selects another one, at its beginning.
    /// @param number  an index into getNames()
    /// @return false when there is none with that index
    bool setCurrent(std::size_t number);

    /// Returns the time in seconds after which all motion repeats; 0 when it never does.
    double getDuration();

    /// Returns the time of the clock in seconds.
    double getTime() const { return m_time; }

    /// Sets the clock and moves the parts.
    /// @param seconds  not negative; beyond the duration the motion repeats
    void setTime(double seconds);

    /// Returns whether the program should advance the clock.
    bool isPlaying() const { return m_isPlaying; }
    /// Sets whether the program should advance the clock.
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

} // namespace vfScene
