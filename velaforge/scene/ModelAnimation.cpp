// SPDX-License-Identifier: MIT
#include <velaforge/scene/ModelAnimation.h>

#include <velaforge/scene/ModelScene.h>

#include <osg/AnimationPath>
#include <osg/NodeVisitor>
#include <osg/Sequence>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/RigGeometry>
#include <osgUtil/UpdateVisitor>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <tuple>
#include <utility>

namespace vfScene {

namespace {

/// Calls for each node below, hidden ones too, once for each place where it hangs.
class ForEachNode : public osg::NodeVisitor
{
public:
    explicit ForEachNode(std::function<void(osg::Node&)> call)
        : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_call(std::move(call))
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        m_call(node);
        traverse(node);
    }

private:
    std::function<void(osg::Node&)> m_call;
};

template <class Object>
void addOnce(std::vector<osg::ref_ptr<Object>>& objects, Object* object)
{
    if (object && std::find(objects.begin(), objects.end(), object) == objects.end())
        objects.emplace_back(object);
}

std::string nameOf(osgAnimation::BasicAnimationManager& manager, unsigned int number)
{
    const std::string name = manager.getRegisteredAnimation(number)->getName();
    return name.empty() ? std::to_string(number + 1) : name;
}

double durationOf(const osg::AnimationPathCallback& callback)
{
    const osg::AnimationPath* path = callback.getAnimationPath();
    const double speed = std::abs(callback.getTimeMultiplier());
    if (!path || path->empty() || !(speed > 0))
        return 0;
    const bool swings = path->getLoopMode() == osg::AnimationPath::SWING;
    return (swings ? 2 : 1) * (path->getLastTime() - path->getFirstTime()) / speed;
}

/// How a sequence shows its children: which, and for how long each.
struct Frames
{
    explicit Frames(const osg::Sequence& sequence)
    {
        osg::Sequence::LoopMode mode = osg::Sequence::LOOP;
        int begin = 0;
        int end = 0;
        sequence.getInterval(mode, begin, end);
        const int last = static_cast<int>(sequence.getNumChildren()) - 1;
        begin = begin < 0 ? last : std::min(begin, last); // which is how it counts
        end = end < 0 ? last : std::min(end, last);
        float speed = 1;
        int repeats = 0;
        sequence.getDuration(speed, repeats);
        const int step = begin <= end ? 1 : -1;
        for (int child = begin; last >= 0; child += step) {
            add(sequence, child, speed);
            if (child == end)
                break;
        }
        if (mode == osg::Sequence::SWING) {
            for (int child = end - step; last >= 0 && (child - begin) * step > 0; child -= step)
                add(sequence, child, speed);
        }
    }

    /// @return the child that is shown then
    int at(double time) const
    {
        if (duration > 0)
            time = std::fmod(time, duration);
        for (const auto& [child, length] : frames) {
            if (time < length)
                return child;
            time -= length;
        }
        return frames.empty() ? 0 : frames.back().first;
    }

    std::vector<std::pair<int, double>> frames;
    double duration = 0;

private:
    void add(const osg::Sequence& sequence, int child, float speed)
    {
        const double time = sequence.getTime(static_cast<unsigned int>(child));
        const double length = std::isfinite(time) && time > 0 && speed > 0 ? time / double(speed) : 0;
        frames.emplace_back(child, length);
        duration += length;
    }
};

} // namespace

ModelAnimation::ModelAnimation(ModelScene& scene) : m_scene(scene) {}

ModelAnimation::~ModelAnimation() = default;

void ModelAnimation::reset()
{
    m_isPlaying = false;
    m_time = 0;
    m_current = 0;
    find();
    // Without that a sequence shows nothing before it begins.
    for (const osg::ref_ptr<osg::Sequence>& sequence : m_sequences) {
        if (sequence->getValue() < 0)
            sequence->setValue(Frames(*sequence).at(0));
    }
    // Skins lie over their bones only then.
    if (!m_skins.empty() && m_paths.empty())
        move();
}

void ModelAnimation::find()
{
    m_state = m_scene.getState();
    m_paths.clear();
    m_travellers.clear();
    m_skins.clear();
    m_sequences.clear();
    m_managers.clear();
    m_names.clear();
    m_movesOtherwise = false;
    ForEachNode look([this](osg::Node& node) {
        addOnce(m_sequences, dynamic_cast<osg::Sequence*>(&node));
        addOnce(m_skins, dynamic_cast<osgAnimation::RigGeometry*>(&node));
        for (osg::Callback* callback = node.getUpdateCallback(); callback;
             callback = callback->getNestedCallback()) {
            auto* path = dynamic_cast<osg::AnimationPathCallback*>(callback);
            addOnce(m_paths, path);
            addOnce(m_travellers, path ? &node : nullptr);
            addOnce(m_managers, dynamic_cast<Manager*>(callback));
            // Bones and skins move only when something moves them.
            m_movesOtherwise |= !path && std::strcmp(callback->libraryName(), "osgAnimation") != 0;
        }
    });
    m_scene.root().accept(look);
    for (const osg::ref_ptr<Manager>& manager : m_managers) {
        for (unsigned int i = 0; i < manager->getNumRegisteredAnimations(); ++i) {
            const std::string name = nameOf(*manager, i);
            if (std::find(m_names.begin(), m_names.end(), name) == m_names.end())
                m_names.push_back(name);
        }
    }
    m_current = m_current < m_names.size() ? m_current : 0;
}

