// SPDX-License-Identifier: MIT
#include <velaforge/base/Options.h>

#include <osgDB/Options>

namespace vfBase {

Options::Options() : Options(new osgDB::Options) {}

// The handle counts references on the body and changes it, so constness is cast away.
Options::Options(const osgDB::Options* options)
    : Referenced(const_cast<osgDB::Options*>(options), true), d(const_cast<osgDB::Options*>(options))
{}

Options::Options(const Referenced& other) : Options(dynamic_cast<osgDB::Options*>(other.getImp())) {}

Options& Options::operator=(const Options& other)
{
    if (this == &invalid())
        return *this;
    // Read first: releasing our own body may destroy other.
    osgDB::Options* body = other.d;
    Referenced::operator=(other);
    d = body;
    return *this;
}

void Options::setImp(const Referenced& other)
{
    *this = Options(other);
}

Options Options::clone() const
{
    return d ? Options(new osgDB::Options(*d, osg::CopyOp::SHALLOW_COPY)) : Options(invalid());
}

Options& Options::invalid()
{
    static Options handle(static_cast<osgDB::Options*>(nullptr));
    return handle;
}

void Options::setPluginStringData(const VfString& key, const VfString& value)
{
    if (d)
        d->setPluginStringData(key.str(), value.str());
}

VfString Options::getPluginStringData(const VfString& key) const
{
    // Const: the non-const operation would make an entry.
    const osgDB::Options* body = d;
    return body ? VfString(body->getPluginStringData(key.str())) : VfString();
}

} // namespace vfBase
