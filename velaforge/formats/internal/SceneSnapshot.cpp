// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/SceneSnapshot.h>

#include <osg/Array>
#include <osg/CopyOp>
#include <osg/Drawable>
#include <osg/PrimitiveSet>
#include <osg/StateSet>
#include <osg/Texture>

#include <unordered_map>

namespace vfFormats {

namespace {

/// Copies what is shared once.
class SharingCopy : public osg::CopyOp
{
public:
    explicit SharingCopy(CopyFlags flags) : CopyOp(flags) {}

    osg::Node* operator()(const osg::Node* node) const override { return once(node); }
    osg::Drawable* operator()(const osg::Drawable* drawable) const override { return once(drawable); }
    osg::StateSet* operator()(const osg::StateSet* state) const override { return once(state); }
    osg::StateAttribute* operator()(const osg::StateAttribute* attribute) const override
    {
        // As CopyOp does: textures follow a flag of their own.
        const osg::Texture* texture = attribute ? attribute->asTexture() : nullptr;
        return texture ? once(texture) : once(attribute);
    }
    osg::Texture* operator()(const osg::Texture* texture) const override { return once(texture); }
    osg::Array* operator()(const osg::Array* array) const override { return once(array); }
    osg::PrimitiveSet* operator()(const osg::PrimitiveSet* primitives) const override
    {
        return once(primitives);
    }
    osg::Callback* operator()(const osg::Callback* callback) const override { return once(callback); }

private:
    template <class Kind>
    Kind* once(const Kind* original) const
    {
        if (!original)
            return nullptr;
        const auto known = m_copies.find(original);
        if (known != m_copies.end())
            return dynamic_cast<Kind*>(known->second.get());
        Kind* copy = CopyOp::operator()(original);
        m_copies[original] = copy;
        return copy;
    }

    mutable std::unordered_map<const osg::Object*, osg::ref_ptr<osg::Object>> m_copies;
};

} // namespace

osg::ref_ptr<osg::Node> snapshotOf(const osg::Node& scene, bool isMoving)
{
    osg::CopyOp::CopyFlags flags = osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES |
                                   osg::CopyOp::DEEP_COPY_STATESETS | osg::CopyOp::DEEP_COPY_STATEATTRIBUTES |
                                   osg::CopyOp::DEEP_COPY_TEXTURES;
    if (isMoving)
        flags |= osg::CopyOp::DEEP_COPY_ARRAYS | osg::CopyOp::DEEP_COPY_PRIMITIVES |
                 osg::CopyOp::DEEP_COPY_CALLBACKS;
    const SharingCopy copy(flags);
    return dynamic_cast<osg::Node*>(scene.clone(copy));
}

} // namespace vfFormats