void ModelAnimation::findIfChanged()
{
    if (m_state != m_scene.getState())
        find();
}

bool ModelAnimation::isEmpty()
{
    findIfChanged();
    return m_paths.empty() && m_sequences.empty() && m_names.empty() && !m_movesOtherwise;
}

const std::vector<std::string>& ModelAnimation::getNames()
{
    findIfChanged();
    return m_names;
}

bool ModelAnimation::setCurrent(std::size_t number)
{
    if (number >= getNames().size())
        return false;
    m_current = number;
    setTime(0);
    return true;
}

osgAnimation::Animation* ModelAnimation::current(Manager& manager) const
{
    if (m_current >= m_names.size())
        return nullptr;
    for (unsigned int i = 0; i < manager.getNumRegisteredAnimations(); ++i) {
        if (nameOf(manager, i) == m_names[m_current])
            return manager.getRegisteredAnimation(i);
    }
    return nullptr;
}

double ModelAnimation::getDuration()
{
    findIfChanged();
    double duration = 0;
    for (const osg::ref_ptr<osg::AnimationPathCallback>& path : m_paths)
        duration = std::max(duration, durationOf(*path));
    for (const osg::ref_ptr<osg::Sequence>& sequence : m_sequences)
        duration = std::max(duration, Frames(*sequence).duration);
    for (const osg::ref_ptr<Manager>& manager : m_managers) {
        if (osgAnimation::Animation* animation = current(*manager))
            duration = std::max(duration, animation->getDuration());
    }
    return std::isfinite(duration) ? duration : 0;
}

void ModelAnimation::setTime(double seconds)
{
    const double duration = getDuration();
    m_time = duration > 0 && seconds > duration ? std::fmod(seconds, duration) : std::max(seconds, 0.0);
    play();
}

void ModelAnimation::play()
{
    // What players keep of their own time stays as it is in the file: it is not what the user changed.
    struct Player
    {
        osgAnimation::Animation* animation;
        float weight;
        double start;
    };
    std::vector<Player> players;
    for (const osg::ref_ptr<Manager>& manager : m_managers) {
        osgAnimation::Animation* animation = current(*manager);
        if (!animation)
            continue;
        players.push_back({animation, animation->getWeight(), animation->getStartTime()});
        manager->stopAll();
        manager->update(0);
        manager->playAnimation(animation);
    }
    std::vector<std::pair<double, double>> times;
    for (const osg::ref_ptr<osg::AnimationPathCallback>& path : m_paths) {
        times.emplace_back(path->_firstTime, path->_latestTime);
        path->_firstTime = 0;
    }

    move();

    for (const osg::ref_ptr<osg::Sequence>& sequence : m_sequences)
        sequence->setValue(Frames(*sequence).at(m_time));
    for (std::size_t i = 0; i < m_paths.size(); ++i)
        std::tie(m_paths[i]->_firstTime, m_paths[i]->_latestTime) = times[i];
    for (const osg::ref_ptr<Manager>& manager : m_managers)
        manager->stopAll();
    for (const Player& player : players) {
        player.animation->setWeight(player.weight);
        player.animation->setStartTime(player.start);
    }
}

void ModelAnimation::move()
{
    osgUtil::UpdateVisitor visitor;
    const osg::ref_ptr<osg::FrameStamp> now = new osg::FrameStamp;
    now->setFrameNumber(++m_step);
    now->setSimulationTime(m_time);
    now->setReferenceTime(m_time);
    visitor.setFrameStamp(now);
    visitor.setTraversalNumber(m_step);
    // What is hidden is in its place when it is shown. Paths ask once more whether their node is.
    visitor.setNodeMaskOverride(~0u);
    std::vector<osg::Node::NodeMask> masks;
    for (const osg::ref_ptr<osg::Node>& node : m_travellers) {
        masks.push_back(node->getNodeMask());
        node->setNodeMask(~0u);
    }
    m_scene.root().accept(visitor);
    for (std::size_t i = 0; i < m_travellers.size(); ++i)
        m_travellers[i]->setNodeMask(masks[i]);
    for (const osg::ref_ptr<osgAnimation::RigGeometry>& skin : m_skins)
        skin->dirtyBound();
}

} // namespace vfScene
